#include "private/Dictionary.h"
#include "private/LocalPath.h"
#include "private/Logger.h"
#include "private/MediaPlayerPrivate.h"
#include "private/MediaUtils.h"
#include "private/Values.h"

#include <multimedia/MediaPlayer.h>
#include <voro/device/DisplayInfo.h>
#include <voro/UIToolkitSupport.h>

#include <array>
#include <utility>

namespace voro::multimedia {

namespace {

double toFactor(int rate)
{
    return rate / static_cast<double>(MmrContextNotifier::s_NormalPlaybackSpeed);
}

struct Candidate {
    QString url;
    QString type;
};

/** The inputs to try for a source; a local file is tried as a playlist first, anything else as a medium. */
std::array<Candidate, 2> inputCandidates(const QUrl &url)
{
    const QString playlist = QStringLiteral("playlist");
    const QString autolist = QStringLiteral("autolist");
    const QString path = toLocalPath(url);
    if (!path.isEmpty())
        return {Candidate{QStringLiteral("file://") + path, playlist}, Candidate{path, autolist}};
    const QString text = url.toString().replace(QLatin1Char(' '), QLatin1String("%20"));
    return {Candidate{text, autolist}, Candidate{text, playlist}};
}

} // namespace

MediaPlayerPrivate::MediaPlayerPrivate(MediaPlayer *player) : ContextOwner(player), q(player)
{
    TRACE_FUNCTION();
}

MediaError::Type MediaPlayerPrivate::lastError() const
{
    TRACE_FUNCTION();
    const mmr_error_info_t *info = m_context ? mmr_error_info(m_context) : nullptr;
    if (!info)
        return MediaError::None;
    const auto error = static_cast<MediaError::Type>(info->error_code);
    if (error != MediaError::CommandFailed)
        return error;
    const auto cause = static_cast<MediaError::Type>(info->extra_value);
    WARNING_LINE << "Command failed. Received " << keyName(cause);
    return cause;
}

// MediaPlayerPrivate: state

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
    DEBUG_LINE << "emit mediaStateChanged()";
    DEBUG_LINE << "  mediaState=" << keyName(m_mediaState);
    Q_EMIT q->mediaStateChanged(m_mediaState);
}

MediaError::Type MediaPlayerPrivate::play()
{
    TRACE_FUNCTION();
    if (!hasContext(tracer))
        return MediaError::None;
    // A speed of 0 is never stored, so this also ends a pause.
    const MediaError::Type error = q->setSpeed(toFactor(m_speed));
    if (error != MediaError::None) {
        CRITICAL_LINE << "Error setting the playback speed. speed=" << m_speed << ", error=" << keyName(error);
        return error;
    }
    if (m_mediaState != MediaState::Started) {
        if (const auto refused = failure(tracer, mmr_play(m_context), "Error playing the player. error="))
            return *refused;
        setMediaState(MediaState::Started);
    }
    return MediaError::None;
}

MediaError::Type MediaPlayerPrivate::unprepare()
{
    TRACE_FUNCTION();
    if (!hasContext(tracer))
        return MediaError::InvalidState;
    if (m_mediaState == MediaState::Unprepared) {
        DEBUG_LINE << "Already unprepared";
        return MediaError::None;
    }
    if (const auto error = failure(tracer, mmr_stop(m_context), "Error stopping the player. error="))
        return *error;
    if (const auto error = failure(tracer, mmr_input_detach(m_context), "Error detaching playback input. error="))
        return *error;
    // The text of the closed-caption output is the video output's; this is required.
    const std::pair<int, const char *> outputs[] = {
        {m_audioOutputId, "Error detaching audio output. error="},
        {m_videoOutputId, "Error detaching video output. error="},
        {m_closedCaptionOutputId, "Error detaching video output. error="},
    };
    for (const auto &[outputId, text] : outputs) {
        if (outputId == -1)
            continue;
        if (const auto error = failure(tracer, mmr_output_detach(m_context, outputId), text))
            return *error;
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
    if (!hasContext(tracer))
        return MediaError::InvalidState;
    const MediaError::Type error = m_notifier->seek(track, position);
    if (error != MediaError::None) {
        CRITICAL_LINE << "Unable to seek track. track=" << track << ", position=" << position
                      << ", error=" << keyName(error);
        return error;
    }
    m_track = track;
    emitTrackChanged(tracer);
    return MediaError::None;
}

// MediaPlayerPrivate: input and outputs

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
        CRITICAL_LINE << "Failed to attach input. url=" << LoggedUrl(candidateUrl) << ", type=" << candidate.type;
        // Only this error says that the input may be of the other type.
        if (result != MediaError::Internal)
            break;
    }
    CRITICAL_LINE << "Unable to attach source input. url=" << LoggedUrl(url) << ", e=" << keyName(result);
    return result;
}

MediaError::Type MediaPlayerPrivate::detachInput()
{
    TRACE_FUNCTION();
    if (!hasContext(tracer))
        return MediaError::InvalidState;
    if (const auto error = failure(tracer, mmr_input_detach(m_context), "Error detaching existing input. error="))
        return *error;
    setMediaState(MediaState::Unprepared);
    return MediaError::None;
}

MediaError::Type MediaPlayerPrivate::attachOutput(const FunctionTracer &tracer, const char *name, const QString &url,
                                                  const char *type, int *outputId)
{
    const MediaError::Type error = m_notifier->attachOutput(url, QLatin1String(type), outputId);
    if (error != MediaError::None)
        CRITICAL_LINE << "Error attaching " << name << " output. url=" << url << ", error=" << keyName(error);
    return error;
}

