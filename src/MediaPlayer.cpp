#include <multimedia/MediaPlayer.h>
#include <voro/UIToolkitSupport.h>

#include <private/Logger.h>
#include <private/MediaPlayerPrivate.h>
#include <private/MediaUtils.h>
#include <private/Values.h>

namespace voro::multimedia {

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

MediaPlayer::~MediaPlayer()
{
    TRACE_FUNCTION();
    d->end();
}

// Commands

MediaError::Type MediaPlayer::prepare()
{
    TRACE_FUNCTION();
    QString windowGroupId = d->m_windowGroupId;
    if (windowGroupId.isEmpty() && d->m_videoOutput == VideoOutput::PrimaryDisplay) {
        windowGroupId = voro::UIToolkitSupport().windowGroupID();
    }
    const QString audioUrl = d->generateAudioOutputUrl(d->m_audioOutput);
    const QString videoUrl = d->generateVideoOutputUrl(d->m_videoOutput, d->m_windowId, windowGroupId);
    const QString closedCaptionUrl =
        d->generateVideoOutputUrl(d->m_videoOutput, d->m_closedCaptionWindowId, windowGroupId);
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (d->m_mediaState != MediaState::Unprepared) {
        DEBUG_LINE << "Player already prepared";
        return MediaError::None;
    }
    if (const auto error = d->attachOutputs(tracer, audioUrl, videoUrl, closedCaptionUrl)) {
        return error;
    }
    if (const auto error =
            d->applyAudioSettings(d->m_audioManagerHandle, d->m_volume, d->m_autoPause, d->m_equalizerPreset)) {
        return fail(tracer, error, "Error attaching output audio type. error=");
    }
    if (const auto error = d->attachInput(d->m_sourceUrl)) {
        return fail(tracer, error, "Error attaching input source, error=");
    }
    if (d->updateInputParamRepeatMode(d->m_repeatMode) != MediaError::None) {
        return refuse(tracer, d->lastError(), "Error updating repeat parameter. error=");
    }
    d->setMediaState(MediaState::Prepared);
    return MediaError::None;
}

MediaError::Type MediaPlayer::play()
{
    TRACE_FUNCTION();
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    MediaPlayerPrivate *const self = d;
    if (self->m_mediaState == MediaState::Unprepared) {
        if (const auto error = prepare()) {
            return fail(tracer, error, "Unable to prepare the player. error=");
        }
        if (self->isOrphan()) {
            return MediaError::None;
        }
    }
    if (const auto error = self->play()) {
        return fail(tracer, error, "Unable to play the player. error=");
    }
    return MediaError::None;
}

MediaError::Type MediaPlayer::pause()
{
    TRACE_FUNCTION();
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    MediaPlayerPrivate *const self = d;
    if (self->m_mediaState == MediaState::Unprepared) {
        if (const auto error = prepare()) {
            return fail(tracer, error, "Unable to prepare the player");
        }
        if (self->isOrphan()) {
            return MediaError::None;
        }
    }
    if (const auto error = setSpeed(0.0)) {
        return fail(tracer, error, "Unable to pause the player");
    }
    return MediaError::None;
}

MediaError::Type MediaPlayer::stop()
{
    TRACE_FUNCTION();
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (d->m_mediaState == MediaState::Unprepared) {
        DEBUG_LINE << "Media player is unprepared";
        return MediaError::InvalidState;
    }
    if (!d->hasEnded(mmr_stop(d->m_context))) {
        return fail(tracer, d->lastError(), "Error stopping the player. error=");
    }
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
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    const int rate = truncated<int>(speed * MmrContextNotifier::s_NormalPlaybackSpeed);
    if (mmr_speed_set(d->m_context, rate) == -1) {
        return fail(tracer, d->lastError(), "Error setting the player speed. error=");
    }
    const bool isWaiting = d->m_mediaState == MediaState::Prepared || d->m_mediaState == MediaState::Stopped;
    if (isWaiting && mmr_play(d->m_context) == -1) {
        return fail(tracer, d->lastError(), "Error moving the player to a playing state. error=");
    }
    MediaPlayerPrivate *const self = d;
    const MediaState::Type state = self->m_mediaState;
    const auto become = [&](MediaState::Type next) {
        self->onMmrSpeedChanged(rate);
        // Otherwise a slot gave another command: keep that command's state.
        if (self->m_mediaState == (state == MediaState::Prepared ? state : next)) {
            self->setMediaState(next);
        }
    };
    if (state == MediaState::Paused && rate != MmrContextNotifier::s_PausedPlaybackSpeed) {
        self->m_notifier->forgetHold();
        become(MediaState::Started);
    } else if ((state == MediaState::Prepared || state == MediaState::Started)
               && rate == MmrContextNotifier::s_PausedPlaybackSpeed) {
        become(MediaState::Paused);
    }
    return MediaError::None;
}

// Medium and outputs

MediaError::Type MediaPlayer::setSourceUrl(const QUrl &url)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "url=" << LoggedUrl(url);
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (url == d->m_sourceUrl) {
        return refuse(tracer, MediaError::None, "Ignoring attempt to set same url.");
    }
    MediaPlayerPrivate *const self = d;
    if (const auto error = self->detachInput()) {
        return fail(tracer, error, "Unable to detach existing input. error=");
    }
    if (self->isOrphan()) {
        return MediaError::None;
    }
    self->setMediaState(MediaState::Unprepared);
    self->m_sourceUrl = url;
    // The text is required; it is not the signal's name.
    logSignal(tracer, "sourceChanged");
    self->emitSignal(&MediaPlayer::sourceUrlChanged, self->m_sourceUrl);
    return MediaError::None;
}

