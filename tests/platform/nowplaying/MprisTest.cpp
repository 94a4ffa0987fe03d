#include "MprisTest.h"

using namespace mpris;

void MprisTest::acquire(const QByteArray &name)
{
    holder->acquire(name);
    QVERIFY(holder->waitFor(Send));
}

void MprisTest::appear()
{
    acquire();
    QVERIFY(waitForName(Name));
}

void MprisTest::tell(const QByteArray &lines)
{
    holder->write(lines);
    QCOMPARE(holder->rest(), QByteArrayList());
    // What was told is there when a later answer is.
    call(Properties, "Get", {PlayerInterface, "Rate"});
    QCoreApplication::processEvents();
}

bool MprisTest::waitForName(const QString &name)
{
    return QTest::qWaitFor([&] { return test.interface()->isServiceRegistered(name).value(); }, 20'000);
}

QDBusMessage MprisTest::call(const QString &interface, const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(Name, Path, interface, method);
    message.setArguments(arguments);
    return test.call(message);
}

QVariant MprisTest::property(const QString &name)
{
    const QDBusMessage reply = call(Properties, "Get", {PlayerInterface, name});
    const QVariant value = reply.arguments().value(0).value<QDBusVariant>().variant();
    return value.metaType() == QMetaType::fromType<QDBusArgument>() ? QVariant(qdbus_cast<QVariantMap>(value)) : value;
}