/** Attaches the outputs that are wanted and not attached yet. */
MediaError::Type MediaPlayerPrivate::attachOutputs(const FunctionTracer &tracer, const QString &audioUrl,
                                                   const QString &videoUrl, const QString &closedCaptionUrl)
{
    const bool hasVideo = m_videoOutput != VideoOutput::None;
    if (m_audioOutputId == -1 && !audioUrl.isEmpty()) {
        if (const auto error = attachOutput(tracer, "audio", audioUrl, "audio", &m_audioOutputId))
            return error;
    }
    if (m_videoOutputId == -1 && hasVideo && !m_windowId.isEmpty()) {
        if (const auto error = attachOutput(tracer, "video", videoUrl, "video", &m_videoOutputId))
            return error;
    }
    if (m_closedCaptionOutputId == -1 && hasVideo && !m_closedCaptionWindowId.isEmpty())
        return attachOutput(tracer, "closed caption", closedCaptionUrl, "subpicture", &m_closedCaptionOutputId);
    return MediaError::None;
}

MediaError::Type MediaPlayerPrivate::detachOutput(int outputId)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "outputId=" << outputId;
    if (!hasContext(tracer))
        return MediaError::InvalidState;
    if (const auto error = report(tracer, detachInput(), "Unable to detach existing input. error="))
        return error;
    if (outputId != -1 && mmr_output_detach(m_context, outputId) == -1) {
        const MediaError::Type error = lastError();
        CRITICAL_LINE << "Error detaching existing output. output=" << outputId << ", error=" << keyName(error);
        return error;
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
    // All at once, because an identifier may hold a place marker of its own.
    return QStringLiteral("screen:?winid=%1&wingrp=%2&mmf.VideoWriterDisplayIndex=%3&nodstviewport=1"
                          "&initflags=invisible")
        .arg(windowId, windowGroupId, QString::number(display));
}

// MediaPlayerPrivate: parameters

MediaError::Type MediaPlayerPrivate::updateAudioOutputParams(unsigned int audioManagerHandle, double volume,
                                                             bool autoPause, EqualizerPreset::Type equalizerPreset)
{
    TRACE_FUNCTION();
    const unsigned int level = volume * 100.0 >= 100 ? 100 : truncated<unsigned int>(volume * 100.0);
    if (!hasContext(tracer))
        return MediaError::InvalidState;
    if (m_audioOutputId == -1) {
        WARNING_LINE << "Audio output is not attached";
        return MediaError::InvalidState;
    }
    Dictionary dictionary;
    if (dictionary.isNull()) {
        WARNING_LINE << "Unable to create parameter dictionary";
        return MediaError::OutOfMemory;
    }
    if (audioManagerHandle != 0
        && !dictionary.set(QStringLiteral("audioman_handle"), QString::number(audioManagerHandle))) {
        WARNING_LINE << "Unable to create audio manager handle parameter. audioman_handle=" << audioManagerHandle;
        return MediaError::InvalidParameter;
    }
    if (!dictionary.set(QStringLiteral("volume"), QString::number(level))) {
        WARNING_LINE << "Unable to create volume parameter. volume=" << level;
        return MediaError::InvalidParameter;
    }
    // Parameters are merged by the renderer: off is never sent, so it does not reach an attached output.
    if (autoPause && !dictionary.set(QStringLiteral("autopause"), QStringLiteral("yes"))) {
        WARNING_LINE << "Unable to create auto pause parameter. autoPause=" << autoPause;
        return MediaError::InvalidParameter;
    }
    if (equalizerPreset != EqualizerPreset::Off
        && !dictionary.set(QStringLiteral("eq_preset"), toString(equalizerPreset))) {
        WARNING_LINE << "Unable to create equalizer preset parameter. equalizerPreset=" << keyName(equalizerPreset);
        return MediaError::InvalidParameter;
    }
    if (mmr_output_parameters(m_context, m_audioOutputId, dictionary.release()) == 0)
        return MediaError::None;
    const MediaError::Type error = lastError();
    WARNING_LINE << "Unable to set output parameters. output_id=" << m_audioOutputId;
    return error;
}

/** Sends audio settings to the audio output when there is one; else prepare() will. */
MediaError::Type MediaPlayerPrivate::applyAudioSettings(unsigned int audioManagerHandle, double volume, bool autoPause,
                                                        EqualizerPreset::Type equalizerPreset)
{
    if (m_audioOutputId == -1)
        return MediaError::None;
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
    if (!hasContext(tracer))
        return MediaError::InvalidState;
    return report(tracer, m_notifier->updateInputParameter(QStringLiteral("repeat"), toString(mode)),
                  "Unable to set input parameter. error=");
}

MediaError::Type MediaPlayerPrivate::updateTrackParam(const FunctionTracer &tracer, unsigned int track,
                                                      const QString &name, const QString &value, const char *failure)
{
    if (!hasContext(tracer))
        return MediaError::InvalidState;
    if (m_trackCount != 0 && track > m_trackCount) {
        CRITICAL_LINE << "Unable to set out of range track parameters. track=" << track << ", count=" << m_trackCount;
        return MediaError::InvalidParameter;
    }
    const MediaError::Type error = m_notifier->updateTrackParameter(track, name, value);
    if (error != MediaError::None)
        WARNING_LINE << failure << keyName(error);
    return error;
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
    if (!hasContext(tracer))
        return MediaError::InvalidState;
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
            WARNING_LINE << "Unable to create video source '" << parameter.name << "' parameter";
            return MediaError::InvalidParameter;
        }
    }
    if (mmr_output_parameters(m_context, m_videoOutputId, dictionary.release()) == 0)
        return MediaError::None;
    const MediaError::Type error = lastError();
    CRITICAL_LINE << "Unable to set video source parameters on player. rect=" << rect;
    return error;
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

