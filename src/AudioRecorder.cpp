#include <multimedia/AudioRecorder.h>
#include <voro/audio_manager.h>

#include <QtCore/QStringList>

#include <private/AudioRecorderPrivate.h>
#include <private/Dictionary.h>
#include <private/LocalPath.h>
#include <private/Logger.h>
#include <private/MediaUtils.h>
#include <private/Values.h>
#include <private/VariantSetter.h>

namespace voro::multimedia {

AudioRecorderPrivate::AudioRecorderPrivate(AudioRecorder *recorder) : ContextOwner(recorder)
{
    TRACE_FUNCTION();
}

MediaError::Type AudioRecorderPrivate::lastError() const
{
    TRACE_FUNCTION();
    return m_notifier->lastError();
}

// AudioRecorderPrivate: state

void AudioRecorderPrivate::setMediaState(MediaState::Type mediaState)
{
    TRACE_FUNCTION();
    if (!replace(m_mediaState, mediaState)) {
        DEBUG_LINE << "Attempting to change to same state.  mediaState=" << keyName(mediaState);
        return;
    }
    if (mediaState == MediaState::Unprepared) {
        onVolumeLevelChanged(0.0);
        if (!isOrphan()) {
            onMmrDurationChanged(0);
        }
    }
    announce(tracer, &AudioRecorder::mediaStateChanged, "mediaState", mediaState);
}

MediaError::Type AudioRecorderPrivate::unprepare()
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
        return fail(tracer, lastError(), "Error stopping the recorder. error=");
    }
    if (!hasEnded(mmr_input_detach(m_context))) {
        return fail(tracer, lastError(), "Error detaching recording input. error=");
    }
    if (mmr_output_detach(m_context, m_outputId) == -1) {
        return fail(tracer, lastError(), "Error detaching recording file. error=");
    }
    setMediaState(MediaState::Unprepared);
    return MediaError::None;
}

/** Changes a setting of the input. An attached input is detached first. */
template<typename Value, typename Signal>
MediaError::Type AudioRecorderPrivate::changeInputSetting(const FunctionTracer &tracer, Value &stored,
                                                          const Value &value, const Signal &changed, const char *name)
{
    if (m_mediaState != MediaState::Unprepared) {
        if (const auto error = unprepare()) {
            return fail(tracer, error, "Unable to unprepare the recorder.");
        }
    }
    if (isOrphan()) {
        return MediaError::None;
    }
    stored = value;
    announce(tracer, changed, name, value);
    return MediaError::None;
}

// AudioRecorderPrivate: input and parameters

QString AudioRecorderPrivate::generateInputUrl()
{
    TRACE_FUNCTION();
    QString url = MICROPHONE_DEVICE_URI;
    QStringList items;
    if (m_audioChannelConfiguration != AudioChannelConfiguration::Default) {
        const int channels = m_audioChannelConfiguration == AudioChannelConfiguration::Stereo ? 2 : 1;
        items += QStringLiteral("nchan=%1").arg(channels);
    }
    if (!items.isEmpty()) {
        url += QLatin1Char('?') + items.join(QLatin1Char('&'));
    }
    return url;
}

MediaError::Type AudioRecorderPrivate::updateContextParams(unsigned int interval)
{
    TRACE_FUNCTION();
    return sendUpdateInterval(tracer, interval);
}

MediaError::Type AudioRecorderPrivate::updateInputParams(unsigned int handle)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "audioManagerHandle=" << handle;
    if (!hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    Dictionary dictionary;
    if (!dictionary.set(QStringLiteral("audioman_handle"), QString::number(handle))) {
        return fail(tracer, MediaError::InvalidParameter,
                    "Unable to create audio manager handle parameter. audioman_handle=", handle);
    }
    const char *type = audio_manager_get_name_from_type(AUDIO_TYPE_VOICE_RECORDING);
    if (!dictionary.set(QStringLiteral("audio_type"), QString::fromUtf8(type))) {
        return fail(tracer, MediaError::InvalidParameter, "Unable to create voice recording audio type parameter.");
    }
    if (mmr_input_parameters(m_context, dictionary.release()) != 0) {
        return fail(tracer, lastError(), "Unable to set input parameters. error=");
    }
    return MediaError::None;
}

// AudioRecorderPrivate: the renderer's reports

void AudioRecorderPrivate::onMmrError(MediaError::Type e, unsigned int position, unsigned int)
{
    TRACE_FUNCTION();
    setMediaState(MediaState::Stopped);
    announceError(tracer, e, position);
}

void AudioRecorderPrivate::onMmrIdle()
{
    TRACE_FUNCTION();
    if (const auto error = unprepare()) {
        fail(tracer, error, "Unable to unprepare. error=");
    }
}

