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
    return !GST_BUFFER_FLAG_IS_SET(next, GST_BUFFER_FLAG_DISCONT) && std::abs(gap) <= Tolerance;
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
        const std::lock_guard lock(sound->m_mutex);
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
    if (m_decoded <= Far.decoded + Far.held) {
        pace(GST_BUFFER_DURATION(buffer));
        return GST_PAD_PROBE_OK;
    }
    if (GST_BUFFER_FLAG_IS_SET(buffer, GST_BUFFER_FLAG_GAP) || GST_BUFFER_DURATION(buffer) >= Far.filled) {
        passOn();
        return GST_PAD_PROBE_OK;
    }
    return join(info);
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
    const Owned<GstBuffer> buffer(GST_PAD_PROBE_INFO_BUFFER(info));
    GST_PAD_PROBE_INFO_DATA(info) = nullptr;
    const gsize size = gst_buffer_get_size(buffer.get());
    const std::lock_guard lock(m_mutex);
    if (m_joined
        && (!isContinued(m_joined.get(), buffer.get()) || m_filled + size > gst_buffer_get_size(m_joined.get()))) {
        passOnJoined();
    }
    if (!m_joined) {
        // In one piece from the beginning: memory that grows leaves holes, and is copied once more.
        constexpr guint64 Most = 4 << 20;
        const auto duration = std::max<GstClockTime>(GST_BUFFER_DURATION(buffer.get()), 1);
        const guint64 space = std::min(gst_util_uint64_scale(size, Far.filled, duration), Most) + size;
        m_joined.reset(gst_buffer_new_allocate(nullptr, space, nullptr));
        gst_buffer_copy_into(m_joined.get(), buffer.get(),
                             static_cast<GstBufferCopyFlags>(GST_BUFFER_COPY_FLAGS | GST_BUFFER_COPY_TIMESTAMPS), 0,
                             size);
        m_filled = 0;
    }
    GstMapInfo data;
    if (gst_buffer_map(buffer.get(), &data, GST_MAP_READ)) {
        m_filled += gst_buffer_fill(m_joined.get(), m_filled, data.data, data.size);
        gst_buffer_unmap(buffer.get(), &data);
    }
    GST_BUFFER_DURATION(m_joined.get()) =
        GST_BUFFER_PTS(buffer.get()) + GST_BUFFER_DURATION(buffer.get()) - GST_BUFFER_PTS(m_joined.get());
    if (GST_BUFFER_DURATION(m_joined.get()) < Far.filled) {
        return GST_PAD_PROBE_HANDLED;
    }
    GST_PAD_PROBE_INFO_DATA(info) = finished();
    return GST_PAD_PROBE_OK;
}

/** What was joined. Its memory stays as large as it was made. */
GstBuffer *DecodedSound::finished()
{
    gst_buffer_set_size(m_joined.get(), static_cast<gssize>(m_filled));
    return m_joined.release();
}

void DecodedSound::passOn()
{
    const std::lock_guard lock(m_mutex);
    passOnJoined();
}

/** The pad itself takes nothing any more when that is the end. */
void DecodedSound::passOnJoined()
{
    if (m_joined) {
        GstBuffer *buffer = finished();
        const Owned<GstPad> queue(gst_pad_get_peer(m_pad));
        if (queue) {
            gst_pad_chain(queue.get(), buffer);
        } else {
            gst_buffer_unref(buffer);
        }
    }
}

} // namespace voro::renderer