// MediaPlayerPrivate: the renderer's reports

void MediaPlayerPrivate::onBuffering(double percentage)
{
    TRACE_FUNCTION();
    if (!replace(m_buffering, percentage))
        return;
    DEBUG_LINE << "emit buffering()";
    DEBUG_LINE << "  percentage=" << percentage;
    Q_EMIT q->buffering(percentage);
}

void MediaPlayerPrivate::onBufferStatusChanged(BufferStatus::Type bufferStatus)
{
    TRACE_FUNCTION();
    if (!replace(m_bufferStatus, bufferStatus))
        return;
    DEBUG_LINE << "emit bufferStatusChanged()";
    DEBUG_LINE << "  bufferStatus=" << keyName(bufferStatus);
    Q_EMIT q->bufferStatusChanged(bufferStatus);
}

void MediaPlayerPrivate::onDurationChanged(unsigned int duration)
{
    TRACE_FUNCTION();
    if (!replace(m_duration, duration))
        return;
    DEBUG_LINE << "emit durationChanged()";
    DEBUG_LINE << "  duration=" << duration;
    Q_EMIT q->durationChanged(duration);
    Q_EMIT q->durationChanged(QVariant(duration));
}

void MediaPlayerPrivate::onMetaDataChanged(const QVariantMap &metaData)
{
    TRACE_FUNCTION();
    m_metaData = metaData;
    DEBUG_LINE << "emit metaDataChanged()";
    DEBUG_LINE << "  metadata=" << metaData;
    Q_EMIT q->metaDataChanged(metaData);
}

void MediaPlayerPrivate::onMmrError(MediaError::Type error, unsigned int position, unsigned int)
{
    TRACE_FUNCTION();
    setMediaState(MediaState::Stopped);
    DEBUG_LINE << "emit error()";
    DEBUG_LINE << "  error=" << keyName(error);
    DEBUG_LINE << "  position=" << position;
    Q_EMIT q->error(error, position);
    Q_EMIT q->error(error, QVariant(position));
}

void MediaPlayerPrivate::onMmrIdle()
{
    TRACE_FUNCTION();
    setMediaState(MediaState::Unprepared);
}

void MediaPlayerPrivate::onMmrPaused()
{
    TRACE_FUNCTION();
    setMediaState(MediaState::Paused);
}

void MediaPlayerPrivate::onMmrPlaybackCompleted()
{
    TRACE_FUNCTION();
    setMediaState(MediaState::Stopped);
    DEBUG_LINE << "emit playbackCompleted()";
    Q_EMIT q->playbackCompleted();
}

void MediaPlayerPrivate::onMmrPlaying()
{
    TRACE_FUNCTION();
    setMediaState(MediaState::Started);
}

void MediaPlayerPrivate::onMmrPositionChanged(unsigned int position)
{
    TRACE_FUNCTION();
    m_position = position;
    DEBUG_LINE << "emit positionChanged()";
    DEBUG_LINE << "  position=" << position;
    Q_EMIT q->positionChanged(position);
    Q_EMIT q->positionChanged(QVariant(position));
}

void MediaPlayerPrivate::onMmrSpeedChanged(int speed)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "speed=" << speed;
    if (m_mediaState == MediaState::Started && speed == MmrContextNotifier::s_PausedPlaybackSpeed) {
        setMediaState(MediaState::Paused);
    } else if (m_mediaState == MediaState::Paused && speed != MmrContextNotifier::s_PausedPlaybackSpeed) {
        setMediaState(MediaState::Started);
        m_speed = speed;
    } else if (speed != MmrContextNotifier::s_PausedPlaybackSpeed) {
        m_speed = speed;
    }
    DEBUG_LINE << "emit speedChanged()";
    DEBUG_LINE << "  percentage=" << toFactor(speed);
    Q_EMIT q->speedChanged(toFactor(speed));
}

void MediaPlayerPrivate::onMmrStopped()
{
    TRACE_FUNCTION();
    if (m_mediaState != MediaState::Prepared)
        setMediaState(MediaState::Stopped);
}

void MediaPlayerPrivate::onSeekableChanged(bool seekable)
{
    TRACE_FUNCTION();
    if (!replace(m_seekable, seekable))
        return;
    DEBUG_LINE << "emit seekableChanged()";
    DEBUG_LINE << "  seekable=" << seekable;
    Q_EMIT q->seekableChanged(seekable);
}

void MediaPlayerPrivate::onTrackChanged(unsigned int track)
{
    TRACE_FUNCTION();
    if (!replace(m_track, track))
        return;
    const MediaError::Type error = updateTrackParamSubpictureIndex(track, m_closedCaptionIndex);
    if (error != MediaError::None) {
        CRITICAL_LINE << "Unable to update the current track with the closed caption index. index="
                      << m_closedCaptionIndex << ", error=" << keyName(error);
        return;
    }
    emitTrackChanged(tracer);
}

