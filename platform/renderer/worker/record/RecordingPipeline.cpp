#include "RecordingPipeline.h"

#include <renderer/worker/gst/Failure.h>

#include <utility>

namespace voro::renderer {

namespace {

/** How long the file system may keep the writer waiting before samples are lost. */
constexpr guint64 LongestWait = 10 * GST_SECOND;

GstElement *makeFilter(int channels)
{
    GstElement *filter = makeElement("capsfilter");
    const Owned<GstCaps> caps(gst_caps_new_simple("audio/x-raw", "format", G_TYPE_STRING, "S16LE", "layout",
                                                  G_TYPE_STRING, "interleaved", nullptr));
    if (channels > 0) {
        gst_caps_set_simple(caps.get(), "channels", G_TYPE_INT, channels, nullptr);
    }
    g_object_set(filter, "caps", caps.get(), nullptr);
    return filter;
}

} // namespace

RecordingPipeline::RecordingPipeline(Events events, GstElement *source, GstElement *encoder,
                                     const RecordingFormat &format, int channels)
    : m_events(std::move(events)),
      m_pipeline(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new("voro-recording")))),
      m_source(source),
      m_filter(makeFilter(channels)),
      m_gate(m_filter, format.latency),
      m_writer(format, [this] { return m_gate.frames(); })
{
    GstElement *convert = makeElement("audioconvert");
    GstElement *resample = makeElement("audioresample");
    GstElement *queue = makeElement("queue");
    g_object_set(queue, "max-size-buffers", 0, "max-size-bytes", 0, "max-size-time", LongestWait, nullptr);
    gst_bin_add_many(GST_BIN(m_pipeline.get()), source, convert, resample, m_filter, queue, m_writer.sink(), nullptr);
    gst_element_link_many(source, convert, resample, m_filter, queue, nullptr);
    if (encoder) {
        gst_bin_add(GST_BIN(m_pipeline.get()), encoder);
        gst_element_link_many(queue, encoder, m_writer.sink(), nullptr);
    } else {
        gst_element_link(queue, m_writer.sink());
    }
    const Owned<GstBus> bus(gst_element_get_bus(m_pipeline.get()));
    m_watch.reset(gst_bus_add_watch(bus.get(), onMessage, this));
}

RecordingPipeline::~RecordingPipeline()
{
    release();
}

Result RecordingPipeline::prepare()
{
    if (gst_element_set_state(m_pipeline.get(), GST_STATE_READY) != GST_STATE_CHANGE_FAILURE) {
        return {};
    }
    const Owned<GstBus> bus(gst_element_get_bus(m_pipeline.get()));
    const Owned<GstMessage> message(gst_bus_pop_filtered(bus.get(), GST_MESSAGE_ERROR));
    return message ? failureOf(message.get()) : Result(ErrorCode::SourceUnavailable, "there is no source of sound");
}

void RecordingPipeline::start(pps::Fd file, bool isOpen)
{
    m_writer.open(std::move(file));
    m_gate.reset(isOpen);
    gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING);
}

void RecordingPipeline::finish()
{
    m_gate.end();
}

void RecordingPipeline::release()
{
    gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
    m_writer.finish();
}

void RecordingPipeline::abandon()
{
    gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
    m_writer.abandon();
    prepare();
}

Result RecordingPipeline::failureOf(GstMessage *message) const
{
    Result result = toResult(message, false);
    const bool isSource = GST_MESSAGE_SRC(message) == GST_OBJECT(m_source)
                          || gst_object_has_as_ancestor(GST_MESSAGE_SRC(message), GST_OBJECT(m_source));
    if (isSource && result.code != ErrorCode::Permission && result.code != ErrorCode::ResourceUnavailable) {
        result.code = ErrorCode::SourceUnavailable;
    }
    return result;
}

/** A source that changes what it gives must not change the file. */
void RecordingPipeline::keepFormat()
{
    const Owned<GstPad> pad(gst_element_get_static_pad(m_filter, "src"));
    if (const Owned<GstCaps> caps(gst_pad_get_current_caps(pad.get())); caps) {
        g_object_set(m_filter, "caps", caps.get(), nullptr);
    }
}

gboolean RecordingPipeline::onMessage(GstBus *, GstMessage *message, gpointer self)
{
    static_cast<RecordingPipeline *>(self)->handle(message);
    return G_SOURCE_CONTINUE;
}

void RecordingPipeline::handle(GstMessage *message)
{
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_ELEMENT:
        if (gst_message_has_name(message, SampleGate::FirstMessage)) {
            keepFormat();
            m_events.begun();
        }
        break;
    case GST_MESSAGE_EOS:
        m_events.ended();
        break;
    case GST_MESSAGE_ERROR:
        m_graph.showFailure();
        m_events.failed(failureOf(message));
        break;
    default:
        break;
    }
}

} // namespace voro::renderer
