#pragma once

#include "PrivateObject.h"

#include <multimedia/NowPlayingConnection.h>

#include <QtCore/QUrl>
#include <QtCore/QVariantMap>

namespace voro {
class PpsObject;
}

namespace voro::multimedia {

class FunctionTracer;

/** The private part of a now-playing connection: the channel to the service and the values to publish. */
class NowPlayingConnectionPrivate : public PrivateObject<NowPlayingConnection> {
    Q_OBJECT
public:
    explicit NowPlayingConnectionPrivate(NowPlayingConnection *connection);

    /** Gives up the role. The public object's destructor calls this. */
    void end();

    MediaError::Type acquire();
    MediaError::Type revoke();
    bool isPreempted() const;

    /** Writes the registration; false when send() fails. */
    bool registration(const QString &name, PriorityLevel::Type priorityLevel, OverlayStyle::Type overlayStyle,
                      unsigned int audioManagerHandle, DeviceMode::Type deviceMode);
    /**
     * Writes a message; false when the object is closed or the message cannot be encoded. A failed write is logged and
     * counts as success: callers continue as if the message had been delivered.
     */
    bool send(const voro::PpsObject *object, const QVariantMap &message);
    /**
     * Writes a message and waits for its answer without a limit. Handles other messages meanwhile. `ok` is false
     * when there is no answer.
     */
    QVariantMap sendReceive(voro::PpsObject *object, const QVariantMap &message, bool &ok);
    MediaError::Type handleAcquireResult(const QVariantMap &map);
    /** Handles a message of the service. */
    void handleControlMessage(const QVariantMap &control);
    bool sendMediaState(MediaState::Type mediaState);
    bool sendMetaData(const QVariantMap &metaData);

    // The service's spelling of enumerators.

    static QString toString(MediaState::Type state);
    static QString toString(OverlayStyle::Type overlayStyle);
    static QString toString(PriorityLevel::Type priorityLevel);
    static QString toString(RepeatMode::Type repeatMode);
    static QString toString(ShuffleMode::Type shuffleMode);
    /** `None`, and false in `ok`, for an unknown text. */
    static RepeatMode::Type toRepeatMode(const QString &text, bool *ok);
    /** `Off`, and false in `ok`, for an unknown text. */
    static ShuffleMode::Type toShuffleMode(const QString &text, bool *ok);

Q_SIGNALS:
    /** The published values changed. */
    void invalidate();

public Q_SLOTS:
    /** Publishes the metadata if the role is held and a controller is active, or if forced. */
    void onInvalidate(bool force = false);
    void onReceivedPPSData();

private:
    friend class NowPlayingConnection;

    void handleRevoke(const FunctionTracer &tracer, const QVariantMap &control);
    void handleTrackMessage(const FunctionTracer &tracer, const QVariant &data);
    void setControllerActive(const FunctionTracer &tracer, bool controllerActive);
    void requestRepeat(const FunctionTracer &tracer, const QVariantMap &command);
    void requestShuffle(const FunctionTracer &tracer, const QVariantMap &command);
    /** Registers again while connected. */
    void updateRegistration();

    unsigned int m_position = 0;
    unsigned int m_duration = 0;
    bool m_acquired = false;
    bool m_controllerActive = false;
    voro::PpsObject *m_control;
    MediaState::Type m_mediaState = MediaState::Stopped;
    QVariantMap m_metaData;
    QUrl m_iconUrl;
    OverlayStyle::Type m_overlayStyle = OverlayStyle::Plain;
    DeviceMode::Type m_deviceMode = DeviceMode::Playback;
    RepeatMode::Type m_repeatMode = RepeatMode::Unsupported;
    ShuffleMode::Type m_shuffleMode = ShuffleMode::Unsupported;
    QString m_connectionName;
    bool m_nextEnabled = true;
    bool m_previousEnabled = true;
    QString m_lastRevokingConnectionName;
    unsigned int m_lastRevokingConnectionPid = 0;
    unsigned int m_audioManagerHandle = 0;
    PriorityLevel::Type m_priorityLevel = PriorityLevel::Low;
    /** Whether a registration was ever written. */
    bool m_registered = false;
};

} // namespace voro::multimedia