void MediaPlayerPrivate::emitTrackChanged(const FunctionTracer &tracer)
{
    const unsigned int track = m_track;
    DEBUG_LINE << "emit trackChanged()";
    DEBUG_LINE << "  track=" << track;
    Q_EMIT q->trackChanged(track);
    Q_EMIT q->trackChanged(QVariant(track));
}

void MediaPlayerPrivate::onTrackCountChanged(unsigned int trackCount)
{
    TRACE_FUNCTION();
    if (!replace(m_trackCount, trackCount))
        return;
    DEBUG_LINE << "emit trackCountChanged()";
    DEBUG_LINE << "  trackCount=" << trackCount;
    Q_EMIT q->trackCountChanged(trackCount);
    Q_EMIT q->trackCountChanged(QVariant(trackCount));
}

void MediaPlayerPrivate::onVideoDimensionsChanged(const QSize &videoDimensions)
{
    TRACE_FUNCTION();
    if (!replace(m_videoDimensions, videoDimensions))
        return;
    // The text is required; it is not the signal's name.
    DEBUG_LINE << "emit m_videoDimensionsChanged()";
    DEBUG_LINE << "  videoDimensions=" << videoDimensions;
    Q_EMIT q->videoDimensionsChanged(videoDimensions);
}

// MediaPlayer: construction

MediaPlayer::MediaPlayer(QObject *parent) : QObject(parent), d(new MediaPlayerPrivate(this))
{
    TRACE_FUNCTION();
    DEBUG_LINE << "Creating context...";
    d->m_contextName =
        QStringLiteral("voro.multimedia.MediaPlayer::%1").arg(MediaUtils::instance()->generateUniqueId());
    DEBUG_LINE << "  context=" << d->m_contextName;
    d->m_connection = mmr_connect(nullptr);
    if (!d->m_connection) {
        CRITICAL_LINE << "Unable to connect to MMR";
        return;
    }
    d->m_context = mmr_context_create(d->m_connection, d->m_contextName.toUtf8().constData(), 0, 0700);
    if (!d->m_context) {
        CRITICAL_LINE << "Error creating player context. error=" << static_cast<int>(d->lastError());
        return;
    }
    d->m_notifier->monitor(d->m_context);
    d->connectNotifier();
    setObjectName(d->m_contextName);
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

MediaPlayer::~MediaPlayer()
{
    TRACE_FUNCTION();
    d->destroyContext();
}

// MediaPlayer: commands

MediaError::Type MediaPlayer::prepare()
{
    TRACE_FUNCTION();
    QString windowGroupId = d->m_windowGroupId;
    if (windowGroupId.isEmpty() && d->m_videoOutput == VideoOutput::PrimaryDisplay)
        windowGroupId = voro::UIToolkitSupport().windowGroupID();
    const QString audioUrl = d->generateAudioOutputUrl(d->m_audioOutput);
    const QString videoUrl = d->generateVideoOutputUrl(d->m_videoOutput, d->m_windowId, windowGroupId);
    const QString closedCaptionUrl =
        d->generateVideoOutputUrl(d->m_videoOutput, d->m_closedCaptionWindowId, windowGroupId);
    if (!d->hasContext(tracer))
        return MediaError::InvalidState;
    if (d->m_mediaState != MediaState::Unprepared) {
        DEBUG_LINE << "Player already prepared";
        return MediaError::None;
    }
    if (const auto error = d->attachOutputs(tracer, audioUrl, videoUrl, closedCaptionUrl))
        return error;
    if (const auto error = report(
            tracer, d->applyAudioSettings(d->m_audioManagerHandle, d->m_volume, d->m_autoPause, d->m_equalizerPreset),
            "Error attaching output audio type. error="))
        return error;
    if (const auto error = report(tracer, d->attachInput(d->m_sourceUrl), "Error attaching input source, error="))
        return error;
    if (d->updateInputParamRepeatMode(d->m_repeatMode) != MediaError::None) {
        const MediaError::Type error = d->lastError();
        WARNING_LINE << "Error updating repeat parameter. error=" << keyName(error);
        return error;
    }
    d->setMediaState(MediaState::Prepared);
    return MediaError::None;
}

MediaError::Type MediaPlayer::play()
{
    TRACE_FUNCTION();
    if (!d->hasContext(tracer))
        return MediaError::InvalidState;
    if (d->m_mediaState == MediaState::Unprepared) {
        if (const auto error = report(tracer, prepare(), "Unable to prepare the player. error="))
            return error;
    }
    return report(tracer, d->play(), "Unable to play the player. error=");
}

MediaError::Type MediaPlayer::pause()
{
    TRACE_FUNCTION();
    if (!d->hasContext(tracer))
        return MediaError::InvalidState;
    if (d->m_mediaState == MediaState::Unprepared) {
        if (const auto error = prepare()) {
            CRITICAL_LINE << "Unable to prepare the player";
            return error;
        }
    }
    const MediaError::Type error = setSpeed(0.0);
    if (error != MediaError::None)
        CRITICAL_LINE << "Unable to pause the player";
    return error;
}

MediaError::Type MediaPlayer::stop()
{
    TRACE_FUNCTION();
    if (!d->hasContext(tracer))
        return MediaError::InvalidState;
    if (d->m_mediaState == MediaState::Unprepared) {
        DEBUG_LINE << "Media player is unprepared";
        return MediaError::InvalidState;
    }
    if (const auto error = d->failure(tracer, mmr_stop(d->m_context), "Error stopping the player. error="))
        return *error;
    d->setMediaState(MediaState::Stopped);
    return MediaError::None;
}

MediaError::Type MediaPlayer::reset()
{
    TRACE_FUNCTION();
    return d->unprepare();
}

MediaError::Type MediaPlayer::seek(unsigned int track, unsigned int position)
{
    TRACE_FUNCTION();
    return d->seek(track, position);
}

MediaError::Type MediaPlayer::seekTrack(unsigned int track)
{
    TRACE_FUNCTION();
    return d->seek(track, 0);
}

MediaError::Type MediaPlayer::seekTime(unsigned int position)
{
    TRACE_FUNCTION();
    return d->seek(track(), position);
}

MediaError::Type MediaPlayer::seekPercent(double percentage)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "percentage=" << percentage;
    return seekTime(truncated<unsigned int>(duration() * percentage));
}

