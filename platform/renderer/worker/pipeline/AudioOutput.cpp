#include "AudioOutput.h"

#include <renderer/worker/gst/SinkStart.h>

#include <algorithm>
#include <cstdlib>

namespace voro::renderer {

namespace {

/** It begins to be heard with this: enough to go on with while more is decoded. */
constexpr GstClockTime Beginning = 30 * GST_MSECOND;
/** The sound server gives every buffer back by itself, which wakes this process up. */
constexpr GstClockTime Large = 150 * GST_MSECOND;

bool isContinued(const GstBuffer *buffer, const GstBuffer *next)
{
    // Times are rounded.
    constexpr GstClockTimeDiff Tolerance = GST_MSECOND;
    const GstClockTimeDiff gap =
        GST_CLOCK_DIFF(GST_BUFFER_PTS(buffer) + GST_BUFFER_DURATION(buffer), GST_BUFFER_PTS(next));
    return !GST_BUFFER_FLAG_IS_SET(next, GST_BUFFER_FLAG_DISCONT) && !GST_BUFFER_FLAG_IS_SET(next, GST_BUFFER_FLAG_GAP)
           && std::abs(gap) <= Tolerance;
}

} // namespace

void AudioOutput::watch(GstPad *pad)
{
    gst_pad_add_probe(pad,
                      static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM
                                                   | GST_PAD_PROBE_TYPE_EVENT_FLUSH),
                      onData, this, nullptr);
}

void AudioOutput::begin(GstElement *serverSink, Ahead ahead)
{
    m_serverSink = serverSink;
    m_ahead = ahead;
    m_format.reset();
    m_end = GST_CLOCK_TIME_NONE;
    m_collected.reset();
}

// Runs in a streaming thread, but for the beginning of a flush.
GstPadProbeReturn AudioOutput::onData(GstPad *pad, GstPadProbeInfo *info, gpointer self)
{
    auto *output = static_cast<AudioOutput *>(self);
    if (GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_BUFFER) {
        return output->onBuffer(pad, info);
    }
    GstEvent *event = GST_PAD_PROBE_INFO_EVENT(info);
    if (GST_EVENT_TYPE(event) == GST_EVENT_FLUSH_STOP) {
        output->m_collected.reset();
    } else if ((gst_event_type_get_flags(GST_EVENT_TYPE(event)) & GST_EVENT_TYPE_SERIALIZED) != 0) {
        output->push(pad);
        output->onEvent(pad, event);
    }
    return GST_PAD_PROBE_OK;
}

GstPadProbeReturn AudioOutput::onBuffer(GstPad *pad, GstPadProbeInfo *info)
{
    const GstBuffer *buffer = GST_PAD_PROBE_INFO_BUFFER(info);
    if (!GST_BUFFER_PTS_IS_VALID(buffer) || !GST_BUFFER_DURATION_IS_VALID(buffer)) {
        push(pad);
        return GST_PAD_PROBE_OK;
    }
    const bool isCollected = isFarAhead() && m_sent >= amounts(Ahead::Much).held;
    note(buffer);
    if (isCollected) {
        return collect(pad, info);
    }
    push(pad);
    return GST_PAD_PROBE_OK;
}

void AudioOutput::note(const GstBuffer *buffer)
{
    m_end = std::min(GST_BUFFER_PTS(buffer) + GST_BUFFER_DURATION(buffer), m_segment.stop);
    // Until its buffer is full, the sink would wait again after each pause.
    if (m_serverSink && m_sent >= Beginning && m_sent < amounts(Ahead::Much).held) {
        startSink(m_serverSink);
    }
    m_sent += GST_BUFFER_DURATION(buffer);
}

/** Lets a buffer wait for others, or go on with those that waited. */
GstPadProbeReturn AudioOutput::collect(GstPad *pad, GstPadProbeInfo *info)
{
    GstBuffer *buffer = GST_PAD_PROBE_INFO_BUFFER(info);
    if (m_collected && !isContinued(m_collected.get(), buffer)) {
        push(pad);
    }
    if (m_collected) {
        const GstClockTime duration =
            GST_BUFFER_PTS(buffer) + GST_BUFFER_DURATION(buffer) - GST_BUFFER_PTS(m_collected.get());
        m_collected.reset(gst_buffer_append(m_collected.release(), buffer));
        GST_BUFFER_DURATION(m_collected.get()) = duration;
    } else {
        m_collected.reset(gst_buffer_make_writable(buffer));
    }
    if (GST_BUFFER_DURATION(m_collected.get()) < Large) {
        return GST_PAD_PROBE_HANDLED;
    }
    GST_PAD_PROBE_INFO_DATA(info) = m_collected.release();
    return GST_PAD_PROBE_OK;
}

/** Has what waited go on before what comes next. The pad itself takes nothing any more when that is the end. */
void AudioOutput::push(GstPad *pad)
{
    const Owned<GstPad> sink(m_collected ? gst_pad_get_peer(pad) : nullptr);
    if (sink) {
        gst_pad_chain(sink.get(), m_collected.release());
    }
}

void AudioOutput::onEvent(GstPad *pad, GstEvent *event)
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
void AudioOutput::noteFormat(GstPad *pad, GstCaps *format)
{
    const bool isOther = m_format && !gst_caps_is_equal(m_format.get(), format);
    m_format.reset(gst_caps_ref(format));
    if (isOther && isFarAhead() && GST_CLOCK_TIME_IS_VALID(m_end) && m_end > 0) {
        gst_pad_push_event(pad, gst_event_new_gap(m_end - 1, 1));
    }
}

void AudioOutput::noteBoundary()
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

AudioOutput::Boundary AudioOutput::boundary() const
{
    const std::lock_guard lock(m_mutex);
    return m_boundary;
}

} // namespace voro::renderer
