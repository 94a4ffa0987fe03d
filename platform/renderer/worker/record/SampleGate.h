#pragma once

#include "WavHeader.h"

#include <renderer/common/RecordingFormat.h>
#include <renderer/worker/gst/Gst.h>

#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

namespace voro::renderer {

/**
 * Lets a source's 16-bit samples pass while it is open and drops them while it is closed. What passes is one
 * stream without a gap: its time is counted in samples, and where something was dropped the two sides are blended.
 */
class SampleGate {
public:
    /** The element message that the first samples post, whether they pass or not. */
    static constexpr char FirstMessage[] = "voro-first-samples";

    /** Stands at the source pad of an element. At the end it fills up what an encoder of that latency needs. */
    SampleGate(GstElement *element, RecordingFormat::Latency latency);
    ~SampleGate();
    SampleGate(const SampleGate &) = delete;
    SampleGate &operator=(const SampleGate &) = delete;

    void setOpen(bool isOpen);
    /** Lets so many milliseconds pass and nothing more; 0 for any length. */
    void setLimit(unsigned milliseconds);
    /** Begins a new stream, while no samples come. */
    void reset(bool isOpen);
    /** Ends the stream: nothing passes any more. */
    void end();

    /** How much passed, in milliseconds. */
    int64_t position() const;
    /** Likewise in samples of each channel. */
    uint64_t frames() const;
    /**
     * The peak since the last call, or the former one when nothing came since: 0 at -60 dBFS or less, 100 at 0 dBFS.
     */
    int takeLevel();

private:
    static GstPadProbeReturn onBuffer(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    static GstPadProbeReturn onEvent(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    static GstPadProbeReturn onInput(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    GstPadProbeReturn pass(GstPadProbeInfo *info);
    GstPadProbeReturn pass(GstEvent *event, GstPadProbeInfo *info);
    void fill();
    uint64_t allowed(uint64_t frames) const;
    void stamp(GstBuffer *buffer, uint64_t frames) const;
    void measure(const int16_t *samples, size_t count);
    void keep(const int16_t *samples, size_t count);
    void blend(int16_t *samples, size_t count);

    GstElement *m_element;
    const RecordingFormat::Latency m_latency;
    Owned<GstPad> m_input;
    Owned<GstPad> m_pad;

    mutable std::mutex m_mutex;
    SampleSpec m_spec;
    bool m_isOpen = false;
    bool m_isFirst = true;
    bool m_hasSegment = false;
    /** The samples are the silence that fills up the end. */
    bool m_isFilling = false;
    uint64_t m_frames = 0;
    uint64_t m_limit = 0;
    std::optional<int> m_peak;
    int m_level = 0;
    /** The first samples that were dropped since it was closed. */
    std::vector<int16_t> m_tail;
    /** How many of them were blended with what came after the cut. */
    size_t m_blended = 0;
};

/** A peak from 0 to 32768 as a level from 0 to 100. */
int levelOf(int peak);

} // namespace voro::renderer