MediaError::Type MediaPlayer::nextTrack()
{
    TRACE_FUNCTION();
    return d->seek(track() + 1, 0);
}

MediaError::Type MediaPlayer::previousTrack()
{
    TRACE_FUNCTION();
    return d->seek(track() - 1, 0);
}

MediaError::Type MediaPlayer::setSpeed(double speed)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "speed=" << speed;
    if (!d->hasContext(tracer))
        return MediaError::InvalidState;
    const int rate = truncated<int>(speed * MmrContextNotifier::s_NormalPlaybackSpeed);
    if (const auto error =
            d->failure(tracer, mmr_speed_set(d->m_context, rate), "Error setting the player speed. error="))
        return *error;
    if (d->m_mediaState == MediaState::Prepared || d->m_mediaState == MediaState::Stopped) {
        if (const auto error =
                d->failure(tracer, mmr_play(d->m_context), "Error moving the player to a playing state. error="))
            return *error;
    }
    const MediaState::Type state = d->m_mediaState;
    if (state == MediaState::Paused && rate != MmrContextNotifier::s_PausedPlaybackSpeed) {
        d->onMmrSpeedChanged(rate);
        d->setMediaState(MediaState::Started);
    } else if ((state == MediaState::Prepared || state == MediaState::Started)
               && rate == MmrContextNotifier::s_PausedPlaybackSpeed) {
        d->onMmrSpeedChanged(rate);
        d->setMediaState(MediaState::Paused);
    }
    return MediaError::None;
}

// MediaPlayer: medium and outputs

MediaError::Type MediaPlayer::setSourceUrl(const QUrl &url)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "url=" << LoggedUrl(url);
    if (!d->hasContext(tracer))
        return MediaError::InvalidState;
    if (url == d->m_sourceUrl) {
        WARNING_LINE << "Ignoring attempt to set same url.";
        return MediaError::None;
    }
    if (const auto error = report(tracer, d->detachInput(), "Unable to detach existing input. error="))
        return error;
    d->setMediaState(MediaState::Unprepared);
    d->m_sourceUrl = url;
    // The text is required; it is not the signal's name.
    DEBUG_LINE << "emit sourceChanged()";
    Q_EMIT sourceUrlChanged(d->m_sourceUrl);
    return MediaError::None;
}

MediaError::Type MediaPlayer::setAudioOutput(AudioOutput::Type audioOutput)
{
    TRACE_FUNCTION();
    if (!d->hasContext(tracer))
        return MediaError::InvalidState;
    if (audioOutput == d->m_audioOutput) {
        DEBUG_LINE << "Ignoring attempt to set same audio output.";
        return MediaError::None;
    }
    if (audioOutput == AudioOutput::None || d->m_audioOutput == AudioOutput::None) {
        if (const auto error = d->detachInput()) {
            CRITICAL_LINE << "Unable to detach existing input. error=" << static_cast<int>(d->lastError());
            return error;
        }
    }
    if (d->m_mediaState != MediaState::Unprepared && d->m_audioOutputId != -1) {
        if (const auto error = d->detachOutput(d->m_audioOutputId)) {
            CRITICAL_LINE << "Unable to detach the audio output. error=" << static_cast<int>(d->lastError());
            return error;
        }
    }
    d->m_audioOutput = audioOutput;
    if (audioOutput == AudioOutput::None)
        d->m_audioOutputId = -1;
    if (d->m_mediaState != MediaState::Unprepared)
        d->setMediaState(MediaState::Unprepared);
    DEBUG_LINE << "emit audioOutputChanged()";
    DEBUG_LINE << "  output=" << keyName(audioOutput);
    Q_EMIT audioOutputChanged(audioOutput);
    return MediaError::None;
}

MediaError::Type MediaPlayer::setVideoOutput(VideoOutput::Type videoOutput)
{
    TRACE_FUNCTION();
    if (!d->m_context) {
        WARNING_LINE << "MMR context is null";
        return MediaError::InvalidState;
    }
    if (videoOutput == d->m_videoOutput) {
        WARNING_LINE << "Ignoring attempt to set same video output.";
        return MediaError::None;
    }
    if (videoOutput > VideoOutput::SecondaryDisplay) {
        WARNING_LINE << "Invalid video output value. videoOutput=" << static_cast<int>(videoOutput);
        return MediaError::None;
    }
    if (videoOutput == VideoOutput::None || d->m_videoOutput == VideoOutput::None) {
        if (const auto error = d->detachInput()) {
            WARNING_LINE << "Unable to detach existing input. error=" << static_cast<int>(d->lastError());
            return error;
        }
    }
    if (d->m_videoOutputId != -1) {
        if (const auto error = d->detachOutput(d->m_videoOutputId)) {
            WARNING_LINE << "Unable to detach the video output. error=" << static_cast<int>(d->lastError());
            return error;
        }
    }
    if (d->m_closedCaptionOutputId != -1) {
        if (const auto error = d->detachOutput(d->m_closedCaptionOutputId)) {
            WARNING_LINE << "Unable to detach the closed caption output. error=" << static_cast<int>(d->lastError());
            return error;
        }
    }
    d->m_videoOutput = videoOutput;
    d->m_videoOutputId = d->m_closedCaptionOutputId = -1;
    if (d->m_mediaState != MediaState::Unprepared)
        d->setMediaState(MediaState::Unprepared);
    DEBUG_LINE << "emit videoOutputChanged()";
    DEBUG_LINE << "  output=" << static_cast<int>(videoOutput);
    Q_EMIT videoOutputChanged(videoOutput);
    return MediaError::None;
}

