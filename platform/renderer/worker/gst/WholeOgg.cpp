#include "WholeOgg.h"

#include "Insertion.h"

#include <algorithm>
#include <string_view>

namespace voro::renderer {

namespace {

constexpr char Key[] = "voro-whole-ogg";
constexpr gint64 Largest = 256 * 1024;

} // namespace

// Runs in a streaming thread.
void WholeOgg::onElementAdded(GstBin *, GstBin *parent, GstElement *element, gpointer)
{
    if (isOfType(element, "queue2") && isOfType(GST_ELEMENT(parent), "uridecodebin")) {
        insertWhenLinked(element, make);
    }
}

GstElement *WholeOgg::make(GstPad *source)
{
    const Owned<GstElement> queue(gst_pad_get_parent_element(source));
    const Owned<GstPad> input(gst_element_get_static_pad(queue.get(), "sink"));
    const Owned<GstPad> origin(gst_pad_get_peer(input.get()));
    const Owned<GstCaps> caps(origin ? gst_pad_get_current_caps(origin.get()) : nullptr);
    const std::string_view type(caps ? gst_structure_get_name(gst_caps_get_structure(caps.get(), 0)) : "");
    gint64 length = 0;
    if (!type.ends_with("/ogg") || !gst_pad_query_duration(origin.get(), GST_FORMAT_BYTES, &length) || length <= 0
        || length > Largest) {
        return nullptr;
    }
    GstElement *element = gst_bin_new(nullptr);
    // It goes with the element.
    new WholeOgg(element, static_cast<uint64_t>(length));
    return element;
}

WholeOgg::WholeOgg(GstElement *element, uint64_t length) : m_length(length)
{
    g_object_set_data_full(G_OBJECT(element), Key, this, [](gpointer self) { delete static_cast<WholeOgg *>(self); });
    GstPad *input = gst_pad_new("sink", GST_PAD_SINK);
    gst_pad_set_chain_function(input, onBuffer);
    gst_pad_set_event_function(input, onEvent);
    GstPad *output = gst_pad_new("src", GST_PAD_SRC);
    gst_pad_set_event_function(output, onUpstreamEvent);
    gst_pad_set_query_function(output, onQuery);
    gst_pad_set_activatemode_function(output, onActivation);
    gst_pad_set_getrange_function(output, onRead);
    gst_element_add_pad(element, input);
    gst_element_add_pad(element, output);
}

WholeOgg *WholeOgg::of(GstObject *element)
{
    return static_cast<WholeOgg *>(g_object_get_data(G_OBJECT(element), Key));
}

void WholeOgg::set(bool &member, bool value)
{
    {
        const std::lock_guard lock(m_mutex);
        member = value;
    }
    m_changed.notify_all();
}

// Runs in the queue's thread.
GstFlowReturn WholeOgg::onBuffer(GstPad *, GstObject *element, GstBuffer *buffer)
{
    const Owned<GstBuffer> owned(buffer);
    WholeOgg *self = of(element);
    GstMapInfo map;
    if (!gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        return GST_FLOW_ERROR;
    }
    {
        const std::lock_guard lock(self->m_mutex);
        const uint64_t size = std::min<uint64_t>(map.size, self->m_length - self->m_content.size());
        self->m_content.append(reinterpret_cast<const char *>(map.data), size);
    }
    gst_buffer_unmap(buffer, &map);
    self->m_changed.notify_all();
    return GST_FLOW_OK;
}

// Runs in the queue's thread. Who reads makes the events of its own stream.
gboolean WholeOgg::onEvent(GstPad *, GstObject *element, GstEvent *event)
{
    const Owned<GstEvent> owned(event);
    if (GST_EVENT_TYPE(event) == GST_EVENT_EOS) {
        of(element)->set(of(element)->m_hasEnded, true);
    }
    return TRUE;
}

// A reader flushes so that it waits no longer. Nothing else has to reach the server.
gboolean WholeOgg::onUpstreamEvent(GstPad *, GstObject *element, GstEvent *event)
{
    const Owned<GstEvent> owned(event);
    const GstEventType type = GST_EVENT_TYPE(event);
    if (type == GST_EVENT_FLUSH_START || type == GST_EVENT_FLUSH_STOP) {
        of(element)->set(of(element)->m_isFlushing, type == GST_EVENT_FLUSH_START);
    }
    return type != GST_EVENT_SEEK;
}

gboolean WholeOgg::onQuery(GstPad *pad, GstObject *element, GstQuery *query)
{
    if (GST_QUERY_TYPE(query) != GST_QUERY_SCHEDULING) {
        return gst_pad_query_default(pad, element, query);
    }
    gst_query_set_scheduling(query, GST_SCHEDULING_FLAG_SEEKABLE, 1, -1, 0);
    gst_query_add_scheduling_mode(query, GST_PAD_MODE_PULL);
    return TRUE;
}

gboolean WholeOgg::onActivation(GstPad *, GstObject *element, GstPadMode, gboolean isActive)
{
    of(element)->set(of(element)->m_isOpen, isActive);
    return TRUE;
}

GstFlowReturn WholeOgg::onRead(GstPad *, GstObject *element, guint64 offset, guint size, GstBuffer **buffer)
{
    return of(element)->read(offset, size, buffer);
}

GstFlowReturn WholeOgg::read(uint64_t offset, size_t size, GstBuffer **buffer)
{
    std::unique_lock lock(m_mutex);
    const uint64_t end = std::min<uint64_t>(offset + size, m_length);
    m_changed.wait(lock, [&] { return !m_isOpen || m_isFlushing || m_hasEnded || m_content.size() >= end; });
    if (!m_isOpen || m_isFlushing) {
        return GST_FLOW_FLUSHING;
    }
    if (offset >= m_content.size()) {
        return GST_FLOW_EOS;
    }
    const size_t available = std::min<size_t>(size, m_content.size() - offset);
    if (!*buffer) {
        *buffer = gst_buffer_new_allocate(nullptr, available, nullptr);
    }
    gst_buffer_fill(*buffer, 0, m_content.data() + offset, available);
    gst_buffer_set_size(*buffer, static_cast<gssize>(available));
    GST_BUFFER_OFFSET(*buffer) = offset;
    return GST_FLOW_OK;
}

} // namespace voro::renderer
