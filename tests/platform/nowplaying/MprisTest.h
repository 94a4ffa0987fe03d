#pragma once

#include "Daemon.h"
#include "Talk.h"
#include "TestBus.h"

#include <QtDBus/QtDBus>
#include <QtTest/QtTest>

#include <memory>

/* The holder of the role as a player on a session bus: what the tests of that share. */

namespace mpris {

inline const QString Path = "/org/mpris/MediaPlayer2";
inline const QString Root = "org.mpris.MediaPlayer2";
inline const QString PlayerInterface = "org.mpris.MediaPlayer2.Player";
inline const QString Properties = "org.freedesktop.DBus.Properties";
inline const QString Name = "org.mpris.MediaPlayer2.voro.a";

} // namespace mpris

/** Records what the bus tells: names that come and go, changed properties, jumps. */
class Witness : public QObject {
    Q_OBJECT
public:
    explicit Witness(QDBusConnection bus)
    {
        bus.connect("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameOwnerChanged", this,
                    SLOT(ownerChanged(QString, QString, QString)));
        bus.connect(QString(), mpris::Path, mpris::Properties, "PropertiesChanged", this,
                    SLOT(propertiesChanged(QString, QVariantMap, QStringList)));
        bus.connect(QString(), mpris::Path, mpris::PlayerInterface, "Seeked", this, SLOT(seeked(qlonglong)));
        // The matches are in place when the bus has answered anything.
        bus.interface()->isServiceRegistered("none");
    }
    QStringList names;
    QVariantMap changes;
    QStringList gone;
    QList<qlonglong> jumps;

private Q_SLOTS:
    void ownerChanged(const QString &name, const QString &before, const QString &after)
    {
        if (name.startsWith(mpris::Root)) {
            names += (after.isEmpty() ? "-" : before.isEmpty() ? "+" : "*") + name.mid(mpris::Root.size() + 1);
        }
    }
    void propertiesChanged(const QString &, const QVariantMap &changed, const QStringList &invalidated)
    {
        changes.insert(changed);
        gone += invalidated;
    }
    void seeked(qlonglong position) { jumps += position; }
};

/** A bus, a daemon on it, and who holds the role. */
class MprisTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        bus = std::make_unique<TestBus>();
        daemon = std::make_unique<Daemon>();
        test = QDBusConnection::connectToBus(bus->address(), "test");
        holder = std::make_unique<Talk>(PlayerControl);
    }
    void cleanup()
    {
        holder.reset();
        test = QDBusConnection("none");
        QDBusConnection::disconnectFromBus("test");
        daemon.reset();
        bus.reset();
    }

protected:
    void acquire(const QByteArray &name = "a")
    {
        holder->acquire(name);
        QVERIFY(holder->waitFor(Send));
    }
    /** Acquires the role and waits for the player on the bus. */
    void appear()
    {
        acquire();
        QVERIFY(waitForName(mpris::Name));
    }
    /** Has the holder write, and returns when the service has handled it. */
    void tell(const QByteArray &lines)
    {
        holder->write(lines);
        QCOMPARE(holder->rest(), QByteArrayList());
        // What was told is there when a later answer is.
        call(mpris::Properties, "Get", {mpris::PlayerInterface, "Rate"});
        QCoreApplication::processEvents();
    }
    bool waitForName(const QString &name)
    {
        return QTest::qWaitFor([&] { return test.interface()->isServiceRegistered(name).value(); }, 20'000);
    }
    QDBusMessage call(const QString &interface, const QString &method, const QVariantList &arguments = {})
    {
        QDBusMessage message = QDBusMessage::createMethodCall(mpris::Name, mpris::Path, interface, method);
        message.setArguments(arguments);
        return test.call(message);
    }
    QVariant property(const QString &name)
    {
        const QDBusMessage reply = call(mpris::Properties, "Get", {mpris::PlayerInterface, name});
        const QVariant value = reply.arguments().value(0).value<QDBusVariant>().variant();
        return value.metaType() == QMetaType::fromType<QDBusArgument>() ? QVariant(qdbus_cast<QVariantMap>(value))
                                                                        : value;
    }

    std::unique_ptr<TestBus> bus;
    std::unique_ptr<Daemon> daemon;
    QDBusConnection test{"none"};
    std::unique_ptr<Talk> holder;
};
