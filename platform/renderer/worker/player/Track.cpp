#include "Track.h"

#include <renderer/worker/media/Tags.h>
#include <renderer/worker/pipeline/Playback.h>

#include <utility>

namespace voro::renderer {

void Track::begin(const Medium &medium, TrackInfo info)
{
    end();
    m_medium = medium;
    m_info = std::move(info);
    m_measured = 0;
    m_extent = m_medium.isLocal() ? Extent(m_medium.path()) : Extent();
}

void Track::end()
{
    m_measure.cancel();
    m_thumbnailer.cancel();
    m_extent = {};
}

void Track::merge(const GstTagList *tags)
{
    m_info.merge(tags);
    if (gst_tag_list_get_tag_size(tags, GST_TAG_IMAGE) > 0) {
        // It may be another one than the one that is being made smaller.
        m_thumbnailer.cancel();
    }
}

void Track::refresh(const Playback &playback)
{
    if (m_measured > 0) {
        m_info.duration = m_measured;
    } else if (const int64_t duration = playback.duration(); duration > 0) {
        m_info.duration = duration;
    }
    m_info.isSeekable = playback.isSeekable();
    m_info.sampleRate = playback.sampleRate();
    m_info.dimensions = playback.dimensions();
    m_info.captions = playback.captions();
}

void Track::measure(bool isCommon)
{
    m_measured = 0;
    if (m_medium.isLocal()) {
        // Without a container the length is an estimate.
        const bool hasContainer = gst_tag_list_get_tag_size(m_info.tags.get(), GST_TAG_CONTAINER_FORMAT) > 0;
        const bool isKnown = m_info.duration > 0 && (isCommon || hasContainer);
        m_measure.start(m_medium.path(), isKnown, [this](int64_t duration) {
            m_measured = duration;
            m_listener.measured();
        });
    }
}

void Track::shrinkCover()
{
    const auto cover = pictureIn(m_info.tags.get());
    if (!cover || !isTooLarge(cover.get()) || m_info.thumbnail || m_thumbnailer.isRunning()) {
        return;
    }
    m_thumbnailer.start(cover.get(), MaximumPicture, [this](GstSample *thumbnail) {
        if (thumbnail) {
            m_info.thumbnail.reset(gst_sample_ref(thumbnail));
            m_listener.coverMade();
        } else {
            gst_tag_list_remove_tag(m_info.tags.get(), GST_TAG_IMAGE);
        }
    });
}

} // namespace voro::renderer
