#include "AudioBin.h"

#include <gst/audio/audio.h>
#include <renderer/worker/gst/Equalizer.h>
#include <renderer/worker/gst/Gaps.h>
#include <renderer/worker/video/WindowSink.h>

#include <cstdlib>
#include <memory>

namespace voro::renderer {

namespace {

/** Others need the processor until it plays. */
constexpr GstClockTime ClosedAhead = 10 * GST_MSECOND;

void setAmounts(GstElement *serverSink, const AheadAmounts &amounts)
{
    g_object_set(serverSink, "buffer-time", static_cast<gint64>(amounts.held / GST_USECOND), "latency-time",
                 static_cast<gint64>(amounts.filled / GST_USECOND), nullptr);
}

void setRole(GstElement *serverSink, const std::string &role)
{
    GstStructure *properties = gst_structure_new_empty("properties");
    if (!role.empty()) {
        gst_structure_set(properties, "media.role", G_TYPE_STRING, role.c_str(), nullptr);
    }
    g_object_set(serverSink, "stream-properties", properties, nullptr);
    gst_structure_free(properties);
}

/** Answers from memory what is accepted, which is asked time and again while a medium opens. */
GstPadProbeReturn answerCaps(GstQuery *query, GstCaps *accepted)
{
    GstCaps *filter = nullptr;
    gst_query_parse_caps(query, &filter);
    const Owned<GstCaps> result(filter ? gst_caps_intersect_full(filter, accepted, GST_CAPS_INTERSECT_FIRST)
                                       : gst_caps_ref(accepted));
    gst_query_set_caps_result(query, result.get());
    return GST_PAD_PROBE_HANDLED;
}

/**
 * Answers for the sink, which would ask the server each time, by a stream that it opens there; when the server ends
 * with such a stream open, the sink waits forever.
 */
GstPadProbeReturn onSinkQuery(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    GstQuery *query = GST_PAD_PROBE_INFO_QUERY(info);
    auto *format = static_cast<GstCaps *>(self);
    if (GST_QUERY_TYPE(query) == GST_QUERY_CAPS) {
        return answerCaps(query, format);
    }
    if (GST_QUERY_TYPE(query) == GST_QUERY_ACCEPT_CAPS) {
        GstCaps *caps = nullptr;
        gst_query_parse_accept_caps(query, &caps);
        gst_query_set_accept_caps_result(query, gst_caps_is_subset(caps, format));
        return GST_PAD_PROBE_HANDLED;
    }
    return GST_PAD_PROBE_OK;
}

void discard(GstElement *sink)
{
    gst_element_set_state(sink, GST_STATE_NULL);
    gst_object_unref(gst_object_ref_sink(sink));
}

/** A sink that is connected to the sound server, null when no server answers. */
GstElement *serverSink()
{
    GstElement *sink = gst_element_factory_make("pulsesink", nullptr);
    if (sink && gst_element_set_state(sink, GST_STATE_READY) == GST_STATE_CHANGE_FAILURE) {
        discard(sink);
        return nullptr;
    }
    return sink;
}

/** A sink with what it may need to take our format; the sound server needs nothing. */
GstElement *adapted(GstElement *sink)
{
    GstElement *bin = gst_bin_new(nullptr);
    GstElement *convert = makeElement("audioconvert");
    GstElement *resample = makeElement("audioresample");
    gst_bin_add_many(GST_BIN(bin), convert, resample, sink, nullptr);
    gst_element_link_many(convert, resample, sink, nullptr);
    const Owned<GstPad> target(gst_element_get_static_pad(convert, "sink"));
    gst_element_add_pad(bin, gst_ghost_pad_new("sink", target.get()));
    return bin;
}

} // namespace

AudioBin::AudioBin()
    : m_bin(GST_ELEMENT(gst_object_ref_sink(gst_bin_new("voro-audio")))),
      m_queue(makeElement("queue")),
      m_filter(makeElement("capsfilter")),
      m_equalizer(makeElement("equalizer-10bands")),
      m_volume(makeElement("volume")),
      m_format(gst_caps_from_string("audio/x-raw, format = " GST_AUDIO_NE(F32) ", layout = interleaved"))
{
    GstElement *convert = makeElement("audioconvert");
    // One format for all: they need not find out at each medium which of many they have in common.
    g_object_set(m_filter, "caps", m_format.get(), nullptr);
    gst_bin_add_many(GST_BIN(m_bin.get()), convert, m_filter, m_queue, m_equalizer, m_volume, nullptr);
    gst_element_link_many(convert, m_filter, m_queue, nullptr);
    gst_element_link(m_equalizer, m_volume);
    addTempo();
    g_object_set(m_queue, "max-size-buffers", 0, "max-size-bytes", 0, nullptr);
    decodeAhead(amounts(m_ahead).decoded);
    const Owned<GstPad> decoded(gst_element_get_static_pad(m_filter, "src"));
    m_decoded.watch(decoded.get());
    const Owned<GstPad> output(gst_element_get_static_pad(m_volume, "src"));
    m_sinkWatch.watch(output.get());

    const Owned<GstPad> target(gst_element_get_static_pad(convert, "sink"));
    m_input.reset(GST_PAD(gst_object_ref(gst_ghost_pad_new("sink", target.get()))));
    gst_element_add_pad(m_bin.get(), m_input.get());
    gst_pad_add_probe(m_input.get(),
                      static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_BUFFER_LIST
                                                   | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM),
                      onDecoded, this, nullptr);
    keepGapsInside(m_input.get());
    m_accepted.reset(gst_pad_query_caps(target.get(), nullptr));
    gst_pad_add_probe(m_input.get(), GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM, onQuery, this, nullptr);
}

