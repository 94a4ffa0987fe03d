#include <multimedia/MediaPlayer.h>

#include <private/Logger.h>
#include <private/MediaPlayerPrivate.h>

namespace voro::multimedia {

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
