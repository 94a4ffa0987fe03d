#include "PipelinePlayback.h"

#include <renderer/worker/gst/Failure.h>

#include <algorithm>
#include <utility>

namespace voro::renderer {

PipelinePlayback::PipelinePlayback(GstElement *pipeline, Succession &succession)
    : m_pipeline(GST_ELEMENT(gst_object_ref_sink(pipeline))),
      m_succession(succession),
      m_transport(pipeline, succession)
{
    // It has a descriptor, which forked processes would share.
    gst_element_set_bus(pipeline, nullptr);
}

void PipelinePlayback::listen(Events events)
{
    Playback::listen(std::move(events));
    const Owned<GstBus> bus(gst_bus_new());
    gst_element_set_bus(m_pipeline.get(), bus.get());
    gst_bus_set_sync_handler(bus.get(), onPosted, this, nullptr);
    m_watch.reset(gst_bus_add_watch(bus.get(), onMessage, this));
}

void PipelinePlayback::begin()
{
    m_isLoaded = true;
    m_isOpening = true;
    m_tags.clear();
    ++m_load;
    // A short medium may be read to its end before anybody could say what comes next.
    m_succession.setUnknown();
}

void PipelinePlayback::run()
{
    if (!m_transport.suspension()) {
        m_audio.openGate();
    }
    m_transport.run();
    if (m_next) {
        advanceWhenHeard();
    }
}

void PipelinePlayback::hold()
{
    m_nextTimer.reset();
    m_transport.hold();
}

void PipelinePlayback::unload()
{
    if (!std::exchange(m_isLoaded, false)) {
        return;
    }
    m_succession.release();
    stop();
    forgetMessages();
    m_transport.reset();
    m_position = 0;
    m_group = GST_GROUP_ID_INVALID;
    m_hasAdvanced = false;
    m_next.reset();
    m_nextTimer.reset();
    m_failure.reset();
}

bool PipelinePlayback::canPlayOn(const Failure &failure) const
{
    return !m_hasAdvanced && !m_succession.isTaken() && isOfMedium(failure.result);
}

void PipelinePlayback::decoded()
{
    m_isOpening = false;
    if (!m_transport.suspension()) {
        m_events.decoded();
        return;
    }
    if (m_transport.resume()) {
        run();
    }
    m_events.changed();
}

void PipelinePlayback::forgetMessages()
{
    gst_bus_set_flushing(GST_ELEMENT_BUS(m_pipeline.get()), TRUE);
    gst_bus_set_flushing(GST_ELEMENT_BUS(m_pipeline.get()), FALSE);
}

/** Runs in the thread that posts a message. One that nobody handles would wake the main thread for nothing. */
GstBusSyncReply PipelinePlayback::onPosted(GstBus *, GstMessage *message, gpointer self)
{
    const auto *playback = static_cast<PipelinePlayback *>(self);
    if (playback->isHandled(message) && !playback->isUntrue(message)) {
        return GST_BUS_PASS;
    }
    gst_message_unref(message);
    return GST_BUS_DROP;
}

/** Every element reports each of its states, of which only the pipeline's own count. */
bool PipelinePlayback::isHandled(GstMessage *message) const
{
    constexpr int Types = GST_MESSAGE_ELEMENT | GST_MESSAGE_EOS | GST_MESSAGE_ERROR | GST_MESSAGE_TAG
                          | GST_MESSAGE_STREAM_START | GST_MESSAGE_ASYNC_DONE | GST_MESSAGE_DURATION_CHANGED
                          | GST_MESSAGE_BUFFERING;
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_STATE_CHANGED) {
        return GST_MESSAGE_SRC(message) == GST_OBJECT(m_pipeline.get());
    }
    return (GST_MESSAGE_TYPE(message) & Types) != 0;
}

/**
 * Whoever asks the sink for the time, which is the pipeline's, hears that the stream at the sound server is dead while
 * another thread exchanges it. When the new one cannot be had, that thread says so.
 */
bool PipelinePlayback::isUntrue(GstMessage *message) const
{
    return GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR && m_audio.isExchangedElsewhere()
           && m_audio.isSink(GST_MESSAGE_SRC(message));
}

gboolean PipelinePlayback::onMessage(GstBus *, GstMessage *message, gpointer self)
{
    static_cast<PipelinePlayback *>(self)->handle(message);
    return G_SOURCE_CONTINUE;
}

