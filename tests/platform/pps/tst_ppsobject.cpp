#include "Daemon.h"

#include <voro/PpsObject.h>

#include <QtTest/QtTest>

#include <Rows.h>

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

    void closedObject_refusesEverything()
    {
        PpsObject object(path("o"));
        bool ok = true;
        QVERIFY(!object.isOpen());
        QCOMPARE(object.error(), 0);
        QCOMPARE(object.errorString(), QString());
        QCOMPARE(object.read(&ok), QByteArray());
        QVERIFY(!ok);
        QVERIFY(!object.write("a::1"));
        QVERIFY(!object.close());
        QCOMPARE(object.error(), EBADF);
        QVERIFY(!object.errorString().isEmpty());
        QVERIFY(object.open(PpsOpenMode::Subscribe));
        QVERIFY(!object.open(PpsOpenMode::Subscribe));
        QCOMPARE(object.error(), EISCONN);
        QVERIFY(object.isOpen());
        QVERIFY(object.close());
        QVERIFY(!object.isOpen());
    }

    void sendMessage_tellsWhatFailed()
    {
        QCOMPARE(PpsObject::sendMessage(path("control"), "msg::play"), ENXIO);
        Open server(path("control") + "?server,wait", PpsOpenMode::PublishSubscribe);
        QVERIFY(server.isBlocking());
        QCOMPARE(PpsObject::sendMessage(path("control"), "play"), EINVAL);
        QCOMPARE(PpsObject::sendMessage(path("control"), "msg::play\ndat:b:true"), 0);
        QByteArrayList lines;
        while (lines.size() < 7) {
            lines += server.read().split('\n');
            lines.removeAll("");
        }
        // The first client was turned away by its own text.
        QVERIFY(lines.at(0).startsWith("+@") && lines.at(1).startsWith("-@") && lines.at(2).startsWith("+@"));
        QCOMPARE(lines.mid(4, 2), (QByteArrayList{"msg::play", "dat:b:true"}));
        QCOMPARE(lines.at(6), '-' + lines.at(2).mid(1));
        server.setBlocking(false);
        QCOMPARE(server.read(), QByteArray());
    }

    void readyRead_comesAgainUntilAllIsRead_data()
    {
        const Rows<QString, int> row("object", "reads");
        row("messages", "control", 5);
        row("texts of a folder", ".all", 3);
    }

    void readyRead_comesAgainUntilAllIsRead()
    {
        QFETCH(QString, object);
        QFETCH(int, reads);
        Open server(path("control") + "?server", PpsOpenMode::PublishSubscribe);
        PpsObject reader(path(object.toLatin1()));
        QByteArrayList texts;
        QSignalSpy spy(&reader, &PpsObject::readyRead);
        connect(&reader, &PpsObject::readyRead, [&] { texts += reader.read(); });
        QVERIFY(reader.open(PpsOpenMode::Subscribe));
        for (int i = 0; i < 5; ++i) {
            const QByteArray text = "a::" + QByteArray(30000, 'x');
            server.write("@control\n" + text);
            Open(path(("o" + QByteArray::number(i)).constData()), PpsOpenMode::Publish).write(text);
        }
        while (texts.size() < reads && spy.wait()) {
        }
        letEventsPass();
        QVERIFY(!texts.contains(QByteArray()));
        QCOMPARE(texts.join().count("a::"), 5);
        QVERIFY2(texts.size() >= reads, QByteArray::number(texts.size()).constData());
    }

    void readyRead_canBeSwitchedOff()
    {
        Open publisher(path("o"), PpsOpenMode::Publish);
        PpsObject reader(path("o"));
        QVERIFY(reader.isReadyReadEnabled());
        reader.setReadyReadEnabled(false);
        QSignalSpy spy(&reader, &PpsObject::readyRead);
        QVERIFY(reader.open(PpsOpenMode::Subscribe));
        publisher.write("a::1");
        letEventsPass();
        QCOMPARE(spy.count(), 0);
        reader.setReadyReadEnabled(true);
        QVERIFY(spy.wait());
        reader.setReadyReadEnabled(false);
        reader.read();
        publisher.write("a::2");
        spy.clear();
        letEventsPass();
        QCOMPARE(spy.count(), 0);
        QCOMPARE(reader.read(), QByteArray("@o\na::2\n"));
    }

    void readyRead_slotMayDeleteTheObject()
    {
        for (const bool readsFirst : {false, true}) {
            Open(path("o"), PpsOpenMode::Publish).write("a::1");
            auto *reader = new Open(path("o"), PpsOpenMode::Subscribe);
            QSignalSpy destroyed(reader, &QObject::destroyed);
            connect(reader, &PpsObject::readyRead, this, [reader, readsFirst] {
                if (readsFirst) {
                    reader->read();
                }
                delete reader;
            });
            QVERIFY(destroyed.wait());
            // And from the socket's notification, not only from the first look.
            reader = new Open(path("o"), PpsOpenMode::Subscribe);
            reader->read();
            letEventsPass();
            QSignalSpy destroyedLater(reader, &QObject::destroyed);
            connect(reader, &PpsObject::readyRead, this, [reader] { delete reader; });
            Open(path("o"), PpsOpenMode::Publish).write("a::2");
            QVERIFY(destroyedLater.wait());
        }
    }

    void readyRead_comesInTheObjectsThread()
    {
        QThread thread;
        auto *reader = new Open(path("o"), PpsOpenMode::Subscribe);
        reader->read();
        letEventsPass();
        reader->moveToThread(&thread);
        QByteArray text;
        QThread *seenIn = nullptr;
        QObject context;
        connect(reader, &PpsObject::readyRead, reader, [&] {
            seenIn = QThread::currentThread();
            text = reader->read();
            delete reader;
            thread.quit();
        });
        thread.start();
        Open(path("o"), PpsOpenMode::Publish).write("a::1");
        QVERIFY(thread.wait());
        QCOMPARE(seenIn, &thread);
        QCOMPARE(text, QByteArray("+@o\na::1\n"));
    }

private:
    // Returns when everything that was written so far has reached the objects of this thread.
    void letEventsPass()
    {
        static int number = 0;
        Open watcher(path("barrier"), PpsOpenMode::Subscribe);
        watcher.read();
        QSignalSpy spy(&watcher, &PpsObject::readyRead);
        Open(path("barrier"), PpsOpenMode::Publish).write("a:n:" + QByteArray::number(++number));
        QVERIFY(spy.wait());
        QCoreApplication::processEvents();
    }

    std::unique_ptr<Daemon> m_daemon;
};

QTEST_GUILESS_MAIN(TestPpsObject)
#include "tst_ppsobject.moc"
