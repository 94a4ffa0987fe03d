#include "FilePipeline.h"

#include "Trim.h"

#include <renderer/worker/media/Id3.h>

#include <algorithm>
#include <utility>

namespace voro::renderer {

FilePipeline::FilePipeline(GstBus *bus, Succession &succession)
    : m_succession(succession),
      m_pipeline(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new("voro-file")))),
      m_concat(makeElement("concat"))
{
    gst_element_set_bus(m_pipeline.get(), bus);
    gst_bin_add_many(GST_BIN(m_pipeline.get()), m_concat, m_audio.element(), nullptr);
    gst_element_link(m_concat, m_audio.element());
}

FilePipeline::~FilePipeline()
{
    unload();
    gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
}

bool FilePipeline::load(const std::string &uri)
{
    const std::lock_guard lock(m_mutex);
    m_isLoaded = append(uri);
    m_tags.reset();
    if (m_isLoaded && m_tracks.back().chain->format() == FileFormat::TaggedMp3) {
        // The demultiplexer keeps its tags to itself when others read through it.
        const Owned<char> path(g_filename_from_uri(uri.c_str(), nullptr, nullptr));
        m_tags = id3Tags(path.get());
    }
    return m_isLoaded;
}

void FilePipeline::start(bool isAudible, const std::string &role)
{
    GstElement *pipeline = m_pipeline.get();
    const auto open = [&] {
        m_audio.resetSink(isAudible, role);
        m_audio.closeGate();
        if (m_tags) {
            GstTagList *tags = gst_tag_list_ref(m_tags.get());
            gst_element_post_message(pipeline, gst_message_new_tag(GST_OBJECT(pipeline), tags));
        }
        gst_element_set_state(pipeline, GST_STATE_PAUSED);
    };
    open();
    // Other threads open the file meanwhile.
    if (m_audio.hasLostServer()) {
        // They may have come to its end already, and wait for what follows.
        m_succession.release();
        gst_element_set_state(pipeline, GST_STATE_NULL);
        m_succession.setUnknown();
        gst_bus_set_flushing(GST_ELEMENT_BUS(pipeline), TRUE);
        gst_bus_set_flushing(GST_ELEMENT_BUS(pipeline), FALSE);
        m_audio.removeSink();
        open();
    }
}

void FilePipeline::unload()
{
    {
        const std::lock_guard lock(m_mutex);
        if (!std::exchange(m_isLoaded, false)) {
            return;
        }
    }
    for (const Track &track : m_tracks) {
        track.chain->close();
    }
    m_audio.keepConnection();
    // The file is closed then; what is beyond that would have to be done again for the next one.
    gst_element_set_state(m_pipeline.get(), GST_STATE_READY);
    for (Track &track : m_tracks) {
        remove(track);
    }
    m_tracks.clear();
}

void FilePipeline::forgetPlayed()
{
    const std::lock_guard lock(m_mutex);
    if (m_tracks.size() > 1) {
        remove(m_tracks.front());
        m_tracks.pop_front();
    }
}

bool FilePipeline::append(const std::string &uri)
{
    const Owned<char> path(g_filename_from_uri(uri.c_str(), nullptr, nullptr));
    const FileFormat format = path ? fileFormat(path.get()) : FileFormat::Other;
    if (format == FileFormat::Other) {
        return false;
    }
    const auto kept = std::ranges::find(m_kept, format, &DecoderChain::format);
    if (kept == m_kept.end()) {
        m_kept.push_front(std::make_unique<DecoderChain>(format));
    } else {
        m_kept.splice(m_kept.begin(), m_kept, kept);
    }
    if (!m_kept.front()->isComplete()) {
        return false;
    }
    Track &track = m_tracks.emplace_back();
    track.owner = this;
    track.chain = std::move(m_kept.front());
    m_kept.pop_front();
    GstPad *output = track.chain->open(path.get());
    trimEncoderDelay(output, path.get());
    gst_pad_add_probe(output,
                      static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM),
                      onData, &track, nullptr);
    gst_element_set_locked_state(track.chain->element(), FALSE);
    gst_bin_add(GST_BIN(m_pipeline.get()), track.chain->element());
    track.input.reset(gst_element_request_pad_simple(m_concat, "sink_%u"));
    gst_pad_link_full(output, track.input.get(), GST_PAD_LINK_CHECK_NOTHING);
    return true;
}

void FilePipeline::remove(Track &track)
{
    GstElement *element = track.chain->element();
    // A pipeline that is on its way to another state would take it along again, and one that has failed on its way does
    // not take it down.
    gst_element_set_locked_state(element, TRUE);
    gst_element_set_state(element, GST_STATE_READY);
    gst_element_release_request_pad(m_concat, track.input.get());
    gst_bin_remove(GST_BIN(m_pipeline.get()), element);
    m_kept.push_front(std::move(track.chain));
}

// Runs in a streaming thread.
GstPadProbeReturn FilePipeline::onData(GstPad *, GstPadProbeInfo *info, gpointer data)
{
    auto *track = static_cast<Track *>(data);
    if (GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_BUFFER) {
        track->hasSound = true;
    } else if (GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info)) == GST_EVENT_EOS && track->hasSound) {
        track->owner->onPlayed();
    }
    return GST_PAD_PROBE_OK;
}

/** Has the next file ready before the end of this one goes on its way. */
void FilePipeline::onPlayed()
{
    const std::string uri = m_succession.take();
    const std::lock_guard lock(m_mutex);
    if (uri.empty() || !m_isLoaded) {
        return;
    }
    if (append(uri)) {
        gst_element_sync_state_with_parent(m_tracks.back().chain->element());
    } else {
        // It is played all the same, though not without a gap.
        m_succession.release();
    }
}

} // namespace voro::renderer
