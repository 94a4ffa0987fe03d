#pragma once

#include "private/MmrContextNotifier.h"
#include "RuntimeBroker.h"
#include "ScriptedRenderer.h"
#include "SignalLog.h"

#include <voro/PpsObject.h>

#include <QtTest/QtTest>

#include <LogCatcher.h>

#include <functional>
#include <memory>

namespace monitor {

using N = voro::multimedia::MmrContextNotifier;
using voro::multimedia::MediaError;
using voro::multimedia::MmrContextNotifier;

struct CloseConnection {
    void operator()(mmr_connection_t *connection) const { mmr_disconnect(connection); }
    void operator()(mmr_context_t *context) const { mmr_context_destroy(context); }
};

/** A monitor on a context of the scripted renderer, whose objects a real broker holds. */
class MonitorFixture {
public:
    MonitorFixture()
    {
        notifier.monitor(context.get());
        trace.clear();
    }

    /** Publishes an object of the context and waits until the monitor has handled it. */
    void publish(const QString &object)
    {
        const QList<voro::PpsObject *> watched = notifier.findChildren<voro::PpsObject *>();
        QSignalSpy all(watched.at(0), &voro::PpsObject::readyRead);
        QSignalSpy state(watched.at(1), &voro::PpsObject::readyRead);
        broker.publish(folder, object);
        QVERIFY(all.wait());
        if (object.contains(QLatin1String(" error:")) && state.isEmpty()) {
            QVERIFY(state.wait());
        }
    }

    QStringList trace;
    RuntimeBroker broker;
    voro::test::LogCatcher log;
    voro::test::ScriptedRenderer renderer{trace};
    std::unique_ptr<mmr_connection_t, CloseConnection> connection{mmr_connect(nullptr)};
    std::unique_ptr<mmr_context_t, CloseConnection> context{mmr_context_create(connection.get(), "c", 0, 0700)};
    const QString folder = voro::test::contextFolder(QStringLiteral("c"));
    MmrContextNotifier notifier{nullptr};
    SignalLog emitted{&notifier, trace};
};

using Action = std::function<MediaError::Type(MonitorFixture &)>;

template<typename... Parameters, typename... Arguments>
Action call(MediaError::Type (N::*method)(Parameters...), Arguments... arguments)
{
    return [=](MonitorFixture &f) { return (f.notifier.*method)(arguments...); };
}

} // namespace monitor
