#include "NextTrack.h"

#include <utility>

namespace voro::renderer {

void NextTrack::prepare(const Present &present)
{
    if (m_playback.succession().isTaken()) {
        return;
    }
    for (;;) {
        const auto next = m_queue.following();
        const auto captions = next ? present.captions.find(*next) : present.captions.end();
        const bool hasCaptions = captions != present.captions.end() && !captions->second.medium.isEmpty();
        if (!next || !present.isNormalSpeed || hasCaptions) {
            m_playback.succession().set({});
            return;
        }
        const Medium &medium = m_queue.entry(*next).medium;
        if (*next == m_queue.current()) {
            // A track without an end or without a length would be repeated for ever in no time.
            m_playback.succession().set(present.duration > 0 ? medium.uri() : std::string());
            return;
        }
        if (m_known && m_known->track == *next) {
            // Pictures alone, and what is read with libavformat, need another way to be played.
            const TrackInfo &info = m_known->info;
            m_playback.succession().set(info.sampleRate > 0 && !info.needsLibav ? medium.uri() : std::string());
            return;
        }
        m_playback.succession().setUnknown();
        if (!present.isOpen) {
            return;
        }
        if (medium.check()) {
            m_probe.start(medium, [this, track = *next](const Result &result, TrackInfo info) {
                onProbed(track, result, std::move(info));
            });
            return;
        }
        passOver(*next, "it cannot be read");
    }
}

void NextTrack::onProbed(unsigned track, const Result &result, TrackInfo info)
{
    if (result) {
        m_reports.track(track, m_queue.entry(track).medium.uri(), info);
        m_known = Known{track, std::move(info)};
    } else {
        passOver(track, result.text);
    }
    m_onProbed();
}

void NextTrack::passOver(unsigned track, const std::string &cause)
{
    m_reports.logPassedOver(track, cause);
    m_queue.setBad(track);
}

bool NextTrack::isOutdated() const
{
    return m_playback.succession().isTaken() && m_known && m_queue.following() != m_known->track;
}

void NextTrack::forget()
{
    m_probe.cancel();
    m_known.reset();
}

} // namespace voro::renderer
