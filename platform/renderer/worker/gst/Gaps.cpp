#include "Gaps.h"

namespace voro::renderer {

namespace {

// Runs in a streaming thread.
GstPadProbeReturn onEvent(GstPad *pad, GstPadProbeInfo *info, gpointer)
{
    GstEvent *gap = GST_PAD_PROBE_INFO_EVENT(info);
    if (GST_EVENT_TYPE(gap) != GST_EVENT_GAP) {
        return GST_PAD_PROBE_OK;
    }
    const Owned<GstEvent> current(gst_pad_get_sticky_event(pad, GST_EVENT_SEGMENT, 0));
    if (!current) {
        return GST_PAD_PROBE_DROP;
    }
    const GstSegment *segment = nullptr;
    gst_event_parse_segment(current.get(), &segment);
    GstClockTime time = GST_CLOCK_TIME_NONE;
    gst_event_parse_gap(gap, &time, nullptr);
    if (segment->format == GST_FORMAT_TIME && (time < segment->start || time > segment->stop)) {
        GstEvent *moved = gst_event_new_gap(segment->rate > 0 ? segment->start : segment->stop, GST_CLOCK_TIME_NONE);
        gst_event_set_seqnum(moved, gst_event_get_seqnum(gap));
        gst_event_unref(gap);
        GST_PAD_PROBE_INFO_DATA(info) = moved;
    }
    return GST_PAD_PROBE_OK;
}

} // namespace

void keepGapsInside(GstPad *pad)
{
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, onEvent, nullptr, nullptr);
}

} // namespace voro::renderer
