#include "DecodedSound.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

namespace voro::renderer {

namespace {

constexpr AheadAmounts Far = amounts(Ahead::Much);

bool isContinued(const GstBuffer *buffer, const GstBuffer *next)
{
    // Times are rounded.
    constexpr GstClockTimeDiff Tolerance = GST_MSECOND;
    const GstClockTimeDiff gap =
        GST_CLOCK_DIFF(GST_BUFFER_PTS(buffer) + GST_BUFFER_DURATION(buffer), GST_BUFFER_PTS(next));
    const auto isSilence = [](const GstBuffer *any) { return GST_BUFFER_FLAG_IS_SET(any, GST_BUFFER_FLAG_GAP); };
    return !GST_BUFFER_FLAG_IS_SET(next, GST_BUFFER_FLAG_DISCONT) && !isSilence(buffer) && !isSilence(next)
           && std::abs(gap) <= Tolerance;
}

// Runs in a streaming thread. An element that asks for buffers would wait in the queue for the closed gate; it has its
// own.
GstPadProbeReturn onQuery(GstPad *, GstPadProbeInfo *info, gpointer)
{
    return GST_QUERY_TYPE(GST_PAD_PROBE_INFO_QUERY(info)) == GST_QUERY_ALLOCATION ? GST_PAD_PROBE_DROP
                                                                                  : GST_PAD_PROBE_OK;
}

} // namespace

void DecodedSound::watch(GstPad *pad)
{
    m_pad = pad;
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM, onQuery, nullptr, nullptr);
    gst_pad_add_probe(pad,
                      static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM
                                                   | GST_PAD_PROBE_TYPE_EVENT_FLUSH),
                      onData, this, nullptr);
}

void DecodedSound::begin(Ahead ahead)
{
    m_ahead = ahead;
    m_decoded = 0;
    m_joined.reset();
}

// Runs in a streaming thread, but for the beginning of a flush.
GstPadProbeReturn DecodedSound::onData(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    auto *sound = static_cast<DecodedSound *>(self);
    if (GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_BUFFER) {
        return sound->onBuffer(info);
    }
    const GstEvent *event = GST_PAD_PROBE_INFO_EVENT(info);
    if (GST_EVENT_TYPE(event) == GST_EVENT_FLUSH_STOP) {
        sound->m_joined.reset();
    } else if ((gst_event_type_get_flags(GST_EVENT_TYPE(event)) & GST_EVENT_TYPE_SERIALIZED) != 0) {
        sound->passOn();
    }
    if (GST_EVENT_TYPE(event) == GST_EVENT_SEGMENT) {
        sound->m_decoded = 0;
    }
    return GST_PAD_PROBE_OK;
}

GstPadProbeReturn DecodedSound::onBuffer(GstPadProbeInfo *info)
{
    const GstBuffer *buffer = GST_PAD_PROBE_INFO_BUFFER(info);
    if (m_ahead != Ahead::Much || !GST_BUFFER_PTS_IS_VALID(buffer) || !GST_BUFFER_DURATION_IS_VALID(buffer)) {
        passOn();
        return GST_PAD_PROBE_OK;
    }
    if (m_decoded > Far.decoded + Far.held) {
        return join(info);
    }
    pace(GST_BUFFER_DURATION(buffer));
    return GST_PAD_PROBE_OK;
}

/** Leaves others the processor while much is decoded for the first time: they bring the beginning to be heard. */
void DecodedSound::pace(GstClockTime duration)
{
    constexpr unsigned Speed = 10;
    // What begins to be heard, and some more.
    constexpr GstClockTime Unpaced = 90 * GST_MSECOND;
    // A seek waits as long.
    constexpr GstClockTime LongestRest = 2 * GST_MSECOND;
    m_decoded += duration;
    if (m_decoded > Unpaced) {
        std::this_thread::sleep_for(std::chrono::nanoseconds(std::min(duration / Speed, LongestRest)));
    }
}

/** Lets a buffer wait for others, or go on with those that waited. */
GstPadProbeReturn DecodedSound::join(GstPadProbeInfo *info)
{
    GstBuffer *buffer = GST_PAD_PROBE_INFO_BUFFER(info);
    if (m_joined && !isContinued(m_joined.get(), buffer)) {
        passOn();
    }
    if (m_joined) {
        const GstClockTime duration =
            GST_BUFFER_PTS(buffer) + GST_BUFFER_DURATION(buffer) - GST_BUFFER_PTS(m_joined.get());
        m_joined.reset(gst_buffer_append(m_joined.release(), buffer));
        GST_BUFFER_DURATION(m_joined.get()) = duration;
    } else {
        m_joined.reset(gst_buffer_make_writable(buffer));
    }
    if (GST_BUFFER_DURATION(m_joined.get()) < Far.filled) {
        return GST_PAD_PROBE_HANDLED;
    }
    GST_PAD_PROBE_INFO_DATA(info) = m_joined.release();
    return GST_PAD_PROBE_OK;
}

/** The pad itself takes nothing any more when that is the end. */
void DecodedSound::passOn()
{
    const Owned<GstPad> queue(m_joined ? gst_pad_get_peer(m_pad) : nullptr);
    if (queue) {
        gst_pad_chain(queue.get(), m_joined.release());
    }
}

} // namespace voro::renderer
