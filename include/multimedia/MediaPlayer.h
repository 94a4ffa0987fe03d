#pragma once

#include <multimedia/AudioOutput.h>
#include <multimedia/BufferStatus.h>
#include <multimedia/DeviceMode.h>
#include <multimedia/EqualizerPreset.h>
#include <multimedia/Export.h>
#include <multimedia/MediaError.h>
#include <multimedia/MediaState.h>
#include <multimedia/RepeatMode.h>
#include <multimedia/VideoOutput.h>

#include <QtCore/QObject>
#include <QtCore/QSize>
#include <QtCore/QUrl>
#include <QtCore/QVariant>

namespace voro::multimedia {

class MediaPlayerPrivate;

/**
 * Plays audio and video files, playlists and streams.
 *
 * A player owns one context of the renderer service. A command returns when the renderer has answered. Later
 * events (position, buffering, the end, errors) arrive as signals through the event loop of the player's thread.
 *
 * Commands and setters that return a `MediaError` return `None` on success. On failure they log a line and return the
 * renderer's error. When the constructor could not reach the renderer service, commands that need it return
 * `InvalidState`.
 *
 * Use a player on the thread that owns it. A slot of any of its signals may destroy it: the player emits nothing more,
 * and a command in progress returns `None`.
 */
class VOROMULTIMEDIA_EXPORT MediaPlayer : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariant audioManagerHandle READ audioManagerHandleQml WRITE setAudioManagerHandleQml NOTIFY
                   audioManagerHandleChanged)
    Q_PROPERTY(
        voro::multimedia::AudioOutput::Type audioOutput READ audioOutput WRITE setAudioOutput NOTIFY audioOutputChanged)
    Q_PROPERTY(bool autoPause READ autoPause WRITE setAutoPause NOTIFY autoPauseChanged)
    Q_PROPERTY(bool closedCaptionEnabled READ closedCaptionEnabled WRITE setClosedCaptionEnabled NOTIFY
                   closedCaptionEnabledChanged REVISION(1, 1))
    Q_PROPERTY(QVariant closedCaptionIndex READ closedCaptionIndexQml WRITE setClosedCaptionIndexQml NOTIFY
                   closedCaptionIndexChanged)
    Q_PROPERTY(QString closedCaptionWindowId READ closedCaptionWindowId WRITE setClosedCaptionWindowId NOTIFY
                   closedCaptionWindowIdChanged)
    Q_PROPERTY(voro::multimedia::EqualizerPreset::Type equalizerPreset READ equalizerPreset WRITE setEqualizerPreset
                   NOTIFY equalizerPresetChanged REVISION(1, 1))
    Q_PROPERTY(
        voro::multimedia::RepeatMode::Type repeatMode READ repeatMode WRITE setRepeatMode NOTIFY repeatModeChanged)
    Q_PROPERTY(QUrl sourceUrl READ sourceUrl WRITE setSourceUrl NOTIFY sourceUrlChanged)
    Q_PROPERTY(double speed READ speed WRITE setSpeed NOTIFY speedChanged)
    Q_PROPERTY(QVariant statusInterval READ statusIntervalQml WRITE setStatusIntervalQml NOTIFY statusIntervalChanged)
    Q_PROPERTY(
        voro::multimedia::VideoOutput::Type videoOutput READ videoOutput WRITE setVideoOutput NOTIFY videoOutputChanged)
    Q_PROPERTY(double volume READ volume WRITE setVolume NOTIFY volumeChanged)
    Q_PROPERTY(QString windowGroupId READ windowGroupId WRITE setWindowGroupId NOTIFY windowGroupIdChanged)
    Q_PROPERTY(QString windowId READ windowId WRITE setWindowId NOTIFY windowIdChanged)
    Q_PROPERTY(voro::multimedia::BufferStatus::Type bufferStatus READ bufferStatus NOTIFY bufferStatusChanged)
    Q_PROPERTY(voro::multimedia::DeviceMode::Type deviceMode READ deviceMode CONSTANT)
    Q_PROPERTY(QVariant duration READ durationQml NOTIFY durationChanged)
    Q_PROPERTY(voro::multimedia::MediaError::Type mediaError READ mediaError NOTIFY mediaErrorChanged)
    Q_PROPERTY(voro::multimedia::MediaState::Type mediaState READ mediaState NOTIFY mediaStateChanged)
    Q_PROPERTY(QVariantMap metaData READ metaData NOTIFY metaDataChanged)
    Q_PROPERTY(QVariant position READ positionQml NOTIFY positionChanged)
    Q_PROPERTY(bool seekable READ isSeekable NOTIFY seekableChanged)
    Q_PROPERTY(QVariant track READ trackQml NOTIFY trackChanged)
    Q_PROPERTY(QVariant trackCount READ trackCountQml NOTIFY trackCountChanged)
    Q_PROPERTY(QSize videoDimensions READ videoDimensions NOTIFY videoDimensionsChanged)

