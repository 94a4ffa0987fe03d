#include "BrokerThread.h"
#include "RawClient.h"

#include <QtTest/QtTest>

#include <fcntl.h>
#include <Rows.h>
#include <unistd.h>

using namespace voro::pps;

namespace {

constexpr auto Object = "/pps/f/o";
constexpr auto All = "/pps/f/.all";
constexpr auto Control = "/pps/f/control";

/** A service that records what happens, and does what a test wants it to do then. */
struct RecordingService : Service {
    std::vector<std::string> events;
    std::map<ClientId, Peer> peers;
    std::function<void(ClientId)> onOpened = [](ClientId) {};
    std::function<void(ClientId, std::string_view)> onMessage = [](ClientId, std::string_view) {};
    std::function<void(ClientId)> onClosed = [](ClientId) {};

    void clientOpened(ClientId client, const Peer &peer) override
    {
        events.push_back("opened");
        peers[client] = peer;
        onOpened(client);
    }
    void clientMessage(ClientId client, std::string_view text) override
    {
        events.push_back("message " + std::string(text));
        onMessage(client, text);
    }
    void clientClosed(ClientId client) override
    {
        events.push_back("closed");
        onClosed(client);
    }
    void clientHasRead(ClientId) override { events.push_back("read"); }
};

using Events = std::vector<std::string>;

} // namespace

