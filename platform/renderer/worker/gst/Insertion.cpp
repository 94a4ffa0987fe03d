#include "Insertion.h"

namespace voro::renderer {

namespace {

void onUnlinked(GstPad *source, GstPad *, gpointer element)
{
    g_signal_handlers_disconnect_by_func(source, reinterpret_cast<gpointer>(onUnlinked), element);
    const Owned<GstElement> bin(reinterpret_cast<GstElement *>(gst_object_get_parent(GST_OBJECT(element))));
    gst_element_set_locked_state(GST_ELEMENT(element), TRUE);
    gst_element_set_state(GST_ELEMENT(element), GST_STATE_NULL);
    if (bin) {
        gst_bin_remove(GST_BIN(bin.get()), GST_ELEMENT(element));
    }
}

void onLinked(GstPad *source, GstPad *peer, gpointer make)
{
    g_signal_handlers_disconnect_by_func(source, reinterpret_cast<gpointer>(onLinked), make);
    GstElement *element = reinterpret_cast<MakeElement>(make)(source);
    if (!element) {
        return;
    }
    const Owned<GstElement> owner(gst_pad_get_parent_element(source));
    const Owned<GstElement> bin(GST_ELEMENT(gst_object_get_parent(GST_OBJECT(owner.get()))));
    const Owned<GstPad> input(gst_element_get_static_pad(element, "sink"));
    const Owned<GstPad> output(gst_element_get_static_pad(element, "src"));
    gst_pad_unlink(source, peer);
    gst_bin_add(GST_BIN(bin.get()), element);
    gst_pad_link(source, input.get());
    gst_pad_link(output.get(), peer);
    gst_element_sync_state_with_parent(element);
    g_signal_connect(source, "unlinked", G_CALLBACK(onUnlinked), element);
}

} // namespace

void insertWhenLinked(GstElement *element, MakeElement make)
{
    const Owned<GstPad> source(gst_element_get_static_pad(element, "src"));
    g_signal_connect(source.get(), "linked", G_CALLBACK(onLinked), reinterpret_cast<gpointer>(make));
}

} // namespace voro::renderer
