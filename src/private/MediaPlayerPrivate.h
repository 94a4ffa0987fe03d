#pragma once

#include "ContextOwner.h"

#include <multimedia/MediaPlayer.h>

#include <QtCore/QRect>
#include <QtCore/QString>

namespace voro::multimedia {

/** Converts thousandths of normal speed to a factor. */
inline double toFactor(int rate)
{
    return rate / static_cast<double>(MmrContextNotifier::s_NormalPlaybackSpeed);
}

/** The private part of a player: renderer context, settings and the renderer's last reports. */
class MediaPlayerPrivate : public ContextOwner<MediaPlayer> {
    Q_OBJECT
public:
    explicit MediaPlayerPrivate(MediaPlayer *player);

    MediaError::Type lastError() const override;
    void setMediaState(MediaState::Type mediaState);
    MediaError::Type play();
    MediaError::Type unprepare();
    MediaError::Type seek(unsigned int track, unsigned int position);

    MediaError::Type attachInput(const QUrl &url);
    MediaError::Type detachInput();
    /** Detaches the input and then an output. The caller resets the output's id. */
    MediaError::Type detachOutput(int outputId);
    QString generateAudioOutputUrl(AudioOutput::Type audioOutput);
    QString generateVideoOutputUrl(VideoOutput::Type videoOutput, const QString &windowId,
                                   const QString &windowGroupId);

    MediaError::Type updateAudioOutputParams(unsigned int audioManagerHandle, double volume, bool autoPause,
                                             EqualizerPreset::Type equalizerPreset);
    MediaError::Type updateContextParams(unsigned int updateInterval);
    MediaError::Type updateInputParamRepeatMode(RepeatMode::Type mode);
    MediaError::Type updateTrackParamSubpictureDisabled(unsigned int track, bool disabled);
    MediaError::Type updateTrackParamSubpictureIndex(unsigned int track, unsigned int index);
    MediaError::Type updateTrackParamSubpictureUrl(unsigned int track, const QUrl &url);
    MediaError::Type updateVideoOutputParams(const QRect &rect);

    /** The renderer's name of a preset; empty for an unknown number. */
    QString toString(EqualizerPreset::Type equalizerPreset);
    /** The renderer's name of a mode; empty when there is none. */
    QString toString(RepeatMode::Type repeatMode);

private Q_SLOTS:
    void onBuffering(double percentage);
    void onBufferStatusChanged(voro::multimedia::BufferStatus::Type bufferStatus);
    void onDurationChanged(unsigned int duration);
    void onMetaDataChanged(const QVariantMap &metaData);
    void onMmrError(voro::multimedia::MediaError::Type error, unsigned int position, unsigned int track);
    void onMmrIdle();
    void onMmrPaused();
    void onMmrPlaybackCompleted();
    void onMmrPlaying();
    void onMmrPositionChanged(unsigned int position);
    void onMmrSpeedChanged(int speed);
    void onMmrStopped();
    void onSeekableChanged(bool seekable);
    void onTrackChanged(unsigned int track);
    void onTrackCountChanged(unsigned int trackCount);
    void onVideoDimensionsChanged(const QSize &videoDimensions);

private:
    friend class MediaPlayer;

    void connectNotifier();
    MediaError::Type attachOutput(const FunctionTracer &tracer, const char *name, const QString &url, const char *type,
                                  int *outputId);
    MediaError::Type attachOutputs(const FunctionTracer &tracer, const QString &audioUrl, const QString &videoUrl,
                                   const QString &closedCaptionUrl);
    MediaError::Type applyAudioSettings(unsigned int audioManagerHandle, double volume, bool autoPause,
                                        EqualizerPreset::Type equalizerPreset);
    MediaError::Type updateTrackParam(const FunctionTracer &tracer, unsigned int track, const QString &name,
                                      const QString &value, const char *failure);
    void announceTrack(const FunctionTracer &tracer);
    void setWindow(const FunctionTracer &tracer, QString &stored, const QString &id,
                   void (MediaPlayer::*changed)(const QString &), const char *name, const char *sameText);

    // An output id of -1 means that none is attached.
    int m_audioOutputId = -1;
    unsigned int m_duration = 0;
    unsigned int m_position = 0;
    unsigned int m_track = 0;
    unsigned int m_trackCount = 0;
    int m_closedCaptionOutputId = -1;
    int m_videoOutputId = -1;
    int m_speed = MmrContextNotifier::s_NormalPlaybackSpeed;
    unsigned int m_statusInterval = MmrContextNotifier::s_NormalPlaybackSpeed;
    RepeatMode::Type m_repeatMode = RepeatMode::None;
    MediaError::Type m_mediaError = MediaError::None;
    MediaState::Type m_mediaState = MediaState::Unprepared;
    BufferStatus::Type m_bufferStatus = BufferStatus::Idle;
    VideoOutput::Type m_videoOutput = VideoOutput::None;
    AudioOutput::Type m_audioOutput = AudioOutput::Default;
    EqualizerPreset::Type m_equalizerPreset = EqualizerPreset::Off;
    QString m_contextName;
    QUrl m_sourceUrl;
    QSize m_videoDimensions = QSize(0, 0);
    QString m_closedCaptionWindowId;
    QString m_windowGroupId;
    QString m_windowId;
    double m_buffering = 0.0;
    QRect m_videoSourceRect;
    double m_volume = 1.0;
    QVariantMap m_metaData;
    bool m_autoPause = false;
    bool m_seekable = false;
    unsigned int m_audioManagerHandle = 0;
    unsigned int m_closedCaptionIndex = 0;
    bool m_closedCaptionDisabled = false;
};

} // namespace voro::multimedia
