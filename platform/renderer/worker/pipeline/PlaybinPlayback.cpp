#include "PlaybinPlayback.h"

#include "Trim.h"

#include <renderer/worker/captions/CaptionEnd.h>
#include <renderer/worker/captions/CaptionLimit.h>
#include <renderer/worker/captions/CaptionStreams.h>
#include <renderer/worker/gst/EarlyErrors.h>
#include <renderer/worker/gst/Gaps.h>
#include <renderer/worker/gst/HttpSource.h>
#include <renderer/worker/gst/PacketsBeforeTarget.h>
#include <renderer/worker/gst/Replay.h>
#include <renderer/worker/gst/WholeOgg.h>
#include <renderer/worker/media/Libav.h>
#include <renderer/worker/video/WindowSink.h>

#include <algorithm>
#include <utility>

namespace voro::renderer {

namespace {

/** The flags of a playbin: what of a medium is played and how. */
enum PlayFlags : guint {
    PlayVideo = 0x1,
    PlayAudio = 0x2,
    PlayText = 0x4,
    /** Conversion and volume are done by our own bins. */
    NativeAudio = 0x20,
    NativeVideo = 0x40,
    BufferStreams = 0x100,
};

/** How often is looked whether time stands still. */
constexpr guint StandstillInterval = 200;

/** The message that all streams of the medium were found. */
constexpr char StreamsKnown[] = "voro-streams-known";
/** The message that more is known of the captions. */
constexpr char CaptionsKnown[] = "voro-captions-known";

void onTextTags(GstElement *playbin, gint, gpointer)
{
    postNote(playbin, CaptionsKnown);
}

} // namespace

PlaybinPlayback::PlaybinPlayback(Succession &succession)
    : PipelinePlayback(makeElement("playbin"), succession),
      m_noVideo(GST_ELEMENT(gst_object_ref_sink(silentSink())))
{
    g_object_set(pipeline(), "audio-sink", audio().element(), "text-sink", m_captions.element(), nullptr);
    keepGapsInside(Owned<GstPad>(gst_element_get_static_pad(m_noVideo.get(), "sink")).get());
    EarlyErrors::keep(pipeline());
    g_signal_connect(pipeline(), "deep-element-added", G_CALLBACK(onElementAdded), this);
    g_signal_connect(pipeline(), "deep-element-added", G_CALLBACK(WholeOgg::onElementAdded), nullptr);
    g_signal_connect(pipeline(), "about-to-finish", G_CALLBACK(onAboutToFinish), this);
    g_signal_connect(pipeline(), "text-tags-changed", G_CALLBACK(onTextTags), nullptr);
}

PlaybinPlayback::~PlaybinPlayback()
{
    unload();
}

bool PlaybinPlayback::load(const Piece &piece)
{
    unload();
    m_piece = piece;
    m_isCaptionFileBad = false;
    m_ways.begin(piece.medium);
    open(false);
    return true;
}

void PlaybinPlayback::reopen(bool needsPicture)
{
    const auto suspension = transport().suspension();
    unload();
    open(needsPicture);
    if (suspension) {
        transport().suspend(*suspension);
    }
}

void PlaybinPlayback::fail(const Failure &failure)
{
    const bool wasPlaying = !isOpening();
    const bool isHopeless = wasPlaying && (!m_ways.isFirst() || !canPlayOn(failure));
    if (isHopeless || !m_ways.takeOther(failure)) {
        m_events.failed(m_ways.cause(failure));
        return;
    }
    if (wasPlaying) {
        transport().suspend(transport().suspended());
    }
    reopen(false);
}

void PlaybinPlayback::open(bool needsPicture)
{
    begin();
    m_openedUri = m_ways.uri();
    m_emptyStreams = 0;
    m_missing = {};
    audio().removeLostSink();
    audio().resetSink(m_piece);
    audio().closeGate();
    // Who decodes asks every sink what it takes, and our bin for pictures takes as long as all the rest. Without any
    // sink playbin would look for one itself; the one it gets answers queries of the position, so it keeps time.
    m_showsPictures = m_piece.outputs.hasVideo || needsPicture;
    if (m_showsPictures) {
        m_video.resetSink(m_piece.outputs.window, m_piece.outputs.areCaptionsOverVideo());
        m_video.awaitDecoded();
    }
    m_hasContent = false;
    m_captionUri = openCaptions();
    m_open.add(m_openedUri);
    if (!m_captionUri.empty()) {
        m_open.add(m_captionUri);
    }
    g_object_set(pipeline(), "video-sink", m_showsPictures ? m_video.element() : m_noVideo.get(), nullptr);
    g_object_set(pipeline(), "uri", m_openedUri.c_str(), "suburi",
                 m_captionUri.empty() ? nullptr : m_captionUri.c_str(), "flags", flags(), nullptr);
    gst_element_set_state(pipeline(), GST_STATE_PAUSED);
    constexpr guint LongestSilence = 4'000;
    m_silence.reset(m_ways.isOwn() && m_piece.medium.isLocal() ? g_timeout_add(LongestSilence, onSilence, this) : 0);
}

/** Prepares what shows captions; the URI of those from elsewhere, empty without. */
std::string PlaybinPlayback::openCaptions()
{
    if (m_piece.outputs.areCaptionsOverVideo()) {
        m_captions.setOverlay(m_video.overlay());
    } else {
        m_captions.setWindow(m_piece.outputs.hasCaptions ? m_piece.outputs.captionWindow : Window());
    }
    m_captions.setShown(m_piece.captions.areShown);
    std::string uri = showsCaptionFile() ? m_captionFile.open(m_piece.captions.medium) : std::string();
    m_isCaptionFileBad = m_piece.hasCaptionFile() && uri.empty();
    if (!uri.empty()) {
        m_captionTimer.reset(g_timeout_add(StandstillInterval, onStandstillDue, this));
    }
    return uri;
}

/** A local medium that comes to nothing in so long a time is stuck. */
gboolean PlaybinPlayback::onSilence(gpointer self)
{
    auto *playback = static_cast<PlaybinPlayback *>(self);
    playback->m_silence.forget();
    if (playback->isOpening()) {
        playback->fail({{ErrorCode::ResourceCorrupted, "nothing comes out of the medium"}});
    }
    return G_SOURCE_REMOVE;
}

unsigned PlaybinPlayback::flags() const
{
    unsigned flags = PlayAudio | NativeAudio | NativeVideo;
    if (m_showsPictures) {
        flags |= PlayVideo;
    }
    if (showsCaptionFile() || (m_piece.outputs.hasCaptions && m_piece.captions.areShown)) {
        flags |= PlayText;
    }
    if (!m_piece.medium.isLocal()) {
        flags |= BufferStreams;
    }
    return flags;
}

void PlaybinPlayback::selectCaptions(const CaptionChoice &captions)
{
    m_piece.captions = captions;
    g_object_set(pipeline(), "flags", flags(), nullptr);
    selectStream();
    m_captions.setShown(captions.areShown);
}

void PlaybinPlayback::selectStream()
{
    const bool isOwn = !showsCaptionFile();
    const auto numbers = isOwn ? ownCaptions(pipeline(), m_openedUri) : otherCaptions(pipeline(), m_openedUri);
    const auto wanted = static_cast<size_t>(isOwn ? m_piece.captions.index : 0);
    gint current = 0;
    g_object_get(pipeline(), "current-text", &current, nullptr);
    if (wanted < numbers.size() && numbers[wanted] != current) {
        g_object_set(pipeline(), "current-text", numbers[wanted], nullptr);
    }
}

CaptionInfo PlaybinPlayback::captions() const
{
    CaptionInfo captions{.isOtherUnreadable = m_isCaptionFileBad};
    for (const int number : ownCaptions(pipeline(), m_openedUri)) {
        captions.streams.push_back(describeCaptions(pipeline(), number));
    }
    return captions;
}

void PlaybinPlayback::stop()
{
    audio().keepConnection();
    gst_element_set_state(pipeline(), GST_STATE_NULL);
    m_open.clear();
    m_captionTimer.reset();
    m_captions.setRunning(false);
    m_captions.clear();
    m_silence.reset();
}

// Runs in a streaming thread.
void PlaybinPlayback::onElementAdded(GstBin *, GstBin *parent, GstElement *element, gpointer self)
{
    if (isOfType(element, "uridecodebin")) {
        g_signal_connect(element, "no-more-pads", G_CALLBACK(onStreamsKnown), self);
        g_signal_connect(element, "pad-added", G_CALLBACK(onStreamAdded), self);
    } else if (isOfType(element, "souphttpsrc")) {
        keepToServersOffer(element);
        if (isOfType(GST_ELEMENT(parent), "uridecodebin")) {
            Replay::insertBehind(element);
        }
    } else if (isOfType(element, "subparse")) {
        limitCaptions(element);
    } else if (isOfType(element, "vorbisdec") || isOfType(element, "opusdec")) {
        skipPacketsBeforeTarget(element);
    }
}

// Runs in a streaming thread.
void PlaybinPlayback::onStreamsKnown(GstElement *decoder, gpointer self)
{
    const auto *playback = static_cast<PlaybinPlayback *>(self);
    if (playback->m_openedUri != uriOf(decoder)) {
        // Captions, or the next medium.
        return;
    }
    postNote(playback->pipeline(), StreamsKnown);
}

// Runs in a streaming thread.
void PlaybinPlayback::onStreamAdded(GstElement *decoder, GstPad *stream, gpointer self)
{
    const Owned<GstCaps> caps(gst_pad_get_current_caps(stream));
    const bool isSound = caps && gst_structure_has_name(gst_caps_get_structure(caps.get(), 0), "audio/x-raw");
    const Owned<char> path(isSound ? g_filename_from_uri(uriOf(decoder).c_str(), nullptr, nullptr) : nullptr);
    if (path) {
        trimEncoderDelay(stream, path.get());
    }
    gst_pad_add_probe(stream, GST_PAD_PROBE_TYPE_BUFFER, onFirstBuffer, self, nullptr);
}

// Runs in a streaming thread.
GstPadProbeReturn PlaybinPlayback::onFirstBuffer(GstPad *stream, GstPadProbeInfo *, gpointer self)
{
    auto *playback = static_cast<PlaybinPlayback *>(self);
    const Owned<GstCaps> caps(gst_pad_get_current_caps(stream));
    const std::string_view type(caps ? gst_structure_get_name(gst_caps_get_structure(caps.get(), 0)) : "");
    if (type.starts_with("audio/") || (type.starts_with("video/") && playback->m_showsPictures)) {
        playback->m_hasContent = true;
    }
    return GST_PAD_PROBE_REMOVE;
}

// Runs in a streaming thread.
void PlaybinPlayback::onAboutToFinish(GstElement *playbin, gpointer self)
{
    auto *playback = static_cast<PlaybinPlayback *>(self);
    gint pictures = 0;
    gint texts = 0;
    g_object_get(playbin, "n-video", &pictures, "n-text", &texts, nullptr);
    // Streams that run side by side wait for each other at their end, which playbin, with the next medium, never lets
    // go. And that nothing was in the medium is told when the end has come through.
    if (pictures > 0 || texts > 0 || !playback->m_hasContent) {
        return;
    }
    playback->audio().passOn();
    const std::string uri = playback->succession().take();
    if (!uri.empty()) {
        playback->m_open.add(uri);
        g_object_set(playbin, "uri", uri.c_str(), "suburi", nullptr, nullptr);
    }
}

gboolean PlaybinPlayback::onStandstillDue(gpointer self)
{
    auto *playback = static_cast<PlaybinPlayback *>(self);
    const int64_t last = std::exchange(playback->m_lastTime, playback->position());
    const Transport &transport = playback->transport();
    const bool standsStill = !transport.isHeld() && !transport.isSeeking() && last == playback->m_lastTime;
    if (standsStill && endCaptions(playback->pipeline(), playback->m_openedUri)) {
        playback->m_captionTimer.forget();
        return G_SOURCE_REMOVE;
    }
    return G_SOURCE_CONTINUE;
}

void PlaybinPlayback::checkStreams()
{
    gint sounds = 0;
    gint pictures = 0;
    g_object_get(pipeline(), "n-audio", &sounds, "n-video", &pictures, nullptr);
    if (sounds == 0 && pictures == 0) {
        fail({{ErrorCode::UnsupportedMediaType, "there is nothing to hear or to see in the medium"}});
    } else if (isOpening() && isMissingAnything(sounds > 0) && m_ways.takeOther({})) {
        reopen(false);
    } else if (sounds == 0 && !m_showsPictures) {
        // The pictures stay invisible, but without them no time would pass.
        reopen(true);
    }
}

void PlaybinPlayback::checkContent()
{
    gint sounds = 0;
    gint pictures = 0;
    g_object_get(pipeline(), "n-audio", &sounds, "n-video", &pictures, nullptr);
    const bool arePicturesDecoded = pictures > 0 && m_showsPictures;
    if (++m_emptyStreams >= (sounds > 0) + arePicturesDecoded && isOpening()) {
        fail({{ErrorCode::ResourceCorrupted, "there is nothing in the medium that can be decoded"}});
    }
}

Dimensions PlaybinPlayback::dimensions() const
{
    if (const Dimensions shown = m_video.dimensions(); shown.width > 0) {
        return shown;
    }
    GstPad *raw = nullptr;
    g_signal_emit_by_name(pipeline(), "get-video-pad", 0, &raw);
    const Owned<GstPad> pad(raw);
    const Owned<GstCaps> caps(pad ? gst_pad_get_current_caps(pad.get()) : nullptr);
    return dimensionsOf(caps.get());
}

void PlaybinPlayback::handle(GstMessage *message)
{
    PipelinePlayback::handle(message);
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_STATE_CHANGED) {
        GstState state = GST_STATE_NULL;
        gst_message_parse_state_changed(message, nullptr, &state, nullptr);
        m_captions.setRunning(state == GST_STATE_PLAYING);
    }
}

