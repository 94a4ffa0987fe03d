#include "Fetch.h"

#include <renderer/worker/gst/Failure.h>

#include <utility>

namespace voro::renderer {

namespace {

constexpr guint LongestFetch = 15'000;

} // namespace

void Fetch::get(const std::string &uri, Fetched done)
{
    cancel();
    m_done = std::move(done);
    m_content.clear();
    m_pipeline.reset(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new("voro-fetch"))));
    GstElement *source = gst_element_make_from_uri(GST_URI_SRC, uri.c_str(), nullptr, nullptr);
    if (!source) {
        finish({ErrorCode::UnsupportedMediaType, "no element can read " + uri});
        return;
    }
    GstElement *sink = makeElement("fakesink");
    g_object_set(sink, "signal-handoffs", TRUE, "sync", FALSE, nullptr);
    g_signal_connect(sink, "handoff", G_CALLBACK(onData), this);
    gst_bin_add_many(GST_BIN(m_pipeline.get()), source, sink, nullptr);
    gst_element_link(source, sink);
    const Owned<GstBus> bus(gst_element_get_bus(m_pipeline.get()));
    m_watch.reset(gst_bus_add_watch(bus.get(), onMessage, this));
    m_timer.reset(g_timeout_add(LongestFetch, onTimeout, this));
    gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING);
}

void Fetch::cancel()
{
    m_timer.reset();
    m_watch.reset();
    if (m_pipeline) {
        gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
        m_pipeline.reset();
    }
    m_done = nullptr;
}

// Runs in a streaming thread.
void Fetch::onData(GstElement *, GstBuffer *buffer, GstPad *, gpointer self)
{
    auto *fetch = static_cast<Fetch *>(self);
    GstMapInfo map;
    if (gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        const std::lock_guard lock(fetch->m_mutex);
        // A larger text is no list; its end does not matter.
        if (fetch->m_content.size() + map.size <= Largest) {
            fetch->m_content.append(reinterpret_cast<const char *>(map.data), map.size);
        }
        gst_buffer_unmap(buffer, &map);
    }
}

gboolean Fetch::onMessage(GstBus *, GstMessage *message, gpointer self)
{
    auto *fetch = static_cast<Fetch *>(self);
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS) {
        fetch->finish({});
    } else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        fetch->finish(toResult(message, false));
    }
    return G_SOURCE_CONTINUE;
}

gboolean Fetch::onTimeout(gpointer self)
{
    static_cast<Fetch *>(self)->m_timer.forget();
    static_cast<Fetch *>(self)->finish({ErrorCode::SourceUnavailable, "the source does not answer"});
    return G_SOURCE_REMOVE;
}

void Fetch::finish(const Result &result)
{
    const Fetched done = std::exchange(m_done, nullptr);
    cancel();
    if (done) {
        done(result, std::move(m_content));
    }
}

} // namespace voro::renderer
