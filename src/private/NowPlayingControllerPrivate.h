#pragma once

#include "PrivateObject.h"

#include <multimedia/NowPlayingController.h>

#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

namespace voro {
class PpsObject;
}

namespace voro::multimedia {

class FunctionTracer;

/** The private part of a now-playing controller: the subscription and the last published values. */
class NowPlayingControllerPrivate : public PrivateObject<NowPlayingController> {
    Q_OBJECT
public:
    explicit NowPlayingControllerPrivate(NowPlayingController *controller);

    /** Ends the subscription. The public object's destructor calls this. */
    void end();

    /** Sends a command to the service as PPS text. */
    MediaError::Type command(const QString &text) const;
    /** Sends a command about a mode; without a mode the holder chooses. */
    MediaError::Type modeCommand(const char *subCommand) const;
    MediaError::Type modeCommand(const char *subCommand, const QString &mode) const;

    /** Subscribes when there is a listener and no subscription yet. */
    void addConnection();
    /** Ends the subscription when there is no listener. */
    void removeConnection();
    /** Calls removeConnection() from the event loop, or before the next getter if that comes first. */
    void countLater();
    bool registerNotifications(voro::PpsObject *object) const;
    bool unregisterNotifications(voro::PpsObject *object) const;
    /** Writes a message; false when the object is closed or the message cannot be encoded or written. */
    bool send(voro::PpsObject *object, const QVariantMap &message) const;

    /** Converts one message of the service into typed entries of the result; false when it has no "msg". */
    bool processPpsRead(const QVariantMap &control, QVariantMap &result) const;
    /**
     * Asks the service for fields and waits for them without a limit. The whole metadata is one field. False when the
     * service has none.
     */
    bool blockReadMetaData(const QStringList &fields, QVariantMap &result) const;
    /** True when the cache is current. Else reads the fields from the service, as far as it has them. */
    bool makeDataAvailable(const QStringList &fields, QVariantMap &result) const;

    // The service's spelling of enumerators.

    static QString toString(RepeatMode::Type repeatMode);
    static QString toString(ShuffleMode::Type shuffleMode);
    /** `None`, and false in `ok`, for an unknown text. */
    static RepeatMode::Type toRepeatMode(const QString &text, bool *ok = nullptr);
    /** `Off`, and false in `ok`, for an unknown text. */
    static ShuffleMode::Type toShuffleMode(const QString &text, bool *ok = nullptr);

Q_SIGNALS:
    /** Part of the class's interface. The library neither emits it nor listens to it. */
    void nowplayingProcessControls(const QVariantMap &controls);

public Q_SLOTS:
    void onReceivedMetaData();

private:
    friend class NowPlayingController;

    int listenerCount() const;
    void countNow();
    /** A field: from the cache while subscribed, else from the service. */
    template<typename Value>
    Value value(QLatin1String field, const Value &cached)
    {
        countNow();
        QVariantMap result;
        return makeDataAvailable({field}, result) ? cached : result.value(field).template value<Value>();
    }
    /** Caches a field of an update and announces it, if it is present and changed. */
    template<typename Value, typename Signal>
    void takeField(const FunctionTracer &tracer, const QVariantMap &update, QLatin1String field, Value &cached,
                   const Signal &signal, const char *name);
    void takeUpdate(const FunctionTracer &tracer, const QVariantMap &update);

    QVariant m_iconUrl = QString();
    unsigned int m_duration = 0;
    unsigned int m_position = 0;
    MediaState::Type m_mediaState = MediaState::Stopped;
    bool m_nextEnabled = false;
    bool m_previousEnabled = false;
    RepeatMode::Type m_repeatMode = RepeatMode::Unsupported;
    ShuffleMode::Type m_shuffleMode = ShuffleMode::Unsupported;
    QVariantMap m_metaData;
    voro::PpsObject *m_control;
    /** The updates in progress, the newest last. */
    QList<QVariantMap *> m_updates;
    bool m_isCountDue = false;
};

} // namespace voro::multimedia
