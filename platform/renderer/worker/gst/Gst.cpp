#include "Gst.h"

#include <pps/Log.h>
#include <unistd.h>

#include <algorithm>

namespace voro::renderer {

int64_t durationOf(GstElement *element)
{
    gint64 duration = 0;
    gst_element_query_duration(element, GST_FORMAT_TIME, &duration);
    return std::max<int64_t>(0, duration / static_cast<gint64>(GST_MSECOND));
}

bool isSeekable(GstElement *element)
{
    const Owned<GstQuery> query(gst_query_new_seeking(GST_FORMAT_TIME));
    gboolean isSeekable = FALSE;
    if (gst_element_query(element, query.get())) {
        gst_query_parse_seeking(query.get(), nullptr, &isSeekable, nullptr, nullptr);
    }
    return isSeekable;
}

std::string uriOf(GstElement *decoder)
{
    gchar *raw = nullptr;
    g_object_get(decoder, "uri", &raw, nullptr);
    const Owned<char> uri(raw);
    return uri ? uri.get() : "";
}

int sampleRateOf(const GstCaps *caps)
{
    int rate = 0;
    if (caps && gst_caps_get_size(caps) > 0) {
        gst_structure_get_int(gst_caps_get_structure(caps, 0), "rate", &rate);
    }
    return rate;
}

bool isOfType(GstElement *element, const char *type)
{
    const GstElementFactory *factory = gst_element_get_factory(element);
    return factory && g_str_equal(GST_OBJECT_NAME(factory), type);
}

void postNote(GstElement *element, const char *name)
{
    gst_element_post_message(element, gst_message_new_element(GST_OBJECT(element), gst_structure_new_empty(name)));
}

GstElement *makeElement(const char *type)
{
    GstElement *element = gst_element_factory_make(type, nullptr);
    if (!element) {
        log::warn(log::Category::Worker, "the GStreamer element %s is missing", type);
        _exit(1);
    }
    return element;
}

} // namespace voro::renderer
