// The player's handling of the renderer's reports, and the signals that follow.

#include <multimedia/MediaPlayer.h>

#include <private/Logger.h>
#include <private/MediaPlayerPrivate.h>

namespace voro::multimedia {

void MediaPlayerPrivate::onBuffering(double percentage)
{
    TRACE_FUNCTION();
    if (learn(m_buffering, percentage)) {
        announce(tracer, &MediaPlayer::buffering, "percentage", percentage);
    }
}

void MediaPlayerPrivate::onBufferStatusChanged(BufferStatus::Type bufferStatus)
{
    TRACE_FUNCTION();
    if (learn(m_bufferStatus, bufferStatus)) {
        announce(tracer, &MediaPlayer::bufferStatusChanged, "bufferStatus", bufferStatus);
    }
}

void MediaPlayerPrivate::onDurationChanged(unsigned int duration)
{
    TRACE_FUNCTION();
    if (learn(m_duration, duration)) {
        announce(tracer, {&MediaPlayer::durationChanged, &MediaPlayer::durationChanged}, "duration", duration);
    }
}

void MediaPlayerPrivate::onMetaDataChanged(const QVariantMap &metaData)
{
    TRACE_FUNCTION();
    m_metaData = metaData;
    announce(tracer, &MediaPlayer::metaDataChanged, "metadata", metaData);
}

void MediaPlayerPrivate::onMmrError(MediaError::Type error, unsigned int position, unsigned int)
{
    TRACE_FUNCTION();
    setMediaState(MediaState::Stopped);
    announceError(tracer, error, position);
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
    announce(tracer, &MediaPlayer::playbackCompleted);
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
    announce(tracer, {&MediaPlayer::positionChanged, &MediaPlayer::positionChanged}, "position", position);
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
    announce(tracer, &MediaPlayer::speedChanged, "percentage", toFactor(speed));
}

void MediaPlayerPrivate::onMmrStopped()
{
    TRACE_FUNCTION();
    if (m_mediaState != MediaState::Prepared) {
        setMediaState(MediaState::Stopped);
    }
}

void MediaPlayerPrivate::onSeekableChanged(bool seekable)
{
    TRACE_FUNCTION();
    if (learn(m_seekable, seekable)) {
        announce(tracer, &MediaPlayer::seekableChanged, "seekable", seekable);
    }
}

void MediaPlayerPrivate::onTrackChanged(unsigned int track)
{
    TRACE_FUNCTION();
    if (!learn(m_track, track)) {
        return;
    }
    if (const auto error = updateTrackParamSubpictureIndex(track, m_closedCaptionIndex)) {
        fail(tracer, error,
             "Unable to update the current track with the closed caption index. index=", m_closedCaptionIndex,
             ", error=");
        return;
    }
    announceTrack(tracer);
}

void MediaPlayerPrivate::announceTrack(const FunctionTracer &tracer)
{
    const unsigned int track = m_track;
    announce(tracer, {&MediaPlayer::trackChanged, &MediaPlayer::trackChanged}, "track", track);
}

void MediaPlayerPrivate::onTrackCountChanged(unsigned int trackCount)
{
    TRACE_FUNCTION();
    if (learn(m_trackCount, trackCount)) {
        announce(tracer, {&MediaPlayer::trackCountChanged, &MediaPlayer::trackCountChanged}, "trackCount", trackCount);
    }
}

void MediaPlayerPrivate::onVideoDimensionsChanged(const QSize &videoDimensions)
{
    TRACE_FUNCTION();
    if (!learn(m_videoDimensions, videoDimensions)) {
        return;
    }
    // The text is required; it is not the signal's name.
    logSignal(tracer, "m_videoDimensionsChanged", "videoDimensions", videoDimensions);
    emitSignal(&MediaPlayer::videoDimensionsChanged, videoDimensions);
}

} // namespace voro::multimedia
