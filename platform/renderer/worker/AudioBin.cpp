#include "AudioBin.h"

#include "Equalizer.h"
#include "WindowSink.h"

namespace voro::renderer {

namespace {

/** The sound server's sink, null when no server answers. */
GstElement *serverSink(const std::string &role)
{
    GstElement *sink = gst_element_factory_make("pulsesink", nullptr);
    if (!sink) {
        return nullptr;
    }
    if (!role.empty()) {
        GstStructure *properties = gst_structure_new("properties", "media.role", G_TYPE_STRING, role.c_str(), nullptr);
        g_object_set(sink, "stream-properties", properties, nullptr);
        gst_structure_free(properties);
    }
    if (gst_element_set_state(sink, GST_STATE_READY) == GST_STATE_CHANGE_FAILURE) {
        gst_element_set_state(sink, GST_STATE_NULL);
        gst_object_unref(gst_object_ref_sink(sink));
        return nullptr;
    }
    return sink;
}

GstElement *audibleSink(const std::string &role)
{
    if (GstElement *sink = configuredBin("VORO_AUDIO_SINK")) {
        return sink;
    }
    GstElement *sink = serverSink(role);
    return sink ? sink : silentSink();
}

} // namespace

AudioBin::AudioBin()
    : m_bin(GST_ELEMENT(gst_object_ref_sink(gst_bin_new("voro-audio")))),
      m_queue(makeElement("queue")),
      m_equalizer(makeElement("equalizer-10bands")),
      m_volume(makeElement("volume")),
      m_last(makeElement("audioresample"))
{
    GstElement *convert = makeElement("audioconvert");
    GstElement *tempo = makeElement("scaletempo");
    GstElement *convertBack = makeElement("audioconvert");
    gst_bin_add_many(GST_BIN(m_bin.get()), m_queue, convert, tempo, m_equalizer, m_volume, convertBack, m_last,
                     nullptr);
    gst_element_link_many(m_queue, convert, tempo, m_equalizer, m_volume, convertBack, m_last, nullptr);
    // Enough to play without a gap, little enough to answer a change at once.
    g_object_set(m_queue, "max-size-buffers", 0, "max-size-bytes", 0, "max-size-time", guint64(200 * GST_MSECOND),
                 nullptr);

    const Owned<GstPad> target(gst_element_get_static_pad(m_queue, "sink"));
    m_input.reset(GST_PAD(gst_object_ref(gst_ghost_pad_new("sink", target.get()))));
    gst_element_add_pad(m_bin.get(), m_input.get());
    gst_pad_add_probe(m_input.get(),
                      static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_BUFFER_LIST
                                                   | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM),
                      onDecoded, this, nullptr);
    m_accepted.reset(gst_pad_query_caps(target.get(), nullptr));
    gst_pad_add_probe(m_input.get(), GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM, onQuery, this, nullptr);
    m_gate.reset(gst_element_get_static_pad(m_queue, "src"));
}

// Runs in a streaming thread. A decoder that asks for buffers would wait in the queue for the closed gate; it has its
// own. What is accepted is asked time and again while a medium opens, and all elements of the bin would think about it.
GstPadProbeReturn AudioBin::onQuery(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    GstQuery *query = GST_PAD_PROBE_INFO_QUERY(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_CAPS || !(GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_PUSH)) {
        return GST_QUERY_TYPE(query) == GST_QUERY_ALLOCATION ? GST_PAD_PROBE_DROP : GST_PAD_PROBE_OK;
    }
    GstCaps *accepted = static_cast<AudioBin *>(self)->m_accepted.get();
    GstCaps *filter = nullptr;
    gst_query_parse_caps(query, &filter);
    const Owned<GstCaps> result(filter ? gst_caps_intersect_full(filter, accepted, GST_CAPS_INTERSECT_FIRST)
                                       : gst_caps_ref(accepted));
    gst_query_set_caps_result(query, result.get());
    return GST_PAD_PROBE_HANDLED;
}

void AudioBin::resetSink(bool isAudible, const std::string &role)
{
    if (m_sink) {
        gst_element_set_state(m_sink, GST_STATE_NULL);
        gst_bin_remove(GST_BIN(m_bin.get()), m_sink);
    }
    m_sink = isAudible ? audibleSink(role) : silentSink();
    gst_bin_add(GST_BIN(m_bin.get()), m_sink);
    gst_element_link(m_last, m_sink);
}

// Runs in a streaming thread.
GstPadProbeReturn AudioBin::onDecoded(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    auto *bin = static_cast<AudioBin *>(self);
    GstElement *element = bin->m_bin.get();
    if (GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM) {
        GstEvent *event = GST_PAD_PROBE_INFO_EVENT(info);
        if (GST_EVENT_TYPE(event) == GST_EVENT_TAG) {
            // The sink posts them too, but only when the gate is open.
            GstTagList *tags = nullptr;
            gst_event_parse_tag(event, &tags);
            gst_element_post_message(element, gst_message_new_tag(GST_OBJECT(element), gst_tag_list_ref(tags)));
        } else if (GST_EVENT_TYPE(event) == GST_EVENT_EOS && bin->m_awaitsDecoded.exchange(false)) {
            postNote(element, EmptyMessage);
        }
    } else if (bin->m_awaitsDecoded.exchange(false)) {
        postNote(element, DecodedMessage);
    }
    return GST_PAD_PROBE_OK;
}

void AudioBin::closeGate()
{
    m_awaitsDecoded = true;
    if (m_gateProbe == 0) {
        const auto block = [](GstPad *, GstPadProbeInfo *, gpointer) { return GST_PAD_PROBE_OK; };
        m_gateProbe = gst_pad_add_probe(m_gate.get(), GST_PAD_PROBE_TYPE_BLOCK_DOWNSTREAM, block, nullptr, nullptr);
    }
}

void AudioBin::openGate()
{
    if (m_gateProbe != 0) {
        gst_pad_remove_probe(m_gate.get(), m_gateProbe);
        m_gateProbe = 0;
    }
}

void AudioBin::setVolume(long percent)
{
    g_object_set(m_volume, "volume", static_cast<double>(percent) / 100.0, nullptr);
}

void AudioBin::setPreset(std::string_view preset)
{
    renderer::setPreset(m_equalizer, preset);
}

std::string AudioBin::device() const
{
    const bool hasDevice = m_sink && g_object_class_find_property(G_OBJECT_GET_CLASS(m_sink), "current-device");
    gchar *raw = nullptr;
    if (hasDevice) {
        g_object_get(m_sink, "current-device", &raw, nullptr);
    }
    const Owned<char> name(raw);
    return name ? name.get() : "";
}

bool AudioBin::isSink(GstObject *object) const
{
    return m_sink && (object == GST_OBJECT(m_sink) || gst_object_has_as_ancestor(object, GST_OBJECT(m_sink)));
}

int AudioBin::sampleRate() const
{
    const Owned<GstCaps> caps(gst_pad_get_current_caps(m_input.get()));
    return sampleRateOf(caps.get());
}

} // namespace voro::renderer
