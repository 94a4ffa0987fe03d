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
 * A player owns one context of the renderer service. Commands return when the renderer has answered; everything that
 * happens later (position, buffering, the end, errors) arrives as signals through the event loop of the player's
 * thread.
 *
 * Commands and setters that return a `MediaError` return `None` on success, else the renderer's error, with a line in
 * the log. Where the renderer service could not be reached when the player was made, those that need it return
 * `InvalidState`.
 *
 * A player is used on the thread that owns it. It may be destroyed in a slot of any of its own signals: nothing more is
 * emitted then, and a command that was under way ends there and returns `None`.
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
     * Connects to the renderer service and makes a context, whose name becomes the object name. A player that could
     * not do that exists all the same: each command that needs the context says so.
     */
    explicit MediaPlayer(QObject *parent = nullptr);
    /** Ends playback and removes the context. */
    ~MediaPlayer() override;

    /** Handle of the audio manager under which the sound is played; 0 is none. As set. */
    unsigned int audioManagerHandle() const;
    QVariant audioManagerHandleQml() const;
    /**
     * Takes the handle as a variant. One that QVariant::toUInt() does not convert is refused with a warning; a
     * negative number wraps around.
     */
    void setAudioManagerHandleQml(const QVariant &handle);
    /** Where the sound goes, `Default` at first. As set. */
    AudioOutput::Type audioOutput() const;
    /** Whether playback holds when the sound device it plays to goes away; false at first. As set. */
    bool autoPause() const;
    /** Whether closed captions are shown; true at first. As set. */
    bool closedCaptionEnabled() const;
    /** Index of the closed-caption track, from 0. As set. */
    unsigned int closedCaptionIndex() const;
    QVariant closedCaptionIndexQml() const;
    /**
     * Takes the index as a variant. One that QVariant::toUInt() does not convert is refused with a warning; a negative
     * number wraps around.
     */
    void setClosedCaptionIndexQml(const QVariant &index);
    /** The external captions that a track has, as a path; empty without any. */
    Q_INVOKABLE QUrl closedCaptionUrl(unsigned int track) const;
    /** Window that closed captions are drawn into; empty for none. As set. */
    QString closedCaptionWindowId() const;
    /** The equalizer's setting, `Off` at first. As set. */
    EqualizerPreset::Type equalizerPreset() const;
    /** What is repeated, `None` at first. As set. */
    RepeatMode::Type repeatMode() const;
    /** The medium. As set. */
    QUrl sourceUrl() const;
    /** The speed as a factor of normal speed: 0.0 while paused, else as the renderer reported it last. */
    double speed() const;
    /** Milliseconds between two reports of the position, 1000 at first. As set. */
    unsigned int statusInterval() const;
    QVariant statusIntervalQml() const;
    /**
     * Takes the interval as a variant. One that QVariant::toUInt() does not convert is refused with a warning; a
     * negative number wraps around.
     */
    void setStatusIntervalQml(const QVariant &statusInterval);
    /** Where the pictures go, `None` at first. As set. */
    VideoOutput::Type videoOutput() const;
    /** The volume from 0.0 to 1.0, 1.0 at first. As set. */
    double volume() const;
    /** Group of the video window; empty for the application's own group. As set. */
    QString windowGroupId() const;
    /** Window that the video is drawn into; empty for none. As set. */
    QString windowId() const;

    /** What the buffer is doing, as the renderer reported it last. */
    BufferStatus::Type bufferStatus() const;
    /** Always `Playback`. */
    DeviceMode::Type deviceMode() const;
    /** Duration of the current track in milliseconds, as the renderer reported it; 0 when not known or unprepared. */
    unsigned int duration() const;
    QVariant durationQml() const;
    /** Always `None`: errors are the results of commands and the arguments of error(). */
    MediaError::Type mediaError() const;
    /** What the player is doing: the last command's effect or the renderer's last report. */
    MediaState::Type mediaState() const;
    /**
     * What is known about the current track, by the keys of `MetaData`; tags without a key of their own keep the
     * renderer's name. Empty when unprepared.
     */
    QVariantMap metaData() const;
    /** Position in the current track in milliseconds, as the renderer reported it last. */
    unsigned int position() const;
    QVariant positionQml() const;
    /** Whether the current track can be sought in, as the renderer reported it; false when unprepared. */
    bool isSeekable() const;
    /** The current track, from 1; 1 while none is known. */
    unsigned int track() const;
    QVariant trackQml() const;
    /** Number of tracks, as the renderer reported it last; 0 while not known. */
    unsigned int trackCount() const;
    QVariant trackCountQml() const;
    /** Size of the pictures in pixels, as the renderer reported it last; 0 x 0 without any. */
    QSize videoDimensions() const;

