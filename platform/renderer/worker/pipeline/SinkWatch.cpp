#include "SinkWatch.h"

#include <renderer/worker/gst/SinkStart.h>

#include <algorithm>

namespace voro::renderer {

namespace {

/** It begins to be heard with this: enough to go on with while more is decoded. */
constexpr GstClockTime Beginning = 30 * GST_MSECOND;

} // namespace

void SinkWatch::watch(GstPad *pad)
{
    gst_pad_add_probe(pad,
                      static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM),
                      onData, this, nullptr);
}

void SinkWatch::begin(GstElement *serverSink, Ahead ahead)
{
    m_serverSink = serverSink;
    m_ahead = ahead;
    m_exchanging = nullptr;
    m_format.reset();
    m_end = GST_CLOCK_TIME_NONE;
}

// Runs in a streaming thread.
GstPadProbeReturn SinkWatch::onData(GstPad *pad, GstPadProbeInfo *info, gpointer self)
{
    auto *watch = static_cast<SinkWatch *>(self);
    // Whatever came before has passed the sink.
    watch->m_exchanging = nullptr;
    if (GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM) {
        watch->onEvent(pad, GST_PAD_PROBE_INFO_EVENT(info));
        return GST_PAD_PROBE_OK;
    }
    const GstBuffer *buffer = GST_PAD_PROBE_INFO_BUFFER(info);
    if (GST_BUFFER_PTS_IS_VALID(buffer) && GST_BUFFER_DURATION_IS_VALID(buffer)) {
        watch->note(buffer);
    }
    return GST_PAD_PROBE_OK;
}

void SinkWatch::note(const GstBuffer *buffer)
{
    m_end = std::min(GST_BUFFER_PTS(buffer) + GST_BUFFER_DURATION(buffer), m_segment.stop);
    // Until its buffer is full, the sink would wait again after each pause.
    if (m_serverSink && m_sent >= Beginning && m_sent < amounts(Ahead::Much).held) {
        startSink(m_serverSink);
    }
    m_sent += GST_BUFFER_DURATION(buffer);
}

void SinkWatch::onEvent(GstPad *pad, GstEvent *event)
{
    if (GST_EVENT_TYPE(event) == GST_EVENT_SEGMENT) {
        gst_event_copy_segment(event, &m_segment);
        m_sent = 0;
    } else if (GST_EVENT_TYPE(event) == GST_EVENT_CAPS) {
        GstCaps *caps = nullptr;
        gst_event_parse_caps(event, &caps);
        noteFormat(pad, caps);
    } else if (GST_EVENT_TYPE(event) == GST_EVENT_STREAM_START) {
        noteBoundary();
    }
}

/** The sink drops what it holds when the format becomes another one: a gap of next to no length has it played first. */
void SinkWatch::noteFormat(GstPad *pad, GstCaps *format)
{
    const bool isOther = m_format && !gst_caps_is_equal(m_format.get(), format);
    m_format.reset(gst_caps_ref(format));
    if (isOther && isFarAhead() && GST_CLOCK_TIME_IS_VALID(m_end) && m_end > 0) {
        gst_pad_push_event(pad, gst_event_new_gap(m_end - 1, 1));
    }
    m_exchanging = m_serverSink ? g_thread_self() : nullptr;
}

void SinkWatch::noteBoundary()
{
    if (!GST_CLOCK_TIME_IS_VALID(m_end)) {
        return;
    }
    const guint64 time = gst_segment_to_running_time(&m_segment, GST_FORMAT_TIME, m_end);
    const guint64 position = gst_segment_to_stream_time(&m_segment, GST_FORMAT_TIME, m_end);
    const bool isValid = GST_CLOCK_TIME_IS_VALID(time) && GST_CLOCK_TIME_IS_VALID(position);
    const std::lock_guard lock(m_mutex);
    m_boundary = isValid ? Boundary{time, static_cast<int64_t>(position / GST_MSECOND)} : Boundary();
}

SinkWatch::Boundary SinkWatch::boundary() const
{
    const std::lock_guard lock(m_mutex);
    return m_boundary;
}

} // namespace voro::renderer
