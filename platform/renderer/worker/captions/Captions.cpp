#include "Captions.h"

#include "CaptionLimit.h"

#include <renderer/worker/video/WindowSink.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace voro::renderer {

namespace {

/** The end of a text in running time; none when it has no duration. */
GstClockTime endOf(GstBuffer *text, GstPad *pad)
{
    const Owned<GstEvent> event(gst_pad_get_sticky_event(pad, GST_EVENT_SEGMENT, 0));
    if (!event || !GST_BUFFER_PTS_IS_VALID(text) || !GST_BUFFER_DURATION_IS_VALID(text)) {
        return GST_CLOCK_TIME_NONE;
    }
    const GstSegment *segment = nullptr;
    gst_event_parse_segment(event.get(), &segment);
    const bool isForward = segment->rate > 0;
    const GstClockTime last = GST_BUFFER_PTS(text) + (isForward ? GST_BUFFER_DURATION(text) : 0);
    return gst_segment_to_running_time(segment, GST_FORMAT_TIME, std::clamp(last, segment->start, segment->stop));
}

} // namespace

Captions::Captions() : m_sink(GST_ELEMENT(gst_object_ref_sink(makeElement("fakesink"))))
{
    g_object_set(m_sink.get(), "sync", TRUE, "async", FALSE, "signal-handoffs", TRUE, nullptr);
    // A medium ends with its sound and pictures, whatever captions were still to come.
    GST_OBJECT_FLAG_UNSET(m_sink.get(), GST_ELEMENT_FLAG_SINK);
    g_signal_connect(m_sink.get(), "handoff", G_CALLBACK(onText), this);
    const Owned<GstPad> pad(gst_element_get_static_pad(m_sink.get(), "sink"));
    gst_pad_add_probe(
        pad.get(), static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM | GST_PAD_PROBE_TYPE_EVENT_FLUSH),
        onFlush, this, nullptr);
}

Captions::~Captions()
{
    setWindow({});
}

void Captions::setWindow(const Window &window)
{
    if (window == m_window) {
        return;
    }
    m_window = window;
    clear();
    if (m_pipeline) {
        gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
        m_pipeline.reset();
    }
    m_overlay.reset();
    GstElement *sink = screenSink(window);
    if (!sink) {
        return;
    }
    m_pipeline.reset(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new("voro-captions"))));
    GstElement *ground = makeElement("videotestsrc");
    GstElement *size = makeElement("capsfilter");
    GstElement *overlay = makeElement("textoverlay");
    GstElement *convert = makeElement("videoconvert");
    GstElement *scale = makeElement("videoscale");
    const Owned<GstCaps> caps(gst_caps_from_string("video/x-raw,width=640,height=160,framerate=10/1"));
    gst_util_set_object_arg(G_OBJECT(ground), "pattern", "black");
    g_object_set(ground, "is-live", TRUE, nullptr);
    g_object_set(size, "caps", caps.get(), nullptr);
    g_object_set(overlay, "font-desc", "Sans 24", "text", "", nullptr);
    gst_util_set_object_arg(G_OBJECT(overlay), "valignment", "center");
    gst_bin_add_many(GST_BIN(m_pipeline.get()), ground, size, overlay, convert, scale, sink, nullptr);
    gst_element_link_many(ground, size, overlay, convert, scale, sink, nullptr);
    m_overlay.reset(GST_ELEMENT(gst_object_ref(overlay)));
    gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING);
}

void Captions::setOverlay(GstElement *overlay)
{
    setWindow({});
    m_overlay.reset(GST_ELEMENT(gst_object_ref(overlay)));
}

void Captions::setShown(bool isShown)
{
    m_isShown = isShown;
    draw();
}

void Captions::setRunning(bool isRunning)
{
    m_isRunning = isRunning;
    armTimer();
}

void Captions::clear()
{
    ++m_epoch;
    m_timer.reset();
    show({});
}

void Captions::show(const std::string &text)
{
    // More than a screen shows; to lay the text out takes the square of its length, and the pictures wait for it.
    constexpr size_t MostShown = 2048;
    m_text = limitedCaption(text, MostShown);
    draw();
}

void Captions::draw()
{
    if (m_overlay) {
        g_object_set(m_overlay.get(), "text", m_isShown ? m_text.c_str() : "", nullptr);
    }
}

// Runs in a streaming thread.
void Captions::post(std::string text, GstClockTime end)
{
    g_main_context_invoke_full(nullptr, G_PRIORITY_DEFAULT, onPosted, new Caption{this, m_epoch, std::move(text), end},
                               [](gpointer caption) { delete static_cast<Caption *>(caption); });
}

gboolean Captions::onPosted(gpointer data)
{
    const auto *caption = static_cast<Caption *>(data);
    Captions *self = caption->owner;
    if (caption->epoch == self->m_epoch) {
        self->m_end = caption->end;
        self->show(caption->text);
        self->armTimer();
    }
    return G_SOURCE_REMOVE;
}

void Captions::armTimer()
{
    const bool isNeeded = m_isRunning && !m_text.empty() && GST_CLOCK_TIME_IS_VALID(m_end);
    m_timer.reset(isNeeded ? g_timeout_add(static_cast<guint>(untilEnd() / GST_MSECOND + 1), onEnd, this) : 0);
}

GstClockTime Captions::untilEnd() const
{
    const GstClockTime now = gst_element_get_current_running_time(m_sink.get());
    return GST_CLOCK_TIME_IS_VALID(now) && now < m_end ? m_end - now : 0;
}

gboolean Captions::onEnd(gpointer data)
{
    auto *self = static_cast<Captions *>(data);
    self->m_timer.forget();
    if (self->untilEnd() > 0) {
        self->armTimer();
    } else {
        self->show({});
    }
    return G_SOURCE_REMOVE;
}

// Runs in a streaming thread.
void Captions::onText(GstElement *, GstBuffer *buffer, GstPad *pad, gpointer self)
{
    GstMapInfo map;
    if (gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        const std::string text(limitedCaption({reinterpret_cast<const char *>(map.data), map.size}));
        gst_buffer_unmap(buffer, &map);
        if (g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr)) {
            static_cast<Captions *>(self)->post(text, endOf(buffer, pad));
        }
    }
}

// Runs in a streaming thread.
GstPadProbeReturn Captions::onFlush(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    if (GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info)) == GST_EVENT_FLUSH_STOP) {
        static_cast<Captions *>(self)->post({}, GST_CLOCK_TIME_NONE);
    }
    return GST_PAD_PROBE_OK;
}

} // namespace voro::renderer
