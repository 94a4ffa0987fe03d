#include "Replay.h"

#include "HttpSource.h"
#include "Insertion.h"

#include <algorithm>
#include <utility>

namespace voro::renderer {

namespace {

constexpr char Key[] = "voro-replay";
constexpr uint64_t Largest = 32 * 1024 * 1024;
/** How much of it may be still to come; the rest is what has been. */
constexpr uint64_t MostAhead = Largest / 4 * 3;

} // namespace

void Replay::insertBehind(GstElement *source)
{
    insertWhenLinked(source, [](GstPad *) {
        GstElement *element = gst_bin_new(nullptr);
        // It goes with the element.
        new Replay(element);
        return element;
    });
}

Replay::Replay(GstElement *element)
    : m_input(gst_pad_new("sink", GST_PAD_SINK)),
      m_output(gst_pad_new("src", GST_PAD_SRC))
{
    g_object_set_data_full(G_OBJECT(element), Key, this, [](gpointer self) { delete static_cast<Replay *>(self); });
    gst_pad_set_chain_function(m_input, onBuffer);
    gst_pad_set_event_function(m_input, onEvent);
    gst_pad_set_event_function(m_output, onUpstreamEvent);
    gst_pad_set_query_function(m_output, onQuery);
    gst_pad_set_activatemode_function(m_output, onActivation);
    gst_element_add_pad(element, m_input);
    gst_element_add_pad(element, m_output);
}

Replay *Replay::of(GstObject *element)
{
    return static_cast<Replay *>(g_object_get_data(G_OBJECT(element), Key));
}

// Runs in the source's thread.
GstFlowReturn Replay::onBuffer(GstPad *, GstObject *element, GstBuffer *buffer)
{
    Replay *self = of(element);
    if (GST_BUFFER_OFFSET(buffer) == 0 && self->m_keeps) {
        // Radio has no end, and the demultiplexer of Ogg looks at the end first where it can seek, and waits for it.
        gint64 length = 0;
        const bool hasLength = gst_pad_peer_query_duration(self->m_input, GST_FORMAT_BYTES, &length) && length > 0;
        self->m_keeps = hasLength && gst_buffer_memcmp(buffer, 0, "OggS", 4) != 0;
    }
    return self->m_keeps ? self->keep(buffer) : gst_pad_push(self->m_output, buffer);
}

GstFlowReturn Replay::keep(GstBuffer *buffer)
{
    Owned<GstBuffer> owned(buffer);
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_isClosed || m_result != GST_FLOW_OK || m_end - m_next < MostAhead; });
    if (m_isClosed || m_result != GST_FLOW_OK) {
        return m_isClosed ? GST_FLOW_FLUSHING : m_result;
    }
    const bool isFirst = m_end == 0;
    m_end += gst_buffer_get_size(buffer);
    m_buffers.push_back(std::move(owned));
    while (m_end - m_begin > Largest && m_index > 0) {
        m_begin += gst_buffer_get_size(m_buffers.front().get());
        m_buffers.pop_front();
        --m_index;
    }
    lock.unlock();
    m_changed.notify_all();
    if (isFirst) {
        gst_pad_start_task(m_output, onTask, this, nullptr);
    }
    return GST_FLOW_OK;
}

// Runs in the source's thread.
gboolean Replay::onEvent(GstPad *, GstObject *element, GstEvent *event)
{
    Replay *self = of(element);
    if (const auto offer = offersParts(event)) {
        self->m_keeps = !*offer;
    }
    std::unique_lock lock(self->m_mutex);
    if (GST_EVENT_TYPE(event) == GST_EVENT_EOS && self->m_end > 0) {
        self->m_hasEnded = true;
        lock.unlock();
        self->m_changed.notify_all();
        gst_event_unref(event);
        return TRUE;
    }
    lock.unlock();
    return gst_pad_push_event(self->m_output, event);
}

void Replay::onTask(gpointer self)
{
    static_cast<Replay *>(self)->pushNext();
}

void Replay::pushNext()
{
    if (Owned<GstBuffer> buffer = next()) {
        const GstFlowReturn result = gst_pad_push(m_output, buffer.release());
        if (result == GST_FLOW_OK) {
            return;
        }
        if (result != GST_FLOW_FLUSHING) {
            // The source reports it with its next buffer.
            const std::lock_guard lock(m_mutex);
            m_result = result;
            m_changed.notify_all();
        }
    } else if (hasEnded()) {
        gst_pad_push_event(m_output, gst_event_new_eos());
    }
    gst_pad_pause_task(m_output);
}