MediaError::Type MediaPlayer::setVideoSourceRect(int x, int y, unsigned int width, unsigned int height)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "x=" << x << ", y=" << y << ", width=" << width << ", height=" << height;
    const auto last = [](int first, unsigned int extent) {
        return static_cast<int>(static_cast<unsigned int>(first) + extent - 1);
    };
    const QRect rect(QPoint(x, y), QPoint(last(x, width), last(y, height)));
    if (!d->hasContext(tracer))
        return MediaError::InvalidState;
    if (const auto error = d->updateVideoOutputParams(rect)) {
        CRITICAL_LINE << "Unable to set video source parameters. src=" << rect << ", error=" << keyName(error);
        return error;
    }
    d->m_videoSourceRect = rect;
    return MediaError::None;
}

void MediaPlayer::setWindowId(const QString &windowId)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "windowId=" << windowId;
    if (!replace(d->m_windowId, windowId)) {
        DEBUG_LINE << "Ignoring change to same window id";
        return;
    }
    DEBUG_LINE << "emit windowIdChanged()";
    DEBUG_LINE << "  windowId=" << windowId;
    Q_EMIT windowIdChanged(windowId);
}

void MediaPlayer::setWindowGroupId(const QString &windowGroupId)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "windowGroupId=" << windowGroupId;
    if (!replace(d->m_windowGroupId, windowGroupId)) {
        DEBUG_LINE << "Ignoring change to same window group id";
        return;
    }
    DEBUG_LINE << "emit windowGroupIdChanged()";
    DEBUG_LINE << "  windowGroupId=" << windowGroupId;
    Q_EMIT windowGroupIdChanged(windowGroupId);
}

void MediaPlayer::setClosedCaptionWindowId(const QString &windowId)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "closedCaptionWindowId=" << windowId;
    if (!replace(d->m_closedCaptionWindowId, windowId)) {
        DEBUG_LINE << "Ignoring change to same window id";
        return;
    }
    DEBUG_LINE << "emit closedCaptionWindowIdChanged()";
    DEBUG_LINE << "  closedCaptionWindowId=" << windowId;
    Q_EMIT closedCaptionWindowIdChanged(windowId);
}

// MediaPlayer: closed captions

MediaError::Type MediaPlayer::setClosedCaptionEnabled(bool enabled)
{
    TRACE_FUNCTION();
    if (!replace(d->m_closedCaptionDisabled, !enabled))
        return MediaError::None;
    if (const auto error = d->updateTrackParamSubpictureDisabled(track(), !enabled)) {
        CRITICAL_LINE << "Unable to set the closed caption enabled. enabled=" << enabled
                      << ", error=" << keyName(error);
        return error;
    }
    DEBUG_LINE << "emit closedCaptionEnabledChanged()";
    DEBUG_LINE << "  enabled=" << enabled;
    Q_EMIT closedCaptionEnabledChanged(enabled);
    return MediaError::None;
}

MediaError::Type MediaPlayer::setClosedCaptionIndex(unsigned int index)
{
    TRACE_FUNCTION();
    if (!replace(d->m_closedCaptionIndex, index))
        return MediaError::None;
    if (const auto error = d->updateTrackParamSubpictureIndex(track(), index)) {
        CRITICAL_LINE << "Unable to set the closed caption index. index=" << index << ", error=" << keyName(error);
        return error;
    }
    DEBUG_LINE << "emit closedCaptionIndexChanged()";
    DEBUG_LINE << "  index=" << index;
    Q_EMIT closedCaptionIndexChanged(index);
    Q_EMIT closedCaptionIndexChanged(QVariant(index));
    return MediaError::None;
}

void MediaPlayer::setClosedCaptionIndexQml(const QVariant &index)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "index=" << index.toString();
    bool ok = false;
    const unsigned int number = index.toUInt(&ok);
    if (ok)
        setClosedCaptionIndex(number);
    else
        WARNING_LINE << "Unable to convert variant closed caption index.";
}

QUrl MediaPlayer::closedCaptionUrl(unsigned int track) const
{
    TRACE_FUNCTION();
    return QUrl(d->m_notifier->trackParameters(track).value(QStringLiteral("subpicture_url")).toString());
}

