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
 * and closed when reset() has returned or the recorder is destroyed. Commands return when the renderer has answered;
 * what happens later (duration, level, errors) arrives as signals through the event loop of the recorder's thread.
 *
 * Commands and setters that return a `MediaError` return `None` on success, else the renderer's error, with a line in
 * the log.
 *
 * A recorder is used on the thread that owns it. It may be destroyed in a slot of any of its own signals: nothing more
 * is emitted then, and a command that was under way ends there and returns `None`.
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
     * Connects to the renderer service and makes a context. A recorder that could not do that exists all the same:
     * each command that needs the context says so in the log.
     */
    explicit AudioRecorder(QObject *parent = nullptr);
    /** Ends a recording and removes the context. */
    ~AudioRecorder() override;

    /** The channels that are recorded, `Default` at first. As set. */
    AudioChannelConfiguration::Type audioChannelConfiguration() const;
    /** Handle of the audio manager under which the input is opened, 0 at first. As set. */
    unsigned int audioManagerHandle() const;
    QVariant audioManagerHandleQml() const;
    /**
     * Sets the handle; holds from the next prepare(). A recorder that is not `Unprepared` is reset first, and keeps
     * its handle when that fails. Followed by audioManagerHandleChanged().
     */
    MediaError::Type setAudioManagerHandle(unsigned int handle);
    /**
     * Takes the handle as a variant. One that QVariant::toUInt() does not convert is refused with a warning; a
     * negative number wraps around.
     */
    void setAudioManagerHandleQml(const QVariant &handle);
    /** Always `Capture`. */
    DeviceMode::Type deviceMode() const;
    /** What has been recorded, in milliseconds, as the renderer reported it last; 0 when unprepared. */
    unsigned int duration() const;
    QVariant durationQml() const;
    /** Always `None`: errors are the results of commands and the arguments of error(). */
    MediaError::Type mediaError() const;
    /** What the recorder is doing: the last command's effect or the renderer's last report. */
    MediaState::Type mediaState() const;
    /** The file to record into. As set. */
    QUrl outputUrl() const;
    /** Milliseconds between two reports of duration and level, 1000 at first. As set. */
    unsigned int statusInterval() const;
    QVariant statusIntervalQml() const;
    /**
     * Takes the interval as a variant. One that QVariant::toUInt() does not convert is refused with a warning; a
     * negative number wraps around.
     */
    void setStatusIntervalQml(const QVariant &statusInterval);

public Q_SLOTS:
    /**
     * Holds the recording; record() goes on. The state becomes `Paused`. `InvalidState` without a context. Followed by
     * mediaStateChanged().
     */
    voro::multimedia::MediaError::Type pause();
    /**
     * Records, after preparing the recorder if need be, or goes on after pause(). Waits for the input's first samples:
     * with success they are being recorded, and `SourceUnavailable` when none come within four seconds. `InvalidState`
     * without a context. Followed by mediaStateChanged().
     */
    voro::multimedia::MediaError::Type record();
    /**
     * Attaches the file and the audio input without recording. Nothing happens unless the recorder is `Unprepared`,
     * or, but for a line in the log, when there is no context. `InvalidParameter` when the output URL is not valid.
     * After a failure the recorder stays `Unprepared`. Followed by mediaStateChanged().
     */
    voro::multimedia::MediaError::Type prepare();
    /**
     * Ends the recording: the file is complete and closed when this returns. `InvalidState` without a context.
     * Followed by recordingLevelChanged() and durationChanged() with 0, and mediaStateChanged().
     */
    voro::multimedia::MediaError::Type reset();
    /**
     * Sets the channels; holds from the next prepare(). A recorder that is not `Unprepared` is reset first, and keeps
     * its channels when that fails. Followed by audioChannelConfigurationChanged().
     */
    voro::multimedia::MediaError::Type
    setAudioChannelConfiguration(voro::multimedia::AudioChannelConfiguration::Type audioChannelConfiguration);
    /** Sets the file to record into, a URL of a local file; holds from the next prepare(). */
    void setOutputUrl(const QUrl &url);
    /**
     * Sets the milliseconds between two reports, at once. `InvalidState` without a context. Followed by
     * statusIntervalChanged(), also when it is the same.
     */
    voro::multimedia::MediaError::Type setStatusInterval(unsigned int statusInterval);

Q_SIGNALS:
    // Where a signal comes twice the typed one is emitted first; the variant one holds an unsigned number.

    void audioChannelConfigurationChanged(voro::multimedia::AudioChannelConfiguration::Type audioChannelConfiguration);
    void audioManagerHandleChanged(unsigned int handle);
    void audioManagerHandleChanged(const QVariant &handle);
    /** The renderer reported how much has been recorded (milliseconds); emitted also when it is the same. */
    void durationChanged(unsigned int duration);
    void durationChanged(const QVariant &duration);
    /** Recording ended with an error, with so much recorded (milliseconds); the recorder is `Stopped`. */
    void error(voro::multimedia::MediaError::Type mediaError, unsigned int position);
    void error(voro::multimedia::MediaError::Type mediaError, const QVariant &position);
    void mediaStateChanged(voro::multimedia::MediaState::Type mediaState);
    /**
     * The level of the input, as the renderer reported it; a fraction from 0.0 to 1.0 in spite of the argument's name.
     */
    void recordingLevelChanged(double percentage);
    void statusIntervalChanged(unsigned int statusInterval);
    void statusIntervalChanged(const QVariant &statusInterval);

private:
    AudioRecorderPrivate *d;
};

} // namespace voro::multimedia
