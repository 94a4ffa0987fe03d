#include "PacketsBeforeTarget.h"

namespace voro::renderer {

namespace {

/** Opus wants 80 ms to be in tune, Vorbis one packet. */
constexpr GstClockTime Tuning = 100 * GST_MSECOND;

GstPadProbeReturn onPacket(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    auto *segment = static_cast<GstSegment *>(self);
    if (GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM) {
        if (GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info)) == GST_EVENT_SEGMENT) {
            gst_event_copy_segment(GST_PAD_PROBE_INFO_EVENT(info), segment);
        }
        return GST_PAD_PROBE_OK;
    }
    const GstBuffer *packet = GST_PAD_PROBE_INFO_BUFFER(info);
    const bool isForward = segment->format == GST_FORMAT_TIME && segment->rate > 0;
    if (!isForward || !GST_BUFFER_PTS_IS_VALID(packet) || !GST_BUFFER_DURATION_IS_VALID(packet)) {
        return GST_PAD_PROBE_OK;
    }
    const GstClockTime end = GST_BUFFER_PTS(packet) + GST_BUFFER_DURATION(packet);
    return end + Tuning < segment->start ? GST_PAD_PROBE_DROP : GST_PAD_PROBE_OK;
}

} // namespace

void skipPacketsBeforeTarget(GstElement *decoder)
{
    const Owned<GstPad> pad(gst_element_get_static_pad(decoder, "sink"));
    gst_pad_add_probe(pad.get(),
                      static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM),
                      onPacket, new GstSegment{}, [](gpointer segment) { delete static_cast<GstSegment *>(segment); });
}

} // namespace voro::renderer
