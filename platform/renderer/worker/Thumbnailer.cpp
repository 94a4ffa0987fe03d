#include "Thumbnailer.h"

#include <malloc.h>

#include <string>
#include <utility>

namespace voro::renderer {

namespace {

/** What fills a handheld's width; halved until the picture is small enough. */
constexpr int LongestSide = 320;
constexpr int ShortestSide = 40;

/** Pictures that would fill the memory are not decoded. */
std::string description(int side)
{
    const std::string range = "[1," + std::to_string(side) + "]";
    return "appsrc name=source ! decodebin ! video/x-raw, width=[1,4096], height=[1,4096] ! videoconvert ! videoscale "
           "! video/x-raw, width="
           + range + ", height=" + range
           + ", pixel-aspect-ratio=1/1 ! jpegenc quality=80 ! fakesink name=sink sync=false";
}

} // namespace

void Thumbnailer::start(GstSample *picture, size_t maximum, Done done)
{
    cancel();
    m_picture.reset(gst_sample_ref(picture));
    m_maximum = maximum;
    m_done = std::move(done);
    m_side = LongestSide;
    m_idle.reset(g_idle_add_full(G_PRIORITY_LOW, onIdle, this, nullptr));
}

void Thumbnailer::cancel()
{
    end();
    m_idle.reset();
    m_picture.reset();
    m_done = nullptr;
}

gboolean Thumbnailer::onIdle(gpointer self)
{
    static_cast<Thumbnailer *>(self)->m_idle.forget();
    static_cast<Thumbnailer *>(self)->begin();
    return G_SOURCE_REMOVE;
}

void Thumbnailer::begin()
{
    // Null where a part is missing; a pipeline that lacks one is good for nothing.
    m_pipeline.reset(gst_parse_launch_full(description(m_side).c_str(), nullptr, GST_PARSE_FLAG_FATAL_ERRORS, nullptr));
    if (!m_pipeline) {
        finish(nullptr);
        return;
    }
    gst_object_ref_sink(m_pipeline.get());
    const Owned<GstBus> bus(gst_element_get_bus(m_pipeline.get()));
    m_watch.reset(gst_bus_add_watch(bus.get(), onMessage, this));
    gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING);
    const Owned<GstElement> source(gst_bin_get_by_name(GST_BIN(m_pipeline.get()), "source"));
    GstFlowReturn result = GST_FLOW_OK;
    g_signal_emit_by_name(source.get(), "push-sample", m_picture.get(), &result);
    g_signal_emit_by_name(source.get(), "end-of-stream", &result);
}

gboolean Thumbnailer::onMessage(GstBus *, GstMessage *message, gpointer owner)
{
    auto *self = static_cast<Thumbnailer *>(owner);
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        self->finish(nullptr);
    } else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS) {
        const Owned<GstElement> sink(gst_bin_get_by_name(GST_BIN(self->m_pipeline.get()), "sink"));
        GstSample *sample = nullptr;
        g_object_get(sink.get(), "last-sample", &sample, nullptr);
        const Owned<GstSample> thumbnail(sample);
        GstBuffer *data = thumbnail ? gst_sample_get_buffer(thumbnail.get()) : nullptr;
        self->m_side /= 2;
        if (data && gst_buffer_get_size(data) > self->m_maximum && self->m_side >= ShortestSide) {
            self->end();
            self->begin();
        } else {
            self->finish(thumbnail.get());
        }
    }
    return G_SOURCE_CONTINUE;
}

void Thumbnailer::end()
{
    m_watch.reset();
    if (m_pipeline) {
        gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
        m_pipeline.reset();
    }
}

void Thumbnailer::finish(GstSample *thumbnail)
{
    const Done done = std::exchange(m_done, nullptr);
    cancel();
    done(thumbnail);
    // The pictures were many times as large as what is left.
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace voro::renderer