/** Services and their clients, and what a client may not do. */
class TestServices : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        service = std::make_unique<RecordingService>();
        broker = std::make_unique<BrokerThread>();
    }
    void cleanup() { broker.reset(); }

    void writing_thatBreaksTheRules_closesOnlyThatClient_data()
    {
        const Rows<std::vector<std::string>> row("packets");
        using Packets = std::vector<std::string>;
        const std::string open = request(Request::Open, Object, 7, 1);
        row("an empty packet", Packets{""});
        row("half a header", Packets{open.substr(0, 20)});
        row("an unknown type later", Packets{open, request(99, "", 7, 2)});
        row("a write before opening", Packets{request(Request::Write, "a::1", 7, 1)});
        row("a second open", Packets{open, request(Request::Open, Object, 7, 2)});
        row("an unknown version", Packets{request(Request::Open, Object, 7, 1, 3, 999)});
        row("no path", Packets{request(Request::Open, "\xFF\xFE", 7, 1)});
        row("no PPS text", Packets{open, request(Request::Write, "\xFF\xFE", 7, 2)});
        row("too long", Packets{open, request(Request::Write, std::string(MaximumRequest, 'x'), 7, 2)});
        row("longer than a message",
            Packets{open, request(Request::Write, "a::" + std::string(MaximumMessage, 'x'), 7, 2)});
        row("a pull with half an entry", Packets{open, request(Request::Pull, "12345678", 7, 2)});
        row("a pull with too many entries",
            Packets{open, request(Request::Pull, std::string((MaximumHeld + 1) * sizeof(Held), 'x'), 7, 2)});
        row("a pull by a publisher",
            Packets{request(Request::Open, Object, 7, 1, Publish), request(Request::Pull, "", 7, 2)});
        row("a write by a subscriber",
            Packets{request(Request::Open, Object, 7, 1, Subscribe), request(Request::Write, "a::1", 7, 2)});
        row("a pull on a service object",
            Packets{request(Request::Open, Control, 7, 1), request(Request::Pull, "", 7, 2)});
    }

    void writing_thatBreaksTheRules_closesOnlyThatClient()
    {
        QFETCH(std::vector<std::string>, packets);
        broker->run([this](Broker &b) { b.serve(Control, service.get()); });
        auto good = broker->open(Object, PublishSubscribe);
        RawClient bad(broker->connect());
        for (const std::string &packet : packets) {
            QVERIFY(bad.send(packet));
        }
        bad.waitForEnd();
        QVERIFY(good->write("a::1"));
        COMPARE_TEXT(readNext(*good), "+@o\na::1\n");
    }

    void write_refuses_data()
    {
        const Rows<std::string, unsigned, std::string, int> row("path", "mode", "text", "error");
        const std::string object = Object;
        row("no PPS text", object, 3U, "hello", EINVAL);
        row("a client's name, by a client", Control, 3U, "@control.1\na::1", EINVAL);
        row("too long", object, 3U, "a::" + std::string(MaximumMessage, 'x'), EMSGSIZE);
        row("opened for reading", object, 2U, "a::1", EBADF);
    }

    void write_refuses()
    {
        QFETCH(std::string, path);
        QFETCH(unsigned, mode);
        QFETCH(std::string, text);
        broker->run([this](Broker &b) { b.serve(Control, service.get()); });
        auto connection = broker->open(path, mode);
        QVERIFY(!connection->write(text));
        QTEST(connection->error(), "error");
        QVERIFY(connection->isOpen());
        if (mode == PublishSubscribe) {
            QVERIFY(connection->write("a::1"));
        }
    }

    void open_refuses_data()
    {
        const Rows<std::string, unsigned, int> row("path", "mode", "error");
        row("no mode", Object, 0, EINVAL);
        row("an unknown mode", Object, 4, EINVAL);
        row("not under /pps", "/tmp/o", 2, EINVAL);
        row("no name", "/pps/f/", 2, EINVAL);
        row("an empty folder name", "/pps//o", 2, EINVAL);
        row("a folder above", "/pps/../o", 2, EINVAL);
        row("an unknown option", "/pps/f/o?fast", 2, EINVAL);
        row("a filter without a name", "/pps/f/o?f=", 2, EINVAL);
        std::string names = "f=a0";
        for (int i = 1; i < 33; ++i) {
            names += ",f=a" + std::to_string(i);
        }
        row("more than 32 names", "/pps/f/o?" + names, 2, EINVAL);
        row("options longer than a path", "/pps/f/o?f=" + std::string(1023, 'a'), 2, EINVAL);
        row("a plain object's server", "/pps/f/o?server", 3, EINVAL);
        row("a server that does not read", "/pps/f/control?server", 1, EINVAL);
        row("a filter on a service object", "/pps/f/control?f=a", 2, EINVAL);
        row("writing a folder", All, 3, EINVAL);
        row("a service object that nobody serves", "/pps/g/control", 3, ENXIO);
        row("a second server", "/pps/f/control?server", 3, EBUSY);
    }

    void open_refuses()
    {
        QFETCH(std::string, path);
        QFETCH(unsigned, mode);
        broker->run([this](Broker &b) { b.serve(Control, service.get()); });
        Connection connection;
        QVERIFY(!connection.openOn(broker->connect(), path, mode));
        QTEST(connection.error(), "error");
        QVERIFY(!connection.isOpen());
    }

    void service_isToldOfItsClients()
    {
        int socket[2];
        QVERIFY(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, socket) == 0);
        uint64_t name = 0;
        broker->run([&](Broker &b) {
            QVERIFY(b.serve(Control, service.get()));
            QVERIFY(!b.serve(Control, service.get()));
            name = b.adopt(socket[1]);
            QCOMPARE(b.clientCount(), static_cast<size_t>(0));
        });
        Connection client;
        QVERIFY(client.openOn(socket[0], Control, PublishSubscribe));
        QVERIFY(client.write("@control\nmsg::play"));
        QVERIFY(client.write("msg::stop\n"));
        client.close();
        auto last = broker->open(Control, PublishSubscribe);
        broker->run([&](Broker &) {
            QVERIFY(service->events
                    == (Events{"opened", "message msg::play", "message msg::stop\n", "closed", "opened"}));
            QCOMPARE(service->peers.begin()->second.adopted, name);
            QCOMPARE(service->peers.begin()->second.process, getpid());
        });
    }

    void service_mayCallBackAtAnyTime()
    {
        broker->run([&](Broker &b) {
            b.serve(Control, service.get());
            service->onOpened = [&](ClientId id) { b.send(id, "msg::welcome"); };
            service->onMessage = [&](ClientId id, std::string_view text) {
                if (text == "msg::end") {
                    b.unserve(Control);
                } else if (text == "msg::go") {
                    b.disconnect(id);
                    b.sendAll(Control, "msg::someone left");
                } else {
                    b.publish(Object, "a::1");
                    b.remove(Object);
                    b.publish(Object, text);
                    b.sendAll(Control, text);
                }
            };
            service->onClosed = [&](ClientId id) {
                b.disconnect(id);
                b.send(id, "msg::late");
                b.publish(Object, "closed::1");
            };
        });
        auto first = broker->open(Control, PublishSubscribe);
        auto second = broker->open(Control, PublishSubscribe);
        auto reader = broker->open(All, Subscribe);
        COMPARE_TEXT(readNext(*first), "@control\nmsg::welcome\n");
        COMPARE_TEXT(readNext(*second), "@control\nmsg::welcome\n");
        QVERIFY(first->write("a::2"));
        COMPARE_TEXT(readNext(*second), "@control\na::2\n");
        COMPARE_TEXT(readNow(*reader), "+@o\na::2\n");
        QVERIFY(first->write("msg::go"));
        COMPARE_TEXT(readNext(*first), "@control\na::2\n");
        COMPARE_TEXT(readNext(*first), "@control\nmsg::someone left\n");
        COMPARE_TEXT(readNext(*first), "FAILED");
        COMPARE_TEXT(readNext(*second), "@control\nmsg::someone left\n");
        COMPARE_TEXT(readNow(*reader), "@o\na::2\nclosed::1\n");
        QVERIFY(second->write("msg::end"));
        COMPARE_TEXT(readNext(*second), "FAILED");
        Connection late;
        QVERIFY(!late.openOn(broker->connect(), Control, PublishSubscribe));
        QCOMPARE(late.error(), ENXIO);
    }

    void service_thatEnds_isReadToItsEnd()
    {
        broker->run([&](Broker &b) { b.serve(Control, service.get()); });
        auto client = broker->open(Control, PublishSubscribe);
        auto waiting = broker->open(std::string(Control) + "?wait", PublishSubscribe);
        const std::string lines = "a::" + std::string(10000, 'x');
        broker->run([&](Broker &b) {
            // More than the socket holds, less than the bound.
            for (int i = 0; i < 60; ++i) {
                b.sendAll(Control, lines);
            }
            b.unserve(Control);
        });
        QVERIFY(client->write("a::late") || client->error() == EPIPE);
        for (Connection *reader : {client.get(), waiting.get()}) {
            for (int i = 0; i < 60; ++i) {
                COMPARE_TEXT(readNext(*reader), QByteArray::fromStdString("@control\n" + lines + '\n'));
            }
        }
        COMPARE_TEXT(readNext(*client), "FAILED");
        QVERIFY(!client->isOpen());
        COMPARE_TEXT(readNext(*waiting), "@control\nerror::closed\n");
        COMPARE_TEXT(readNext(*waiting), "FAILED");
        QVERIFY(!waiting->isOpen());
        QVERIFY(service->events == (Events{"opened", "opened"}));
    }

    void remoteServer_thatEnds_closesItsClients()
    {
        auto server = broker->open(std::string(Control) + "?server", PublishSubscribe);
        auto client = broker->open(Control, PublishSubscribe);
        auto other = broker->open(Control, PublishSubscribe);
        const std::string name = readNext(*server).substr(1);
        QVERIFY(server->write("@control.999999\na::nobody"));
        QVERIFY(server->write('@' + name.substr(1) + "a::1"));
        QVERIFY(server->write("@control\na::2"));
        server->close();
        COMPARE_TEXT(readNext(*client), "@control\na::1\n");
        COMPARE_TEXT(readNext(*client), "@control\na::2\n");
        COMPARE_TEXT(readNext(*client), "FAILED");
        COMPARE_TEXT(readNext(*other), "@control\na::2\n");
        COMPARE_TEXT(readNext(*other), "FAILED");
        server = broker->open(std::string(Control) + "?server", PublishSubscribe);
    }

    void client_thatDoesNotRead_isDisconnectedAtOneMebibyte()
    {
        broker->run([&](Broker &b) { b.serve(Control, service.get()); });
        auto sleeper = broker->open(Control, PublishSubscribe);
        auto reader = broker->open(Control, PublishSubscribe);
        const std::string lines = "a::" + std::string(10000, 'x');
        int sent = 0;
        const auto isTold = [&] {
            bool isClosed = false;
            broker->run([&](Broker &) { isClosed = service->events.back() == "closed"; });
            return isClosed;
        };
        while (!isTold() && sent < 1000) {
            broker->run([&](Broker &b) {
                b.sendAll(Control, lines);
                QVERIFY(b.isBehind(service->peers.begin()->first));
            });
            ++sent;
            readNext(*reader);
        }
        QVERIFY2(sent > 1024 * 1024 / 10000 && sent < 1024 * 1024 / 10000 + 40, std::to_string(sent).c_str());
        broker->run([&](Broker &b) { QVERIFY(!b.isBehind(std::next(service->peers.begin())->first)); });
        std::string text;
        while (sleeper->read(text, true)) {
        }
        QVERIFY(reader->write("a::1"));
    }

    void service_isTold_onceTheClientHasReadEverything()
    {
        broker->run([&](Broker &b) { b.serve(Control, service.get()); });
        auto client = broker->open(Control, PublishSubscribe);
        auto gone = broker->open(Control, PublishSubscribe);
        const auto events = [&] {
            Events taken;
            broker->run([&](Broker &) { taken.swap(service->events); });
            return taken;
        };
        events();
        for (int round = 0; round < 200; ++round) {
            broker->run([&](Broker &b) {
                b.sendAll(Control, "a::1");
                b.sendAll(Control, "a::2");
                for (const auto &[id, peer] : service->peers) {
                    b.notifyWhenRead(id);
                    b.notifyWhenRead(id);
                }
            });
            readNext(*client);
            broker->run([](Broker &) {});
            QVERIFY(events().empty());
            readNext(*client);
            Events told;
            QTRY_VERIFY(!told.empty() || (told = events(), !told.empty()));
            QCOMPARE(told, Events{"read"});
        }
        gone.reset();
        broker->run([](Broker &) {});
        QCOMPARE(events(), Events{"closed"});
        // Nothing is unread: that is told as well, and from process() only.
        broker->run([&](Broker &b) {
            b.notifyWhenRead(service->peers.begin()->first);
            QVERIFY(service->events.empty());
        });
        Events told;
        QTRY_VERIFY(!told.empty() || (told = events(), !told.empty()));
        QCOMPARE(told, Events{"read"});
    }

    void publisherOnly_isNeverSentAnything()
    {
        broker->run([&](Broker &b) {
            b.serve(Control, service.get());
            service->onOpened = [&](ClientId id) {
                b.send(id, "a::1");
                QVERIFY(!b.isBehind(id));
            };
        });
        auto client = broker->open(Control, Publish);
        broker->run([&](Broker &b) { b.sendAll(Control, "a::2"); });
        char byte;
        QCOMPARE(recv(client->fd(), &byte, 1, MSG_DONTWAIT), -1);
        std::string text;
        QVERIFY(!client->read(text, false));
        QCOMPARE(client->error(), EBADF);
        QVERIFY(client->isOpen());
    }

    void descriptor_isWatched_untilItIsUnwatched()
    {
        int ends[2];
        QVERIFY(pipe2(ends, O_CLOEXEC) == 0);
        const Fd reading(ends[0]);
        const Fd writing(ends[1]);
        QVERIFY(write(writing.get(), "x", 1) == 1);
        Broker own;
        int calls = 0;
        own.watch(reading.get(), [&calls] { ++calls; });
        own.process();
        QCOMPARE(calls, 1);
        own.unwatch(reading.get());
        pollfd ready{own.fd(), POLLIN, 0};
        QCOMPARE(poll(&ready, 1, 0), 0);
        own.process();
        QCOMPARE(calls, 1);
    }

private:
    std::unique_ptr<RecordingService> service;
    std::unique_ptr<BrokerThread> broker;
};

QTEST_GUILESS_MAIN(TestServices)
#include "tst_services.moc"
