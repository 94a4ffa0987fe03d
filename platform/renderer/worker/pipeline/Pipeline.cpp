#include "Pipeline.h"

#include "Trim.h"

#include <renderer/worker/captions/CaptionEnd.h>
#include <renderer/worker/captions/CaptionLimit.h>
#include <renderer/worker/gst/EarlyErrors.h>
#include <renderer/worker/gst/Gaps.h>
#include <renderer/worker/gst/HttpSource.h>
#include <renderer/worker/gst/Replay.h>
#include <renderer/worker/gst/Unheard.h>
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

/** Whether it is the medium that does not play, and nothing else. */
bool isOfMedium(const Result &failure)
{
    return failure || failure.code == ErrorCode::UnsupportedMediaType || failure.code == ErrorCode::ResourceCorrupted
           || failure.code == ErrorCode::Internal;
}

int64_t toMilliseconds(gint64 nanoseconds)
{
    return nanoseconds / static_cast<gint64>(GST_MSECOND);
}

} // namespace

Pipeline::Pipeline(Events events)
    : m_events(std::move(events)),
      m_blind(GST_ELEMENT(gst_object_ref_sink(silentSink()))),
      m_playbin(GST_ELEMENT(gst_object_ref_sink(makeElement("playbin")))),
      m_file(GST_ELEMENT_BUS(m_playbin.get()), m_succession),
      m_top(m_playbin.get())
{
    g_object_set(m_playbin.get(), "audio-sink", m_audio.element(), "text-sink", m_captions.element(), nullptr);
    keepGapsInside(Owned<GstPad>(gst_element_get_static_pad(m_blind.get(), "sink")).get());
    EarlyErrors::keep(m_playbin.get());
    g_signal_connect(m_playbin.get(), "deep-element-added", G_CALLBACK(onElementAdded), this);
    g_signal_connect(m_playbin.get(), "deep-element-added", G_CALLBACK(WholeOgg::onElementAdded), nullptr);
    g_signal_connect(m_playbin.get(), "about-to-finish", G_CALLBACK(onAboutToFinish), this);
    m_watch.reset(gst_bus_add_watch(GST_ELEMENT_BUS(m_playbin.get()), onMessage, this));
}

Pipeline::~Pipeline()
{
    unload();
    dropAhead();
}

void Pipeline::load(const std::string &uri, const CaptionChoice &captions, const Outputs &outputs)
{
    unload();
    if (m_aheadTimer.isActive() && (uri != m_uri || outputs != m_outputs || !captions.url.empty())) {
        dropAhead();
    }
    m_uri = uri;
    m_choice = captions;
    m_outputs = outputs;
    open();
}

void Pipeline::loadAhead(const std::string &uri, const Outputs &outputs)
{
    constexpr guint LongestWait = 200;
    unload();
    dropAhead();
    if (m_file.load(uri)) {
        m_uri = uri;
        m_outputs = outputs;
        m_aheadTimer.reset(g_timeout_add(LongestWait, onAheadOver, this));
        m_succession.setUnknown();
        startFile();
    }
}

gboolean Pipeline::onAheadOver(gpointer self)
{
    static_cast<Pipeline *>(self)->dropAhead();
    return G_SOURCE_CONTINUE;
}

void Pipeline::dropAhead()
{
    if (m_aheadTimer.isActive()) {
        m_aheadTimer.reset();
        m_succession.release();
        m_file.unload();
        m_aheadMessages.clear();
        forgetMessages();
    }
}

void Pipeline::adoptAhead()
{
    m_aheadTimer.reset();
    m_way = Way::Short;
    m_top = m_file.element();
    // Before what comes now, as it was told.
    GstBus *bus = GST_ELEMENT_BUS(m_playbin.get());
    while (GstMessage *message = gst_bus_pop(bus)) {
        m_aheadMessages.emplace_back(message);
    }
    for (auto &message : std::exchange(m_aheadMessages, {})) {
        gst_bus_post(bus, message.release());
    }
}

void Pipeline::setVolume(long percent)
{
    m_audio.setVolume(percent);
    m_file.audio().setVolume(percent);
}

void Pipeline::setPreset(std::string_view preset)
{
    m_audio.setPreset(preset);
    m_file.audio().setPreset(preset);
}

void Pipeline::open()
{
    m_isLoaded = true;
    m_isOpening = true;
    m_emptyStreams = 0;
    // A short medium may be read to its end before anybody could say what comes next.
    m_succession.setUnknown();
    m_firstFailure.reset();
    if (m_aheadTimer.isActive()) {
        adoptAhead();
    } else if (!hasCaptionFile() && m_file.load(m_uri)) {
        m_way = Way::Short;
        m_top = m_file.element();
        startFile();
    } else {
        openAs(isReadBestByLibav() ? Way::Libav : Way::Usual);
    }
}

