#pragma once

#include <renderer/common/Medium.h>
#include <renderer/worker/lookup/Thumbnailer.h>
#include <renderer/worker/media/Extent.h>
#include <renderer/worker/media/Measure.h>
#include <renderer/worker/media/TrackInfo.h>

#include <functional>
#include <string>

namespace voro::renderer {

class Playback;

/** The track that is played: its metadata, and the search for what is missing. */
class Track {
public:
    struct Listener {
        /** The duration was measured; it counts from the next refresh() on. */
        std::function<void()> measured;
        /** A cover that was too large is small enough for a report now. */
        std::function<void()> coverMade;
    };

    explicit Track(Listener listener) : m_listener(std::move(listener)) {}

    /** Another track, with the metadata known so far. */
    void begin(const Medium &medium, TrackInfo info);
    /** Ends the search; the metadata stays. */
    void end();

    const TrackInfo &info() const { return m_info; }
    void merge(const GstTagList *tags);
    /** Takes over what the playback knows by now. */
    void refresh(const Playback &playback);
    /**
     * Corrects the duration of a file of which there is only an estimate; those in common formats hold the exact one.
     */
    void measure(bool isCommon);
    /** Makes a cover smaller that is too large for a report. */
    void shrinkCover();
    /** Whether the file was cut since it was begun. */
    bool hasShrunk() const { return m_extent.hasShrunk(); }

private:
    Listener m_listener;
    Medium m_medium;
    TrackInfo m_info;
    Extent m_extent;
    Measure m_measure;
    /** The duration that was measured, 0 while it was not. */
    int64_t m_measured = 0;
    Thumbnailer m_thumbnailer;
};

} // namespace voro::renderer
