#pragma once

#include <multimedia/DeviceMode.h>
#include <multimedia/Export.h>
#include <multimedia/MediaError.h>
#include <multimedia/MediaState.h>
#include <multimedia/OverlayStyle.h>
#include <multimedia/PriorityLevel.h>
#include <multimedia/RepeatMode.h>
#include <multimedia/ShuffleMode.h>

#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <QtCore/QVariant>

namespace voro::multimedia {

class NowPlayingConnectionPrivate;

/**
 * Makes a media application the device's single now-playing source.
 *
 * An application acquires the role, says what it plays, and is asked by whoever commands the device (a controller, a
 * headset, the media keys) to play, to pause, and so on. What it does about that is its own affair: nothing here plays.
 *
 * State, metadata and the rest may be set at any time. They are published while the role is held: the state at once,
 * everything else from the event loop and only while a controller is interested.
 *
 * A connection is used on the thread that owns it. It may be destroyed in a slot of any of its own signals.
 */
class VOROMULTIMEDIA_EXPORT NowPlayingConnection : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool acquired READ isAcquired NOTIFY acquired)
    Q_PROPERTY(QVariant audioManagerHandle READ audioManagerHandleQml WRITE setAudioManagerHandleQml NOTIFY
                   audioManagerHandleChanged)
    Q_PROPERTY(QString connectionName READ connectionName)
    Q_PROPERTY(bool controllerActive READ isControllerActive NOTIFY controllerActiveChanged)
    Q_PROPERTY(QVariant duration READ durationQml WRITE setDurationQml NOTIFY durationChanged)
    Q_PROPERTY(QUrl iconUrl READ iconUrl WRITE setIconUrl NOTIFY iconUrlChanged)
    Q_PROPERTY(QString lastRevokingConnectionName READ lastRevokingConnectionName NOTIFY revoked)
    Q_PROPERTY(QVariant lastRevokingConnectionPid READ lastRevokingConnectionPidQml NOTIFY revoked)
    Q_PROPERTY(bool nextEnabled READ isNextEnabled WRITE setNextEnabled NOTIFY nextEnabledChanged)
    Q_PROPERTY(
        voro::multimedia::MediaState::Type mediaState READ mediaState WRITE setMediaState NOTIFY mediaStateChanged)
    Q_PROPERTY(voro::multimedia::OverlayStyle::Type overlayStyle READ overlayStyle WRITE setOverlayStyle NOTIFY
                   overlayStyleChanged)
    Q_PROPERTY(QVariant position READ positionQml WRITE setPositionQml NOTIFY positionChanged)
    Q_PROPERTY(bool preemptable READ isPreemptable WRITE setPreemptable NOTIFY preemptableChanged)
    Q_PROPERTY(bool preempted READ isPreempted)
    Q_PROPERTY(bool previousEnabled READ isPreviousEnabled WRITE setPreviousEnabled NOTIFY previousEnabledChanged)
    Q_PROPERTY(voro::multimedia::PriorityLevel::Type priorityLevel READ priorityLevel)
    Q_PROPERTY(voro::multimedia::DeviceMode::Type deviceMode READ deviceMode)
    Q_PROPERTY(
        voro::multimedia::RepeatMode::Type repeatMode READ repeatMode WRITE setRepeatMode NOTIFY repeatModeChanged)
    Q_PROPERTY(
        voro::multimedia::ShuffleMode::Type shuffleMode READ shuffleMode WRITE setShuffleMode NOTIFY shuffleModeChanged)