void Pipeline::startFile()
{
    m_audio.removeLostSink();
    m_file.start(m_outputs.isAudible, m_outputs.role);
}

void Pipeline::fail(const Failure &failure)
{
    if (m_isOpening ? openAnotherWay(failure) : playAnotherWay(failure)) {
        return;
    }
    const bool isFirstTold = m_firstFailure && isOfMedium(failure.result) && !failure.namesCodec
                             && (m_way == Way::Libav || m_firstFailure->namesCodec);
    const Failure told = isFirstTold ? *m_firstFailure : failure;
    (told.isUnrecognized ? m_events.unrecognized : m_events.failed)(told.result);
}

bool Pipeline::openAnotherWay(const Failure &failure)
{
    if (isShort()) {
        reopen(Way::Usual);
        return true;
    }
    const Way other = m_way == Way::Usual ? Way::Libav : Way::Usual;
    if (!isOfMedium(failure.result) || libavUri(m_uri).empty()) {
        return false;
    }
    // Once each, unless the first one at least plays a part.
    if (m_firstFailure && !m_firstFailure->result) {
        return false;
    }
    m_firstFailure = failure;
    reopen(other);
    return true;
}

/** As if nothing had happened, when the other way does better. */
bool Pipeline::playAnotherWay(const Failure &failure)
{
    if (m_firstFailure || m_hasAdvanced || m_succession.isTaken() || !isOfMedium(failure.result)) {
        return false;
    }
    m_resumption = Resumption{{position(), m_rate}, m_hasBegun && !m_isHeld};
    const bool isOther = openAnotherWay(failure);
    if (!isOther) {
        m_resumption.reset();
    }
    return isOther;
}

void Pipeline::resume()
{
    const Resumption resumption = *std::exchange(m_resumption, std::nullopt);
    if (resumption.target.time > 0 || resumption.target.rate != m_rate) {
        seek(resumption.target.time, resumption.target.rate);
    }
    if (resumption.isRunning) {
        run();
    }
    m_events.changed();
}

void Pipeline::reopen(Way way)
{
    const auto resumption = m_resumption;
    unload();
    m_resumption = resumption;
    if (resumption) {
        m_rest = resumption->target.time;
    }
    openAs(way);
}

void Pipeline::openAs(Way way)
{
    m_way = way;
    m_openedUri = way == Way::Libav ? libavUri(m_uri) : m_uri;
    openPlaybin(false);
}

void Pipeline::openPlaybin(bool needsPicture)
{
    m_top = m_playbin.get();
    m_isLoaded = true;
    m_isOpening = true;
    m_emptyStreams = 0;
    m_missing = {};
    m_succession.setUnknown();
    // All sinks share a connection: a kept one would give its broken one to every new one.
    m_file.audio().removeLostSink();
    m_audio.removeLostSink();
    m_audio.resetSink(m_outputs.isAudible, m_outputs.role);
    m_audio.closeGate();
    // Who decodes asks every sink what it takes, and our bin for pictures takes as long as all the rest. Without any
    // sink playbin would look for one itself; and the one it gets tells the position, so it keeps time.
    m_showsPictures = m_outputs.hasVideo || needsPicture;
    if (m_showsPictures) {
        m_video.resetSink(m_outputs.window, m_outputs.areCaptionsOverVideo());
        m_video.awaitDecoded();
    }
    m_hasContent = false;
    if (m_outputs.areCaptionsOverVideo()) {
        m_captions.setOverlay(m_video.overlay());
    } else {
        m_captions.setWindow(m_outputs.hasCaptions ? m_outputs.captionWindow : Window());
    }
    m_captions.setShown(m_choice.areShown);
    if (hasCaptionFile()) {
        m_captionTimer.reset(g_timeout_add(StandstillInterval, onStandstillDue, this));
    }
    const std::string captions = hasCaptionFile() ? m_captionFile.open(m_choice.url) : std::string();
    m_open.add(m_openedUri);
    if (!captions.empty()) {
        m_open.add(captions);
    }
    g_object_set(m_playbin.get(), "video-sink", m_showsPictures ? m_video.element() : m_blind.get(), nullptr);
    g_object_set(m_playbin.get(), "uri", m_openedUri.c_str(), "suburi", captions.empty() ? nullptr : captions.c_str(),
                 "flags", flags(), nullptr);
    gst_element_set_state(m_playbin.get(), GST_STATE_PAUSED);
    constexpr guint LongestSilence = 4'000;
    m_silence.reset(m_way == Way::Usual && isLocal() ? g_timeout_add(LongestSilence, onSilence, this) : 0);
}

