#include "Pipeline.h"

#include <algorithm>
#include <utility>

namespace voro::renderer {

namespace {

/** The flags of a playbin: what of a medium is played and how. */
enum PlayFlags : guint {
    PlayAudio = 0x2,
    /** Conversion and volume are done by our own bin. */
    NativeAudio = 0x20,
    BufferStreams = 0x100,
};

/** The message that all streams of the medium were found. */
constexpr char StreamsKnown[] = "voro-streams-known";

int64_t toMilliseconds(gint64 nanoseconds)
{
    return nanoseconds / static_cast<gint64>(GST_MSECOND);
}

} // namespace

Pipeline::Pipeline(Events events)
    : m_events(std::move(events)),
      m_playbin(GST_ELEMENT(gst_object_ref_sink(makeElement("playbin"))))
{
    g_object_set(m_playbin.get(), "audio-sink", m_audio.element(), nullptr);
    // Without these it would try every video sink of the system.
    g_object_set(m_playbin.get(), "video-sink", makeElement("fakesink"), "text-sink", makeElement("fakesink"), nullptr);
    g_signal_connect(m_playbin.get(), "deep-element-added", G_CALLBACK(onElementAdded), this);
    const Owned<GstBus> bus(gst_element_get_bus(m_playbin.get()));
    m_watch.reset(gst_bus_add_watch(bus.get(), onMessage, this));
}

Pipeline::~Pipeline()
{
    gst_element_set_state(m_playbin.get(), GST_STATE_NULL);
}

void Pipeline::load(const std::string &uri, bool isAudible)
{
    unload();
    m_audio.resetSink(isAudible);
    m_audio.closeGate();
    const bool isNear = gst_uri_has_protocol(uri.c_str(), "file");
    g_object_set(m_playbin.get(), "uri", uri.c_str(), "flags",
                 isNear ? PlayAudio | NativeAudio : PlayAudio | NativeAudio | BufferStreams, nullptr);
    gst_element_set_state(m_playbin.get(), GST_STATE_PAUSED);
}

void Pipeline::run()
{
    m_audio.openGate();
    m_isHeld = false;
    settle();
}

void Pipeline::hold()
{
    m_isHeld = true;
    settle();
}

void Pipeline::settle()
{
    // Whoever asks a bin for less while it is on its way, and then for more again, may get neither: the bin drops the
    // rest of its change. Holding waits for the end of the change instead.
    if (!m_isHeld) {
        gst_element_set_state(m_playbin.get(), GST_STATE_PLAYING);
    } else if (gst_element_get_state(m_playbin.get(), nullptr, nullptr, 0) != GST_STATE_CHANGE_ASYNC) {
        gst_element_set_state(m_playbin.get(), GST_STATE_PAUSED);
    }
}

void Pipeline::unload()
{
    gst_element_set_state(m_playbin.get(), GST_STATE_NULL);
    // What the old medium still had to say is not the new one's.
    const Owned<GstBus> bus(gst_element_get_bus(m_playbin.get()));
    gst_bus_set_flushing(bus.get(), TRUE);
    gst_bus_set_flushing(bus.get(), FALSE);
    m_rate = 1000;
    m_isHeld = true;
    m_seeking.reset();
    m_next.reset();
}

bool Pipeline::seek(int64_t time, int rate)
{
    const Target target{time, rate};
    if (m_seeking && m_audio.isOpen() && rate == m_rate) {
        m_next = target;
        return true;
    }
    return seekNow(target);
}

bool Pipeline::seekNow(const Target &target)
{
    const auto time = target.time * static_cast<gint64>(GST_MSECOND);
    const bool isForward = target.rate > 0;
    const bool isDone = gst_element_seek(m_playbin.get(), target.rate / 1000.0, GST_FORMAT_TIME,
                                         static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE),
                                         GST_SEEK_TYPE_SET, isForward ? time : 0, GST_SEEK_TYPE_SET,
                                         isForward ? static_cast<gint64>(GST_CLOCK_TIME_NONE) : time);
    if (isDone) {
        m_rate = target.rate;
        m_seeking = target;
        m_next.reset();
    }
    return isDone;
}