public:
    /**
     * A connection of low priority that plays, under a name that nobody else on the device has. Contacts nobody before
     * acquire().
     */
    explicit NowPlayingConnection(QObject *parent = nullptr);
    /** The same under a name of the application's own. */
    explicit NowPlayingConnection(const QString &connectionName, QObject *parent = nullptr);
    NowPlayingConnection(const QString &connectionName, voro::multimedia::PriorityLevel::Type priorityLevel,
                         QObject *parent = nullptr);
    NowPlayingConnection(const QString &connectionName, voro::multimedia::PriorityLevel::Type priorityLevel,
                         voro::multimedia::DeviceMode::Type deviceMode, QObject *parent = nullptr);
    /** Gives the role up, without a signal. */
    ~NowPlayingConnection() override;

    /** Whether this connection holds the role, as the service said last. */
    bool isAcquired() const;
    /** Handle of the audio manager under which the sound is played; 0 is none. As set. */
    unsigned int audioManagerHandle() const;
    QVariant audioManagerHandleQml() const;
    /** The name under which the connection registers. */
    QString connectionName() const;
    /** Whether a controller wants to know what is played, as the service said last. */
    bool isControllerActive() const;
    /** Whether the connection plays or records. */
    DeviceMode::Type deviceMode() const;
    /** Duration of the track, 0 at first. As set. */
    unsigned int duration() const;
    QVariant durationQml() const;
    /** Artwork of what is played, empty at first. As set. */
    QUrl iconUrl() const;
    /** Name of the connection that took the role away last; empty while none did or when the service did not say. */
    QString lastRevokingConnectionName() const;
    /** Process id of that connection; 0 likewise. */
    unsigned int lastRevokingConnectionPid() const;
    QVariant lastRevokingConnectionPidQml() const;
    /** What the application is doing, `Stopped` at first. As set. */
    MediaState::Type mediaState() const;
    /** What is played, by the keys of `MetaData`. As set. */
    QVariantMap metaData() const;
    /** Whether going to the next track is possible, true at first. As set. */
    bool isNextEnabled() const;
    /** How the device is to show what is played, `Plain` at first. As set. */
    OverlayStyle::Type overlayStyle() const;
    /** Position in the track, 0 at first; in the unit of duration(). As set. */
    unsigned int position() const;
    QVariant positionQml() const;
    /** Whether any other connection can take the role away: the priority is `Low`. */
    bool isPreemptable() const;
    /** Whether the role was acquired and somebody else holds it now; asks the service at each call. */
    bool isPreempted() const;
    /** Whether going to the previous track is possible, true at first. As set. */
    bool isPreviousEnabled() const;
    /** How firmly the role is held, `Low` at first. */
    PriorityLevel::Type priorityLevel() const;
    /** What is repeated, `Unsupported` at first: nothing is said about it. As set. */
    RepeatMode::Type repeatMode() const;
    /** Whether tracks are shuffled, `Unsupported` at first: nothing is said about it. As set. */
    ShuffleMode::Type shuffleMode() const;

    /**
     * Sets the handle of the audio manager; registers again while connected. Followed by audioManagerHandleChanged().
     */
    void setAudioManagerHandle(unsigned int audioManagerHandle);
    /**
     * Takes the handle as a variant. One that QVariant::toUInt() does not convert is refused with a warning; a
     * negative number wraps around.
     */
    void setAudioManagerHandleQml(const QVariant &handle);
    /** Sets the name; holds from the next registration. */
    void setConnectionName(const QString &connectionName);
    /** Sets whether the connection plays or records; holds from the next registration. */
    void setDeviceMode(voro::multimedia::DeviceMode::Type deviceMode);
    /**
     * Takes the duration as a variant. One that QVariant::toUInt() does not convert is refused with a warning; a
     * negative number wraps around.
     */
    void setDurationQml(const QVariant &duration);
    /**
     * Takes the position as a variant. One that QVariant::toUInt() does not convert is refused with a warning; a
     * negative number wraps around.
     */
    void setPositionQml(const QVariant &position);
    /** Sets the priority; holds from the next registration. */
    void setPriorityLevel(voro::multimedia::PriorityLevel::Type priorityLevel);