public:
    /**
     * Connects to the renderer service and makes a context. The context's name becomes the object name. After a failure
     * the player exists all the same, and each command that needs the context returns `InvalidState`.
     */
    explicit MediaPlayer(QObject *parent = nullptr);
    /** Stops playback and destroys the context. */
    ~MediaPlayer() override;

    /** The audio manager handle of the sound output; 0 means none. As set. */
    unsigned int audioManagerHandle() const;
    QVariant audioManagerHandleQml() const;
    /**
     * Sets the handle from a variant. A variant that QVariant::toUInt() does not convert is refused with a warning. A
     * negative number wraps around.
     */
    void setAudioManagerHandleQml(const QVariant &handle);
    /** Where the sound goes, `Default` at first. As set. */
    AudioOutput::Type audioOutput() const;
    /** Whether playback pauses when its sound device goes away; false at first. As set. */
    bool autoPause() const;
    /** Whether closed captions are shown; true at first. As set. */
    bool closedCaptionEnabled() const;
    /** Index of the closed-caption track, from 0. As set. */
    unsigned int closedCaptionIndex() const;
    QVariant closedCaptionIndexQml() const;
    /**
     * Sets the index from a variant. A variant that QVariant::toUInt() does not convert is refused with a warning. A
     * negative number wraps around.
     */
    void setClosedCaptionIndexQml(const QVariant &index);
    /** The external captions of a track, as a path; empty when there are none. */
    Q_INVOKABLE QUrl closedCaptionUrl(unsigned int track) const;
    /** The window for closed captions; empty for none. As set. */
    QString closedCaptionWindowId() const;
    /** The equalizer preset, `Off` at first. As set. */
    EqualizerPreset::Type equalizerPreset() const;
    /** The repeat mode, `None` at first. As set. */
    RepeatMode::Type repeatMode() const;
    /** The medium. As set. */
    QUrl sourceUrl() const;
    /** The speed as a factor of normal speed: 0.0 while paused, else the renderer's last report. */
    double speed() const;
    /** The interval between two position reports in milliseconds, 1000 at first. As set. */
    unsigned int statusInterval() const;
    QVariant statusIntervalQml() const;
    /**
     * Sets the interval from a variant. A variant that QVariant::toUInt() does not convert is refused with a warning. A
     * negative number wraps around.
     */
    void setStatusIntervalQml(const QVariant &statusInterval);
    /** Where the pictures go, `None` at first. As set. */
    VideoOutput::Type videoOutput() const;
    /** The volume from 0.0 to 1.0, 1.0 at first. As set. */
    double volume() const;
    /** The group of the video window; empty for the application's own group. As set. */
    QString windowGroupId() const;
    /** The window for the video; empty for none. As set. */
    QString windowId() const;

    /** The state of the buffer, as last reported by the renderer. */
    BufferStatus::Type bufferStatus() const;
    /** Always `Playback`. */
    DeviceMode::Type deviceMode() const;
    /** Duration of the current track in milliseconds, as the renderer reported it; 0 when not known or unprepared. */
    unsigned int duration() const;
    QVariant durationQml() const;
    /** Always `None`: errors are the results of commands and the arguments of error(). */
    MediaError::Type mediaError() const;
    /** The state after the last command or the renderer's last report. */
    MediaState::Type mediaState() const;
    /**
     * The metadata of the current track, by the keys of `MetaData`. A tag without such a key keeps the renderer's name.
     * Empty when unprepared.
     */
    QVariantMap metaData() const;
    /** Position in the current track in milliseconds, as last reported by the renderer. */
    unsigned int position() const;
    QVariant positionQml() const;
    /** Whether seeking in the current track is possible, as reported by the renderer; false when unprepared. */
    bool isSeekable() const;
    /** The number of the current track, from 1; 1 while not known. */
    unsigned int track() const;
    QVariant trackQml() const;
    /** Number of tracks, as last reported by the renderer; 0 while not known. */
    unsigned int trackCount() const;
    QVariant trackCountQml() const;
    /** Size of the video in pixels, as last reported by the renderer; 0 x 0 without video. */
    QSize videoDimensions() const;

