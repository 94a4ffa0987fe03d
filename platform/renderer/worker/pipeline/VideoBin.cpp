#include "VideoBin.h"

#include "AudioBin.h"

#include <renderer/worker/gst/Gaps.h>
#include <renderer/worker/video/WindowSink.h>

#include <algorithm>
#include <string_view>

namespace voro::renderer {

namespace {

GstElement *visibleSink(const Window &window)
{
    if (GstElement *sink = configuredBin("VORO_VIDEO_SINK")) {
        return sink;
    }
    GstElement *sink = screenSink(window);
    return sink ? sink : silentSink();
}

} // namespace

VideoBin::VideoBin()
    : m_bin(GST_ELEMENT(gst_object_ref_sink(gst_bin_new("voro-video")))),
      m_crop(makeElement("videocrop")),
      m_convert(makeElement("videoconvert")),
      m_last(makeElement("videoscale"))
{
    gst_bin_add_many(GST_BIN(m_bin.get()), m_crop, m_convert, m_last, nullptr);
    gst_element_link(m_crop, m_convert);
    const Owned<GstPad> target(gst_element_get_static_pad(m_crop, "sink"));
    m_input.reset(GST_PAD(gst_object_ref(gst_ghost_pad_new("sink", target.get()))));
    gst_element_add_pad(m_bin.get(), m_input.get());
    gst_pad_add_probe(m_input.get(),
                      static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM),
                      onInput, this, nullptr);
    keepGapsInside(m_input.get());
}

void VideoBin::resetSink(const Window &window, bool hasCaptions)
{
    for (GstElement *old : {m_sink, m_overlay, m_turn}) {
        if (old) {
            gst_element_set_state(old, GST_STATE_NULL);
            gst_bin_remove(GST_BIN(m_bin.get()), old);
        }
    }
    m_overlay = m_turn = nullptr;
    gst_element_unlink(m_convert, m_last);
    if (hasCaptions) {
        m_overlay = makeElement("textoverlay");
        // For pictures of 640 pixels; it grows and shrinks with them.
        g_object_set(m_overlay, "font-desc", "Sans 28", nullptr);
        gst_bin_add(GST_BIN(m_bin.get()), m_overlay);
        gst_element_link_many(m_convert, m_overlay, m_last, nullptr);
    } else {
        gst_element_link(m_convert, m_last);
    }
    m_sink = visibleSink(window);
    gst_bin_add(GST_BIN(m_bin.get()), m_sink);
    gst_element_link(m_last, m_sink);
}

// Runs in a streaming thread.
GstPadProbeReturn VideoBin::onInput(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    auto *bin = static_cast<VideoBin *>(self);
    if (GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM) {
        GstEvent *event = GST_PAD_PROBE_INFO_EVENT(info);
        if (GST_EVENT_TYPE(event) == GST_EVENT_CAPS) {
            GstCaps *caps = nullptr;
            gst_event_parse_caps(event, &caps);
            bin->crop(dimensionsOf(caps));
        } else if (GST_EVENT_TYPE(event) == GST_EVENT_TAG) {
            GstTagList *tags = nullptr;
            gst_event_parse_tag(event, &tags);
            bin->turn(tags);
        } else if (GST_EVENT_TYPE(event) == GST_EVENT_EOS && bin->m_awaitsDecoded.exchange(false)) {
            postNote(bin->element(), AudioBin::EmptyMessage);
        }
    } else if (bin->m_awaitsDecoded.exchange(false)) {
        postNote(bin->element(), AudioBin::DecodedMessage);
    }
    return GST_PAD_PROBE_OK;
}

/** Has pictures turned that were taken with a turned camera. Others need not go through an element for that. */
void VideoBin::turn(const GstTagList *tags)
{
    const gchar *orientation = nullptr;
    const bool isTurned = gst_tag_list_peek_string_index(tags, GST_TAG_IMAGE_ORIENTATION, 0, &orientation)
                          && std::string_view(orientation) != "rotate-0";
    GstElement *turn = isTurned && !m_turn ? gst_element_factory_make("videoflip", nullptr) : nullptr;
    if (!turn) {
        return;
    }
    // It reads the tag itself, which comes to it next.
    gst_util_set_object_arg(G_OBJECT(turn), "video-direction", "auto");
    m_turn = turn;
    const Owned<GstPad> output(gst_element_get_static_pad(m_convert, "src"));
    const Owned<GstPad> input(gst_pad_get_peer(output.get()));
    gst_bin_add(GST_BIN(m_bin.get()), m_turn);
    gst_pad_unlink(output.get(), input.get());
    gst_element_link(m_convert, m_turn);
    const Owned<GstPad> turned(gst_element_get_static_pad(m_turn, "src"));
    gst_pad_link(turned.get(), input.get());
    gst_element_sync_state_with_parent(m_turn);
}

void VideoBin::setSource(const Rectangle &part)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_part == part) {
            return;
        }
        m_part = part;
    }
    crop(dimensions());
}

void VideoBin::crop(const Dimensions &size)
{
    const std::lock_guard lock(m_mutex);
    const bool isWhole = m_part.width == 0 || m_part.height == 0 || m_part.x >= size.width || m_part.y >= size.height;
    const auto rest = [isWhole](int all, int start, int length) {
        return isWhole ? 0 : static_cast<int>(std::max<int64_t>(0, static_cast<int64_t>(all) - start - length));
    };
    g_object_set(m_crop, "left", isWhole ? 0 : m_part.x, "top", isWhole ? 0 : m_part.y, "right",
                 rest(size.width, m_part.x, m_part.width), "bottom", rest(size.height, m_part.y, m_part.height),
                 nullptr);
}

bool VideoBin::isSink(GstObject *object) const
{
    return m_sink && (object == GST_OBJECT(m_sink) || gst_object_has_as_ancestor(object, GST_OBJECT(m_sink)));
}

Dimensions VideoBin::dimensions() const
{
    const Owned<GstCaps> caps(gst_pad_get_current_caps(m_input.get()));
    return dimensionsOf(caps.get());
}

} // namespace voro::renderer
