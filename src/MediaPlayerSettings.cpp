// How a medium is played: what the application sets at any time, apart from the medium and its outputs.

#include <multimedia/MediaPlayer.h>

#include <private/Logger.h>
#include <private/MediaPlayerPrivate.h>
#include <private/Values.h>

namespace voro::multimedia {

// Closed captions

MediaError::Type MediaPlayer::setClosedCaptionEnabled(bool enabled)
{
    TRACE_FUNCTION();
    if (!replace(d->m_closedCaptionDisabled, !enabled)) {
        return MediaError::None;
    }
    if (const auto error = d->updateTrackParamSubpictureDisabled(track(), !enabled)) {
        CRITICAL_LINE << "Unable to set the closed caption enabled. enabled=" << enabled
                      << ", error=" << keyName(error);
        return error;
    }
    DEBUG_LINE << "emit closedCaptionEnabledChanged()";
    DEBUG_LINE << "  enabled=" << enabled;
    if (const Emission to{d}) {
        Q_EMIT to->closedCaptionEnabledChanged(enabled);
    }
    return MediaError::None;
}

MediaError::Type MediaPlayer::setClosedCaptionIndex(unsigned int index)
{
    TRACE_FUNCTION();
    if (!replace(d->m_closedCaptionIndex, index)) {
        return MediaError::None;
    }
    if (const auto error = d->updateTrackParamSubpictureIndex(track(), index)) {
        CRITICAL_LINE << "Unable to set the closed caption index. index=" << index << ", error=" << keyName(error);
        return error;
    }
    DEBUG_LINE << "emit closedCaptionIndexChanged()";
    DEBUG_LINE << "  index=" << index;
    const Emission to{d};
    if (to) {
        Q_EMIT to->closedCaptionIndexChanged(index);
    }
    if (to) {
        Q_EMIT to->closedCaptionIndexChanged(QVariant(index));
    }
    return MediaError::None;
}

void MediaPlayer::setClosedCaptionIndexQml(const QVariant &index)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "index=" << index.toString();
    bool ok = false;
    const unsigned int number = index.toUInt(&ok);
    if (ok) {
        setClosedCaptionIndex(number);
    } else {
        WARNING_LINE << "Unable to convert variant closed caption index.";
    }
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
    if (url == current) {
        return MediaError::None;
    }
    if (const auto error = d->updateTrackParamSubpictureUrl(1, url)) {
        CRITICAL_LINE << "Unable to set the closed caption url. track=" << track << ", url=" << LoggedUrl(url)
                      << ", error=" << keyName(error);
        return error;
    }
    DEBUG_LINE << "emit closedCaptionUrlChanged()";
    DEBUG_LINE << "  track=" << track;
    DEBUG_LINE << "  url=" << LoggedUrl(url);
    const Emission to{d};
    if (to) {
        Q_EMIT to->closedCaptionUrlChanged(track, url);
    }
    if (to) {
        Q_EMIT to->closedCaptionUrlChanged(QVariant(track), url);
    }
    return MediaError::None;
}

// Parameters

MediaError::Type MediaPlayer::setVolume(double volume)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "volume=" << volume;
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
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
    if (const Emission to{d}) {
        Q_EMIT to->volumeChanged(volume);
    }
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
    if (const Emission to{d}) {
        Q_EMIT to->autoPauseChanged(autoPause);
    }
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
    if (const Emission to{d}) {
        Q_EMIT to->equalizerPresetChanged(equalizerPreset);
    }
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
    const Emission to{d};
    if (to) {
        Q_EMIT to->audioManagerHandleChanged(handle);
    }
    if (to) {
        Q_EMIT to->audioManagerHandleChanged(QVariant(handle));
    }
    return MediaError::None;
}

void MediaPlayer::setAudioManagerHandleQml(const QVariant &handle)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "handle=" << handle.toString();
    bool ok = false;
    const unsigned int number = handle.toUInt(&ok);
    if (ok) {
        setAudioManagerHandle(number);
    } else {
        WARNING_LINE << "Unable to convert variant handle.";
    }
}

MediaError::Type MediaPlayer::setRepeatMode(RepeatMode::Type repeatMode)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "repeatMode=" << keyName(repeatMode);
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
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
        if (const Emission to{d}) {
            Q_EMIT to->repeatModeChanged(repeatMode);
        }
    }
    return MediaError::None;
}

MediaError::Type MediaPlayer::setStatusInterval(unsigned int statusInterval)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "statusInterval=" << statusInterval;
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (const auto error = d->updateContextParams(statusInterval)) {
        CRITICAL_LINE << "Unable to set the status interval.";
        return error;
    }
    if (replace(d->m_statusInterval, statusInterval)) {
        DEBUG_LINE << "emit statusIntervalChanged()";
        DEBUG_LINE << "  statusInterval=" << statusInterval;
        const Emission to{d};
        if (to) {
            Q_EMIT to->statusIntervalChanged(statusInterval);
        }
        if (to) {
            Q_EMIT to->statusIntervalChanged(QVariant(statusInterval));
        }
    }
    return MediaError::None;
}

void MediaPlayer::setStatusIntervalQml(const QVariant &statusInterval)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "statusInterval=" << statusInterval.toString();
    bool ok = false;
    const unsigned int number = statusInterval.toUInt(&ok);
    if (ok) {
        setStatusInterval(number);
    } else {
        WARNING_LINE << "Unable to convert variant status interval.";
    }
}

} // namespace voro::multimedia
