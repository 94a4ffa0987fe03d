// Playback settings that the application may change at any time; medium and outputs are in MediaPlayer.cpp.

#include <multimedia/MediaPlayer.h>

#include <private/Logger.h>
#include <private/MediaPlayerPrivate.h>
#include <private/Values.h>
#include <private/VariantSetter.h>

namespace voro::multimedia {

// Closed captions

MediaError::Type MediaPlayer::setClosedCaptionEnabled(bool enabled)
{
    TRACE_FUNCTION();
    if (!replace(d->m_closedCaptionDisabled, !enabled)) {
        return MediaError::None;
    }
    if (const auto error = d->updateTrackParamSubpictureDisabled(track(), !enabled)) {
        return fail(tracer, error, "Unable to set the closed caption enabled. enabled=", enabled, ", error=");
    }
    d->announce(tracer, &MediaPlayer::closedCaptionEnabledChanged, "enabled", enabled);
    return MediaError::None;
}

MediaError::Type MediaPlayer::setClosedCaptionIndex(unsigned int index)
{
    TRACE_FUNCTION();
    if (!replace(d->m_closedCaptionIndex, index)) {
        return MediaError::None;
    }
    if (const auto error = d->updateTrackParamSubpictureIndex(track(), index)) {
        return fail(tracer, error, "Unable to set the closed caption index. index=", index, ", error=");
    }
    d->announce(tracer, {&MediaPlayer::closedCaptionIndexChanged, &MediaPlayer::closedCaptionIndexChanged}, "index",
                index);
    return MediaError::None;
}

void MediaPlayer::setClosedCaptionIndexQml(const QVariant &index)
{
    TRACE_FUNCTION();
    setFromVariant(tracer, this, &MediaPlayer::setClosedCaptionIndex, "index", index,
                   "Unable to convert variant closed caption index.");
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
        return refuse(tracer, MediaError::InvalidParameter, "Setting the closed caption url is limited to track 1.");
    }
    if (url == current) {
        return MediaError::None;
    }
    if (const auto error = d->updateTrackParamSubpictureUrl(1, url)) {
        return fail(tracer, error, "Unable to set the closed caption url. track=", track, ", url=", LoggedUrl(url),
                    ", error=");
    }
    logSignal(tracer, "closedCaptionUrlChanged", "track", track, "url", LoggedUrl(url));
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
    // NaN fails this too.
    if (!(volume >= 0.0 && volume <= 1.0)) {
        return refuse(tracer, MediaError::InvalidParameter, "Volume value out of range. volume=", volume);
    }
    if (const auto error =
            d->applyAudioSettings(d->m_audioManagerHandle, volume, d->m_autoPause, d->m_equalizerPreset)) {
        return fail(tracer, error, "Unable to set volume parameter. volume=", volume);
    }
    d->m_volume = volume;
    d->announce(tracer, &MediaPlayer::volumeChanged, "volume", volume);
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
        return fail(tracer, error, "Unable to set auto pause");
    }
    d->m_autoPause = autoPause;
    logSignal(tracer, "autoPauseChanged");
    d->emitSignal(&MediaPlayer::autoPauseChanged, autoPause);
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
        return fail(tracer, error, "Unable to set equalizer preset");
    }
    d->m_equalizerPreset = equalizerPreset;
    d->announce(tracer, &MediaPlayer::equalizerPresetChanged, "equalizerPreset", equalizerPreset);
    return MediaError::None;
}

MediaError::Type MediaPlayer::setAudioManagerHandle(unsigned int handle)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "audioManagerHandle=" << handle;
    if (const auto error = d->applyAudioSettings(handle, d->m_volume, d->m_autoPause, d->m_equalizerPreset)) {
        return refuse(tracer, error, "Unable to set the audio type.");
    }
    d->m_audioManagerHandle = handle;
    d->announce(tracer, {&MediaPlayer::audioManagerHandleChanged, &MediaPlayer::audioManagerHandleChanged},
                "audioManagerHandle", handle);
    return MediaError::None;
}

void MediaPlayer::setAudioManagerHandleQml(const QVariant &handle)
{
    TRACE_FUNCTION();
    setFromVariant(tracer, this, &MediaPlayer::setAudioManagerHandle, "handle", handle,
                   "Unable to convert variant handle.");
}

MediaError::Type MediaPlayer::setRepeatMode(RepeatMode::Type repeatMode)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "repeatMode=" << keyName(repeatMode);
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (repeatMode == RepeatMode::Unsupported) {
        return refuse(tracer, MediaError::UnsupportedValue, "Cannot set unsupported repeat mode value on player.");
    }
    if (repeatMode != RepeatMode::None && d->toString(repeatMode).isEmpty()) {
        return refuse(tracer, MediaError::None, "Invalid repeat mode. mode=", static_cast<int>(repeatMode));
    }
    if (d->m_mediaState != MediaState::Unprepared) {
        if (const auto error = d->updateInputParamRepeatMode(repeatMode)) {
            return fail(tracer, error, "Unable to set the repeat mode.");
        }
    }
    if (replace(d->m_repeatMode, repeatMode)) {
        d->announce(tracer, &MediaPlayer::repeatModeChanged, "repeatMode", repeatMode);
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
        return fail(tracer, error, "Unable to set the status interval.");
    }
    if (replace(d->m_statusInterval, statusInterval)) {
        d->announce(tracer, {&MediaPlayer::statusIntervalChanged, &MediaPlayer::statusIntervalChanged},
                    "statusInterval", statusInterval);
    }
    return MediaError::None;
}

void MediaPlayer::setStatusIntervalQml(const QVariant &statusInterval)
{
    TRACE_FUNCTION();
    setFromVariant(tracer, this, &MediaPlayer::setStatusInterval, "statusInterval", statusInterval,
                   "Unable to convert variant status interval.");
}

} // namespace voro::multimedia