/** A local medium that comes to nothing in so long a time is stuck. */
gboolean Pipeline::onSilence(gpointer self)
{
    auto *pipeline = static_cast<Pipeline *>(self);
    pipeline->m_silence.forget();
    if (pipeline->m_isOpening) {
        pipeline->fail({{ErrorCode::ResourceCorrupted, "nothing comes out of the medium"}});
    }
    return G_SOURCE_REMOVE;
}

/** Whether libavformat is asked first: GStreamer's own elements tell no tags of some formats, or wrong durations. */
bool Pipeline::isReadBestByLibav() const
{
    const Owned<char> path(g_filename_from_uri(m_uri.c_str(), nullptr, nullptr));
    return path && isReadBestByLibavformat(path.get()) && !libavUri(m_uri).empty();
}

unsigned Pipeline::flags() const
{
    unsigned flags = PlayAudio | NativeAudio | NativeVideo;
    if (m_showsPictures) {
        flags |= PlayVideo;
    }
    if (hasCaptionFile() || (m_outputs.hasCaptions && m_choice.areShown)) {
        flags |= PlayText;
    }
    if (!isLocal()) {
        flags |= BufferStreams;
    }
    return flags;
}

void Pipeline::selectCaptions(const CaptionChoice &captions)
{
    m_choice = captions;
    if (isShort()) {
        return;
    }
    g_object_set(m_playbin.get(), "flags", flags(), nullptr);
    selectStream();
    m_captions.setShown(captions.areShown);
}

void Pipeline::selectStream()
{
    gint texts = 0;
    gint current = 0;
    g_object_get(m_playbin.get(), "n-text", &texts, "current-text", &current, nullptr);
    if (m_choice.index < texts && m_choice.index != current) {
        g_object_set(m_playbin.get(), "current-text", m_choice.index, nullptr);
    }
}

void Pipeline::run()
{
    if (m_resumption) {
        m_resumption->isRunning = true;
        return;
    }
    audio().openGate();
    m_hasBegun = true;
    m_isHeld = false;
    m_rest.reset();
    settle();
}

void Pipeline::hold()
{
    if (m_resumption) {
        m_resumption->isRunning = false;
        return;
    }
    m_isHeld = true;
    settle();
}

void Pipeline::settle()
{
    const GstStateChangeReturn change = gst_element_get_state(m_top, nullptr, nullptr, 0);
    // What has failed tells why. Asked again, a playbin takes itself apart while its threads still run, and hangs.
    if (change == GST_STATE_CHANGE_FAILURE) {
        return;
    }
    // Whoever asks a bin for less while it is on its way, and then for more again, may get neither: the bin drops the
    // rest of its change. Holding waits for the end of the change instead.
    if (!m_isHeld) {
        gst_element_set_state(m_top, GST_STATE_PLAYING);
    } else if (change != GST_STATE_CHANGE_ASYNC) {
        gst_element_set_state(m_top, GST_STATE_PAUSED);
    }
}

void Pipeline::unload()
{
    if (!std::exchange(m_isLoaded, false)) {
        return;
    }
    m_succession.release();
    if (isShort()) {
        m_file.unload();
    } else {
        m_audio.keepConnection();
        gst_element_set_state(m_playbin.get(), GST_STATE_NULL);
    }
    forgetMessages();
    m_open.clear();
    m_captionTimer.reset();
    m_captions.clear();
    m_rate = 1000;
    m_isHeld = true;
    m_hasBegun = false;
    m_group = GST_GROUP_ID_INVALID;
    m_hasAdvanced = false;
    m_silence.reset();
    m_resumption.reset();
    m_seeking.reset();
    m_next.reset();
    m_rest.reset();
}

/** What an old medium still had to say is not the new one's. */
void Pipeline::forgetMessages()
{
    gst_bus_set_flushing(GST_ELEMENT_BUS(m_playbin.get()), TRUE);
    gst_bus_set_flushing(GST_ELEMENT_BUS(m_playbin.get()), FALSE);
}

bool Pipeline::seek(int64_t time, int rate)
{
    const Target target{time, rate};
    if (m_resumption) {
        m_resumption->target = target;
        m_rest = time;
        return true;
    }
    if (m_seeking && m_hasBegun && rate == m_rate) {
        m_next = target;
        return true;
    }
    return seekNow(target);
}