public Q_SLOTS:
    /**
     * Attaches the outputs and the medium without playing. Does nothing unless the player is `Unprepared`. After a
     * failure the player stays `Unprepared`. Followed by mediaStateChanged().
     */
    voro::multimedia::MediaError::Type prepare();
    /** Plays at the last speed and prepares the player first if necessary. Followed by mediaStateChanged(). */
    voro::multimedia::MediaError::Type play();
    /**
     * Pauses playback with a speed of 0 and prepares the player first if necessary. Followed by mediaStateChanged().
     */
    voro::multimedia::MediaError::Type pause();
    /**
     * Stops playback. Outputs and medium stay attached: play() starts again. `InvalidState` for an `Unprepared` player.
     * Followed by mediaStateChanged().
     */
    voro::multimedia::MediaError::Type stop();
    /** Stops and detaches medium and outputs. Followed by mediaStateChanged(). */
    voro::multimedia::MediaError::Type reset();

    /** Seeks to a position (milliseconds) of a track (from 1). Followed by trackChanged(). */
    voro::multimedia::MediaError::Type seek(unsigned int track, unsigned int position);
    /** Seeks to the beginning of a track (from 1). Followed by trackChanged(). */
    voro::multimedia::MediaError::Type seekTrack(unsigned int track);
    /** Seeks to a position (milliseconds) of the current track. Followed by trackChanged(). */
    voro::multimedia::MediaError::Type seekTime(unsigned int position);
    /** Seeks to a fraction of the current track's duration: 0.5 is the middle. Followed by trackChanged(). */
    voro::multimedia::MediaError::Type seekPercent(double percentage);
    /** Seeks to the next track. Returns the renderer's error on the last one. Followed by trackChanged(). */
    voro::multimedia::MediaError::Type nextTrack();
    /**
     * Seeks to the previous track. Returns the renderer's error on the first one. Followed by trackChanged().
     */
    voro::multimedia::MediaError::Type previousTrack();

    /**
     * Sets the audio manager handle and applies it at once to an attached audio output. Every call emits
     * audioManagerHandleChanged().
     */
    voro::multimedia::MediaError::Type setAudioManagerHandle(unsigned int handle);
    /**
     * Chooses the sound output. Switching sound on or off detaches the medium: prepare the player again.
     * Followed by audioOutputChanged().
     */
    voro::multimedia::MediaError::Type setAudioOutput(voro::multimedia::AudioOutput::Type audioOutput);
    /**
     * Sets whether playback pauses when its sound device goes away. Switching this off reaches an attached output only
     * after the next reset(). Followed by autoPauseChanged().
     */
    voro::multimedia::MediaError::Type setAutoPause(bool autoPause);
    /**
     * Shows or hides closed captions of the current track at once. The player keeps the new value even when the
     * renderer refuses it. Followed by closedCaptionEnabledChanged().
     */
    voro::multimedia::MediaError::Type setClosedCaptionEnabled(bool enabled);
    /**
     * Chooses the closed-caption track (from 0), at once for the current track and later for each new one. The player
     * keeps the new value even when the renderer refuses it. Followed by closedCaptionIndexChanged().
     */
    voro::multimedia::MediaError::Type setClosedCaptionIndex(unsigned int index);
    /**
     * Loads external captions from a local URL. Only track 1 can have them: any other returns `InvalidParameter`.
     * Followed by closedCaptionUrlChanged().
     */
    voro::multimedia::MediaError::Type setClosedCaptionUrl(unsigned int track, const QUrl &url);
    /**
     * Sets the window for closed captions; takes effect at the next prepare(). Followed by
     * closedCaptionWindowIdChanged().
     */
    void setClosedCaptionWindowId(const QString &windowId);
    /**
     * Sets the equalizer preset and applies it at once to an attached audio output. `Off` reaches an attached output
     * only after the next reset(). Followed by equalizerPresetChanged().
     */
    voro::multimedia::MediaError::Type setEqualizerPreset(voro::multimedia::EqualizerPreset::Type equalizerPreset);
    /**
     * Sets the repeat mode and applies it at once to an attached medium. `Unsupported` returns `UnsupportedValue`. An
     * unknown number changes nothing and returns `None`. Followed by repeatModeChanged().
     */
    voro::multimedia::MediaError::Type setRepeatMode(voro::multimedia::RepeatMode::Type repeatMode);
    /**
     * Sets the medium and detaches the old one at once. The player becomes `Unprepared`. The next prepare() or play()
     * opens the new one. Followed by mediaStateChanged() and sourceUrlChanged().
     */
    voro::multimedia::MediaError::Type setSourceUrl(const QUrl &url);
    /**
     * Sets the speed as a factor of normal speed: 1.0 plays, 0.0 pauses, a negative factor plays backwards if the
     * medium allows it. A `Prepared` or `Stopped` player starts. Followed by speedChanged() and mediaStateChanged().
     */
    voro::multimedia::MediaError::Type setSpeed(double speed);
    /** Sets how often the position is reported, in milliseconds. Followed by statusIntervalChanged(). */
    voro::multimedia::MediaError::Type setStatusInterval(unsigned int statusInterval);
    /**
     * Chooses the video output and detaches medium and video outputs. The player becomes `Unprepared`. A number above
     * `SecondaryDisplay` changes nothing and returns `None`. Followed by mediaStateChanged() and videoOutputChanged().
     */
    voro::multimedia::MediaError::Type setVideoOutput(voro::multimedia::VideoOutput::Type videoOutput);
    /**
     * Shows only a part of the video, in its pixels. An empty part shows the whole video. Applies to the attached video
     * output.
     */
    voro::multimedia::MediaError::Type setVideoSourceRect(int x, int y, unsigned int width, unsigned int height);
    /**
     * Sets the volume and applies it at once to an attached audio output in steps of 0.01. A value below 0.0 or above
     * 1.0 returns `InvalidParameter`. Followed by volumeChanged().
     */
    voro::multimedia::MediaError::Type setVolume(double volume);
    /** Sets the group of the video window; takes effect at the next prepare(). Followed by windowGroupIdChanged(). */
    void setWindowGroupId(const QString &windowGroupId);
    /** Sets the video window; takes effect at the next prepare(). Followed by windowIdChanged(). */
    void setWindowId(const QString &windowId);

