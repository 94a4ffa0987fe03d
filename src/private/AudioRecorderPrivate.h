#pragma once

#include "ContextOwner.h"

#include <multimedia/AudioRecorder.h>

#include <QtCore/QString>

namespace voro::multimedia {

/** The private part of a recorder: renderer context, settings and the renderer's last reports. */
class AudioRecorderPrivate : public ContextOwner<AudioRecorder> {
    Q_OBJECT
public:
    /** The base of every input URL. */
    static constexpr QLatin1String MICROPHONE_DEVICE_URI{"audio:default"};

    explicit AudioRecorderPrivate(AudioRecorder *recorder);

    MediaError::Type lastError() const override;
    void setMediaState(MediaState::Type mediaState);
    MediaError::Type unprepare();

    QString generateInputUrl();
    MediaError::Type updateContextParams(unsigned int interval);
    MediaError::Type updateInputParams(unsigned int handle);

private Q_SLOTS:
    void onMmrError(voro::multimedia::MediaError::Type e, unsigned int position, unsigned int track);
    void onMmrIdle();
    void onMmrPaused();
    void onMmrDurationChanged(unsigned int duration);
    void onMmrRecording();
    void onMmrStopped();
    void onVolumeLevelChanged(double percentage);

private:
    friend class AudioRecorder;

    void connectNotifier();
    template<typename Value, typename Signal>
    MediaError::Type changeInputSetting(const FunctionTracer &tracer, Value &stored, const Value &value,
                                        const Signal &changed, const char *name);

    AudioChannelConfiguration::Type m_audioChannelConfiguration = AudioChannelConfiguration::Default;
    unsigned int m_audioManagerHandle = 0;
    unsigned int m_duration = 0;
    MediaError::Type m_mediaError = MediaError::None;
    MediaState::Type m_mediaState = MediaState::Unprepared;
    int m_outputId = -1;
    QUrl m_outputUrl;
    // The renderer's default.
    unsigned int m_statusInterval = 1000;
};

} // namespace voro::multimedia