MediaError::Type MediaPlayer::setClosedCaptionUrl(unsigned int track, const QUrl &url)
{
    TRACE_FUNCTION();
    const QUrl current = closedCaptionUrl(track);
    if (track != 1) {
        WARNING_LINE << "Setting the closed caption url is limited to track 1.";
        return MediaError::InvalidParameter;
    }
    if (url == current)
        return MediaError::None;
    if (const auto error = d->updateTrackParamSubpictureUrl(1, url)) {
        CRITICAL_LINE << "Unable to set the closed caption url. track=" << track << ", url=" << LoggedUrl(url)
                      << ", error=" << keyName(error);
        return error;
    }
    DEBUG_LINE << "emit closedCaptionUrlChanged()";
    DEBUG_LINE << "  track=" << track;
    DEBUG_LINE << "  url=" << LoggedUrl(url);
    Q_EMIT closedCaptionUrlChanged(track, url);
    Q_EMIT closedCaptionUrlChanged(QVariant(track), url);
    return MediaError::None;
}

// MediaPlayer: parameters

MediaError::Type MediaPlayer::setVolume(double volume)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "volume=" << volume;
    if (!d->hasContext(tracer))
        return MediaError::InvalidState;
    if (volume == d->m_volume) {
        DEBUG_LINE << "Volume already set to " << volume;
        return MediaError::None;
    }
    // What is no number fails this too.
    if (!(volume >= 0.0 && volume <= 1.0)) {
        WARNING_LINE << "Volume value out of range. volume=" << volume;
        return MediaError::InvalidParameter;
    }
    if (const auto error =
            d->applyAudioSettings(d->m_audioManagerHandle, volume, d->m_autoPause, d->m_equalizerPreset)) {
        CRITICAL_LINE << "Unable to set volume parameter. volume=" << volume;
        return error;
    }
    d->m_volume = volume;
    DEBUG_LINE << "emit volumeChanged()";
    DEBUG_LINE << "  volume=" << volume;
    Q_EMIT volumeChanged(volume);
    return MediaError::None;
}

MediaError::Type MediaPlayer::setAutoPause(bool autoPause)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "autoPause=" << autoPause;
    if (autoPause == d->m_autoPause) {
        DEBUG_LINE << "Auto pause already set to " << autoPause;
        return MediaError::None;
    }
    if (const auto error =
            d->applyAudioSettings(d->m_audioManagerHandle, d->m_volume, autoPause, d->m_equalizerPreset)) {
        CRITICAL_LINE << "Unable to set auto pause";
        return error;
    }
    d->m_autoPause = autoPause;
    DEBUG_LINE << "emit autoPauseChanged()";
    Q_EMIT autoPauseChanged(autoPause);
    return MediaError::None;
}

MediaError::Type MediaPlayer::setEqualizerPreset(EqualizerPreset::Type equalizerPreset)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "equalizerPreset=" << keyName(equalizerPreset);
    if (equalizerPreset == d->m_equalizerPreset) {
        DEBUG_LINE << "Equalizer preset already set to " << keyName(equalizerPreset);
        return MediaError::None;
    }
    if (const auto error =
            d->applyAudioSettings(d->m_audioManagerHandle, d->m_volume, d->m_autoPause, equalizerPreset)) {
        CRITICAL_LINE << "Unable to set equalizer preset";
        return error;
    }
    d->m_equalizerPreset = equalizerPreset;
    DEBUG_LINE << "emit equalizerPresetChanged()";
    DEBUG_LINE << "  equalizerPreset=" << keyName(equalizerPreset);
    Q_EMIT equalizerPresetChanged(equalizerPreset);
    return MediaError::None;
}

MediaError::Type MediaPlayer::setAudioManagerHandle(unsigned int handle)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "audioManagerHandle=" << handle;
    if (const auto error = d->applyAudioSettings(handle, d->m_volume, d->m_autoPause, d->m_equalizerPreset)) {
        WARNING_LINE << "Unable to set the audio type.";
        return error;
    }
    d->m_audioManagerHandle = handle;
    DEBUG_LINE << "emit audioManagerHandleChanged()";
    DEBUG_LINE << "  audioManagerHandle=" << handle;
    Q_EMIT audioManagerHandleChanged(handle);
    Q_EMIT audioManagerHandleChanged(QVariant(handle));
    return MediaError::None;
}

void MediaPlayer::setAudioManagerHandleQml(const QVariant &handle)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "handle=" << handle.toString();
    bool ok = false;
    const unsigned int number = handle.toUInt(&ok);
    if (ok)
        setAudioManagerHandle(number);
    else
        WARNING_LINE << "Unable to convert variant handle.";
}

MediaError::Type MediaPlayer::setRepeatMode(RepeatMode::Type repeatMode)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "repeatMode=" << keyName(repeatMode);
    if (!d->hasContext(tracer))
        return MediaError::InvalidState;
    if (repeatMode == RepeatMode::Unsupported) {
        WARNING_LINE << "Cannot set unsupported repeat mode value on player.";
        return MediaError::UnsupportedValue;
    }
    if (repeatMode != RepeatMode::None && d->toString(repeatMode).isEmpty()) {
        WARNING_LINE << "Invalid repeat mode. mode=" << static_cast<int>(repeatMode);
        return MediaError::None;
    }
    if (d->m_mediaState != MediaState::Unprepared) {
        if (const auto error = d->updateInputParamRepeatMode(repeatMode)) {
            CRITICAL_LINE << "Unable to set the repeat mode.";
            return error;
        }
    }
    if (replace(d->m_repeatMode, repeatMode)) {
        DEBUG_LINE << "emit repeatModeChanged()";
        DEBUG_LINE << "  repeatMode=" << keyName(repeatMode);
        Q_EMIT repeatModeChanged(repeatMode);
    }
    return MediaError::None;
}

