#include "CaptionEnd.h"

#include <vector>

namespace voro::renderer {

namespace {

using Pads = std::vector<Owned<GstPad>>;

struct Streams {
    Pads medium;
    Pads captions;
};

template<typename Visit>
void forEach(GstIterator *iterator, Visit visit)
{
    const auto call = [](const GValue *item, gpointer function) {
        (*static_cast<Visit *>(function))(g_value_get_object(item));
    };
    // Where something comes or goes meanwhile, the rest is seen the next time.
    gst_iterator_foreach(iterator, call, &visit);
    gst_iterator_free(iterator);
}

Streams streamsOf(GstElement *playbin, const std::string &medium)
{
    Streams streams;
    forEach(gst_bin_iterate_all_by_element_factory_name(GST_BIN(playbin), "uridecodebin"), [&](gpointer decoder) {
        Pads &pads = uriOf(GST_ELEMENT(decoder)) == medium ? streams.medium : streams.captions;
        forEach(gst_element_iterate_src_pads(GST_ELEMENT(decoder)),
                [&pads](gpointer pad) { pads.emplace_back(GST_PAD(gst_object_ref(pad))); });
    });
    return streams;
}

bool hasEnded(GstPad *pad)
{
    return static_cast<bool>(Owned<GstEvent>(gst_pad_get_sticky_event(pad, GST_EVENT_EOS, 0)));
}

/** Drops what still comes, until somebody seeks. */
GstPadProbeReturn onLate(GstPad *, GstPadProbeInfo *info, gpointer)
{
    if (GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_BUFFER) {
        return GST_PAD_PROBE_DROP;
    }
    const bool isSeek = GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info)) == GST_EVENT_FLUSH_STOP;
    return isSeek ? GST_PAD_PROBE_REMOVE : GST_PAD_PROBE_OK;
}

void end(GstPad *captions)
{
    const Owned<GstEvent> segment(gst_pad_get_sticky_event(captions, GST_EVENT_SEGMENT, 0));
    const gulong late = gst_pad_add_probe(captions, GST_PAD_PROBE_TYPE_BUFFER, onLate, nullptr, nullptr);
    // Its thread may wait for the time of its next caption.
    gst_pad_push_event(captions, gst_event_new_flush_start());
    gst_pad_push_event(captions, gst_event_new_flush_stop(FALSE));
    if (segment) {
        gst_pad_push_event(captions, gst_event_ref(segment.get()));
    }
    gst_pad_push_event(captions, gst_event_new_eos());
    gst_pad_add_probe(captions,
                      static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_FLUSH), onLate,
                      nullptr, nullptr);
    gst_pad_remove_probe(captions, late);
}

} // namespace

bool endCaptions(GstElement *playbin, const std::string &medium)
{
    const Streams streams = streamsOf(playbin, medium);
    for (const auto &stream : streams.medium) {
        if (!hasEnded(stream.get())) {
            return false;
        }
    }
    for (const auto &captions : streams.captions) {
        if (!hasEnded(captions.get())) {
            end(captions.get());
        }
    }
    return !streams.medium.empty();
}

} // namespace voro::renderer
