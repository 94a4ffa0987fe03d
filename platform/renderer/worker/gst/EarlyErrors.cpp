#include "EarlyErrors.h"

namespace voro::renderer {

namespace {

constexpr char Kept[] = "voro-early-error";
/** Kept with an element: the thread that added it, and the bin that gets its errors. */
constexpr char Adder[] = "voro-adder";
constexpr char Top[] = "voro-top";

} // namespace

void EarlyErrors::keep(GstElement *bin)
{
    g_signal_connect(bin, "deep-element-added", G_CALLBACK(onElementAdded), nullptr);
}

Owned<GstMessage> EarlyErrors::in(GstMessage *message)
{
    GstMessage *error = nullptr;
    if (gst_message_has_name(message, Kept)) {
        gst_structure_get(gst_message_get_structure(message), "error", GST_TYPE_MESSAGE, &error, nullptr);
    }
    return Owned<GstMessage>(error);
}

// Runs in a streaming thread.
void EarlyErrors::onElementAdded(GstBin *top, GstBin *, GstElement *element, gpointer)
{
    g_object_set_data(G_OBJECT(element), Adder, g_thread_self());
    if (isOfType(element, "decodebin")) {
        g_object_set_data(G_OBJECT(element), Top, top);
        gst_bus_set_sync_handler(GST_BIN(element)->child_bus, onMessage, element, nullptr);
    }
}

// Runs in the thread of the element that complains.
GstBusSyncReply EarlyErrors::onMessage(GstBus *, GstMessage *message, gpointer decodebin)
{
    GstObject *source = GST_MESSAGE_SRC(message);
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR && source) {
        // The thread that links hears of it itself.
        const gpointer adder = g_object_get_data(G_OBJECT(source), Adder);
        if (adder && adder != g_thread_self()) {
            auto *top = static_cast<GstElement *>(g_object_get_data(G_OBJECT(decodebin), Top));
            GstStructure *content = gst_structure_new(Kept, "error", GST_TYPE_MESSAGE, message, nullptr);
            gst_element_post_message(top, gst_message_new_element(GST_OBJECT(top), content));
        }
    }
    // As the bin itself would do.
    GST_BIN_GET_CLASS(decodebin)->handle_message(GST_BIN(decodebin), message);
    return GST_BUS_DROP;
}

} // namespace voro::renderer
