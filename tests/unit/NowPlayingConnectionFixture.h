#pragma once

#include "RuntimeBroker.h"
#include "ScriptedService.h"
#include "SignalLog.h"

#include <multimedia/NowPlayingConnection.h>

#include <QtTest/QtTest>

#include <LogCatcher.h>

#include <functional>
#include <memory>

namespace nowplaying {

using C = voro::multimedia::NowPlayingConnection;
using voro::multimedia::MediaError;

inline const QString ControlPath = QStringLiteral("/pps/services/multimedia/mediaplayer/control");

/** A broker with a service that grants the role, a connection to it, and their logs. */
struct Fixture {
    Fixture() { service.answer(QStringLiteral("msg::acquire"), {QStringLiteral("res::acquire")}); }

    /** Acquires the role and forgets what that took. */
    void acquire()
    {
        if (connection.acquire() != MediaError::None) {
            qFatal("the role was not granted");
        }
        service.next(4);
        trace.clear();
        log.takeLines();
    }
    /** Acquires the role, and there is somebody who wants to know. */
    void acquireForWatcher()
    {
        acquire();
        receive(QStringLiteral("msg::track|dat::sendData"));
        service.next();
        trace.clear();
    }
    /** Sends a message to the connection, and returns when it was handled. */
    void receive(const QString &message)
    {
        service.send(message);
        service.send(QStringLiteral("msg::track|dat::stop"));
        QTRY_VERIFY(!trace.isEmpty() && trace.last() == QLatin1String("stop()"));
        trace.removeLast();
        // What was put off until the event loop comes by.
        QCoreApplication::processEvents();
    }
    /** Everything that was written since; the connection is at its end. */
    QStringList written()
    {
        connection.revoke();
        QStringList messages;
        for (QString event = service.next(); event != QLatin1String("closed"); event = service.next()) {
            messages += event;
        }
        return messages;
    }

    QStringList trace;
    voro::test::LogCatcher log;
    RuntimeBroker broker;
    ScriptedService service{broker, ControlPath};
    std::unique_ptr<C> owned = std::make_unique<C>(QStringLiteral("player"));
    C &connection = *owned;
    SignalLog emitted{&connection, trace};
};

using Action = std::function<void(Fixture &)>;

template<typename Method, typename... Arguments>
Action call(Method method, Arguments... arguments)
{
    return [=](Fixture &f) { static_cast<void>((f.connection.*method)(arguments...)); };
}

} // namespace nowplaying