void PipelinePlayback::handle(GstMessage *message)
{
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_ELEMENT:
        handleNote(message);
        break;
    case GST_MESSAGE_EOS:
        // An end that was reached before the seek that is on its way is none any more.
        if (!m_transport.isSeeking() && advance()) {
            m_events.ended();
        }
        break;
    case GST_MESSAGE_ERROR:
        m_graph.showFailure();
        if (m_next && !m_audio.isSink(GST_MESSAGE_SRC(message))) {
            // It is the next medium's, which is not heard yet.
            m_failure.reset(gst_message_ref(message));
        } else {
            handleError(message);
        }
        break;
    case GST_MESSAGE_TAG:
        handleTags(message);
        break;
    case GST_MESSAGE_STREAM_START:
        handleStart(message);
        break;
    case GST_MESSAGE_ASYNC_DONE:
        m_transport.seekDone();
        m_events.changed();
        break;
    case GST_MESSAGE_STATE_CHANGED:
        m_transport.stateChanged();
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

void PipelinePlayback::handleTags(GstMessage *message)
{
    GstObject *source = GST_MESSAGE_SRC(message);
    // AudioBin has posted the sink's tags already. Once the next medium is taken, tags may be that one's.
    if (m_audio.isSink(source) || m_succession.isTaken()) {
        return;
    }
    GstTagList *raw = nullptr;
    gst_message_parse_tag(message, &raw);
    const Owned<GstTagList> all(raw);
    const Owned<GstTagList> tags = m_tags.choose(all.get(), source == GST_OBJECT(m_audio.element()));
    if (!gst_tag_list_is_empty(tags.get())) {
        m_events.tagged(tags.get());
    }
}

void PipelinePlayback::handleStart(GstMessage *message)
{
    guint group = GST_GROUP_ID_INVALID;
    gst_message_parse_group_id(message, &group);
    const bool isOther = m_group != GST_GROUP_ID_INVALID && group != m_group;
    m_group = group;
    if (isOther && m_succession.isTaken()) {
        m_next = m_audio.isFarAhead() ? m_audio.boundary() : SinkWatch::Boundary();
        advanceWhenHeard();
    }
}

/** In milliseconds; until the next medium is heard, whose beginning went to the sound server. */
int64_t PipelinePlayback::untilNext() const
{
    if (m_audio.isExchangedElsewhere()) {
        // It is asked for again.
        return 1;
    }
    GstElement *pipeline = m_pipeline.get();
    const GstClockTime now = GST_STATE(pipeline) == GST_STATE_PLAYING ? gst_element_get_current_running_time(pipeline)
                                                                      : gst_element_get_start_time(pipeline);
    return m_next->time > now ? static_cast<int64_t>((m_next->time - now) / GST_MSECOND) : 0;
}

int64_t PipelinePlayback::position() const
{
    // The clock would add the time of the stream that ends to that of the next one, and stay ahead by it.
    if (!m_audio.isExchangedElsewhere()) {
        m_position = m_next ? std::max<int64_t>(0, m_next->end - untilNext()) : m_transport.position();
    }
    return m_position;
}

void PipelinePlayback::advanceWhenHeard()
{
    if (const int64_t rest = untilNext(); rest > 0) {
        m_nextTimer.reset(g_timeout_add(static_cast<guint>(rest), onNextDue, this));
    } else {
        advance();
    }
}

gboolean PipelinePlayback::onNextDue(gpointer self)
{
    auto *playback = static_cast<PipelinePlayback *>(self);
    playback->m_nextTimer.forget();
    playback->advanceWhenHeard();
    return G_SOURCE_REMOVE;
}

/** The medium that follows, if one has come so far, is the one that plays. False when it is given up upon that. */
bool PipelinePlayback::advance()
{
    m_nextTimer.reset();
    if (!std::exchange(m_next, std::nullopt)) {
        return true;
    }
    const unsigned load = m_load;
    m_hasAdvanced = true;
    m_succession.advance();
    m_tags.clear();
    forgetPlayed();
    m_events.advanced();
    if (load == m_load && m_failure) {
        const Owned<GstMessage> failure = std::move(m_failure);
        handleError(failure.get());
        return false;
    }
    return m_isLoaded && load == m_load;
}

} // namespace voro::renderer
