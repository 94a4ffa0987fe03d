#include "BrokerThread.h"

#include <voro/PpsObject.h>

#include <QtTest/QtTest>

#include <Files.h>
#include <pps/Runtime.h>
#include <Rows.h>

#include <functional>
#include <optional>

using namespace voro;
using pps::Broker;

namespace {

constexpr auto ControlPath = "/pps/f/control";

/** A service that keeps what it is told, and says hello to everybody who subscribes. */
class Recorder : public pps::Service {
public:
    explicit Recorder(Broker &broker) : m_broker(broker) { broker.serve(ControlPath, this); }
    void clientOpened(pps::ClientId, const pps::Peer &) override {}
    void clientMessage(pps::ClientId client, std::string_view text) override
    {
        messages += QByteArray(text.data(), static_cast<qsizetype>(text.size())).trimmed();
        if (messages.last() == "msg::subscribe") {
            m_broker.setWill(client, "@control\nmsg::gone\n@control\nmsg::over\n");
            m_broker.setReturn(client, "@control\nmsg::again\n@control\nmsg::subscribe\n");
            m_broker.send(client, "msg::hello");
        } else if (messages.last() == "msg::role") {
            m_broker.setWill(client, "@control\nmsg::revoke\n");
            m_broker.send(client, "res::role");
        } else if (messages.last() == "msg::end") {
            m_broker.unserve(ControlPath);
        }
    }
    void clientClosed(pps::ClientId) override {}

    QByteArrayList messages;

private:
    Broker &m_broker;
};

/** A broker with a service at the runtime folder, as a daemon has it. */
class FakeDaemon {
public:
    explicit FakeDaemon(const QString &folder)
    {
        run([&](Broker &broker) {
            broker.listen(pps::listenAt(pps::socketPath(folder.toStdString())).release());
            m_service.emplace(broker);
        });
        writeFile(folder + QLatin1String(pps::LockName), "1\n");
    }
    void run(const std::function<void(Broker &)> &function) { m_thread.run(function); }
    QByteArrayList messages()
    {
        QByteArrayList messages;
        run([&](Broker &) { messages = m_service->messages; });
        return messages;
    }

private:
    std::optional<Recorder> m_service;
    pps::BrokerThread m_thread;
};

/** An open object or the end of the test. */
struct Open : pps::Connection {
    Open(const char *path, unsigned mode)
    {
        if (!open(path, mode)) {
            qFatal("cannot open %s: %d", path, error());
        }
    }
    /** What there is to be read now, "FAILED" for a failing read at the end. */
    QByteArrayList texts()
    {
        QByteArrayList texts;
        std::string text;
        while (read(text, false) && !text.empty()) {
            texts += QByteArray::fromStdString(text);
        }
        return isOpen() ? texts : texts + QByteArrayList{"FAILED"};
    }
};

} // namespace

