// What the player makes of the renderer's reports, and what it tells the application of them.

#include <multimedia/MediaPlayer.h>

#include <private/Logger.h>
#include <private/MediaPlayerPrivate.h>

namespace voro::multimedia {

void MediaPlayerPrivate::onBuffering(double percentage)
{
    TRACE_FUNCTION();
    if (!learn(m_buffering, percentage)) {
        return;
    }
    DEBUG_LINE << "emit buffering()";
    DEBUG_LINE << "  percentage=" << percentage;
    if (const Emission to{this}) {
        Q_EMIT to->buffering(percentage);
    }
}

void MediaPlayerPrivate::onBufferStatusChanged(BufferStatus::Type bufferStatus)
{
    TRACE_FUNCTION();
    if (!learn(m_bufferStatus, bufferStatus)) {
        return;
    }
    DEBUG_LINE << "emit bufferStatusChanged()";
    DEBUG_LINE << "  bufferStatus=" << keyName(bufferStatus);
    if (const Emission to{this}) {
        Q_EMIT to->bufferStatusChanged(bufferStatus);
    }
}

void MediaPlayerPrivate::onDurationChanged(unsigned int duration)
{
    TRACE_FUNCTION();
    if (!learn(m_duration, duration)) {
        return;
    }
    DEBUG_LINE << "emit durationChanged()";
    DEBUG_LINE << "  duration=" << duration;
    const Emission to{this};
    if (to) {
        Q_EMIT to->durationChanged(duration);
    }
    if (to) {
        Q_EMIT to->durationChanged(QVariant(duration));
    }
}

void MediaPlayerPrivate::onMetaDataChanged(const QVariantMap &metaData)
{
    TRACE_FUNCTION();
    m_metaData = metaData;
    DEBUG_LINE << "emit metaDataChanged()";
    DEBUG_LINE << "  metadata=" << metaData;
    if (const Emission to{this}) {
        Q_EMIT to->metaDataChanged(metaData);
    }
}

void MediaPlayerPrivate::onMmrError(MediaError::Type error, unsigned int position, unsigned int)
{
    TRACE_FUNCTION();
    setMediaState(MediaState::Stopped);
    if (isOrphan()) {
        return;
    }
    DEBUG_LINE << "emit error()";
    DEBUG_LINE << "  error=" << keyName(error);
    DEBUG_LINE << "  position=" << position;
    const Emission to{this};
    if (to) {
        Q_EMIT to->error(error, position);
    }
    if (to) {
        Q_EMIT to->error(error, QVariant(position));
    }
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
    if (isOrphan()) {
        return;
    }
    DEBUG_LINE << "emit playbackCompleted()";
    if (const Emission to{this}) {
        Q_EMIT to->playbackCompleted();
    }
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
    const Emission to{this};
    if (to) {
        Q_EMIT to->positionChanged(position);
    }
    if (to) {
        Q_EMIT to->positionChanged(QVariant(position));
    }
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
    if (isOrphan()) {
        return;
    }
    DEBUG_LINE << "emit speedChanged()";
    DEBUG_LINE << "  percentage=" << toFactor(speed);
    if (const Emission to{this}) {
        Q_EMIT to->speedChanged(toFactor(speed));
    }
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
    if (!learn(m_seekable, seekable)) {
        return;
    }
    DEBUG_LINE << "emit seekableChanged()";
    DEBUG_LINE << "  seekable=" << seekable;
    if (const Emission to{this}) {
        Q_EMIT to->seekableChanged(seekable);
    }
}

void MediaPlayerPrivate::onTrackChanged(unsigned int track)
{
    TRACE_FUNCTION();
    if (!learn(m_track, track)) {
        return;
    }
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
    const Emission to{this};
    if (to) {
        Q_EMIT to->trackChanged(track);
    }
    if (to) {
        Q_EMIT to->trackChanged(QVariant(track));
    }
}

void MediaPlayerPrivate::onTrackCountChanged(unsigned int trackCount)
{
    TRACE_FUNCTION();
    if (!learn(m_trackCount, trackCount)) {
        return;
    }
    DEBUG_LINE << "emit trackCountChanged()";
    DEBUG_LINE << "  trackCount=" << trackCount;
    const Emission to{this};
    if (to) {
        Q_EMIT to->trackCountChanged(trackCount);
    }
    if (to) {
        Q_EMIT to->trackCountChanged(QVariant(trackCount));
    }
}

void MediaPlayerPrivate::onVideoDimensionsChanged(const QSize &videoDimensions)
{
    TRACE_FUNCTION();
    if (!learn(m_videoDimensions, videoDimensions)) {
        return;
    }
    // The text is required; it is not the signal's name.
    DEBUG_LINE << "emit m_videoDimensionsChanged()";
    DEBUG_LINE << "  videoDimensions=" << videoDimensions;
    if (const Emission to{this}) {
        Q_EMIT to->videoDimensionsChanged(videoDimensions);
    }
}

} // namespace voro::multimedia