void Pipeline::finishSeek()
{
    m_seeking.reset();
    if (const auto next = std::exchange(m_next, std::nullopt)) {
        seekNow(*next);
    }
}

// Runs in a streaming thread.
void Pipeline::onElementAdded(GstBin *, GstBin *, GstElement *element, gpointer self)
{
    const GstElementFactory *factory = gst_element_get_factory(element);
    if (factory && g_str_equal(GST_OBJECT_NAME(factory), "uridecodebin")) {
        g_signal_connect(element, "no-more-pads", G_CALLBACK(onStreamsKnown), self);
    }
}

// Runs in a streaming thread.
void Pipeline::onStreamsKnown(GstElement *, gpointer self)
{
    GstElement *playbin = static_cast<Pipeline *>(self)->m_playbin.get();
    gst_element_post_message(playbin,
                             gst_message_new_element(GST_OBJECT(playbin), gst_structure_new_empty(StreamsKnown)));
}

void Pipeline::checkStreams()
{
    gint sounds = 0;
    g_object_get(m_playbin.get(), "n-audio", &sounds, nullptr);
    if (sounds == 0) {
        m_events.failed({ErrorCode::UnsupportedMediaType, "there is no sound in the medium"});
    }
}

int64_t Pipeline::position() const
{
    if (m_next || m_seeking) {
        return m_next ? m_next->time : m_seeking->time;
    }
    gint64 position = 0;
    gst_element_query_position(m_playbin.get(), GST_FORMAT_TIME, &position);
    return std::max<int64_t>(0, toMilliseconds(position));
}

int64_t Pipeline::duration() const
{
    gint64 duration = 0;
    gst_element_query_duration(m_playbin.get(), GST_FORMAT_TIME, &duration);
    return std::max<int64_t>(0, toMilliseconds(duration));
}

bool Pipeline::isSeekable() const
{
    const Owned<GstQuery> query(gst_query_new_seeking(GST_FORMAT_TIME));
    gboolean isSeekable = FALSE;
    if (gst_element_query(m_playbin.get(), query.get())) {
        gst_query_parse_seeking(query.get(), nullptr, &isSeekable, nullptr, nullptr);
    }
    return isSeekable;
}

gboolean Pipeline::onMessage(GstBus *, GstMessage *message, gpointer self)
{
    static_cast<Pipeline *>(self)->handle(message);
    return G_SOURCE_CONTINUE;
}

void Pipeline::handle(GstMessage *message)
{
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_ELEMENT:
        if (gst_message_has_name(message, AudioBin::DecodedMessage)) {
            m_events.decoded();
        } else if (gst_message_has_name(message, StreamsKnown)) {
            checkStreams();
        }
        break;
    case GST_MESSAGE_EOS:
        // An end that was reached before the seek that is on its way is none any more.
        if (!m_seeking || !m_audio.isOpen()) {
            m_events.ended();
        }
        break;
    case GST_MESSAGE_ERROR:
        (isUnrecognized(message) ? m_events.unrecognized
                                 : m_events.failed)(toResult(message, m_audio.isSink(GST_MESSAGE_SRC(message))));
        break;
    case GST_MESSAGE_TAG: {
        // The sink repeats what our bin has told already.
        if (GST_MESSAGE_SRC(message) != GST_OBJECT(m_audio.element())) {
            break;
        }
        GstTagList *tags = nullptr;
        gst_message_parse_tag(message, &tags);
        const Owned<GstTagList> owned(tags);
        m_events.tagged(tags);
        break;
    }
    case GST_MESSAGE_ASYNC_DONE:
        finishSeek();
        m_events.changed();
        break;
    case GST_MESSAGE_STATE_CHANGED:
        if (GST_MESSAGE_SRC(message) == GST_OBJECT(m_playbin.get()) && m_audio.isOpen()) {
            settle();
        }
        break;
    case GST_MESSAGE_DURATION_CHANGED:
        m_events.changed();
        break;
    case GST_MESSAGE_BUFFERING: {
        gint percent = 0;
        gst_message_parse_buffering(message, &percent);
        m_events.buffering(percent);
        break;
    }
    default:
        break;
    }
}

} // namespace voro::renderer
