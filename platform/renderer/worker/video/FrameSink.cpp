#include "FrameSink.h"

#include <gst/video/gstvideosink.h>

#include <utility>

namespace {

using voro::renderer::FrameChannel;

struct FrameSink {
    GstVideoSink parent;
    std::shared_ptr<FrameChannel> *channel;
    GstVideoInfo info;
};

struct FrameSinkClass {
    GstVideoSinkClass parent;
};

G_DEFINE_TYPE(FrameSink, frame_sink, GST_TYPE_VIDEO_SINK)

FrameSink *sinkOf(void *instance)
{
    return static_cast<FrameSink *>(instance);
}

gboolean setInfo(GstVideoSink *sink, GstCaps *, const GstVideoInfo *info)
{
    sinkOf(sink)->info = *info;
    return TRUE;
}

gboolean proposeAllocation(GstBaseSink *, GstQuery *query)
{
    gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
    return TRUE;
}

GstFlowReturn showFrame(GstVideoSink *sink, GstBuffer *picture)
{
    (*sinkOf(sink)->channel)->show(picture, sinkOf(sink)->info);
    return GST_FLOW_OK;
}

gboolean stop(GstBaseSink *sink)
{
    (*sinkOf(sink)->channel)->clear();
    return TRUE;
}

void finalize(GObject *sink)
{
    delete sinkOf(sink)->channel;
    G_OBJECT_CLASS(frame_sink_parent_class)->finalize(sink);
}

void frame_sink_class_init(FrameSinkClass *type)
{
    G_OBJECT_CLASS(type)->finalize = finalize;
    GST_VIDEO_SINK_CLASS(type)->set_info = setInfo;
    GST_VIDEO_SINK_CLASS(type)->show_frame = showFrame;
    GST_BASE_SINK_CLASS(type)->propose_allocation = proposeAllocation;
    GST_BASE_SINK_CLASS(type)->stop = stop;
    static GstStaticPadTemplate pad = GST_STATIC_PAD_TEMPLATE(
        "sink", GST_PAD_SINK, GST_PAD_ALWAYS, GST_STATIC_CAPS(GST_VIDEO_CAPS_MAKE(GST_VIDEO_FORMATS_ALL)));
    gst_element_class_add_static_pad_template(GST_ELEMENT_CLASS(type), &pad);
    gst_element_class_set_static_metadata(GST_ELEMENT_CLASS(type), "Frame queue sink", "Sink/Video",
                                          "Shows pictures in an item of an application", "libvoromultimedia");
}

void frame_sink_init(FrameSink *) {}

} // namespace

namespace voro::renderer {

GstElement *frameSink(std::shared_ptr<FrameChannel> channel)
{
    auto *sink = static_cast<FrameSink *>(g_object_new(frame_sink_get_type(), nullptr));
    sink->channel = new std::shared_ptr<FrameChannel>(std::move(channel));
    return GST_ELEMENT(sink);
}

} // namespace voro::renderer
