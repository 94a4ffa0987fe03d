#pragma once

#include <multimedia/AudioChannelConfiguration.h>
#include <multimedia/DeviceMode.h>
#include <multimedia/Export.h>
#include <multimedia/MediaError.h>
#include <multimedia/MediaState.h>

#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <QtCore/QVariant>

namespace voro::multimedia {

class AudioRecorderPrivate;

/**
 * Records the device's audio input into a file.
 *
 * A recorder owns one context of the renderer service. The file's extension chooses its format. The file is complete
 * and closed when reset() returns or the recorder is destroyed. A command returns when the renderer has answered. Later
 * events (duration, level, errors) arrive as signals through the event loop of the recorder's thread.
 *
 * Commands and setters that return a `MediaError` return `None` on success. On failure they log a line and return the
 * renderer's error.
 *
 * Use a recorder on the thread that owns it. A slot of any of its signals may destroy it: the recorder emits nothing
 * more, and a command in progress returns `None`.
 */
class VOROMULTIMEDIA_EXPORT AudioRecorder : public QObject {
    Q_OBJECT
    Q_PROPERTY(voro::multimedia::AudioChannelConfiguration::Type audioChannelConfiguration READ
                   audioChannelConfiguration WRITE setAudioChannelConfiguration NOTIFY audioChannelConfigurationChanged)
    Q_PROPERTY(QVariant audioManagerHandle READ audioManagerHandleQml WRITE setAudioManagerHandleQml NOTIFY
                   audioManagerHandleChanged)
    Q_PROPERTY(voro::multimedia::DeviceMode::Type deviceMode READ deviceMode CONSTANT)
    Q_PROPERTY(QVariant duration READ durationQml NOTIFY durationChanged)
    Q_PROPERTY(voro::multimedia::MediaError::Type mediaError READ mediaError)
    Q_PROPERTY(voro::multimedia::MediaState::Type mediaState READ mediaState NOTIFY mediaStateChanged)
    Q_PROPERTY(QUrl outputUrl READ outputUrl WRITE setOutputUrl)
    Q_PROPERTY(QVariant statusInterval READ statusIntervalQml WRITE setStatusIntervalQml NOTIFY statusIntervalChanged)

public:
    /**
     * Connects to the renderer service and makes a context. After a failure the recorder exists all the same, and each
     * command that needs the context logs that there is none.
     */
    explicit AudioRecorder(QObject *parent = nullptr);
    /** Ends a recording and destroys the context. */
    ~AudioRecorder() override;

    /** The channels of a recording, `Default` at first. As set. */
    AudioChannelConfiguration::Type audioChannelConfiguration() const;
    /** The audio manager handle of the input, 0 at first. As set. */
    unsigned int audioManagerHandle() const;
    QVariant audioManagerHandleQml() const;
    /**
     * Sets the handle; takes effect at the next prepare(). A recorder that is not `Unprepared` is reset first. When
     * that fails it keeps the old handle. Followed by audioManagerHandleChanged().
     */
    MediaError::Type setAudioManagerHandle(unsigned int handle);
    /**
     * Sets the handle from a variant. A variant that QVariant::toUInt() does not convert is refused with a warning. A
     * negative number wraps around.
     */
    void setAudioManagerHandleQml(const QVariant &handle);
    /** Always `Capture`. */
    DeviceMode::Type deviceMode() const;
    /** The recorded duration in milliseconds, as last reported by the renderer; 0 when unprepared. */
    unsigned int duration() const;
    QVariant durationQml() const;
    /** Always `None`: errors are the results of commands and the arguments of error(). */
    MediaError::Type mediaError() const;
    /** The state after the last command or the renderer's last report. */
    MediaState::Type mediaState() const;
    /** The file to record into. As set. */
    QUrl outputUrl() const;
    /** The interval between two reports of duration and level in milliseconds, 1000 at first. As set. */
    unsigned int statusInterval() const;
    QVariant statusIntervalQml() const;
    /**
     * Sets the interval from a variant. A variant that QVariant::toUInt() does not convert is refused with a warning. A
     * negative number wraps around.
     */
    void setStatusIntervalQml(const QVariant &statusInterval);

public Q_SLOTS:
    /**
     * Pauses the recording; record() continues it. The state becomes `Paused`. `InvalidState` without a context.
     * Followed by mediaStateChanged().
     */
    voro::multimedia::MediaError::Type pause();
    /**
     * Records, or continues after pause(). Prepares the recorder first if necessary. Waits for the first samples of the
     * input: on success they are being recorded. Returns `SourceUnavailable` when none come within four seconds.
     * `InvalidState` without a context. Followed by mediaStateChanged().
     */
    voro::multimedia::MediaError::Type record();
    /**
     * Attaches the file and the audio input without recording. Does nothing unless the recorder is `Unprepared`.
     * Without a context it only logs a line. Returns `InvalidParameter` when the output URL is not valid. After a
     * failure the recorder stays `Unprepared`. Followed by mediaStateChanged().
     */
    voro::multimedia::MediaError::Type prepare();
    /**
     * Ends the recording. On return the file is complete and closed. `InvalidState` without a context.
     * Followed by recordingLevelChanged() and durationChanged() with 0, and mediaStateChanged().
     */
    voro::multimedia::MediaError::Type reset();
    /**
     * Sets the channels; takes effect at the next prepare(). A recorder that is not `Unprepared` is reset first. When
     * that fails it keeps the old channels. Followed by audioChannelConfigurationChanged().
     */
    voro::multimedia::MediaError::Type
    setAudioChannelConfiguration(voro::multimedia::AudioChannelConfiguration::Type audioChannelConfiguration);
    /** Sets the file to record into, a URL of a local file; takes effect at the next prepare(). */
    void setOutputUrl(const QUrl &url);
    /**
     * Sets the interval between two reports in milliseconds, at once. `InvalidState` without a context. Followed by
     * statusIntervalChanged(), also when it is the same.
     */
    voro::multimedia::MediaError::Type setStatusInterval(unsigned int statusInterval);

Q_SIGNALS:
    // A signal with two overloads is emitted twice: typed first, then with a variant that holds an unsigned number.

    void audioChannelConfigurationChanged(voro::multimedia::AudioChannelConfiguration::Type audioChannelConfiguration);
    void audioManagerHandleChanged(unsigned int handle);
    void audioManagerHandleChanged(const QVariant &handle);
    /** The renderer reported the recorded duration (milliseconds), changed or not. */
    void durationChanged(unsigned int duration);
    void durationChanged(const QVariant &duration);
    /** An error ended the recording at a position (milliseconds). The recorder is `Stopped`. */
    void error(voro::multimedia::MediaError::Type mediaError, unsigned int position);
    void error(voro::multimedia::MediaError::Type mediaError, const QVariant &position);
    void mediaStateChanged(voro::multimedia::MediaState::Type mediaState);
    /**
     * The renderer reported the level of the input. The argument is a fraction from 0.0 to 1.0 despite its name.
     */
    void recordingLevelChanged(double percentage);
    void statusIntervalChanged(unsigned int statusInterval);
    void statusIntervalChanged(const QVariant &statusInterval);

private:
    AudioRecorderPrivate *d;
};

} // namespace voro::multimedia