void PlaybinPlayback::handleNote(GstMessage *note)
{
    if (gst_message_has_name(note, AudioBin::DecodedMessage)) {
        m_isCaptionFileBad |= m_piece.hasCaptionFile() && otherCaptions(pipeline(), m_openedUri).empty();
        selectStream();
        decoded();
    } else if (gst_message_has_name(note, AudioBin::EmptyMessage)) {
        checkContent();
    } else if (gst_message_has_name(note, StreamsKnown)) {
        checkStreams();
    } else if (gst_message_has_name(note, CaptionsKnown)) {
        m_events.changed();
    } else if (gst_message_has_name(note, "missing-plugin")) {
        noteMissing(note);
    } else if (const Owned<GstMessage> error = EarlyErrors::in(note); error && isOpening()) {
        handleError(error.get());
    }
}

void PlaybinPlayback::handleError(GstMessage *error)
{
    GstObject *source = GST_MESSAGE_SRC(error);
    if (isOfCaptionFile(source)) {
        m_isCaptionFileBad = true;
        if (!isOpening()) {
            transport().suspend(transport().suspended());
        }
        reopen(false);
        return;
    }
    Failure failure = failureOf(error, audio().isSink(source) || m_video.isSink(source));
    if (failure.result.code == ErrorCode::UnsupportedMediaType && !m_missing.name.empty()) {
        failure.result.text = "missing: " + m_missing.name;
    }
    fail(failure);
}