/** The next buffer; null at the end and during a flush. */
Owned<GstBuffer> Replay::next()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_isClosed || m_isSeeking || m_next < m_end || m_hasEnded; });
    if (m_isClosed || m_isSeeking || m_next == m_end) {
        return nullptr;
    }
    GstBuffer *whole = m_buffers[m_index].get();
    const gsize size = gst_buffer_get_size(whole);
    const gsize skipped = m_next - m_indexBegin;
    Owned<GstBuffer> part(gst_buffer_copy_region(whole, GST_BUFFER_COPY_MEMORY, skipped, static_cast<gsize>(-1)));
    GST_BUFFER_OFFSET(part.get()) = m_next;
    m_indexBegin += size;
    m_next = m_indexBegin;
    ++m_index;
    lock.unlock();
    m_changed.notify_all();
    return part;
}

bool Replay::hasEnded()
{
    const std::lock_guard lock(m_mutex);
    return !m_isClosed && !m_isSeeking && m_hasEnded;
}

gboolean Replay::onUpstreamEvent(GstPad *, GstObject *element, GstEvent *event)
{
    Replay *self = of(element);
    if (GST_EVENT_TYPE(event) != GST_EVENT_SEEK || !self->m_keeps) {
        return gst_pad_push_event(self->m_input, event);
    }
    const Owned<GstEvent> owned(event);
    return self->seek(event);
}

/** Goes to a place that is kept; to no other, and then nothing is disturbed. */
bool Replay::seek(GstEvent *event)
{
    gdouble rate = 0;
    GstFormat format = GST_FORMAT_UNDEFINED;
    GstSeekFlags flags = GST_SEEK_FLAG_NONE;
    GstSeekType type = GST_SEEK_TYPE_NONE;
    gint64 start = 0;
    gst_event_parse_seek(event, &rate, &format, &flags, &type, &start, nullptr, nullptr);
    const auto isKept = [&] {
        const auto place = static_cast<uint64_t>(start);
        return place >= m_begin && (place < m_end || (m_hasEnded && place == m_end));
    };
    const guint32 number = gst_event_get_seqnum(event);
    const auto pushNumbered = [&](GstEvent *own) {
        gst_event_set_seqnum(own, number);
        gst_pad_push_event(m_output, own);
    };
    {
        const std::lock_guard lock(m_mutex);
        const bool isPossible = rate > 0 && format == GST_FORMAT_BYTES && (flags & GST_SEEK_FLAG_FLUSH)
                                && type == GST_SEEK_TYPE_SET && start >= 0 && m_result == GST_FLOW_OK;
        if (!isPossible || !isKept()) {
            return false;
        }
        m_isSeeking = true;
    }
    m_changed.notify_all();
    pushNumbered(gst_event_new_flush_start());
    gst_pad_pause_task(m_output);
    {
        GST_PAD_STREAM_LOCK(m_output);
        pushNumbered(gst_event_new_flush_stop(TRUE));
        const std::lock_guard lock(m_mutex);
        m_isSeeking = false;
        m_index = 0;
        m_indexBegin = m_begin;
        m_next = std::max(static_cast<uint64_t>(start), m_begin);
        while (m_index < m_buffers.size() && m_indexBegin + gst_buffer_get_size(m_buffers[m_index].get()) <= m_next) {
            m_indexBegin += gst_buffer_get_size(m_buffers[m_index].get());
            ++m_index;
        }
        GST_PAD_STREAM_UNLOCK(m_output);
    }
    m_changed.notify_all();
    GstSegment segment;
    gst_segment_init(&segment, GST_FORMAT_BYTES);
    segment.start = segment.time = segment.position = static_cast<guint64>(start);
    pushNumbered(gst_event_new_segment(&segment));
    gst_pad_start_task(m_output, onTask, this, nullptr);
    return true;
}

gboolean Replay::onQuery(GstPad *pad, GstObject *element, GstQuery *query)
{
    if (GST_QUERY_TYPE(query) != GST_QUERY_SEEKING || !of(element)->m_keeps) {
        return gst_pad_query_default(pad, element, query);
    }
    GstFormat format = GST_FORMAT_UNDEFINED;
    gst_query_parse_seeking(query, &format, nullptr, nullptr, nullptr);
    gst_query_set_seeking(query, format, format == GST_FORMAT_BYTES, 0, -1);
    return TRUE;
}

gboolean Replay::onActivation(GstPad *pad, GstObject *element, GstPadMode mode, gboolean isActive)
{
    if (mode != GST_PAD_MODE_PUSH) {
        return FALSE;
    }
    Replay *self = of(element);
    {
        const std::lock_guard lock(self->m_mutex);
        self->m_isClosed = !isActive;
    }
    self->m_changed.notify_all();
    if (!isActive) {
        gst_pad_stop_task(pad);
        self->dropAll();
    }
    return TRUE;
}

void Replay::dropAll()
{
    const std::lock_guard lock(m_mutex);
    m_buffers.clear();
    m_begin = m_end = m_next = m_indexBegin = 0;
    m_index = 0;
    m_hasEnded = false;
    m_keeps = false;
    m_result = GST_FLOW_OK;
}

} // namespace voro::renderer
