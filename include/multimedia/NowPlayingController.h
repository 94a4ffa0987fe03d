#pragma once

#include <multimedia/Export.h>
#include <multimedia/MediaError.h>
#include <multimedia/MediaState.h>
#include <multimedia/RepeatMode.h>
#include <multimedia/ShuffleMode.h>

#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <QtCore/QVariant>

namespace voro::multimedia {

class NowPlayingControllerPrivate;

/**
 * Watches and commands the holder of the device's now-playing role, for example from a lock screen or a remote.
 *
 * The controller service forwards commands to the holder of the role, which decides how to act. A command returns
 * `None` when the service took it and `Write` when the service could not be reached. The result does not say whether
 * anybody holds the role.
 *
 * While one of the signals has a listener, the controller is subscribed to the service and getters return the last
 * published values. Without a listener each getter asks the service and blocks without a limit until it answers.
 *
 * Use a controller on the thread that owns it. A slot of any of its signals may destroy it.
 */
class VOROMULTIMEDIA_EXPORT NowPlayingController : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariant duration READ durationQml NOTIFY durationChanged)
    Q_PROPERTY(bool nextEnabled READ isNextEnabled NOTIFY nextEnabledChanged)
    Q_PROPERTY(bool previousEnabled READ isPreviousEnabled NOTIFY previousEnabledChanged)
    Q_PROPERTY(voro::multimedia::MediaState::Type mediaState READ mediaState NOTIFY mediaStateChanged)
    Q_PROPERTY(QVariantMap metaData READ metaData NOTIFY metaDataChanged)
    Q_PROPERTY(QVariant position READ positionQml NOTIFY positionChanged)
    Q_PROPERTY(QUrl iconUrl READ iconUrl NOTIFY iconUrlChanged)
    Q_PROPERTY(voro::multimedia::RepeatMode::Type repeatMode READ repeatMode NOTIFY repeatModeChanged)
    Q_PROPERTY(voro::multimedia::ShuffleMode::Type shuffleMode READ shuffleMode NOTIFY shuffleModeChanged)

public:
    /** Contacts the service only for the first listener, getter or command. */
    explicit NowPlayingController(QObject *parent = nullptr);
    ~NowPlayingController() override;

    /** Duration of the track, in the unit of the application that plays it; 0 when not known. */
    unsigned int duration() const;
    QVariant durationQml() const;
    /** URL of the artwork; empty without artwork. */
    QUrl iconUrl() const;
    /**
     * The state of the role's holder: `Started`, `Paused` or `Stopped`. `Unprepared` only when the service cannot be
     * asked.
     */
    MediaState::Type mediaState() const;
    /** Artist, album, title and track number, by the keys of `MetaData`. */
    QVariantMap metaData() const;
    /** Whether there is a next track. */
    bool isNextEnabled() const;
    /** Position in the track, in the unit of duration(), as last published. */
    unsigned int position() const;
    QVariant positionQml() const;
    /** Whether there is a previous track. */
    bool isPreviousEnabled() const;
    /** The repeat mode; `Unsupported` until published. */
    RepeatMode::Type repeatMode() const;
    /** The shuffle mode; `Unsupported` until published. */
    ShuffleMode::Type shuffleMode() const;

public Q_SLOTS:
    // Commands to the holder of the role.

    voro::multimedia::MediaError::Type play();
    voro::multimedia::MediaError::Type pause();
    /** Pauses when the holder plays, else plays. */
    voro::multimedia::MediaError::Type playPause();
    voro::multimedia::MediaError::Type stop();
    voro::multimedia::MediaError::Type next();
    voro::multimedia::MediaError::Type previous();
    voro::multimedia::MediaError::Type forward();
    voro::multimedia::MediaError::Type rewind();
    /** Asks for another repeat mode, of the holder's choice. */
    voro::multimedia::MediaError::Type repeat();
    /** Asks for a repeat mode; `Unsupported` asks for `None`. */
    voro::multimedia::MediaError::Type repeat(voro::multimedia::RepeatMode::Type mode);
    /** Asks for another shuffle mode, of the holder's choice. */
    voro::multimedia::MediaError::Type shuffle();
    /** Asks for a shuffle mode; `Unsupported` asks for `Off`. */
    voro::multimedia::MediaError::Type shuffle(voro::multimedia::ShuffleMode::Type mode);

    // Commands about the device's volume.

    voro::multimedia::MediaError::Type volumeUp();
    voro::multimedia::MediaError::Type volumeDown();
    /** Sets the volume from 0.0 to 1.0 in steps of 0.01. Values outside are clamped. */
    voro::multimedia::MediaError::Type setVolume(double value);
    voro::multimedia::MediaError::Type setMute(bool muted);

Q_SIGNALS:
    // A signal with two overloads is emitted twice: typed first, then with a variant that holds an unsigned number.

    void durationChanged(unsigned int duration);
    void durationChanged(const QVariant &duration);
    void iconUrlChanged(const QUrl &iconUrl);
    void mediaStateChanged(voro::multimedia::MediaState::Type mediaState);
    void metaDataChanged(const QVariantMap &metaData);
    void positionChanged(unsigned int position);
    void positionChanged(const QVariant &position);
    void nextEnabledChanged(bool nextEnabled);
    void previousEnabledChanged(bool prevEnabled);
    void repeatModeChanged(voro::multimedia::RepeatMode::Type repeatMode);
    /** Another track began. */
    void trackChanged();
    void shuffleModeChanged(voro::multimedia::ShuffleMode::Type shuffleMode);

protected:
    /** Subscribes for the first listener. */
    void connectNotify(const QMetaMethod &signal) override;
    /** Ends the subscription after the last listener: from the event loop, or before the next getter. */
    void disconnectNotify(const QMetaMethod &signal) override;

private:
    friend class NowPlayingControllerPrivate;
    NowPlayingControllerPrivate *d;
};

} // namespace voro::multimedia