void AudioRecorderPrivate::onMmrPaused()
{
    TRACE_FUNCTION();
    setMediaState(MediaState::Paused);
}

void AudioRecorderPrivate::onMmrDurationChanged(unsigned int duration)
{
    TRACE_FUNCTION();
    m_duration = duration;
    announce(tracer, {&AudioRecorder::durationChanged, &AudioRecorder::durationChanged}, "duration", duration);
}

void AudioRecorderPrivate::onMmrRecording()
{
    TRACE_FUNCTION();
    setMediaState(MediaState::Started);
}

void AudioRecorderPrivate::onMmrStopped()
{
    TRACE_FUNCTION();
    setMediaState(MediaState::Unprepared);
}

void AudioRecorderPrivate::onVolumeLevelChanged(double percentage)
{
    TRACE_FUNCTION();
    announce(tracer, &AudioRecorder::recordingLevelChanged, "percentage", percentage);
}

// AudioRecorder: construction

AudioRecorder::AudioRecorder(QObject *parent) : QObject(parent), d(new AudioRecorderPrivate(this))
{
    TRACE_FUNCTION();
    const QString name =
        QStringLiteral("voro.multimedia.AudioRecorder::%1").arg(MediaUtils::instance()->generateUniqueId());
    DEBUG_LINE << "Creating context...";
    DEBUG_LINE << "  context=" << name;
    d->m_connection = mmr_connect(nullptr);
    if (!d->m_connection) {
        CRITICAL_LINE << "Unable to connect to MMR";
        return;
    }
    d->m_context = mmr_context_create(d->m_connection, name.toUtf8().constData(), 0, 0700);
    if (!d->m_context) {
        // The word "player" is required.
        CRITICAL_LINE << "Error creating player context. error=" << keyName(d->lastError());
        return;
    }
    d->m_notifier->monitor(d->m_context);
    d->connectNotifier();
}

void AudioRecorderPrivate::connectNotifier()
{
    using Notifier = MmrContextNotifier;
    using Self = AudioRecorderPrivate;
    connect(m_notifier, &Notifier::error, this, &Self::onMmrError);
    connect(m_notifier, &Notifier::idle, this, &Self::onMmrIdle);
    connect(m_notifier, &Notifier::paused, this, &Self::onMmrPaused);
    connect(m_notifier, &Notifier::playing, this, &Self::onMmrRecording);
    connect(m_notifier, &Notifier::positionChanged, this, &Self::onMmrDurationChanged);
    connect(m_notifier, &Notifier::stopped, this, &Self::onMmrStopped);
    // Forwarded without the log lines of onVolumeLevelChanged().
    connect(m_notifier, &Notifier::volumeLevelChanged, this,
            [this](double percentage) { emitSignal(&AudioRecorder::recordingLevelChanged, percentage); });
}

AudioRecorder::~AudioRecorder()
{
    TRACE_FUNCTION();
    d->end();
}

// AudioRecorder: commands

MediaError::Type AudioRecorder::prepare()
{
    TRACE_FUNCTION();
    const QString inputUrl = d->generateInputUrl();
    const QString path = toLocalPath(d->m_outputUrl);
    // The result without a context is required.
    if (!d->hasContext(tracer)) {
        return MediaError::None;
    }
    if (d->m_mediaState != MediaState::Unprepared) {
        DEBUG_LINE << "Recorder is already prepared";
        return MediaError::None;
    }
    if (!d->m_outputUrl.isValid()) {
        DEBUG_LINE << "Invalid output URL.";
        return MediaError::InvalidParameter;
    }
    d->m_outputId = mmr_output_attach(d->m_context, path.toUtf8().constData(), "file");
    if (d->m_outputId == -1) {
        return fail(tracer, d->lastError(), "Error attaching audio output. url=", LoggedUrl(d->m_outputUrl),
                    ", error=");
    }
    if (const auto error = d->updateInputParams(d->m_audioManagerHandle)) {
        return fail(tracer, error, "Unable to set input parameters.");
    }
    if (mmr_input_attach(d->m_context, inputUrl.toUtf8().constData(), "track") == -1) {
        return fail(tracer, d->lastError(), "Error attaching input source. url=", inputUrl, ", error=");
    }
    d->setMediaState(MediaState::Prepared);
    return MediaError::None;
}

MediaError::Type AudioRecorder::record()
{
    TRACE_FUNCTION();
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    AudioRecorderPrivate *const self = d;
    if (self->m_mediaState == MediaState::Unprepared) {
        if (const auto error = prepare()) {
            return fail(tracer, error, "Unable to prepare the recorder");
        }
        if (self->isOrphan()) {
            return MediaError::None;
        }
    }
    if (mmr_speed_set(d->m_context, MmrContextNotifier::s_NormalPlaybackSpeed) == -1) {
        return fail(tracer, d->lastError(), "Unable to set the recorder speed to normal");
    }
    if (mmr_play(d->m_context) == -1) {
        return fail(tracer, d->lastError(), "Error recording audio. error=");
    }
    d->setMediaState(MediaState::Started);
    return MediaError::None;
}

