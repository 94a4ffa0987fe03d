#pragma once

#include "Reports.h"

#include <renderer/common/Settings.h>
#include <renderer/worker/lookup/Probe.h>
#include <renderer/worker/media/Queue.h>
#include <renderer/worker/pipeline/Playback.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace voro::renderer {

/** Looks at the track that follows the current one, so that the playback can go on with it without a gap. */
class NextTrack {
public:
    /** The conditions besides the queue. */
    struct Present {
        /** The current track is open. No other one is looked at before that. */
        bool isOpen;
        bool isNormalSpeed;
        /** Of the current track. */
        int64_t duration;
        const std::map<unsigned, CaptionChoice> &captions;
    };
    struct Known {
        unsigned track;
        TrackInfo info;
    };

    /** `onProbed` is called when prepare() has more to do. */
    NextTrack(Playback &playback, Probe &probe, Queue &queue, Reports &reports, std::function<void()> onProbed)
        : m_playback(playback),
          m_probe(probe),
          m_queue(queue),
          m_reports(reports),
          m_onProbed(std::move(onProbed))
    {}

    /** Sees to it that the next track is known by the time that the current one ends. */
    void prepare(const Present &present);
    /** Whether another track would follow now than the one that the playback has taken. */
    bool isOutdated() const;
    /** Hands over what is known of a track. */
    std::optional<Known> take() { return std::exchange(m_known, std::nullopt); }
    /** Forgets it, and looks at nothing any more. */
    void forget();

private:
    void onProbed(unsigned track, const Result &result, TrackInfo info);
    void passOver(unsigned track, const std::string &cause);

    Playback &m_playback;
    Probe &m_probe;
    Queue &m_queue;
    Reports &m_reports;
    const std::function<void()> m_onProbed;
    std::optional<Known> m_known;
};

} // namespace voro::renderer