bool Pipeline::seekNow(const Target &target)
{
    // A streaming thread that waits for the next medium would hold the seek up.
    m_succession.release();
    const auto time = target.time * static_cast<gint64>(GST_MSECOND);
    const bool isForward = target.rate > 0;
    const bool isDone = gst_element_seek(m_top, target.rate / 1000.0, GST_FORMAT_TIME,
                                         static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE),
                                         GST_SEEK_TYPE_SET, isForward ? time : 0, GST_SEEK_TYPE_SET,
                                         isForward ? static_cast<gint64>(GST_CLOCK_TIME_NONE) : time);
    if (isDone) {
        m_rate = target.rate;
        m_seeking = target;
        m_rest = target.time;
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
void Pipeline::onElementAdded(GstBin *, GstBin *parent, GstElement *element, gpointer self)
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
        skipUnheard(element);
    }
}

// Runs in a streaming thread.
void Pipeline::onStreamsKnown(GstElement *decoder, gpointer self)
{
    const auto *pipeline = static_cast<Pipeline *>(self);
    if (pipeline->m_openedUri != uriOf(decoder)) {
        // Captions, or the next medium.
        return;
    }
    postNote(pipeline->m_playbin.get(), StreamsKnown);
}

// Runs in a streaming thread.
void Pipeline::onStreamAdded(GstElement *decoder, GstPad *stream, gpointer self)
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
GstPadProbeReturn Pipeline::onFirstBuffer(GstPad *stream, GstPadProbeInfo *, gpointer self)
{
    auto *pipeline = static_cast<Pipeline *>(self);
    const Owned<GstCaps> caps(gst_pad_get_current_caps(stream));
    const std::string_view type(caps ? gst_structure_get_name(gst_caps_get_structure(caps.get(), 0)) : "");
    if (type.starts_with("audio/") || (type.starts_with("video/") && pipeline->m_showsPictures)) {
        pipeline->m_hasContent = true;
    }
    return GST_PAD_PROBE_REMOVE;
}

// Runs in a streaming thread.
void Pipeline::onAboutToFinish(GstElement *playbin, gpointer self)
{
    auto *pipeline = static_cast<Pipeline *>(self);
    gint pictures = 0;
    gint texts = 0;
    g_object_get(playbin, "n-video", &pictures, "n-text", &texts, nullptr);
    // Streams that run side by side wait for each other at their end, which playbin, with the next medium, never lets
    // go. And that nothing was in the medium is told when the end has come through.
    if (pictures > 0 || texts > 0 || !pipeline->m_hasContent) {
        return;
    }
    const std::string uri = pipeline->m_succession.take();
    if (!uri.empty()) {
        pipeline->m_open.add(uri);
        g_object_set(playbin, "uri", uri.c_str(), "suburi", nullptr, nullptr);
    }
}

gboolean Pipeline::onStandstillDue(gpointer self)
{
    auto *pipeline = static_cast<Pipeline *>(self);
    const int64_t last = std::exchange(pipeline->m_lastTime, pipeline->position());
    const bool standsStill = !pipeline->m_isHeld && !pipeline->m_seeking && last == pipeline->m_lastTime;
    if (standsStill && endCaptions(pipeline->m_playbin.get(), pipeline->m_openedUri)) {
        pipeline->m_captionTimer.forget();
        return G_SOURCE_REMOVE;
    }
    return G_SOURCE_CONTINUE;
}

void Pipeline::checkStreams()
{
    gint sounds = 0;
    gint pictures = 0;
    g_object_get(m_playbin.get(), "n-audio", &sounds, "n-video", &pictures, nullptr);
    if (sounds == 0 && pictures == 0) {
        fail({{ErrorCode::UnsupportedMediaType, "there is nothing to hear or to see in the medium"}});
    } else if (m_isOpening && isMissingAnything(sounds > 0) && openAnotherWay({})) {
        return;
    } else if (sounds == 0 && !m_showsPictures) {
        // Nobody sees the pictures, but without them no time would pass.
        unload();
        openPlaybin(true);
    }
}

void Pipeline::checkContent()
{
    gint sounds = 0;
    gint pictures = 0;
    g_object_get(m_playbin.get(), "n-audio", &sounds, "n-video", &pictures, nullptr);
    const bool arePicturesDecoded = pictures > 0 && m_showsPictures;
    if (++m_emptyStreams >= (sounds > 0) + arePicturesDecoded && m_isOpening) {
        fail({{ErrorCode::ResourceCorrupted, "there is nothing in the medium that can be decoded"}});
    }
}

