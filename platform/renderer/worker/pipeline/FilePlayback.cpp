#include "FilePlayback.h"

#include "Trim.h"

#include <renderer/worker/gst/Failure.h>
#include <renderer/worker/media/Id3.h>

#include <algorithm>
#include <utility>

namespace voro::renderer {

FilePlayback::FilePlayback(Succession &succession)
    : PipelinePlayback(gst_pipeline_new("voro-file"), succession),
      m_concat(makeElement("concat"))
{
    gst_bin_add_many(GST_BIN(pipeline()), m_concat, audio().element(), nullptr);
    gst_element_link(m_concat, audio().element());
}

FilePlayback::~FilePlayback()
{
    unload();
    dropAhead();
    gst_element_set_state(pipeline(), GST_STATE_NULL);
}

bool FilePlayback::load(const Piece &piece)
{
    unload();
    // It is asked for with another URL for the same file.
    const bool isAhead = m_aheadTimer.isActive() && piece.medium.uri() == m_piece.medium.uri()
                         && piece.outputs == m_piece.outputs && piece.isChanging == m_piece.isChanging;
    if (isAhead && !piece.hasCaptionFile()) {
        begin();
        adoptAhead();
        return true;
    }
    dropAhead();
    if (!take(piece)) {
        return false;
    }
    begin();
    start();
    return true;
}

void FilePlayback::loadAhead(const Piece &piece)
{
    constexpr guint LongestWait = 200;
    unload();
    dropAhead();
    if (take(piece)) {
        m_aheadTimer.reset(g_timeout_add(LongestWait, onAheadOver, this));
        succession().setUnknown();
        start();
    }
}

gboolean FilePlayback::onAheadOver(gpointer self)
{
    static_cast<FilePlayback *>(self)->dropAhead();
    return G_SOURCE_CONTINUE;
}

void FilePlayback::dropAhead()
{
    if (m_aheadTimer.isActive()) {
        m_aheadTimer.reset();
        succession().release();
        stop();
        m_aheadMessages.clear();
        forgetMessages();
    }
}

void FilePlayback::adoptAhead()
{
    m_aheadTimer.reset();
    // Before what comes now, as it was reported.
    GstBus *bus = GST_ELEMENT_BUS(pipeline());
    while (GstMessage *message = gst_bus_pop(bus)) {
        m_aheadMessages.emplace_back(message);
    }
    for (auto &message : std::exchange(m_aheadMessages, {})) {
        gst_bus_post(bus, message.release());
    }
}

/** Takes up a medium; false when it is none that can be played this way. */
bool FilePlayback::take(const Piece &piece)
{
    const std::lock_guard lock(m_mutex);
    m_piece = piece;
    m_isTaken = !piece.hasCaptionFile() && append(piece.medium.uri());
    m_tags.reset();
    if (m_isTaken && m_tracks.back().chain->format() == FileFormat::TaggedMp3) {
        // The demultiplexer keeps its tags to itself when others read through it.
        m_tags = id3Tags(piece.medium.path());
    }
    return m_isTaken;
}

/** Opens what was taken up, up to the closed gate. */
void FilePlayback::start()
{
    const auto open = [this] {
        audio().resetSink(m_piece);
        audio().closeGate();
        if (m_tags) {
            GstTagList *tags = gst_tag_list_ref(m_tags.get());
            gst_element_post_message(pipeline(), gst_message_new_tag(GST_OBJECT(pipeline()), tags));
        }
        gst_element_set_state(pipeline(), GST_STATE_PAUSED);
    };
    open();
    // Other threads open the file meanwhile.
    if (audio().hasLostServer()) {
        // They may have come to its end already, and wait for what follows.
        succession().release();
        gst_element_set_state(pipeline(), GST_STATE_NULL);
        succession().setUnknown();
        forgetMessages();
        audio().removeSink();
        open();
    }
}

void FilePlayback::stop()
{
    {
        const std::lock_guard lock(m_mutex);
        if (!std::exchange(m_isTaken, false)) {
            return;
        }
    }
    for (const Track &track : m_tracks) {
        track.chain->close();
    }
    audio().keepConnection();
    // The file is closed then; what is beyond that would have to be done again for the next one.
    gst_element_set_state(pipeline(), GST_STATE_READY);
    for (Track &track : m_tracks) {
        remove(track);
    }
    m_tracks.clear();
}

void FilePlayback::handle(GstMessage *message)
{
    if (m_aheadTimer.isActive()) {
        m_aheadMessages.emplace_back(gst_message_ref(message));
    } else {
        PipelinePlayback::handle(message);
    }
}

void FilePlayback::handleNote(GstMessage *note)
{
    if (gst_message_has_name(note, AudioBin::DecodedMessage)) {
        decoded();
    } else if (gst_message_has_name(note, AudioBin::EmptyMessage) && isOpening()) {
        m_events.failed({{ErrorCode::ResourceCorrupted, "there is nothing in the medium that can be decoded"}});
    }
}

void FilePlayback::handleError(GstMessage *error)
{
    m_events.failed(failureOf(error, audio().isSink(GST_MESSAGE_SRC(error))));
}

void FilePlayback::forgetPlayed()
{
    const std::lock_guard lock(m_mutex);
    if (m_tracks.size() > 1) {
        remove(m_tracks.front());
        m_tracks.pop_front();
    }
}

bool FilePlayback::append(const std::string &uri)
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
    // Locked until it is linked: a pipeline on its way to another state would start it, and it would have nowhere to
    // push to.
    gst_element_set_locked_state(track.chain->element(), TRUE);
    gst_bin_add(GST_BIN(pipeline()), track.chain->element());
    track.input.reset(gst_element_request_pad_simple(m_concat, "sink_%u"));
    gst_pad_link_full(output, track.input.get(), GST_PAD_LINK_CHECK_NOTHING);
    gst_element_set_locked_state(track.chain->element(), FALSE);
    return true;
}

void FilePlayback::remove(Track &track)
{
    GstElement *element = track.chain->element();
    // A pipeline that is on its way to another state would take it along again, and one that has failed on its way does
    // not take it down.
    gst_element_set_locked_state(element, TRUE);
    gst_element_set_state(element, GST_STATE_READY);
    gst_element_release_request_pad(m_concat, track.input.get());
    gst_bin_remove(GST_BIN(pipeline()), element);
    m_kept.push_front(std::move(track.chain));
}

// Runs in a streaming thread.
GstPadProbeReturn FilePlayback::onData(GstPad *, GstPadProbeInfo *info, gpointer data)
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
void FilePlayback::onPlayed()
{
    audio().passOn();
    const std::string uri = succession().take();
    const std::lock_guard lock(m_mutex);
    if (uri.empty() || !m_isTaken) {
        return;
    }
    if (append(uri)) {
        gst_element_sync_state_with_parent(m_tracks.back().chain->element());
    } else {
        // It is played all the same, though not without a gap.
        succession().release();
    }
}

} // namespace voro::renderer