MediaError::Type MediaPlayer::setStatusInterval(unsigned int statusInterval)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "statusInterval=" << statusInterval;
    if (!d->hasContext(tracer))
        return MediaError::InvalidState;
    if (const auto error = d->updateContextParams(statusInterval)) {
        CRITICAL_LINE << "Unable to set the status interval.";
        return error;
    }
    if (replace(d->m_statusInterval, statusInterval)) {
        DEBUG_LINE << "emit statusIntervalChanged()";
        DEBUG_LINE << "  statusInterval=" << statusInterval;
        Q_EMIT statusIntervalChanged(statusInterval);
        Q_EMIT statusIntervalChanged(QVariant(statusInterval));
    }
    return MediaError::None;
}

void MediaPlayer::setStatusIntervalQml(const QVariant &statusInterval)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "statusInterval=" << statusInterval.toString();
    bool ok = false;
    const unsigned int number = statusInterval.toUInt(&ok);
    if (ok)
        setStatusInterval(number);
    else
        WARNING_LINE << "Unable to convert variant status interval.";
}

// MediaPlayer: getters

unsigned int MediaPlayer::audioManagerHandle() const
{
    TRACE_FUNCTION();
    return d->m_audioManagerHandle;
}

QVariant MediaPlayer::audioManagerHandleQml() const
{
    TRACE_FUNCTION();
    return audioManagerHandle();
}

AudioOutput::Type MediaPlayer::audioOutput() const
{
    TRACE_FUNCTION();
    return d->m_audioOutput;
}

bool MediaPlayer::autoPause() const
{
    TRACE_FUNCTION();
    return d->m_autoPause;
}

bool MediaPlayer::closedCaptionEnabled() const
{
    TRACE_FUNCTION();
    return !d->m_closedCaptionDisabled;
}

unsigned int MediaPlayer::closedCaptionIndex() const
{
    TRACE_FUNCTION();
    return d->m_closedCaptionIndex;
}

QVariant MediaPlayer::closedCaptionIndexQml() const
{
    TRACE_FUNCTION();
    return closedCaptionIndex();
}

QString MediaPlayer::closedCaptionWindowId() const
{
    TRACE_FUNCTION();
    return d->m_closedCaptionWindowId;
}

EqualizerPreset::Type MediaPlayer::equalizerPreset() const
{
    TRACE_FUNCTION();
    return d->m_equalizerPreset;
}

RepeatMode::Type MediaPlayer::repeatMode() const
{
    TRACE_FUNCTION();
    return d->m_repeatMode;
}

QUrl MediaPlayer::sourceUrl() const
{
    TRACE_FUNCTION();
    return d->m_sourceUrl;
}

double MediaPlayer::speed() const
{
    TRACE_FUNCTION();
    return d->m_mediaState == MediaState::Paused ? 0.0 : toFactor(d->m_speed);
}

unsigned int MediaPlayer::statusInterval() const
{
    TRACE_FUNCTION();
    return d->m_statusInterval;
}

QVariant MediaPlayer::statusIntervalQml() const
{
    TRACE_FUNCTION();
    return statusInterval();
}

VideoOutput::Type MediaPlayer::videoOutput() const
{
    TRACE_FUNCTION();
    return d->m_videoOutput;
}

double MediaPlayer::volume() const
{
    TRACE_FUNCTION();
    return d->m_volume;
}

QString MediaPlayer::windowGroupId() const
{
    TRACE_FUNCTION();
    return d->m_windowGroupId;
}

QString MediaPlayer::windowId() const
{
    TRACE_FUNCTION();
    return d->m_windowId;
}

BufferStatus::Type MediaPlayer::bufferStatus() const
{
    TRACE_FUNCTION();
    return d->m_bufferStatus;
}

DeviceMode::Type MediaPlayer::deviceMode() const
{
    TRACE_FUNCTION();
    return DeviceMode::Playback;
}

unsigned int MediaPlayer::duration() const
{
    TRACE_FUNCTION();
    return d->m_duration;
}

QVariant MediaPlayer::durationQml() const
{
    TRACE_FUNCTION();
    return duration();
}

MediaError::Type MediaPlayer::mediaError() const
{
    TRACE_FUNCTION();
    return d->m_mediaError;
}

MediaState::Type MediaPlayer::mediaState() const
{
    TRACE_FUNCTION();
    return d->m_mediaState;
}

QVariantMap MediaPlayer::metaData() const
{
    TRACE_FUNCTION();
    return d->m_metaData;
}

unsigned int MediaPlayer::position() const
{
    TRACE_FUNCTION();
    return d->m_position;
}

QVariant MediaPlayer::positionQml() const
{
    TRACE_FUNCTION();
    return position();
}

bool MediaPlayer::isSeekable() const
{
    TRACE_FUNCTION();
    return d->m_seekable;
}

unsigned int MediaPlayer::track() const
{
    TRACE_FUNCTION();
    return d->m_track == 0 ? 1 : d->m_track;
}

QVariant MediaPlayer::trackQml() const
{
    TRACE_FUNCTION();
    return track();
}

unsigned int MediaPlayer::trackCount() const
{
    TRACE_FUNCTION();
    return d->m_trackCount;
}

QVariant MediaPlayer::trackCountQml() const
{
    TRACE_FUNCTION();
    return trackCount();
}

QSize MediaPlayer::videoDimensions() const
{
    TRACE_FUNCTION();
    return d->m_videoDimensions;
}

} // namespace voro::multimedia