public Q_SLOTS:
    /**
     * Attaches the outputs and the medium without playing. Nothing happens unless the player is `Unprepared`. After a
     * failure the player stays `Unprepared`. Followed by mediaStateChanged().
     */
    voro::multimedia::MediaError::Type prepare();
    /** Plays at the speed last set, after preparing the player if need be. Followed by mediaStateChanged(). */
    voro::multimedia::MediaError::Type play();
    /** Holds playback by a speed of 0, after preparing the player if need be. Followed by mediaStateChanged(). */
    voro::multimedia::MediaError::Type pause();
    /**
     * Stops; outputs and medium stay attached, so that play() starts again. `InvalidState` for an `Unprepared` player.
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
    /** Goes to the beginning of the next track; the renderer's error after the last one. Followed by trackChanged(). */
    voro::multimedia::MediaError::Type nextTrack();
    /**
     * Goes to the beginning of the previous track; the renderer's error on the first one. Followed by trackChanged().
     */
    voro::multimedia::MediaError::Type previousTrack();

    /**
     * Sets the handle of the audio manager; applied at once to an attached audio output. Followed by
     * audioManagerHandleChanged() at every call.
     */
    voro::multimedia::MediaError::Type setAudioManagerHandle(unsigned int handle);
    /**
     * Switches the sound output. The medium is detached when sound is switched on or off: prepare the player again.
     * Followed by audioOutputChanged().
     */
    voro::multimedia::MediaError::Type setAudioOutput(voro::multimedia::AudioOutput::Type audioOutput);
    /**
     * Sets whether playback holds when its sound device goes away; switching it off reaches an attached output only
     * after the next reset(). Followed by autoPauseChanged().
     */
    voro::multimedia::MediaError::Type setAutoPause(bool autoPause);
    /**
     * Shows or hides closed captions; applied at once to the current track. The new value is kept also when the
     * renderer refuses it. Followed by closedCaptionEnabledChanged().
     */
    voro::multimedia::MediaError::Type setClosedCaptionEnabled(bool enabled);
    /**
     * Chooses the closed-caption track (from 0); applied at once to the current track and to every later one. The new
     * value is kept also when the renderer refuses it. Followed by closedCaptionIndexChanged().
     */
    voro::multimedia::MediaError::Type setClosedCaptionIndex(unsigned int index);
    /**
     * Loads external captions from a local URL. Only track 1 can have them; any other gives `InvalidParameter`.
     * Followed by closedCaptionUrlChanged().
     */
    voro::multimedia::MediaError::Type setClosedCaptionUrl(unsigned int track, const QUrl &url);
    /**
     * Sets the window for closed captions; holds from the next prepare(). Followed by closedCaptionWindowIdChanged().
     */
    void setClosedCaptionWindowId(const QString &windowId);
    /**
     * Sets the equalizer; applied at once to an attached audio output. `Off` reaches an attached output only after the
     * next reset(). Followed by equalizerPresetChanged().
     */
    voro::multimedia::MediaError::Type setEqualizerPreset(voro::multimedia::EqualizerPreset::Type equalizerPreset);
    /**
     * Sets what is repeated; applied at once to an attached medium. `Unsupported` gives `UnsupportedValue`; a number
     * that is no mode changes nothing and gives `None`. Followed by repeatModeChanged().
     */
    voro::multimedia::MediaError::Type setRepeatMode(voro::multimedia::RepeatMode::Type repeatMode);
    /**
     * Sets the medium; the one that was attached is detached at once, and the player is `Unprepared`. The new one is
     * opened by prepare() or play(). Followed by mediaStateChanged() and sourceUrlChanged().
     */
    voro::multimedia::MediaError::Type setSourceUrl(const QUrl &url);
    /**
     * Sets the speed as a factor of normal speed: 1.0 plays, 0.0 holds, a negative one plays backwards where the
     * medium allows. A `Prepared` or `Stopped` player starts. Followed by speedChanged() and mediaStateChanged().
     */
    voro::multimedia::MediaError::Type setSpeed(double speed);
    /** Sets how often the position is reported, in milliseconds. Followed by statusIntervalChanged(). */
    voro::multimedia::MediaError::Type setStatusInterval(unsigned int statusInterval);
    /**
     * Switches the video output; medium and video outputs are detached, and the player is `Unprepared`. A number above
     * `SecondaryDisplay` changes nothing and gives `None`. Followed by mediaStateChanged() and videoOutputChanged().
     */
    voro::multimedia::MediaError::Type setVideoOutput(voro::multimedia::VideoOutput::Type videoOutput);
    /**
     * Shows only a part of the pictures, in their pixels; an empty part shows them whole. Holds for the attached video
     * output.
     */
    voro::multimedia::MediaError::Type setVideoSourceRect(int x, int y, unsigned int width, unsigned int height);
    /**
     * Sets the volume; applied at once to an attached audio output in steps of 0.01. Below 0.0 or above 1.0 gives
     * `InvalidParameter`. Followed by volumeChanged().
     */
    voro::multimedia::MediaError::Type setVolume(double volume);
    /** Sets the group of the video window; holds from the next prepare(). Followed by windowGroupIdChanged(). */
    void setWindowGroupId(const QString &windowGroupId);
    /** Sets the video window; holds from the next prepare(). Followed by windowIdChanged(). */
    void setWindowId(const QString &windowId);