MediaError::Type MediaPlayer::setAudioOutput(AudioOutput::Type audioOutput)
{
    TRACE_FUNCTION();
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (audioOutput == d->m_audioOutput) {
        DEBUG_LINE << "Ignoring attempt to set same audio output.";
        return MediaError::None;
    }
    MediaPlayerPrivate *const self = d;
    if (audioOutput == AudioOutput::None || self->m_audioOutput == AudioOutput::None) {
        if (const auto error = self->detachInput()) {
            return fail(tracer, error, "Unable to detach existing input. error=", static_cast<int>(self->lastError()));
        }
    }
    if (self->m_mediaState != MediaState::Unprepared && self->m_audioOutputId != -1) {
        if (const auto error = self->detachOutput(self->m_audioOutputId)) {
            return fail(tracer, error,
                        "Unable to detach the audio output. error=", static_cast<int>(self->lastError()));
        }
    }
    if (self->isOrphan()) {
        return MediaError::None;
    }
    self->m_audioOutput = audioOutput;
    if (audioOutput == AudioOutput::None) {
        self->m_audioOutputId = -1;
    }
    if (self->m_mediaState != MediaState::Unprepared) {
        self->setMediaState(MediaState::Unprepared);
    }
    self->announce(tracer, &MediaPlayer::audioOutputChanged, "output", audioOutput);
    return MediaError::None;
}

MediaError::Type MediaPlayer::setVideoOutput(VideoOutput::Type videoOutput)
{
    TRACE_FUNCTION();
    if (!d->m_context) {
        return refuse(tracer, MediaError::InvalidState, "MMR context is null");
    }
    if (videoOutput == d->m_videoOutput) {
        return refuse(tracer, MediaError::None, "Ignoring attempt to set same video output.");
    }
    if (videoOutput > VideoOutput::SecondaryDisplay) {
        return refuse(tracer, MediaError::None,
                      "Invalid video output value. videoOutput=", static_cast<int>(videoOutput));
    }
    MediaPlayerPrivate *const self = d;
    if (videoOutput == VideoOutput::None || self->m_videoOutput == VideoOutput::None) {
        if (const auto error = self->detachInput()) {
            return refuse(tracer, error,
                          "Unable to detach existing input. error=", static_cast<int>(self->lastError()));
        }
    }
    if (self->m_videoOutputId != -1 && !self->isOrphan()) {
        if (const auto error = self->detachOutput(self->m_videoOutputId)) {
            return refuse(tracer, error,
                          "Unable to detach the video output. error=", static_cast<int>(self->lastError()));
        }
    }
    if (self->m_closedCaptionOutputId != -1 && !self->isOrphan()) {
        if (const auto error = self->detachOutput(self->m_closedCaptionOutputId)) {
            return refuse(tracer, error,
                          "Unable to detach the closed caption output. error=", static_cast<int>(self->lastError()));
        }
    }
    if (self->isOrphan()) {
        return MediaError::None;
    }
    self->m_videoOutput = videoOutput;
    self->m_videoOutputId = self->m_closedCaptionOutputId = -1;
    if (self->m_mediaState != MediaState::Unprepared) {
        self->setMediaState(MediaState::Unprepared);
    }
    logSignal(tracer, "videoOutputChanged", "output", static_cast<int>(videoOutput));
    self->emitSignal(&MediaPlayer::videoOutputChanged, videoOutput);
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
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (const auto error = d->updateVideoOutputParams(rect)) {
        return fail(tracer, error, "Unable to set video source parameters. src=", rect, ", error=");
    }
    d->m_videoSourceRect = rect;
    return MediaError::None;
}

void MediaPlayer::setWindowId(const QString &windowId)
{
    TRACE_FUNCTION();
    d->setWindow(tracer, d->m_windowId, windowId, &MediaPlayer::windowIdChanged, "windowId",
                 "Ignoring change to same window id");
}

void MediaPlayer::setWindowGroupId(const QString &windowGroupId)
{
    TRACE_FUNCTION();
    d->setWindow(tracer, d->m_windowGroupId, windowGroupId, &MediaPlayer::windowGroupIdChanged, "windowGroupId",
                 "Ignoring change to same window group id");
}

void MediaPlayer::setClosedCaptionWindowId(const QString &windowId)
{
    TRACE_FUNCTION();
    // The text for an equal value is the video window's; this is required.
    d->setWindow(tracer, d->m_closedCaptionWindowId, windowId, &MediaPlayer::closedCaptionWindowIdChanged,
                 "closedCaptionWindowId", "Ignoring change to same window id");
}

} // namespace voro::multimedia
