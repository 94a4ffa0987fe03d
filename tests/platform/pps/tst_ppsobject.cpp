#include "Daemon.h"

#include <voro/PpsObject.h>

#include <QtTest/QtTest>

using namespace voro;

namespace {

constexpr auto Folder = "/pps/test";

QString path(const char *name)
{
    return QLatin1String(Folder) + QLatin1Char('/') + QLatin1String(name);
}

/** Opens an object or fails the test. */
struct Open : PpsObject {
    Open(const QString &objectPath, PpsOpenMode::Types mode) : PpsObject(objectPath)
    {
        if (!open(mode)) {
            qFatal("cannot open %s: %s", qPrintable(objectPath), qPrintable(errorString()));
        }
    }
};

} // namespace

class TestPpsObject : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() { m_daemon = std::make_unique<Daemon>(); }
    void cleanup() { m_daemon.reset(); }

    void plainObject_reads_data();
    void plainObject_reads();
    void service_answersItsClients();

private:
    std::unique_ptr<Daemon> m_daemon;
};

void TestPpsObject::plainObject_reads_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QByteArrayList>("before");
    QTest::addColumn<QByteArrayList>("between");
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");

    QTest::newRow("nothing there") << "" << QByteArrayList() << QByteArrayList() << QByteArray() << QByteArray();
    QTest::newRow("the whole object") << "" << QByteArrayList{"a::1\nb:n:2"} << QByteArrayList{"b:n:3"}
                                      << QByteArray("@o\na::1\nb:n:2\n") << QByteArray("@o\na::1\nb:n:3\n");
    QTest::newRow("many publications are one read") << "" << QByteArrayList() << QByteArrayList{"a::1", "a::2", "a::3"}
                                                    << QByteArray() << QByteArray("+@o\na::3\n");
    QTest::newRow("deleted attribute") << "" << QByteArrayList{"a::1\nb::2"} << QByteArrayList{"-a"}
                                       << QByteArray("@o\na::1\nb::2\n") << QByteArray("@o\nb::2\n-a\n");
    QTest::newRow("replaced whole") << "" << QByteArrayList{"a::1\nb::2"} << QByteArrayList{"*@o\nb::3"}
                                    << QByteArray("@o\na::1\nb::2\n") << QByteArray("*@o\nb::3\n-a\n");
    QTest::newRow("deleted object") << "" << QByteArrayList{"a::1"} << QByteArrayList{"-@o"} << QByteArray("@o\na::1\n")
                                    << QByteArray("-@o\n");
    QTest::newRow("delta") << "?delta" << QByteArrayList{"a::1\nb::2"} << QByteArrayList{"b::2", "c::1\n-a"}
                           << QByteArray("@o\na::1\nb::2\n") << QByteArray("@o\nb::2\nc::1\n-a\n");
    QTest::newRow("filter") << "?delta,f=e" << QByteArrayList{"a::1"} << QByteArrayList{"a::2", "e:n:0\nf::1"}
                            << QByteArray() << QByteArray("@o\ne:n:0\n");
    QTest::newRow("a deletion does not pass a filter")
        << "?delta,f=e" << QByteArrayList{"e:n:0"} << QByteArrayList{"-e"} << QByteArray("@o\ne:n:0\n") << QByteArray();
}

void TestPpsObject::plainObject_reads()
{
    QFETCH(QString, options);
    QFETCH(QByteArrayList, before);
    QFETCH(QByteArrayList, between);
    Open publisher(path("o"), PpsOpenMode::Publish);
    for (const QByteArray &text : before) {
        QVERIFY(publisher.write(text));
    }
    Open reader(path("o") + options, PpsOpenMode::Subscribe);
    bool ok = false;
    QTEST(reader.read(&ok), "first");
    QVERIFY(ok);
    for (const QByteArray &text : between) {
        QVERIFY(publisher.write(text));
    }
    Open barrier(path("o"), PpsOpenMode::Subscribe);
    QTEST(reader.read(&ok), "second");
    QVERIFY(ok);
    QCOMPARE(reader.read(&ok), QByteArray());
    QVERIFY(ok);
}

void TestPpsObject::service_answersItsClients()
{
    Open server(path("control") + "?server", PpsOpenMode::PublishSubscribe);
    server.setBlocking(true);
    Open client(path("control"), PpsOpenMode::PublishSubscribe);
    client.setBlocking(true);
    const QByteArray opened = server.read();
    QVERIFY2(opened.startsWith("+@control."), opened.constData());
    const QByteArray name = opened.mid(1).trimmed();
    QVERIFY(client.write("msg::hello\nid::1"));
    QCOMPARE(server.read(), name + "\nmsg::hello\nid::1\n");
    QVERIFY(server.write(name + "\nres::hello"));
    QVERIFY(server.write("@control\nmsg::all"));
    QCOMPARE(client.read(), QByteArray("@control\nres::hello\n"));
    QCOMPARE(client.read(), QByteArray("@control\nmsg::all\n"));
    QVERIFY(client.close());
    QCOMPARE(server.read(), '-' + name + '\n');
}

QTEST_GUILESS_MAIN(TestPpsObject)
#include "tst_ppsobject.moc"
