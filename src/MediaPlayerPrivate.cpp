#include <voro/device/DisplayInfo.h>

#include <private/Dictionary.h>
#include <private/LocalPath.h>
#include <private/Logger.h>
#include <private/MediaPlayerPrivate.h>
#include <private/Values.h>

#include <array>
#include <utility>

namespace voro::multimedia {

namespace {

struct Candidate {
    QString url;
    QString type;
};

/** The inputs to try for a source: a local file first as a playlist, anything else first as a medium. */
std::array<Candidate, 2> inputCandidates(const QUrl &url)
{
    const QString playlist = QStringLiteral("playlist");
    const QString autolist = QStringLiteral("autolist");
    const QString path = toLocalPath(url);
    if (!path.isEmpty()) {
        return {Candidate{QStringLiteral("file://") + path, playlist}, Candidate{path, autolist}};
    }
    const QString text = url.toString().replace(QLatin1Char(' '), QLatin1String("%20"));
    return {Candidate{text, autolist}, Candidate{text, playlist}};
}

} // namespace

MediaPlayerPrivate::MediaPlayerPrivate(MediaPlayer *player) : ContextOwner(player)
{
    TRACE_FUNCTION();
}

MediaError::Type MediaPlayerPrivate::lastError() const
{
    TRACE_FUNCTION();
    const mmr_error_info_t *info = m_context ? mmr_error_info(m_context) : nullptr;
    if (!info) {
        return MediaError::None;
    }
    const auto error = static_cast<MediaError::Type>(info->error_code);
    if (error != MediaError::CommandFailed) {
        return error;
    }
    const auto cause = static_cast<MediaError::Type>(info->extra_value);
    WARNING_LINE << "Command failed. Received " << keyName(cause);
    return cause;
}

void MediaPlayerPrivate::connectNotifier()
{
    using Notifier = MmrContextNotifier;
    using Self = MediaPlayerPrivate;
    connect(m_notifier, &Notifier::buffering, this, &Self::onBuffering);
    connect(m_notifier, &Notifier::bufferStatusChanged, this, &Self::onBufferStatusChanged);
    connect(m_notifier, &Notifier::durationChanged, this, &Self::onDurationChanged);
    connect(m_notifier, &Notifier::error, this, &Self::onMmrError);
    connect(m_notifier, &Notifier::idle, this, &Self::onMmrIdle);
    connect(m_notifier, &Notifier::metaDataChanged, this, &Self::onMetaDataChanged);
    connect(m_notifier, &Notifier::paused, this, &Self::onMmrPaused);
    connect(m_notifier, &Notifier::playbackCompleted, this, &Self::onMmrPlaybackCompleted);
    connect(m_notifier, &Notifier::positionChanged, this, &Self::onMmrPositionChanged);
    connect(m_notifier, &Notifier::playing, this, &Self::onMmrPlaying);
    connect(m_notifier, &Notifier::seekableChanged, this, &Self::onSeekableChanged);
    connect(m_notifier, &Notifier::speedChanged, this, &Self::onMmrSpeedChanged);
    connect(m_notifier, &Notifier::stopped, this, &Self::onMmrStopped);
    connect(m_notifier, &Notifier::trackChanged, this, &Self::onTrackChanged);
    connect(m_notifier, &Notifier::trackCountChanged, this, &Self::onTrackCountChanged);
    connect(m_notifier, &Notifier::videoDimensionsChanged, this, &Self::onVideoDimensionsChanged);
}

// State

void MediaPlayerPrivate::setMediaState(MediaState::Type mediaState)
{
    TRACE_FUNCTION();
    if (!replace(m_mediaState, mediaState)) {
        DEBUG_LINE << "Attempting to change to same state.  mediaState=" << keyName(mediaState);
        return;
    }
    if (mediaState == MediaState::Unprepared) {
        onBufferStatusChanged(BufferStatus::Idle);
        onTrackChanged(1);
        onDurationChanged(0);
        onSeekableChanged(false);
        m_metaData = {};
    }
    announce(tracer, &MediaPlayer::mediaStateChanged, "mediaState", m_mediaState);
}

MediaError::Type MediaPlayerPrivate::play()
{
    TRACE_FUNCTION();
    if (!hasContext(tracer)) {
        return MediaError::None;
    }
    // A speed of 0 is never stored, so this also ends a pause.
    if (const auto error = q->setSpeed(toFactor(m_speed))) {
        return fail(tracer, error, "Error setting the playback speed. speed=", m_speed, ", error=");
    }
    if (m_mediaState == MediaState::Started || isOrphan()) {
        return MediaError::None;
    }
    if (mmr_play(m_context) == -1) {
        return fail(tracer, lastError(), "Error playing the player. error=");
    }
    setMediaState(MediaState::Started);
    return MediaError::None;
}

MediaError::Type MediaPlayerPrivate::unprepare()
{
    TRACE_FUNCTION();
    if (!hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (m_mediaState == MediaState::Unprepared) {
        DEBUG_LINE << "Already unprepared";
        return MediaError::None;
    }
    if (!hasEnded(mmr_stop(m_context))) {
        return fail(tracer, lastError(), "Error stopping the player. error=");
    }
    if (!hasEnded(mmr_input_detach(m_context))) {
        return fail(tracer, lastError(), "Error detaching playback input. error=");
    }
    // The text of the closed-caption output is the video output's; this is required.
    const std::pair<int, const char *> outputs[] = {
        {m_audioOutputId, "Error detaching audio output. error="},
        {m_videoOutputId, "Error detaching video output. error="},
        {m_closedCaptionOutputId, "Error detaching video output. error="},
    };
    for (const auto &[outputId, text] : outputs) {
        if (outputId != -1 && mmr_output_detach(m_context, outputId) == -1) {
            return fail(tracer, lastError(), text);
        }
    }
    m_audioOutputId = m_closedCaptionOutputId = m_videoOutputId = -1;
    setMediaState(MediaState::Unprepared);
    return MediaError::None;
}

MediaError::Type MediaPlayerPrivate::seek(unsigned int track, unsigned int position)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "track=" << track;
    DEBUG_LINE << "position=" << position;
    if (!hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (const auto error = m_notifier->seek(track, position)) {
        return fail(tracer, error, "Unable to seek track. track=", track, ", position=", position, ", error=");
    }
    m_track = track;
    announceTrack(tracer);
    return MediaError::None;
}

// Input and outputs

MediaError::Type MediaPlayerPrivate::attachInput(const QUrl &url)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "url=" << LoggedUrl(url);
    if (m_mediaState != MediaState::Unprepared) {
        DEBUG_LINE << "Input already attached";
        return MediaError::InvalidState;
    }
    MediaError::Type result = MediaError::SourceUnavailable;
    for (const Candidate &candidate : inputCandidates(url)) {
        const QUrl candidateUrl(candidate.url);
        DEBUG_LINE << "Attempting to attach input. url=" << LoggedUrl(candidateUrl) << ", type=" << candidate.type;
        result = m_notifier->attachInput(candidate.url, candidate.type);
        if (result == MediaError::None) {
            DEBUG_LINE << "Input attach succeeded";
            return MediaError::None;
        }
        fail(tracer, result, "Failed to attach input. url=", LoggedUrl(candidateUrl), ", type=", candidate.type);
        // Only this error means that the other type may work.
        if (result != MediaError::Internal) {
            break;
        }
    }
    return fail(tracer, result, "Unable to attach source input. url=", LoggedUrl(url), ", e=");
}

MediaError::Type MediaPlayerPrivate::detachInput()
{
    TRACE_FUNCTION();
    if (!hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (!hasEnded(mmr_input_detach(m_context))) {
        return fail(tracer, lastError(), "Error detaching existing input. error=");
    }
    setMediaState(MediaState::Unprepared);
    return MediaError::None;
}

MediaError::Type MediaPlayerPrivate::attachOutput(const FunctionTracer &tracer, const char *name, const QString &url,
                                                  const char *type, int *outputId)
{
    if (const auto error = m_notifier->attachOutput(url, QLatin1String(type), outputId)) {
        return fail(tracer, error, "Error attaching ", name, " output. url=", url, ", error=");
    }
    return MediaError::None;
}

/** Attaches the chosen outputs that are not attached yet. */
MediaError::Type MediaPlayerPrivate::attachOutputs(const FunctionTracer &tracer, const QString &audioUrl,
                                                   const QString &videoUrl, const QString &closedCaptionUrl)
{
    const bool hasVideo = m_videoOutput != VideoOutput::None;
    if (m_audioOutputId == -1 && !audioUrl.isEmpty()) {
        if (const auto error = attachOutput(tracer, "audio", audioUrl, "audio", &m_audioOutputId)) {
            return error;
        }
    }
    if (m_videoOutputId == -1 && hasVideo && !m_windowId.isEmpty()) {
        if (const auto error = attachOutput(tracer, "video", videoUrl, "video", &m_videoOutputId)) {
            return error;
        }
    }
    if (m_closedCaptionOutputId == -1 && hasVideo && !m_closedCaptionWindowId.isEmpty()) {
        return attachOutput(tracer, "closed caption", closedCaptionUrl, "subpicture", &m_closedCaptionOutputId);
    }
    return MediaError::None;
}

MediaError::Type MediaPlayerPrivate::detachOutput(int outputId)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "outputId=" << outputId;
    if (!hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (const auto error = detachInput()) {
        return fail(tracer, error, "Unable to detach existing input. error=");
    }
    if (outputId != -1 && !isOrphan() && mmr_output_detach(m_context, outputId) == -1) {
        return fail(tracer, lastError(), "Error detaching existing output. output=", outputId, ", error=");
    }
    return MediaError::None;
}

QString MediaPlayerPrivate::generateAudioOutputUrl(AudioOutput::Type audioOutput)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "audioOutput=" << keyName(audioOutput);
    return audioOutput == AudioOutput::Default ? QStringLiteral("audio:default") : QString();
}

QString MediaPlayerPrivate::generateVideoOutputUrl(VideoOutput::Type videoOutput, const QString &windowId,
                                                   const QString &windowGroupId)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "videoOutput=" << keyName(videoOutput);
    DEBUG_LINE << "windowId=" << windowId;
    DEBUG_LINE << "windowGroupId=" << windowGroupId;
    const int display = videoOutput == VideoOutput::SecondaryDisplay ? voro::device::DisplayInfo::secondaryDisplayId()
                                                                     : voro::device::DisplayInfo::primaryDisplayId();
    // In one call, because an identifier may contain a place marker.
    return QStringLiteral("screen:?winid=%1&wingrp=%2&mmf.VideoWriterDisplayIndex=%3&nodstviewport=1"
                          "&initflags=invisible")
        .arg(windowId, windowGroupId, QString::number(display));
}

