#include "HttpSource.h"

namespace voro::renderer {

namespace {

/** Kept with the source: whether the server has said that it sends parts. */
constexpr char Unoffered[] = "voro-unoffered";

gboolean isRangesField(GQuark name, const GValue *value, gpointer isOffered)
{
    if (g_ascii_strcasecmp(g_quark_to_string(name), "accept-ranges") == 0 && G_VALUE_HOLDS_STRING(value)) {
        *static_cast<bool *>(isOffered) = g_ascii_strcasecmp(g_value_get_string(value), "bytes") == 0;
    }
    return TRUE;
}

// Runs in the source's thread.
GstPadProbeReturn onHead(GstPad *pad, GstPadProbeInfo *info, gpointer)
{
    if (const auto offer = offersParts(GST_PAD_PROBE_INFO_EVENT(info))) {
        g_object_set_data(G_OBJECT(pad), Unoffered, GINT_TO_POINTER(!*offer));
    }
    return GST_PAD_PROBE_OK;
}

// Runs in a streaming thread.
GstPadProbeReturn onQuery(GstPad *pad, GstPadProbeInfo *info, gpointer)
{
    GstQuery *query = GST_PAD_PROBE_INFO_QUERY(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_SEEKING || !g_object_get_data(G_OBJECT(pad), Unoffered)) {
        return GST_PAD_PROBE_OK;
    }
    GstFormat format = GST_FORMAT_UNDEFINED;
    gst_query_parse_seeking(query, &format, nullptr, nullptr, nullptr);
    gst_query_set_seeking(query, format, FALSE, 0, -1);
    return GST_PAD_PROBE_HANDLED;
}

} // namespace

std::optional<bool> offersParts(GstEvent *event)
{
    const GstStructure *head = gst_event_get_structure(event);
    const bool isHead = head && gst_structure_has_name(head, "http-headers");
    const GValue *fields = isHead ? gst_structure_get_value(head, "response-headers") : nullptr;
    if (!fields || !GST_VALUE_HOLDS_STRUCTURE(fields)) {
        return std::nullopt;
    }
    bool isOffered = false;
    gst_structure_foreach(gst_value_get_structure(fields), isRangesField, &isOffered);
    return isOffered;
}

void keepToServersOffer(GstElement *source)
{
    const Owned<GstPad> pad(gst_element_get_static_pad(source, "src"));
    gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, onHead, nullptr, nullptr);
    gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_QUERY_UPSTREAM, onQuery, nullptr, nullptr);
}

} // namespace voro::renderer