MediaError::Type AudioRecorder::pause()
{
    TRACE_FUNCTION();
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (mmr_speed_set(d->m_context, MmrContextNotifier::s_PausedPlaybackSpeed) == -1) {
        return fail(tracer, d->lastError(), "Error pausing the recorder. error=");
    }
    d->setMediaState(MediaState::Paused);
    return MediaError::None;
}

MediaError::Type AudioRecorder::reset()
{
    TRACE_FUNCTION();
    return d->unprepare();
}

// AudioRecorder: settings

MediaError::Type AudioRecorder::setAudioChannelConfiguration(AudioChannelConfiguration::Type audioChannelConfiguration)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "audioChannelConfiguration=" << keyName(audioChannelConfiguration);
    if (audioChannelConfiguration == d->m_audioChannelConfiguration) {
        DEBUG_LINE << "Attempting to set same audio channel configuration.";
        return MediaError::None;
    }
    return d->changeInputSetting(tracer, d->m_audioChannelConfiguration, audioChannelConfiguration,
                                 &AudioRecorder::audioChannelConfigurationChanged, "audioChannelConfiguration");
}

MediaError::Type AudioRecorder::setAudioManagerHandle(unsigned int handle)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "audioManagerHandle=" << handle;
    if (handle == d->m_audioManagerHandle) {
        DEBUG_LINE << "Attempting to set same audio manager handle.";
        return MediaError::None;
    }
    using Twins = AudioRecorderPrivate::Twins;
    const Twins changed{&AudioRecorder::audioManagerHandleChanged, &AudioRecorder::audioManagerHandleChanged};
    return d->changeInputSetting(tracer, d->m_audioManagerHandle, handle, changed, "audioManagerHandle");
}

void AudioRecorder::setAudioManagerHandleQml(const QVariant &handle)
{
    TRACE_FUNCTION();
    setFromVariant(tracer, this, &AudioRecorder::setAudioManagerHandle, "handle", handle,
                   "Unable to convert variant handle.");
}

void AudioRecorder::setOutputUrl(const QUrl &url)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "url=" << LoggedUrl(url);
    d->m_outputUrl = url;
}

MediaError::Type AudioRecorder::setStatusInterval(unsigned int statusInterval)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "statusInterval=" << statusInterval;
    if (!d->hasContext(tracer)) {
        return MediaError::InvalidState;
    }
    if (const auto error = d->updateContextParams(statusInterval)) {
        return fail(tracer, error, "Unable to set the status interval.");
    }
    d->m_statusInterval = statusInterval;
    d->announce(tracer, {&AudioRecorder::statusIntervalChanged, &AudioRecorder::statusIntervalChanged},
                "statusInterval", statusInterval);
    return MediaError::None;
}

void AudioRecorder::setStatusIntervalQml(const QVariant &statusInterval)
{
    TRACE_FUNCTION();
    setFromVariant(tracer, this, &AudioRecorder::setStatusInterval, "statusInterval", statusInterval,
                   "Unable to convert variant status interval.");
}

// AudioRecorder: getters

AudioChannelConfiguration::Type AudioRecorder::audioChannelConfiguration() const
{
    TRACE_FUNCTION();
    return d->m_audioChannelConfiguration;
}

unsigned int AudioRecorder::audioManagerHandle() const
{
    TRACE_FUNCTION();
    return d->m_audioManagerHandle;
}

QVariant AudioRecorder::audioManagerHandleQml() const
{
    TRACE_FUNCTION();
    return audioManagerHandle();
}

DeviceMode::Type AudioRecorder::deviceMode() const
{
    TRACE_FUNCTION();
    return DeviceMode::Capture;
}

unsigned int AudioRecorder::duration() const
{
    TRACE_FUNCTION();
    return d->m_duration;
}

QVariant AudioRecorder::durationQml() const
{
    TRACE_FUNCTION();
    return duration();
}

MediaError::Type AudioRecorder::mediaError() const
{
    TRACE_FUNCTION();
    return d->m_mediaError;
}

MediaState::Type AudioRecorder::mediaState() const
{
    TRACE_FUNCTION();
    return d->m_mediaState;
}

QUrl AudioRecorder::outputUrl() const
{
    TRACE_FUNCTION();
    return d->m_outputUrl;
}

unsigned int AudioRecorder::statusInterval() const
{
    TRACE_FUNCTION();
    return d->m_statusInterval;
}

QVariant AudioRecorder::statusIntervalQml() const
{
    TRACE_FUNCTION();
    return statusInterval();
}

} // namespace voro::multimedia
