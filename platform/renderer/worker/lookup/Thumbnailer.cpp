#include "Thumbnailer.h"

#include <gst/base/gsttypefindhelper.h>
#include <malloc.h>
#include <renderer/worker/media/TrackInfo.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace voro::renderer {

namespace {

/** The width of a handheld's screen; halved until the picture is small enough. */
constexpr int LongestSide = 320;
constexpr int ShortestSide = 40;

/** A picture with more pixels than this would fill the memory, however small its file is. */
constexpr int64_t MostPixels = 4096 * 4096;

/** A number of so many bytes in a picture's head. */
int64_t numberAt(std::string_view head, size_t place, size_t size, bool isBigEndian)
{
    int64_t number = 0;
    for (size_t i = 0; i < size && place + size <= head.size(); ++i) {
        const auto byte = static_cast<unsigned char>(head[place + (isBigEndian ? i : size - 1 - i)]);
        number = number << 8 | byte;
    }
    return number;
}

/** How many pixels a picture has as its head says; 0 when that is not known. */
int64_t pixelsOf(GstBuffer *picture, std::string_view head)
{
    if (head.starts_with("\x89PNG")) {
        return numberAt(head, 16, 4, true) * numberAt(head, 20, 4, true);
    }
    if (head.starts_with("GIF8")) {
        return numberAt(head, 6, 2, false) * numberAt(head, 8, 2, false);
    }
    if (head.starts_with("RIFF") && head.substr(8).starts_with("WEBPVP8X")) {
        return (numberAt(head, 24, 3, false) + 1) * (numberAt(head, 27, 3, false) + 1);
    }
    if (head.starts_with("RIFF") && head.substr(8).starts_with("WEBPVP8L")) {
        const int64_t sides = numberAt(head, 21, 4, false);
        return ((sides & 0x3fff) + 1) * ((sides >> 14 & 0x3fff) + 1);
    }
    if (head.starts_with("RIFF") && head.substr(8).starts_with("WEBPVP8 ")) {
        return (numberAt(head, 26, 2, false) & 0x3fff) * (numberAt(head, 28, 2, false) & 0x3fff);
    }
    const Owned<GstCaps> caps(gst_type_find_helper_for_buffer(nullptr, picture, nullptr));
    const Dimensions size = dimensionsOf(caps.get());
    return int64_t(size.width) * size.height;
}

/** Whether a picture says how large it is, and may be decoded. */
bool isModest(GstSample *picture)
{
    GstBuffer *content = gst_sample_get_buffer(picture);
    std::array<char, 32> head{};
    const gsize size = content ? gst_buffer_extract(content, 0, head.data(), head.size()) : 0;
    const int64_t pixels = content ? pixelsOf(content, {head.data(), size}) : 0;
    return pixels > 0 && pixels <= MostPixels;
}

std::string description(int side)
{
    const std::string range = "[1," + std::to_string(side) + "]";
    return "appsrc name=source ! decodebin ! videoscale ! video/x-raw, width=" + range + ", height=" + range
           + ", pixel-aspect-ratio=1/1 ! videoconvert ! jpegenc quality=80 ! fakesink name=sink sync=false";
}

} // namespace

void Thumbnailer::start(GstSample *picture, size_t maximum, Scaled done)
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
    if (!m_pipeline || !isModest(m_picture.get())) {
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
    const Scaled done = std::exchange(m_done, nullptr);
    cancel();
    done(thumbnail);
    // The pictures were many times as large as what is left.
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace voro::renderer