void MediaPlayerPrivate::setWindow(const FunctionTracer &tracer, QString &stored, const QString &id,
                                   void (MediaPlayer::*changed)(const QString &), const char *name,
                                   const char *sameText)
{
    DEBUG_LINE << name << "=" << id;
    if (!replace(stored, id)) {
        DEBUG_LINE << sameText;
        return;
    }
    announce(tracer, changed, name, id);
}

// Parameters

MediaError::Type MediaPlayerPrivate::updateAudioOutputParams(unsigned int audioManagerHandle, double volume,
                                                             bool autoPause, EqualizerPreset::Type equalizerPreset)
{
    TRACE_FUNCTION();
    const unsigned int level = volume * 100.0 >= 100 ? 100 : truncated<unsigned int>(volume * 100.0);
    if (!hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (m_audioOutputId == -1) {
        return refuse(tracer, MediaError::InvalidState, "Audio output is not attached");
    }
    Dictionary dictionary;
    if (dictionary.isNull()) {
        return refuse(tracer, MediaError::OutOfMemory, "Unable to create parameter dictionary");
    }
    if (audioManagerHandle != 0
        && !dictionary.set(QStringLiteral("audioman_handle"), QString::number(audioManagerHandle))) {
        return refuse(tracer, MediaError::InvalidParameter,
                      "Unable to create audio manager handle parameter. audioman_handle=", audioManagerHandle);
    }
    if (!dictionary.set(QStringLiteral("volume"), QString::number(level))) {
        return refuse(tracer, MediaError::InvalidParameter, "Unable to create volume parameter. volume=", level);
    }
    // Off is never sent. The renderer merges parameters, so switching off does not reach an attached output.
    if (autoPause && !dictionary.set(QStringLiteral("autopause"), QStringLiteral("yes"))) {
        return refuse(tracer, MediaError::InvalidParameter,
                      "Unable to create auto pause parameter. autoPause=", autoPause);
    }
    if (equalizerPreset != EqualizerPreset::Off
        && !dictionary.set(QStringLiteral("eq_preset"), toString(equalizerPreset))) {
        return refuse(tracer, MediaError::InvalidParameter,
                      "Unable to create equalizer preset parameter. equalizerPreset=", keyName(equalizerPreset));
    }
    if (mmr_output_parameters(m_context, m_audioOutputId, dictionary.release()) != 0) {
        return refuse(tracer, lastError(), "Unable to set output parameters. output_id=", m_audioOutputId);
    }
    return MediaError::None;
}

/** Sends the audio settings to an attached audio output. Without one, prepare() sends them later. */
MediaError::Type MediaPlayerPrivate::applyAudioSettings(unsigned int audioManagerHandle, double volume, bool autoPause,
                                                        EqualizerPreset::Type equalizerPreset)
{
    if (m_audioOutputId == -1) {
        return MediaError::None;
    }
    return updateAudioOutputParams(audioManagerHandle, volume, autoPause, equalizerPreset);
}

MediaError::Type MediaPlayerPrivate::updateContextParams(unsigned int updateInterval)
{
    TRACE_FUNCTION();
    return sendUpdateInterval(tracer, updateInterval);
}

MediaError::Type MediaPlayerPrivate::updateInputParamRepeatMode(RepeatMode::Type mode)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "mode=" << static_cast<int>(mode);
    if (!hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (const auto error = m_notifier->updateInputParameter(QStringLiteral("repeat"), toString(mode))) {
        return fail(tracer, error, "Unable to set input parameter. error=");
    }
    return MediaError::None;
}

MediaError::Type MediaPlayerPrivate::updateTrackParam(const FunctionTracer &tracer, unsigned int track,
                                                      const QString &name, const QString &value, const char *failure)
{
    if (!hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (m_trackCount != 0 && track > m_trackCount) {
        return fail(tracer, MediaError::InvalidParameter, "Unable to set out of range track parameters. track=", track,
                    ", count=", m_trackCount);
    }
    if (const auto error = m_notifier->updateTrackParameter(track, name, value)) {
        return refuse(tracer, error, failure);
    }
    return MediaError::None;
}

MediaError::Type MediaPlayerPrivate::updateTrackParamSubpictureDisabled(unsigned int track, bool disabled)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "track=" << track;
    DEBUG_LINE << "disabled=" << disabled;
    return updateTrackParam(tracer, track, QStringLiteral("subpicture_disable"), QString::number(disabled ? 1 : 0),
                            "Unable to set track subpicture enabled. error=");
}

MediaError::Type MediaPlayerPrivate::updateTrackParamSubpictureIndex(unsigned int track, unsigned int index)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "track=" << track;
    DEBUG_LINE << "index=" << index;
    return updateTrackParam(tracer, track, QStringLiteral("subpicture_index"), QString::number(index),
                            "Unable to set track parameters. error=");
}