public Q_SLOTS:
    /**
     * Registers and asks for the role. Blocks until the service has answered; signals for what it says meanwhile are
     * emitted before this returns. Followed by acquired().
     *
     * @return `None` when the role was granted, `InvalidState` when it is held already, `ResourceUnavailable` when
     *         somebody else keeps it, `InvalidParameter` when the answer is none, `Internal` when the service cannot be
     *         reached or went away.
     */
    voro::multimedia::MediaError::Type acquire();
    /**
     * Gives the role up and disconnects from the service; `Internal` when that fails. Followed by revoked() when the
     * role was held.
     */
    voro::multimedia::MediaError::Type revoke();
    /** Sets the duration of the track. Followed by durationChanged(). */
    void setDuration(unsigned int duration);
    /** Sets the artwork; published with the next change of something else. Followed by iconUrlChanged(). */
    void setIconUrl(const QUrl &iconUrl);
    /** Sets what the application is doing; published at once. Followed by mediaStateChanged(). */
    void setMediaState(voro::multimedia::MediaState::Type mediaState);
    /**
     * Sets what is played, by the keys of `MetaData`; a duration in it does not count, see setDuration(). Followed by
     * metaDataChanged().
     */
    void setMetaData(const QVariantMap &metaData);
    /**
     * Sets whether there is a next track; published with the next change of something else. Followed by
     * nextEnabledChanged().
     */
    void setNextEnabled(bool nextEnabled);
    /**
     * Sets how the device is to show what is played; registers again while connected. Followed by
     * overlayStyleChanged().
     */
    void setOverlayStyle(voro::multimedia::OverlayStyle::Type overlayStyle);
    /** Sets the position in the track, in the unit of the duration. Followed by positionChanged(). */
    void setPosition(unsigned int position);
    /**
     * Sets whether any other connection can take the role away; refused with a warning once the connection has
     * registered. Followed by preemptableChanged().
     */
    void setPreemptable(bool preemptable);
    /**
     * Sets whether there is a previous track; published with the next change of something else. Followed by
     * previousEnabledChanged().
     */
    void setPreviousEnabled(bool previousEnabled);
    /** Sets what is repeated. Followed by repeatModeChanged(). */
    void setRepeatMode(voro::multimedia::RepeatMode::Type repeatMode);
    /** Sets whether tracks are shuffled. Followed by shuffleModeChanged(). */
    void setShuffleMode(voro::multimedia::ShuffleMode::Type shuffleMode);
    /**
     * Tells that another track begins. `InvalidState` while the role is not held, `Internal` when the service cannot
     * be told.
     */
    voro::multimedia::MediaError::Type trackChange();

Q_SIGNALS:
    // Where a signal comes twice the variant one holds an unsigned number and follows the typed one.

    /** The role was granted. */
    void acquired();
    void audioManagerHandleChanged(unsigned int audioManagerHandle);
    void audioManagerHandleChanged(const QVariant &audioManagerHandle);
    /** A controller began, or the last one ceased, to be interested in what is played. */
    void controllerActiveChanged(bool controllerActive);
    void durationChanged(unsigned int duration);
    void durationChanged(const QVariant &duration);
    /** Asked to wind forward. */
    void forward();
    void iconUrlChanged(const QUrl &iconUrl);
    void mediaStateChanged(voro::multimedia::MediaState::Type mediaState);
    void metaDataChanged(const QVariantMap &metaData);
    /** Asked to go to the next track. */
    void next();
    void nextEnabledChanged(bool nextEnabled);
    void overlayStyleChanged(voro::multimedia::OverlayStyle::Type overlayStyle);
    /** Asked to pause. */
    void pause();
    /** Asked to play. */
    void play();
    void positionChanged(unsigned int position);
    void positionChanged(const QVariant &position);
    void preemptableChanged(bool preemptable);
    /** Asked to go to the previous track. */
    void previous();
    void previousEnabledChanged(bool previousEnabled);
    /** Asked to go on to another repeat mode. */
    void repeat();
    /** Asked for a repeat mode. */
    void repeatRequest(voro::multimedia::RepeatMode::Type repeatMode);
    void repeatModeChanged(voro::multimedia::RepeatMode::Type repeatMode);
    /** The role was taken away by another connection or given up by revoke(). */
    void revoked();
    /** Asked to wind backward. */
    void rewind();
    /** Asked to go on to another shuffle mode. */
    void shuffle();
    /** Asked for a shuffle mode. */
    void shuffleRequest(voro::multimedia::ShuffleMode::Type shuffleMode);
    void shuffleModeChanged(voro::multimedia::ShuffleMode::Type shuffleMode);
    /** Asked to stop. */
    void stop();

private:
    NowPlayingConnectionPrivate *d;
};

} // namespace voro::multimedia
