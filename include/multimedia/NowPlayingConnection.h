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
 * An application acquires the role, publishes its state and metadata, and receives transport commands from a
 * controller, a headset or the media keys. The commands arrive as signals and the application acts on them: nothing
 * here plays.
 *
 * State, metadata and the rest may be set at any time. The connection publishes them while it holds the role: the state
 * at once, everything else from the event loop and only while a controller is active.
 *
 * Use a connection on the thread that owns it. A slot of any of its signals may destroy it.
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
     * A playback connection of low priority with a generated name, unique on the device. Contacts the service only in
     * acquire().
     */
    explicit NowPlayingConnection(QObject *parent = nullptr);
    /** The same under a name of the application's own. */
    explicit NowPlayingConnection(const QString &connectionName, QObject *parent = nullptr);
    NowPlayingConnection(const QString &connectionName, voro::multimedia::PriorityLevel::Type priorityLevel,
                         QObject *parent = nullptr);
    NowPlayingConnection(const QString &connectionName, voro::multimedia::PriorityLevel::Type priorityLevel,
                         voro::multimedia::DeviceMode::Type deviceMode, QObject *parent = nullptr);
    /** Gives up the role without a signal. */
    ~NowPlayingConnection() override;

    /** Whether this connection holds the role, as last reported by the service. */
    bool isAcquired() const;
    /** The audio manager handle of the sound output; 0 means none. As set. */
    unsigned int audioManagerHandle() const;
    QVariant audioManagerHandleQml() const;
    /** The name under which the connection registers. */
    QString connectionName() const;
    /** Whether a controller is active, as last reported by the service. */
    bool isControllerActive() const;
    /** Whether the connection plays or records. */
    DeviceMode::Type deviceMode() const;
    /** Duration of the track, 0 at first. As set. */
    unsigned int duration() const;
    QVariant durationQml() const;
    /** URL of the artwork, empty at first. As set. */
    QUrl iconUrl() const;
    /** Name of the connection that last took the role; empty for none or when the service did not name it. */
    QString lastRevokingConnectionName() const;
    /** Process id of that connection; 0 for none or when not known. */
    unsigned int lastRevokingConnectionPid() const;
    QVariant lastRevokingConnectionPidQml() const;
    /** The state of the application, `Stopped` at first. As set. */
    MediaState::Type mediaState() const;
    /** The metadata, by the keys of `MetaData`. As set. */
    QVariantMap metaData() const;
    /** Whether there is a next track, true at first. As set. */
    bool isNextEnabled() const;
    /** The overlay style, `Plain` at first. As set. */
    OverlayStyle::Type overlayStyle() const;
    /** Position in the track, in the unit of duration(), 0 at first. As set. */
    unsigned int position() const;
    QVariant positionQml() const;
    /** Whether any other connection may take the role: the priority is `Low`. */
    bool isPreemptable() const;
    /** Whether another connection holds the role that this one acquired. Each call asks the service. */
    bool isPreempted() const;
    /** Whether there is a previous track, true at first. As set. */
    bool isPreviousEnabled() const;
    /** The priority, `Low` at first. */
    PriorityLevel::Type priorityLevel() const;
    /** The repeat mode. `Unsupported`, the first value, is not published. As set. */
    RepeatMode::Type repeatMode() const;
    /** The shuffle mode. `Unsupported`, the first value, is not published. As set. */
    ShuffleMode::Type shuffleMode() const;

    /**
     * Sets the audio manager handle and registers again while connected. Followed by audioManagerHandleChanged().
     */
    void setAudioManagerHandle(unsigned int audioManagerHandle);
    /**
     * Sets the handle from a variant. A variant that QVariant::toUInt() does not convert is refused with a warning. A
     * negative number wraps around.
     */
    void setAudioManagerHandleQml(const QVariant &handle);
    /** Sets the name; takes effect at the next registration. */
    void setConnectionName(const QString &connectionName);
    /** Sets whether the connection plays or records; takes effect at the next registration. */
    void setDeviceMode(voro::multimedia::DeviceMode::Type deviceMode);
    /**
     * Sets the duration from a variant. A variant that QVariant::toUInt() does not convert is refused with a warning. A
     * negative number wraps around.
     */
    void setDurationQml(const QVariant &duration);
    /**
     * Sets the position from a variant. A variant that QVariant::toUInt() does not convert is refused with a warning. A
     * negative number wraps around.
     */
    void setPositionQml(const QVariant &position);
    /** Sets the priority; takes effect at the next registration. */
    void setPriorityLevel(voro::multimedia::PriorityLevel::Type priorityLevel);