MediaError::Type MediaPlayerPrivate::updateTrackParamSubpictureUrl(unsigned int track, const QUrl &url)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "track=" << track;
    DEBUG_LINE << "subpictureUrl=" << LoggedUrl(url);
    return updateTrackParam(tracer, track, QStringLiteral("subpicture_url"), toLocalPath(url),
                            "Unable to set track parameter. error=");
}

MediaError::Type MediaPlayerPrivate::updateVideoOutputParams(const QRect &rect)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "rect=" << rect;
    if (!hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    const auto extent = [](int first, int last) { return static_cast<qint64>(last) - first + 1; };
    struct Parameter {
        QString key;
        const char *name;
        qint64 value;
    };
    const Parameter parameters[] = {
        {QStringLiteral("video_src_x"), "x", rect.left()},
        {QStringLiteral("video_src_y"), "y", rect.top()},
        {QStringLiteral("video_src_h"), "height", extent(rect.top(), rect.bottom())},
        {QStringLiteral("video_src_w"), "width", extent(rect.left(), rect.right())},
    };
    Dictionary dictionary;
    for (const Parameter &parameter : parameters) {
        if (!dictionary.set(parameter.key, QString::number(rect.isValid() ? parameter.value : 0))) {
            return refuse(tracer, MediaError::InvalidParameter, "Unable to create video source '", parameter.name,
                          "' parameter");
        }
    }
    if (mmr_output_parameters(m_context, m_videoOutputId, dictionary.release()) != 0) {
        return fail(tracer, lastError(), "Unable to set video source parameters on player. rect=", rect);
    }
    return MediaError::None;
}

QString MediaPlayerPrivate::toString(EqualizerPreset::Type equalizerPreset)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "equalizerPreset=" << static_cast<int>(equalizerPreset);
    static constexpr std::array names{"off",        "airplane",    "bassboost",  "trebleboost", "voiceboost",
                                      "basslower",  "treblelower", "voicelower", "acoustic",    "dance",
                                      "electronic", "hiphop",      "jazz",       "lounge",      "piano",
                                      "randb",      "rock",        "spokenword"};
    const auto index = static_cast<size_t>(equalizerPreset);
    return index < names.size() ? QString::fromLatin1(names[index]) : QString();
}

QString MediaPlayerPrivate::toString(RepeatMode::Type repeatMode)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "repeatMode=" << static_cast<int>(repeatMode);
    switch (repeatMode) {
    case RepeatMode::Track:
        return QStringLiteral("track");
    case RepeatMode::All:
        return QStringLiteral("all");
    default:
        return {};
    }
}

} // namespace voro::multimedia