/** What an object sees when its daemon goes, and when there is another one. */
class TestLoss : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        m_folder.emplace();
        qputenv("VORO_RUNTIME_DIR", m_folder->path().toLocal8Bit());
        qputenv("VORO_AUTOSPAWN", "0");
        m_daemon.emplace(m_folder->path());
    }
    void cleanup() { m_daemon.reset(); }

    void subscription_readsTheWillOnce_andThenThePresent_data()
    {
        const Rows<QByteArray, QByteArray, QByteArrayList, QByteArrayList> row("path", "will", "left", "present");
        const QByteArray unread("*@o\nx::2\n");
        const QByteArrayList present{"@o\nx::4\n"};
        row("an object reads its part", "/pps/f/o?delta", "@p\ny::1\n@o\nx::3\n", {unread, "@o\nx::3\n"}, present);
        row("a folder reads all of it", "/pps/f/.all", "@p\ny::1\n@o\nx::3\n", {unread, "@p\ny::1\n@o\nx::3\n"},
            present);
        row("nothing for it", "/pps/f/o", "@p\ny::1\n", {unread}, present);
        row("too long", "/pps/f/o", QByteArray("@o\nx::" + QByteArray(40'000, 'x') + '\n'), {unread}, present);
        row("the present is what the will said", "/pps/f/o?delta", "@o\nx::3\n", {unread, "@o\nx::3\n"}, {});
        row("the will says what was read", "/pps/f/.all", "shown", {unread}, {});
    }

    void subscription_readsTheWillOnce_andThenThePresent()
    {
        QFETCH(const QByteArray, path);
        QFETCH(const QByteArray, will);
        publish("o", "x::1");
        Open object(path, pps::Subscribe);
        QCOMPARE(object.texts(), QByteArrayList{"@o\nx::1\n"});
        setWill("@o\nx::0\n");
        m_daemon->run([&](Broker &broker) {
            if (will == "shown") {
                broker.setWill("/pps/f", "@o\nx::2\n", broker.nextVersion());
            } else {
                broker.setWill("/pps/f", will.toStdString());
            }
        });
        publish("o", "*@o\nx::2");
        loseDaemon();
        QTEST(object.texts(), "left");
        QVERIFY(object.isOpen() && object.isLost());
        QCOMPARE(object.texts(), QByteArrayList());

        nextDaemon();
        QFETCH(const QByteArrayList, present);
        m_daemon->run([&](Broker &broker) {
            if (present.isEmpty()) {
                broker.beginReturn("/pps/f");
                broker.publish("/pps/f/o", "x::4");
                broker.endReturn("/pps/f");
            } else {
                broker.publish("/pps/f/o", "x::4");
            }
        });
        QCOMPARE(object.texts(), present);
        QVERIFY(!object.isLost());
        publish("o", "x::4");
        QCOMPARE(object.texts(), QByteArrayList{"@o\nx::4\n"});
    }

    void will_isTheFoldersNewest_untilTheFolderIsBack()
    {
        setWill("@o\nx::1\n");
        Open first("/pps/f/o?delta,f=x", pps::Subscribe);
        Open late("/pps/f/o", pps::Subscribe);
        Open all("/pps/f/.all", pps::Subscribe);
        setWill("@o\nx::2\n");
        // Only this one gets a packet, and the will with it.
        publish("p", "y::1");
        all.texts();
        loseDaemon();
        QCOMPARE(first.texts(), QByteArrayList{"@o\nx::2\n"});
        QCOMPARE(first.texts(), QByteArrayList());
        nextDaemon();
        publish("o", "x::3");
        all.dropFolderWill();
        QCOMPARE(late.texts(), QByteArrayList{"@o\nx::3\n"});

        // Who has read the one will, and nothing since, does not know the next one.
        const auto bringBack = [this](std::string_view text) {
            m_daemon->run([&](Broker &broker) {
                broker.beginReturn("/pps/f");
                broker.publish("/pps/f/o", text);
                broker.endReturn("/pps/f");
                broker.setWill("/pps/f", "@o\nx::4\n");
            });
        };
        loseDaemon();
        nextDaemon();
        bringBack("x::2");
        QCOMPARE(first.texts(), QByteArrayList());
        all.texts();
        loseDaemon();
        nextDaemon();
        bringBack("x::4");
        all.dropFolderWill();
        QCOMPARE(first.texts(), QByteArrayList{"@o\nx::4\n"});
    }

    void client_readsWhatIsLeft_data()
    {
        const Rows<QByteArray, QByteArray, QByteArrayList> row("path", "message", "left");
        const QByteArray role("@control\nres::role\n");
        const QByteArray hello("@control\nmsg::hello\n");
        row("one with a will", ControlPath, "msg::role", {role, "@control\nmsg::revoke\n", "FAILED"});
        row("one that waits", QByteArray(ControlPath) + "?wait", "msg::role",
            {role, "@control\nmsg::revoke\n", "@control\nerror::closed\n", "FAILED"});
        row("one with neither will nor return", ControlPath, "msg::x", {"FAILED"});
        row("one with a return", ControlPath, "msg::subscribe",
            {hello, "@control\nmsg::gone\n", "@control\nmsg::over\n"});
    }

    void client_readsWhatIsLeft()
    {
        QFETCH(const QByteArray, path);
        QFETCH(const QByteArray, message);
        Open client(path, pps::PublishSubscribe);
        QVERIFY(client.write(message.toStdString()));
        // The answer to another one comes after all that.
        Open barrier("/pps/f/o", pps::Subscribe);
        m_daemon->run([](Broker &broker) { broker.leave(); });
        loseDaemon();
        QTEST(client.texts(), "left");
        QCOMPARE(client.isOpen() ? 0 : client.error(), client.isOpen() ? 0 : ECONNRESET);
    }

    void serviceThatEnds_isNoLoss()
    {
        Open client(ControlPath, pps::PublishSubscribe);
        Open ending(ControlPath, pps::Publish);
        QVERIFY(client.write("msg::subscribe"));
        QVERIFY(ending.write("msg::end"));
        Open barrier("/pps/f/o", pps::Subscribe);
        QCOMPARE(client.texts(), (QByteArrayList{"@control\nmsg::hello\n", "FAILED"}));
        QCOMPARE(client.error(), EPIPE);
        // The socket is closed by then.
        m_daemon->run([](Broker &) {});
        QVERIFY(!ending.write("msg::x"));
        QVERIFY(!ending.isOpen());
    }

    // The one packet that would say so does not fit any more.
    void readerThatIsEnded_doesNotComeBack()
    {
        Open client(ControlPath, pps::PublishSubscribe);
        QVERIFY(client.write("msg::subscribe"));
        Open barrier("/pps/f/o", pps::Subscribe);
        const std::string flood(60'000, 'x');
        for (int i = 0; i < 100; ++i) {
            m_daemon->run([&](Broker &broker) { broker.sendAll(ControlPath, "a::" + flood); });
        }
        QVERIFY(client.texts().size() < 100);
        QVERIFY(!client.comeBack(true));
        QCOMPARE(client.texts(), QByteArrayList{"FAILED"});
        QVERIFY(!client.write("msg::x"));
        QCOMPARE(m_daemon->messages(), QByteArrayList{"msg::subscribe"});
    }

    void client_returnsWithWhatItWasGiven()
    {
        Open client(ControlPath, pps::PublishSubscribe);
        QVERIFY(client.write("msg::subscribe"));
        Open answered("/pps/f/o", pps::Subscribe);
        QCOMPARE(client.texts(), QByteArrayList{"@control\nmsg::hello\n"});
        for (int i = 0; i < 2; ++i) {
            loseDaemon();
            nextDaemon();
            // A command brings it back as well; what was not read yet stays.
            QVERIFY(client.write("msg::next"));
            Open barrier("/pps/f/o", pps::Subscribe);
            QCOMPARE(m_daemon->messages(), (QByteArrayList{"msg::again", "msg::subscribe", "msg::next"}));
            QCOMPARE(client.texts(),
                     (QByteArrayList{"@control\nmsg::gone\n", "@control\nmsg::over\n", "@control\nmsg::hello\n"}));
        }
    }

    void writer_findsTheNextDaemon()
    {
        Open service(ControlPath, pps::Publish);
        Open plain("/pps/f/o", pps::Publish);
        loseDaemon();
        QVERIFY(!service.write("msg::lost"));
        QCOMPARE(service.error(), ECONNRESET);
        nextDaemon();
        QVERIFY(service.write("msg::x"));
        QVERIFY(plain.write("x::1"));
        Open reader("/pps/f/o", pps::Subscribe);
        QCOMPARE(reader.texts(), QByteArrayList{"@o\nx::1\n"});
        QCOMPARE(m_daemon->messages(), QByteArrayList{"msg::x"});
    }

    void lostObjects_comeBack_whenADaemonSaysThatItIsReady()
    {
        PpsObject subscription("/pps/f/o");
        PpsObject client(QString::fromLatin1(ControlPath));
        QByteArrayList texts;
        for (PpsObject *object : {&subscription, &client}) {
            connect(object, &PpsObject::readyRead, [&texts, object] { texts += object->read(); });
        }
        QVERIFY(subscription.open(PpsOpenMode::Subscribe));
        // Nobody tries by himself for a subscription.
        setWill("@o\nx::will\n");
        publish("o", "x::first");
        QTRY_COMPARE(texts.size(), 1);
        texts.clear();
        loseDaemon();
        QTRY_COMPARE(texts, QByteArrayList{"@o\nx::will\n"});
        QTRY_COMPARE(subscription.findChildren<QTimer *>().size(), 1);
        nextDaemon();
        publish("o", "x::present");
        QTRY_COMPARE(texts.size(), 2);
        texts.clear();
        QVERIFY(client.open(PpsOpenMode::PublishSubscribe));
        QVERIFY(client.write("msg::subscribe"));
        QTRY_COMPARE(texts, QByteArrayList{"@control\nmsg::hello\n"});
        for (int i = 0; i < 2; ++i) {
            texts.clear();
            loseDaemon();
            QTRY_COMPARE(texts, (QByteArrayList{"@control\nmsg::gone\n", "@control\nmsg::over\n"}));
            texts.clear();
            nextDaemon();
            QTRY_COMPARE(texts, QByteArrayList{"@control\nmsg::hello\n"});
            texts.clear();
            publish("o", "x::" + std::to_string(i));
            QTRY_COMPARE(texts.size(), 1);
        }
        QVERIFY(subscription.isOpen() && client.isOpen());
    }

private:
    void loseDaemon() { m_daemon.reset(); }
    void nextDaemon() { m_daemon.emplace(m_folder->path()); }
    void setWill(std::string_view text)
    {
        m_daemon->run([&](Broker &broker) { broker.setWill("/pps/f", text); });
    }
    void publish(const char *object, std::string_view text)
    {
        m_daemon->run([&](Broker &broker) { broker.publish(std::string("/pps/f/") + object, text); });
    }

    std::optional<QTemporaryDir> m_folder;
    std::optional<FakeDaemon> m_daemon;
};

QTEST_GUILESS_MAIN(TestLoss)
#include "tst_loss.moc"
