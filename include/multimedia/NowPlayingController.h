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
 * Watches and commands whatever holds the device's now-playing role: for a lock screen, a remote, a widget.
 *
 * Commands are passed on to the holder of the role, which decides what becomes of them. They return `None` when the
 * controller service took them and `Write` when it could not be reached; whether anybody holds the role is not told.
 *
 * While something is connected to one of the signals the controller is subscribed to the service: getters give what was
 * published last. While nothing is connected each getter asks the service and blocks until it has answered, without a
 * limit.
 *
 * A controller is used on the thread that owns it. It may be destroyed in a slot of any of its own signals.
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
    /** Contacts nobody before something is connected, asked or commanded. */
    explicit NowPlayingController(QObject *parent = nullptr);
    ~NowPlayingController() override;

    /** Duration of the track, in the unit of the application that plays it; 0 when not known. */
    unsigned int duration() const;
    QVariant durationQml() const;
    /** Where the artwork is; empty without any. */
    QUrl iconUrl() const;
    /**
     * What the holder of the role is doing: `Started`, `Paused` or `Stopped`. `Unprepared` only when the service
     * cannot be asked.
     */
    MediaState::Type mediaState() const;
    /** Artist, album, title and track number of what is played, by the keys of `MetaData`. */
    QVariantMap metaData() const;
    /** Whether going to the next track is possible. */
    bool isNextEnabled() const;
    /** Position in the track, in the unit of duration(), as it was published last. */
    unsigned int position() const;
    QVariant positionQml() const;
    /** Whether going to the previous track is possible. */
    bool isPreviousEnabled() const;
    /** What is repeated; `Unsupported` until it was published. */
    RepeatMode::Type repeatMode() const;
    /** Whether tracks are shuffled; `Unsupported` until it was published. */
    ShuffleMode::Type shuffleMode() const;

public Q_SLOTS:
    // Commands to the holder of the role.

    voro::multimedia::MediaError::Type play();
    voro::multimedia::MediaError::Type pause();
    /** Pauses what plays, plays anything else. */
    voro::multimedia::MediaError::Type playPause();
    voro::multimedia::MediaError::Type stop();
    voro::multimedia::MediaError::Type next();
    voro::multimedia::MediaError::Type previous();
    voro::multimedia::MediaError::Type forward();
    voro::multimedia::MediaError::Type rewind();
    /** Goes on to another repeat mode. */
    voro::multimedia::MediaError::Type repeat();
    /** Asks for a repeat mode; `Unsupported` asks for `None`. */
    voro::multimedia::MediaError::Type repeat(voro::multimedia::RepeatMode::Type mode);
    /** Goes on to another shuffle mode. */
    voro::multimedia::MediaError::Type shuffle();
    /** Asks for a shuffle mode; `Unsupported` asks for `Off`. */
    voro::multimedia::MediaError::Type shuffle(voro::multimedia::ShuffleMode::Type mode);

    // Commands about the device's volume.

    voro::multimedia::MediaError::Type volumeUp();
    voro::multimedia::MediaError::Type volumeDown();
    /** Sets the volume from 0.0 to 1.0 in steps of 0.01; what is beyond becomes the nearest. */
    voro::multimedia::MediaError::Type setVolume(double value);
    voro::multimedia::MediaError::Type setMute(bool muted);

Q_SIGNALS:
    // Where a signal comes twice the variant one holds an unsigned number and follows the typed one.

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
    /** Ends the subscription after the last one: from the event loop, or before the next value is asked for. */
    void disconnectNotify(const QMetaMethod &signal) override;

private:
    friend class NowPlayingControllerPrivate;
    NowPlayingControllerPrivate *d;
};

} // namespace voro::multimedia
