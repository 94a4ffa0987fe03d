#include "Probe.h"

#include <renderer/worker/gst/EarlyErrors.h>
#include <renderer/worker/gst/Failure.h>
#include <renderer/worker/gst/WholeOgg.h>
#include <renderer/worker/media/FileFormat.h>
#include <renderer/worker/media/Libav.h>

#include <utility>

namespace voro::renderer {

namespace {

constexpr guint LongestProbe = 15'000;
/** Of a local medium, until it is read in the other way. */
constexpr guint LongestSilence = 4'000;

/** What a sink gets; null while it gets nothing. */
Owned<GstCaps> capsOf(GstElement *sink)
{
    const Owned<GstPad> pad(gst_element_get_static_pad(sink, "sink"));
    return Owned<GstCaps>(pad ? gst_pad_get_current_caps(pad.get()) : nullptr);
}

} // namespace

void Probe::start(const Medium &medium, Probed done)
{
    cancel();
    m_done = std::move(done);
    m_info = {};
    m_uri = medium.uri();
    if (!medium.isLocal() || !isReadBestByLibavformat(medium.path()) || !openOtherWay()) {
        open(m_uri);
    }
    m_timer.reset(g_timeout_add(medium.isLocal() ? LongestSilence : LongestProbe, onTimeout, this));
}

bool Probe::openOtherWay()
{
    const std::string other = m_info.needsLibav ? std::string() : libavUri(m_uri);
    if (other.empty()) {
        return false;
    }
    close();
    open(other);
    m_info.needsLibav = true;
    return true;
}

void Probe::open(const std::string &uri)
{
    m_info = {};
    m_tags.clear();
    m_open.add(uri);
    m_pipeline.reset(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new("voro-probe"))));
    GstElement *decoder = makeElement("uridecodebin");
    g_object_set(decoder, "uri", uri.c_str(), nullptr);
    EarlyErrors::keep(m_pipeline.get());
    g_signal_connect(m_pipeline.get(), "deep-element-added", G_CALLBACK(WholeOgg::onElementAdded), nullptr);
    g_signal_connect(decoder, "pad-added", G_CALLBACK(onPad), this);
    gst_bin_add(GST_BIN(m_pipeline.get()), decoder);
    const Owned<GstBus> bus(gst_element_get_bus(m_pipeline.get()));
    m_watch.reset(gst_bus_add_watch(bus.get(), onMessage, this));
    gst_element_set_state(m_pipeline.get(), GST_STATE_PAUSED);
}

void Probe::cancel()
{
    m_timer.reset();
    close();
    m_done = nullptr;
}

void Probe::close()
{
    m_watch.reset();
    if (m_pipeline) {
        gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
        m_pipeline.reset();
    }
    m_open.clear();
}

// Runs in a streaming thread.
void Probe::onPad(GstElement *, GstPad *pad, gpointer self)
{
    GstElement *sink = makeElement("fakesink");
    gst_bin_add(GST_BIN(static_cast<Probe *>(self)->m_pipeline.get()), sink);
    const Owned<GstPad> target(gst_element_get_static_pad(sink, "sink"));
    gst_pad_link(pad, target.get());
    gst_element_sync_state_with_parent(sink);
}

gboolean Probe::onMessage(GstBus *, GstMessage *message, gpointer self)
{
    static_cast<Probe *>(self)->handle(message);
    return G_SOURCE_CONTINUE;
}

void Probe::handle(GstMessage *message)
{
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_TAG: {
        GstTagList *tags = nullptr;
        gst_message_parse_tag(message, &tags);
        const Owned<GstTagList> owned(tags);
        const Owned<GstCaps> caps = capsOf(GST_ELEMENT(GST_MESSAGE_SRC(message)));
        m_info.merge(m_tags.choose(tags, sampleRateOf(caps.get()) > 0).get());
        break;
    }
    case GST_MESSAGE_ELEMENT:
        if (const Owned<GstMessage> error = EarlyErrors::in(message)) {
            fail(toResult(error.get(), false));
        }
        break;
    case GST_MESSAGE_ERROR:
        fail(toResult(message, false));
        break;
    case GST_MESSAGE_ASYNC_DONE:
        collect();
        finish({});
        break;
    default:
        break;
    }
}

void Probe::collect()
{
    m_info.duration = durationOf(m_pipeline.get());
    m_info.isSeekable = isSeekable(m_pipeline.get());
    const auto addSink = [](const GValue *item, gpointer info) {
        auto *sink = static_cast<GstElement *>(g_value_get_object(item));
        const Owned<GstCaps> caps = capsOf(sink);
        auto *known = static_cast<TrackInfo *>(info);
        if (const Dimensions size = dimensionsOf(caps.get()); size.width > 0) {
            known->dimensions = size;
        } else if (const int rate = sampleRateOf(caps.get()); rate > 0) {
            known->sampleRate = rate;
        }
    };
    GstIterator *sinks = gst_bin_iterate_sinks(GST_BIN(m_pipeline.get()));
    gst_iterator_foreach(sinks, addSink, &m_info);
    gst_iterator_free(sinks);
}

gboolean Probe::onTimeout(gpointer self)
{
    auto *probe = static_cast<Probe *>(self);
    probe->m_timer.forget();
    if (probe->openOtherWay()) {
        probe->m_timer.reset(g_timeout_add(LongestProbe, onTimeout, self));
    } else {
        probe->finish({ErrorCode::SourceUnavailable, "the source does not answer"});
    }
    return G_SOURCE_REMOVE;
}

/** Tries the other way to read the medium before it is given up. */
void Probe::fail(const Result &result)
{
    if (!openOtherWay()) {
        finish(result);
    }
}

void Probe::finish(const Result &result)
{
    const Probed done = std::exchange(m_done, nullptr);
    TrackInfo info = std::move(m_info);
    cancel();
    if (done) {
        done(result, std::move(info));
    }
}

} // namespace voro::renderer