// Runs in a streaming thread.
GstPadProbeReturn AudioBin::onQuery(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    GstQuery *query = GST_PAD_PROBE_INFO_QUERY(info);
    if (GST_QUERY_TYPE(query) == GST_QUERY_CAPS && GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_PUSH) {
        return answerCaps(query, static_cast<AudioBin *>(self)->m_accepted.get());
    }
    return GST_PAD_PROBE_OK;
}

AudioBin::~AudioBin()
{
    removeSink();
}

void AudioBin::resetSink(const Piece &piece)
{
    if (m_isStretched.exchange(false)) {
        removeTempo();
        addTempo();
    }
    if (m_isServerSink && piece.outputs.isAudible) {
        gst_element_set_locked_state(m_sink, FALSE);
    } else {
        removeSink();
        addSink(piece.outputs.isAudible);
    }
    m_ahead = piece.mayBeFarAhead() ? Ahead::Much : Ahead::Little;
    m_decoded.begin(isFarAhead() ? Ahead::Much : Ahead::Little);
    m_sinkWatch.begin(m_isServerSink ? m_sink : nullptr, m_ahead);
    if (m_isServerSink) {
        setRole(m_sink, piece.outputs.role);
        setAmounts(m_sink, amounts(m_ahead));
    }
}

bool AudioBin::hasLostServer() const
{
    // All sinks of this process share a connection as long as there is one: another sink tells whether it is good.
    GstElement *other = m_isServerSink ? serverSink() : nullptr;
    if (other) {
        discard(other);
    }
    return m_isServerSink && !other;
}

void AudioBin::addTempo()
{
    m_tempo = makeElement("scaletempo");
    gst_bin_add(GST_BIN(m_bin.get()), m_tempo);
    gst_element_link_many(m_queue, m_tempo, m_equalizer, nullptr);
    // Changes of equalizer and volume hold for what waits, too.
    m_gate.reset(gst_element_get_static_pad(m_tempo, "src"));
}

void AudioBin::removeTempo()
{
    openGate();
    gst_element_set_state(m_tempo, GST_STATE_NULL);
    gst_bin_remove(GST_BIN(m_bin.get()), m_tempo);
}