Dimensions Pipeline::dimensions() const
{
    if (isShort()) {
        return {};
    }
    if (const Dimensions shown = m_video.dimensions(); shown.width > 0) {
        return shown;
    }
    GstPad *raw = nullptr;
    g_signal_emit_by_name(m_playbin.get(), "get-video-pad", 0, &raw);
    const Owned<GstPad> pad(raw);
    const Owned<GstCaps> caps(pad ? gst_pad_get_current_caps(pad.get()) : nullptr);
    return dimensionsOf(caps.get());
}

int64_t Pipeline::position() const
{
    if (m_next || m_seeking) {
        return m_next ? m_next->time : m_seeking->time;
    }
    if (m_isHeld && m_rest) {
        return *m_rest;
    }
    gint64 position = 0;
    gst_element_query_position(m_top, GST_FORMAT_TIME, &position);
    return std::max<int64_t>(0, toMilliseconds(position));
}

gboolean Pipeline::onMessage(GstBus *, GstMessage *message, gpointer self)
{
    auto *pipeline = static_cast<Pipeline *>(self);
    if (pipeline->m_aheadTimer.isActive()) {
        pipeline->m_aheadMessages.emplace_back(gst_message_ref(message));
    } else {
        pipeline->handle(message);
    }
    return G_SOURCE_CONTINUE;
}

void Pipeline::handle(GstMessage *message)
{
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_ELEMENT:
        handleOwn(message);
        break;
    case GST_MESSAGE_EOS:
        // An end that was reached before the seek that is on its way is none any more.
        if (!m_seeking || !m_hasBegun) {
            m_events.ended();
        }
        break;
    case GST_MESSAGE_ERROR:
        handleError(message);
        break;
    case GST_MESSAGE_TAG: {
        // Our bin has told it already; and what the next medium says is not this one's.
        if (audio().isSink(GST_MESSAGE_SRC(message)) || m_succession.isTaken()) {
            break;
        }
        GstTagList *tags = nullptr;
        gst_message_parse_tag(message, &tags);
        const Owned<GstTagList> owned(tags);
        m_events.tagged(tags);
        break;
    }
    case GST_MESSAGE_STREAM_START:
        handleStart(message);
        break;
    case GST_MESSAGE_ASYNC_DONE:
        finishSeek();
        m_events.changed();
        break;
    case GST_MESSAGE_STATE_CHANGED:
        if (GST_MESSAGE_SRC(message) == GST_OBJECT(m_top) && m_hasBegun) {
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

/** Handles what this program's own bins and helpers tell. */
void Pipeline::handleOwn(GstMessage *message)
{
    if (gst_message_has_name(message, AudioBin::DecodedMessage)) {
        m_isOpening = false;
        selectStream();
        m_resumption ? resume() : m_events.decoded();
    } else if (gst_message_has_name(message, AudioBin::EmptyMessage)) {
        if (!isShort()) {
            checkContent();
        } else if (m_isOpening) {
            reopen(Way::Usual);
        }
    } else if (gst_message_has_name(message, StreamsKnown)) {
        checkStreams();
    } else if (gst_message_has_name(message, "missing-plugin")) {
        noteMissing(message);
    } else if (const Owned<GstMessage> error = EarlyErrors::in(message); error && m_isOpening) {
        handleError(error.get());
    }
}

void Pipeline::handleError(GstMessage *error)
{
    GstObject *source = GST_MESSAGE_SRC(error);
    Failure failure{toResult(error, audio().isSink(source) || m_video.isSink(source)), isUnrecognized(error),
                    namesCodec(error)};
    if (failure.result.code == ErrorCode::UnsupportedMediaType && !m_missing.name.empty()) {
        failure.result.text = "missing: " + m_missing.name;
    }
    fail(failure);
}

/** Keeps what a playbin tells of a stream that it has no element for. */
void Pipeline::noteMissing(GstMessage *message)
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
bool Pipeline::isMissingAnything(bool hasSound) const
{
    return m_missing.hasSound || (m_missing.hasPictures && (m_showsPictures || !hasSound));
}

void Pipeline::handleStart(GstMessage *message)
{
    guint group = GST_GROUP_ID_INVALID;
    gst_message_parse_group_id(message, &group);
    const bool isOther = m_group != GST_GROUP_ID_INVALID && group != m_group;
    m_group = group;
    if (isOther && m_succession.isTaken()) {
        m_hasAdvanced = true;
        m_succession.advance();
        m_file.forgetPlayed();
        m_events.advanced();
    }
}

} // namespace voro::renderer