Q_SIGNALS:
    // A signal with two overloads is emitted twice: typed first, then with a variant that holds an unsigned number. The
    // variant overload is declared first because the property names it.

    void audioManagerHandleChanged(const QVariant &handle);
    void audioManagerHandleChanged(unsigned int handle);
    void audioOutputChanged(voro::multimedia::AudioOutput::Type audioOutput);
    void autoPauseChanged(bool autoPause);
    /** The fill level of the buffer changed. The argument is a fraction from 0.0 to 1.0 despite its name. */
    void buffering(double percentage);
    void bufferStatusChanged(voro::multimedia::BufferStatus::Type bufferStatus);
    Q_REVISION(1, 1) void closedCaptionEnabledChanged(bool enabled);
    void closedCaptionIndexChanged(const QVariant &index);
    void closedCaptionIndexChanged(unsigned int index);
    /** The external captions of a track (from 1) changed. */
    void closedCaptionUrlChanged(const QVariant &track, const QUrl &url);
    void closedCaptionUrlChanged(unsigned int track, const QUrl &url);
    void closedCaptionWindowIdChanged(const QString &windowId);
    /** The duration of the current track changed (milliseconds). */
    void durationChanged(const QVariant &duration);
    void durationChanged(unsigned int duration);
    Q_REVISION(1, 1) void equalizerPresetChanged(voro::multimedia::EqualizerPreset::Type equalizerPreset);
    /** An error ended playback at a position (milliseconds) of the current track. The player is `Stopped`. */
    void error(voro::multimedia::MediaError::Type mediaError, unsigned int position);
    void error(voro::multimedia::MediaError::Type mediaError, const QVariant &position);
    /** Never emitted, as mediaError() never changes. */
    void mediaErrorChanged(voro::multimedia::MediaError::Type mediaError);
    void mediaStateChanged(voro::multimedia::MediaState::Type mediaState);
    /** The renderer reported metadata of the current track, changed or not. */
    void metaDataChanged(const QVariantMap &metaData);
    /** The last track ended. The player is `Stopped`. */
    void playbackCompleted();
    /** The renderer reported the position (milliseconds), changed or not. */
    void positionChanged(const QVariant &position);
    void positionChanged(unsigned int position);
    void repeatModeChanged(voro::multimedia::RepeatMode::Type repeatMode);
    void seekableChanged(bool seekable);
    void sourceUrlChanged(const QUrl &sourceUrl);
    /** The speed changed: a factor of normal speed, 0.0 when playback pauses. */
    void speedChanged(double speed);
    void statusIntervalChanged(const QVariant &statusInterval);
    void statusIntervalChanged(unsigned int statusInterval);
    /** Another track (from 1) plays. Also emitted after every seek. */
    void trackChanged(const QVariant &track);
    void trackChanged(unsigned int track);
    void trackCountChanged(const QVariant &trackCount);
    void trackCountChanged(unsigned int trackCount);
    void videoDimensionsChanged(const QSize &videoDimensions);
    void videoOutputChanged(voro::multimedia::VideoOutput::Type videoOutput);
    void volumeChanged(double volume);
    void windowGroupIdChanged(const QString &windowGroupId);
    void windowIdChanged(const QString &windowId);

private:
    MediaPlayerPrivate *d;
};

} // namespace voro::multimedia