void AudioBin::addSink(bool isAudible)
{
    GstElement *configured = isAudible ? configuredBin("VORO_AUDIO_SINK") : nullptr;
    GstElement *server = isAudible && !configured ? serverSink() : nullptr;
    m_isSilent = isAudible && !configured && !server;
    if (server) {
        addServerSink(server);
    } else {
        addToBin(configured ? adapted(configured) : silentSink());
    }
}

void AudioBin::addServerSink(GstElement *sink)
{
    const Owned<GstPad> pad(gst_element_get_static_pad(sink, "sink"));
    gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM, onSinkQuery, m_format.get(), nullptr);
    addToBin(sink);
    m_isServerSink = true;
}

void AudioBin::addToBin(GstElement *sink)
{
    m_sink = sink;
    gst_bin_add(GST_BIN(m_bin.get()), m_sink);
    gst_element_link(m_volume, m_sink);
}

void AudioBin::removeSink()
{
    if (m_sink) {
        gst_element_set_locked_state(m_sink, FALSE);
        gst_element_set_state(m_sink, GST_STATE_NULL);
        gst_bin_remove(GST_BIN(m_bin.get()), m_sink);
        m_sink = nullptr;
        m_isServerSink = false;
    }
}

void AudioBin::removeLostSink()
{
    if (hasLostServer()) {
        removeSink();
    }
}

void AudioBin::connectSound()
{
    if (!m_sink && !std::getenv("VORO_AUDIO_SINK")) {
        g_thread_unref(g_thread_new("voro-connect", connect, this));
    }
}

gpointer AudioBin::connect(gpointer self)
{
    struct Connected {
        AudioBin *bin;
        GstElement *sink;
    };
    const auto adopt = [](gpointer data) -> gboolean {
        const std::unique_ptr<Connected> connected(static_cast<Connected *>(data));
        if (connected->bin->m_sink) {
            discard(connected->sink);
        } else {
            connected->bin->addServerSink(connected->sink);
            connected->bin->keepConnection();
        }
        return G_SOURCE_REMOVE;
    };
    if (GstElement *sink = serverSink()) {
        g_idle_add(adopt, new Connected{static_cast<AudioBin *>(self), sink});
    }
    return nullptr;
}

void AudioBin::keepConnection()
{
    if (m_isServerSink) {
        // Locked first: a pipeline that is on its way to another state would take it along again.
        gst_element_set_locked_state(m_sink, TRUE);
        gst_element_set_state(m_sink, GST_STATE_READY);
    }
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
        } else if (GST_EVENT_TYPE(event) == GST_EVENT_SEGMENT) {
            const GstSegment *segment = nullptr;
            gst_event_parse_segment(event, &segment);
            if (segment->rate != 1) {
                bin->m_isStretched = true;
            }
        } else if (GST_EVENT_TYPE(event) == GST_EVENT_EOS && bin->m_awaitsDecoded.exchange(false)) {
            postNote(element, EmptyMessage);
        }
    } else {
        if (bin->m_awaitsDecoded.exchange(false)) {
            postNote(element, DecodedMessage);
        }
    }
    return GST_PAD_PROBE_OK;
}

void AudioBin::decodeAhead(GstClockTime time)
{
    g_object_set(m_queue, "max-size-time", static_cast<guint64>(time), nullptr);
}

void AudioBin::closeGate()
{
    decodeAhead(ClosedAhead);
    m_awaitsDecoded = true;
    if (m_gateProbe == 0) {
        const auto block = [](GstPad *, GstPadProbeInfo *, gpointer) { return GST_PAD_PROBE_OK; };
        m_gateProbe = gst_pad_add_probe(m_gate.get(), GST_PAD_PROBE_TYPE_BLOCK_DOWNSTREAM, block, nullptr, nullptr);
    }
}

void AudioBin::openGate()
{
    decodeAhead(amounts(m_ahead).decoded);
    if (m_gateProbe != 0) {
        gst_pad_remove_probe(m_gate.get(), m_gateProbe);
        m_gateProbe = 0;
    }
}

void AudioBin::setVolume(long percent)
{
    g_object_set(m_volume, "volume", static_cast<double>(percent) / 100.0, nullptr);
}

void AudioBin::setPreset(Preset preset)
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