public Q_SLOTS:
    /**
     * Registers and asks for the role. Blocks until the service has answered. Messages that arrive meanwhile are
     * emitted as signals before this returns. Followed by acquired().
     *
     * @return `None` when the service granted the role, `InvalidState` when this connection holds it already,
     *         `ResourceUnavailable` when another connection keeps it, `InvalidParameter` for a malformed answer,
     *         `Internal` when the service cannot be reached or went away.
     */
    voro::multimedia::MediaError::Type acquire();
    /**
     * Gives up the role and disconnects from the service. Returns `Internal` when that fails. Followed by revoked()
     * when this connection held the role.
     */
    voro::multimedia::MediaError::Type revoke();
    /** Sets the duration of the track. Followed by durationChanged(). */
    void setDuration(unsigned int duration);
    /** Sets the artwork; published with the next other change. Followed by iconUrlChanged(). */
    void setIconUrl(const QUrl &iconUrl);
    /** Sets the state of the application; published at once. Followed by mediaStateChanged(). */
    void setMediaState(voro::multimedia::MediaState::Type mediaState);
    /**
     * Sets the metadata, by the keys of `MetaData`. A duration in it is ignored, see setDuration(). Followed by
     * metaDataChanged().
     */
    void setMetaData(const QVariantMap &metaData);
    /**
     * Sets whether there is a next track; published with the next other change. Followed by
     * nextEnabledChanged().
     */
    void setNextEnabled(bool nextEnabled);
    /**
     * Sets the overlay style and registers again while connected. Followed by
     * overlayStyleChanged().
     */
    void setOverlayStyle(voro::multimedia::OverlayStyle::Type overlayStyle);
    /** Sets the position in the track, in the unit of the duration. Followed by positionChanged(). */
    void setPosition(unsigned int position);
    /**
     * Sets whether any other connection may take the role. Refused with a warning once the connection has
     * registered. Followed by preemptableChanged().
     */
    void setPreemptable(bool preemptable);
    /**
     * Sets whether there is a previous track; published with the next other change. Followed by
     * previousEnabledChanged().
     */
    void setPreviousEnabled(bool previousEnabled);
    /** Sets the repeat mode. Followed by repeatModeChanged(). */
    void setRepeatMode(voro::multimedia::RepeatMode::Type repeatMode);
    /** Sets the shuffle mode. Followed by shuffleModeChanged(). */
    void setShuffleMode(voro::multimedia::ShuffleMode::Type shuffleMode);
    /**
     * Announces that another track begins. Returns `InvalidState` without the role and `Internal` when the message
     * cannot be sent.
     */
    voro::multimedia::MediaError::Type trackChange();

Q_SIGNALS:
    // A signal with two overloads is emitted twice: typed first, then with a variant that holds an unsigned number.

    /** The service granted the role. */
    void acquired();
    void audioManagerHandleChanged(unsigned int audioManagerHandle);
    void audioManagerHandleChanged(const QVariant &audioManagerHandle);
    /** The first controller became active or the last one inactive. */
    void controllerActiveChanged(bool controllerActive);
    void durationChanged(unsigned int duration);
    void durationChanged(const QVariant &duration);
    /** A command asked to wind forward. */
    void forward();
    void iconUrlChanged(const QUrl &iconUrl);
    void mediaStateChanged(voro::multimedia::MediaState::Type mediaState);
    void metaDataChanged(const QVariantMap &metaData);
    /** A command asked for the next track. */
    void next();
    void nextEnabledChanged(bool nextEnabled);
    void overlayStyleChanged(voro::multimedia::OverlayStyle::Type overlayStyle);
    /** A command asked to pause. */
    void pause();
    /** A command asked to play. */
    void play();
    void positionChanged(unsigned int position);
    void positionChanged(const QVariant &position);
    void preemptableChanged(bool preemptable);
    /** A command asked for the previous track. */
    void previous();
    void previousEnabledChanged(bool previousEnabled);
    /** A command asked for another repeat mode, of the application's choice. */
    void repeat();
    /** A command asked for a repeat mode. */
    void repeatRequest(voro::multimedia::RepeatMode::Type repeatMode);
    void repeatModeChanged(voro::multimedia::RepeatMode::Type repeatMode);
    /** Another connection took the role, or revoke() gave it up. */
    void revoked();
    /** A command asked to wind backward. */
    void rewind();
    /** A command asked for another shuffle mode, of the application's choice. */
    void shuffle();
    /** A command asked for a shuffle mode. */
    void shuffleRequest(voro::multimedia::ShuffleMode::Type shuffleMode);
    void shuffleModeChanged(voro::multimedia::ShuffleMode::Type shuffleMode);
    /** A command asked to stop. */
    void stop();

private:
    NowPlayingConnectionPrivate *d;
};

} // namespace voro::multimedia
