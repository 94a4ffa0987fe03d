#include "CaptionStreams.h"

namespace voro::renderer {

namespace {

/** Where a stream of captions comes from; null for a number that is none. */
Owned<GstPad> sourceOf(GstElement *playbin, int number)
{
    GstPad *raw = nullptr;
    g_signal_emit_by_name(playbin, "get-text-pad", number, &raw);
    const Owned<GstPad> pad(raw);
    return Owned<GstPad>(pad ? gst_pad_get_peer(pad.get()) : nullptr);
}

/** The pad that feeds the element of this one; null at the beginning of the way. */
Owned<GstPad> padBefore(GstPad *pad)
{
    GstIterator *links = gst_pad_iterate_internal_links(pad);
    Owned<GstPad> peer;
    GValue sink = G_VALUE_INIT;
    if (links && gst_iterator_next(links, &sink) == GST_ITERATOR_OK) {
        peer.reset(gst_pad_get_peer(GST_PAD(g_value_get_object(&sink))));
        g_value_unset(&sink);
    }
    if (links) {
        gst_iterator_free(links);
    }
    return peer;
}

/** Adds what was said at a pad of its stream alone; the title of the whole medium is not that of its captions. */
void addTags(GstTagList *tags, GstPad *pad)
{
    for (guint i = 0;; ++i) {
        const Owned<GstEvent> event(gst_pad_get_sticky_event(pad, GST_EVENT_TAG, i));
        if (!event) {
            return;
        }
        GstTagList *said = nullptr;
        gst_event_parse_tag(event.get(), &said);
        if (gst_tag_list_get_scope(said) == GST_TAG_SCOPE_STREAM) {
            gst_tag_list_insert(tags, said, GST_TAG_MERGE_KEEP);
        }
    }
}

std::vector<int> numbersOf(GstElement *playbin, const std::string &medium, bool areOwn)
{
    std::vector<int> numbers;
    gint count = 0;
    g_object_get(playbin, "n-text", &count, nullptr);
    for (int i = 0; i < count; ++i) {
        const Owned<GstPad> source = sourceOf(playbin, i);
        GstElement *decoder = decoderAround(GST_OBJECT(source.get()));
        if (decoder && (uriOf(decoder) == medium) == areOwn) {
            numbers.push_back(i);
        }
    }
    return numbers;
}

std::string textOf(const GstTagList *tags, const char *tag)
{
    gchar *raw = nullptr;
    gst_tag_list_get_string(tags, tag, &raw);
    const Owned<char> text(raw);
    return text ? text.get() : "";
}

} // namespace

GstElement *decoderAround(GstObject *part)
{
    while (part && !(GST_IS_ELEMENT(part) && isOfType(GST_ELEMENT(part), "uridecodebin"))) {
        part = GST_OBJECT_PARENT(part);
    }
    return part ? GST_ELEMENT(part) : nullptr;
}

std::vector<int> ownCaptions(GstElement *playbin, const std::string &medium)
{
    return numbersOf(playbin, medium, true);
}

std::vector<int> otherCaptions(GstElement *playbin, const std::string &medium)
{
    return numbersOf(playbin, medium, false);
}

CaptionInfo::Stream describeCaptions(GstElement *playbin, int number)
{
    const Owned<GstTagList> tags(gst_tag_list_new_empty());
    // Parsers replace what the medium says by less.
    for (Owned<GstPad> pad = sourceOf(playbin, number); pad; pad = padBefore(pad.get())) {
        addTags(tags.get(), pad.get());
    }
    return {textOf(tags.get(), GST_TAG_LANGUAGE_CODE), textOf(tags.get(), GST_TAG_TITLE)};
}

} // namespace voro::renderer