Q_SIGNALS:
    // Where a signal comes twice the typed one is emitted first; the variant one holds an unsigned number and is
    // declared first because it is the one that the property names.

    void audioManagerHandleChanged(const QVariant &handle);
    void audioManagerHandleChanged(unsigned int handle);
    void audioOutputChanged(voro::multimedia::AudioOutput::Type audioOutput);
    void autoPauseChanged(bool autoPause);
    /** The fill level of the buffer changed; a fraction from 0.0 to 1.0 in spite of the argument's name. */
    void buffering(double percentage);
    void bufferStatusChanged(voro::multimedia::BufferStatus::Type bufferStatus);
    Q_REVISION(1, 1) void closedCaptionEnabledChanged(bool enabled);
    void closedCaptionIndexChanged(const QVariant &index);
    void closedCaptionIndexChanged(unsigned int index);
    /** The external captions of a track (from 1) changed. */
    void closedCaptionUrlChanged(const QVariant &track, const QUrl &url);
    void closedCaptionUrlChanged(unsigned int track, const QUrl &url);
    void closedCaptionWindowIdChanged(const QString &windowId);
    /** The duration (milliseconds) of the current track became known or changed. */
    void durationChanged(const QVariant &duration);
    void durationChanged(unsigned int duration);
    Q_REVISION(1, 1) void equalizerPresetChanged(voro::multimedia::EqualizerPreset::Type equalizerPreset);
    /** Playback ended with an error at a position (milliseconds) of the current track; the player is `Stopped`. */
    void error(voro::multimedia::MediaError::Type mediaError, unsigned int position);
    void error(voro::multimedia::MediaError::Type mediaError, const QVariant &position);
    /** Never emitted, as mediaError() never changes. */
    void mediaErrorChanged(voro::multimedia::MediaError::Type mediaError);
    void mediaStateChanged(voro::multimedia::MediaState::Type mediaState);
    /** Something was reported about the current track; emitted also when it is what was known. */
    void metaDataChanged(const QVariantMap &metaData);
    /** The last track was played to its end; the player is `Stopped`. */
    void playbackCompleted();
    /** The renderer reported the position (milliseconds); emitted also when it is the same. */
    void positionChanged(const QVariant &position);
    void positionChanged(unsigned int position);
    void repeatModeChanged(voro::multimedia::RepeatMode::Type repeatMode);
    void seekableChanged(bool seekable);
    void sourceUrlChanged(const QUrl &sourceUrl);
    /** The speed changed, as a factor of normal speed; 0.0 when playback holds. */
    void speedChanged(double speed);
    void statusIntervalChanged(const QVariant &statusInterval);
    void statusIntervalChanged(unsigned int statusInterval);
    /** Another track (from 1) plays; emitted also after every seek. */
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