/** Whether captions from elsewhere complain; they keep nothing from being played. */
bool PlaybinPlayback::isOfCaptionFile(GstObject *source) const
{
    GstElement *decoder = decoderAround(source);
    return decoder && !m_captionUri.empty() && uriOf(decoder) == m_captionUri;
}

/** Keeps a playbin's report of a stream that it has no element for. */
void PlaybinPlayback::noteMissing(GstMessage *message)
{
    const GstStructure *content = gst_message_get_structure(message);
    const gchar *name = gst_structure_get_string(content, "name");
    GstCaps *raw = nullptr;
    gst_structure_get(content, "detail", GST_TYPE_CAPS, &raw, nullptr);
    const Owned<GstCaps> caps(raw);
    const std::string_view type =
        caps && gst_caps_get_size(caps.get()) > 0 ? gst_structure_get_name(gst_caps_get_structure(caps.get(), 0)) : "";
    m_missing.name = name ? name : "a plug-in";
    m_missing.hasSound |= type.starts_with("audio/");
    m_missing.hasPictures |= type.starts_with("video/");
}

/** Whether something does not play that somebody wants. */
bool PlaybinPlayback::isMissingAnything(bool hasSound) const
{
    return m_missing.hasSound || (m_missing.hasPictures && (m_showsPictures || !hasSound));
}

} // namespace voro::renderer
