#include "BrokerThread.h"
#include "RawClient.h"

#include <QtTest/QtTest>

#include <pps/Text.h>
#include <Rows.h>

#include <set>

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

std::string object(int number)
{
    return "/pps/f/o" + std::to_string(number);
}

/** The names of the objects in a text, and how often each is there. */
std::multiset<std::string> objectNames(const std::string &text)
{
    std::multiset<std::string> names;
    LineReader reader(text);
    Line line;
    while (reader.next(line)) {
        if (line.kind == Line::Kind::Object) {
            names.insert((line.mark == '-' ? "-" : "") + std::string(line.name));
        }
    }
    return names;
}

} // namespace

#define COMPARE_TEXT(actual, expected) QCOMPARE(QByteArray::fromStdString(actual), QByteArray(expected))

class TestBroker : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        service = std::make_unique<RecordingService>();
        broker = std::make_unique<BrokerThread>();
    }
    void cleanup() { broker.reset(); }

    void read_givesThePresent_afterManyPublications();
    void reading_costsNothing_whileTheReaderSleeps();
    void filter_letsThePassingAttributesThrough();
    void all_showsChangesAndDeletions();
    void all_comesInTextsOfWholeObjects();
    void all_changesDuringALongRead_areNotMissed();
    void fence_isReadBeforeNewerContent_onlyOfItsObject();
    void fence_isNothingToAFirstReader();
    void fences_comeOneByOne();
    void object_isBounded();
    void publish_refuses_data();
    void publish_refuses();
    void writing_thatBreaksTheRules_closesOnlyThatClient_data();
    void writing_thatBreaksTheRules_closesOnlyThatClient();
    void write_refuses_data();
    void write_refuses();
    void open_refuses_data();
    void open_refuses();
    void service_isToldOfItsClients();
    void service_mayCallBackAtAnyTime();
    void service_thatEnds_isReadToItsEnd();
    void remoteServer_thatEnds_closesItsClients();
    void client_thatDoesNotRead_isDisconnectedAtOneMebibyte();
    void service_isTold_onceTheClientHasReadEverything();
    void publisherOnly_isNeverSentAnything();
    void listing_showsObjectsServicesAndFolders();

private:
    std::unique_ptr<RecordingService> service;
    std::unique_ptr<BrokerThread> broker;
};

void TestBroker::read_givesThePresent_afterManyPublications()
{
    auto reader = broker->open(Object, Subscribe);
    auto other = broker->open(All, Subscribe);
    auto writer = broker->open(Object, Publish);
    for (int i = 1; i <= 10000; ++i) {
        QVERIFY(writer->write("a:n:" + std::to_string(i)));
    }
    // Opening comes after the writing, so that what was written is there without waiting.
    broker->open(Object, Subscribe);
    COMPARE_TEXT(readNow(*reader), "+@o\na:n:10000\n");
    COMPARE_TEXT(readNow(*reader), "");
    COMPARE_TEXT(readNow(*other), "+@o\na:n:10000\n");
    COMPARE_TEXT(readNow(*other), "");
    QVERIFY(!reader->isReadable());
}

void TestBroker::reading_costsNothing_whileTheReaderSleeps()
{
    auto sleeper = broker->open(All, Subscribe);
    auto writer = broker->open(Object, Publish);
    const std::string text(32 * 1024, 'x');
    QVERIFY(writer->write("a::" + text));
    for (int i = 0; i < 1000; ++i) {
        QVERIFY(writer->write("b:n:" + std::to_string(i)));
        QVERIFY(writer->write("a::" + text));
    }
    writer->close();
    int packets = 0;
    char byte;
    broker->open(Object, Subscribe);
    while (recv(sleeper->fd(), &byte, 1, MSG_DONTWAIT) > 0) {
        ++packets;
    }
    QVERIFY2(packets <= 2, std::to_string(packets).c_str());
}

void TestBroker::filter_letsThePassingAttributesThrough()
{
    auto reader = broker->open(std::string(Object) + "?f=a,f=b", Subscribe);
    QVERIFY(broker->publish(Object, "c::1"));
    QVERIFY(!reader->isReadable());
    QVERIFY(broker->publish(Object, "a::1\nc::2"));
    QVERIFY(broker->publish(Object, "b::1"));
    QVERIFY(broker->publish(Object, "-a"));
    QVERIFY(reader->isReadable());
    COMPARE_TEXT(readNow(*reader), "+@o\nb::1\n");
    // Set and gone again: the reader was notified, and there is nothing for it.
    QVERIFY(broker->publish(Object, "a::1"));
    COMPARE_TEXT(readNow(*reader), "@o\nb::1\na::1\n");
    QVERIFY(broker->publish(Object, "a::2"));
    QVERIFY(broker->publish(Object, "a::3"));
    COMPARE_TEXT(readNow(*reader), "@o\nb::1\na::3\n");
    auto delta = broker->open(std::string(Object) + "?delta,f=e", Subscribe);
    QVERIFY(broker->publish(Object, "a::4"));
    QVERIFY(!delta->isReadable());
    // With "delta" it chooses changes, not attributes.
    QVERIFY(broker->publish(Object, "e::1\np::1"));
    COMPARE_TEXT(readNow(*delta), "@o\na::4\ne::1\np::1\n");
    QVERIFY(broker->publish(Object, "e::2"));
    QVERIFY(broker->publish(Object, "p::2"));
    COMPARE_TEXT(readNow(*delta), "@o\ne::2\np::2\n");
    QVERIFY(broker->publish(Object, "p::3"));
    QVERIFY(!delta->isReadable());
    QVERIFY(broker->publish(Object, "e::3"));
    COMPARE_TEXT(readNow(*delta), "@o\ne::3\np::3\n");
    QVERIFY(broker->publish(Object, "e::4\np::4"));
    QVERIFY(broker->publish(Object, "-p"));
    COMPARE_TEXT(readNow(*delta), "@o\ne::4\n");
    QVERIFY(broker->publish(Object, "e::5"));
    QVERIFY(broker->publish(Object, "-e"));
    QVERIFY(!delta->isReadable());
    COMPARE_TEXT(readNow(*delta), "");
}

void TestBroker::all_showsChangesAndDeletions()
{
    QVERIFY(broker->publish(object(1), "a::1"));
    QVERIFY(broker->publish(object(2), "a::2\nb::2"));
    QVERIFY(broker->publish("/pps/f/sub/o", "a::1"));
    auto reader = broker->open(All, Subscribe);
    COMPARE_TEXT(readNow(*reader), "@o1\na::1\n@o2\na::2\nb::2\n");
    QVERIFY(broker->publish(object(2), "-b"));
    QVERIFY(broker->publish(object(3), "a::3"));
    COMPARE_TEXT(readNow(*reader), "@o2\na::2\n-b\n+@o3\na::3\n");
    broker->run([](Broker &b) { b.remove("/pps/f"); });
    COMPARE_TEXT(readNow(*reader), "-@o1\n-@o2\n-@o3\n");
    broker->run([](Broker &b) { QVERIFY(b.content("/pps/f/sub/o").empty()); });
    QVERIFY(broker->publish(object(1), "a::9"));
    COMPARE_TEXT(readNow(*reader), "+@o1\na::9\n");
}

void TestBroker::all_comesInTextsOfWholeObjects()
{
    const std::string value(9000, 'x');
    std::multiset<std::string> expected;
    for (int i = 0; i < 40; ++i) {
        QVERIFY(broker->publish(object(i), "a::" + value));
        expected.insert("o" + std::to_string(i));
    }
    auto reader = broker->open(All, Subscribe);
    std::multiset<std::string> names;
    int reads = 0;
    while (reader->hasMore()) {
        const std::string text = readNow(*reader);
        QVERIFY(text.size() <= MaximumMessage);
        names.merge(objectNames(text));
        ++reads;
    }
    QVERIFY(names == expected);
    QCOMPARE(reads, 6);
    COMPARE_TEXT(readNow(*reader), "");
}

void TestBroker::all_changesDuringALongRead_areNotMissed()
{
    const std::string value(30000, 'x');
    for (int i = 0; i < 5; ++i) {
        QVERIFY(broker->publish(object(i), "a::" + value));
    }
    auto reader = broker->open(All, Subscribe);
    QVERIFY(objectNames(readNow(*reader)) == (std::multiset<std::string>{"o0", "o1"}));
    QVERIFY(broker->publish(object(0), "a::again"));
    broker->run([](Broker &b) { b.remove(object(1)); });
    QVERIFY(broker->publish(object(4), "a::short\nb::1"));
    std::string rest;
    while (reader->hasMore()) {
        rest += readNow(*reader);
    }
    QVERIFY(objectNames(rest) == (std::multiset<std::string>{"o0", "-o1", "o2", "o3", "o4"}));
    QVERIFY(rest.find("a::again\n") != std::string::npos);
    QVERIFY(rest.find("a::short\nb::1\n") != std::string::npos);
}

void TestBroker::fence_isReadBeforeNewerContent_onlyOfItsObject()
{
    QVERIFY(broker->publish(object(1), "a::old\nb::1"));
    QVERIFY(broker->publish(object(2), "a::old"));
    auto all = broker->open(All, Subscribe);
    auto one = broker->open(object(1), Subscribe);
    auto delta = broker->open(object(1) + "?delta", Subscribe);
    for (Connection *reader : {all.get(), one.get(), delta.get()}) {
        readNow(*reader);
    }
    QVERIFY(broker->publish(object(1), "a::reset", Broker::Fence::Hold));
    QVERIFY(broker->publish(object(1), "a::new"));
    QVERIFY(broker->publish(object(1), "c::1\n-b"));
    QVERIFY(broker->publish(object(2), "a::new"));
    COMPARE_TEXT(readNow(*all), "@o1\na::reset\nb::1\n@o2\na::new\n");
    QVERIFY(all->isReadable());
    COMPARE_TEXT(readNow(*all), "@o1\na::new\nc::1\n-b\n");
    COMPARE_TEXT(readNow(*all), "");
    COMPARE_TEXT(readNow(*one), "@o1\na::reset\nb::1\n");
    QVERIFY(one->hasMore());
    COMPARE_TEXT(readNow(*one), "@o1\na::new\nc::1\n-b\n");
    QVERIFY(!one->hasMore());
    COMPARE_TEXT(readNow(*delta), "@o1\na::reset\n");
    COMPARE_TEXT(readNow(*delta), "@o1\na::new\nc::1\n-b\n");
}

void TestBroker::fence_isNothingToAFirstReader()
{
    auto watcher = broker->open(All, Subscribe);
    QVERIFY(broker->publish(Object, "a::reset", Broker::Fence::Hold));
    QVERIFY(broker->publish(Object, "a::new"));
    auto reader = broker->open(Object, Subscribe);
    COMPARE_TEXT(readNow(*reader), "@o\na::new\n");
    COMPARE_TEXT(readNow(*reader), "");
    // Read as it was pushed, a fence is seen.
    COMPARE_TEXT(readNow(*watcher), "+@o\na::reset\n");
    COMPARE_TEXT(readNow(*watcher), "@o\na::new\n");
    QVERIFY(broker->publish(Object, "a::2", Broker::Fence::Hold));
    COMPARE_TEXT(readNow(*reader), "@o\na::2\n");
    QVERIFY(broker->publish(Object, "a::3"));
    COMPARE_TEXT(readNow(*reader), "@o\na::3\n");
    COMPARE_TEXT(readNow(*reader), "");
}

void TestBroker::fences_comeOneByOne()
{
    QVERIFY(broker->publish(object(1), "a::0"));
    QVERIFY(broker->publish(object(2), "a::0"));
    auto reader = broker->open(All, Subscribe);
    readNow(*reader);
    QVERIFY(broker->publish(object(1), "a::1", Broker::Fence::Hold));
    QVERIFY(broker->publish(object(1), "a::2", Broker::Fence::Hold));
    QVERIFY(broker->publish(object(2), "a::3", Broker::Fence::Hold));
    QVERIFY(broker->publish(object(1), "a::4"));
    QVERIFY(broker->publish(object(2), "a::5", Broker::Fence::Hold));
    COMPARE_TEXT(readNow(*reader), "@o1\na::1\n@o2\na::3\n");
    COMPARE_TEXT(readNow(*reader), "@o1\na::2\n@o2\na::5\n");
    // Published after the last read, so seen together with the rest.
    QVERIFY(broker->publish(object(2), "a::6"));
    COMPARE_TEXT(readNow(*reader), "@o1\na::4\n@o2\na::6\n");
    QVERIFY(!reader->isReadable());
}

void TestBroker::object_isBounded()
{
    const std::string half = std::string(MaximumMessage / 2, 'x');
    QVERIFY(broker->publish(Object, "a::" + half));
    QVERIFY(!broker->publish(Object, "b::" + half));
    std::string many;
    for (int i = 0; i < 1025; ++i) {
        many += "a" + std::to_string(i) + "::\n";
    }
    QVERIFY(!broker->publish(Object, many));
    broker->run([&](Broker &b) { QVERIFY(b.content(Object) == "@o\na::" + half + "\n"); });
    // The same over a socket costs the publisher its socket, and nobody else anything.
    auto writer = broker->open(Object, PublishSubscribe);
    QVERIFY(writer->write("b::" + half));
    readNext(*writer);
    COMPARE_TEXT(readNext(*writer), "FAILED");
    broker->run([&](Broker &b) { QVERIFY(b.content(Object) == "@o\na::" + half + "\n"); });
}

void TestBroker::publish_refuses_data()
{
    const Rows<QByteArray, QByteArray> row("path", "text");
    row("no path", "o", "a::1");
    row("a folder", All, "a::1");
    row("a service object", Control, "a::1");
    row("no text", Object, {});
    row("another object's name", Object, "@p\na::1");
    row("two object lines", Object, "@o\n@o\na::1");
    row("a late object line", Object, "a::1\n@o");
    row("a bad line", Object, "a::1\nb:n:x");
    row("more after a deletion", Object, "-@o\na::1");
}

void TestBroker::publish_refuses()
{
    QFETCH(QByteArray, path);
    QFETCH(QByteArray, text);
    QVERIFY(!broker->publish(path.toStdString(), text.toStdString()));
    broker->run([](Broker &b) { QVERIFY(b.content(Object).empty()); });
}

void TestBroker::writing_thatBreaksTheRules_closesOnlyThatClient_data()
{
    const Rows<std::vector<std::string>> row("packets");
    using Packets = std::vector<std::string>;
    const std::string open = request(Request::Open, Object, 7, 1);
    row("an empty packet", Packets{""});
    row("half a header", Packets{open.substr(0, 20)});
    row("an unknown type first", Packets{request(99, "", 7, 1)});
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
    row("a pull on a service object", Packets{request(Request::Open, Control, 7, 1), request(Request::Pull, "", 7, 2)});
}

void TestBroker::writing_thatBreaksTheRules_closesOnlyThatClient()
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

void TestBroker::write_refuses_data()
{
    const Rows<std::string, unsigned, std::string, int> row("path", "mode", "text", "error");
    const std::string object = Object;
    row("no PPS text", object, 3U, "hello", EINVAL);
    row("nothing", object, 3U, {}, EINVAL);
    row("NUL", object, 3U, std::string("a::\0", 4), EINVAL);
    row("another object's name", object, 3U, "@p\na::1", EINVAL);
    row("a client's name, by a client", Control, 3U, "@control.1\na::1", EINVAL);
    row("too long", object, 3U, "a::" + std::string(MaximumMessage, 'x'), EMSGSIZE);
    row("opened for reading", object, 2U, "a::1", EBADF);
}

void TestBroker::write_refuses()
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

void TestBroker::open_refuses_data()
{
    const Rows<std::string, unsigned, int> row("path", "mode", "error");
    row("no mode", Object, 0, EINVAL);
    row("an unknown mode", Object, 4, EINVAL);
    row("nothing", "", 2, EINVAL);
    row("not under /pps", "/tmp/o", 2, EINVAL);
    row("no name", "/pps/f/", 2, EINVAL);
    row("the root", "/pps/", 2, EINVAL);
    row("an empty folder name", "/pps//o", 2, EINVAL);
    row("a folder above", "/pps/../o", 2, EINVAL);
    row("a hidden name", "/pps/.x", 2, EINVAL);
    row("an unknown option", "/pps/f/o?fast", 2, EINVAL);
    row("an empty option", "/pps/f/o?delta,,wait", 2, EINVAL);
    row("a filter without a name", "/pps/f/o?f=", 2, EINVAL);
    row("a plain object's server", "/pps/f/o?server", 3, EINVAL);
    row("a server that does not read", "/pps/f/control?server", 1, EINVAL);
    row("a filter on a service object", "/pps/f/control?f=a", 2, EINVAL);
    row("writing a folder", All, 3, EINVAL);
    row("a service object that nobody serves", "/pps/g/control", 3, ENXIO);
    row("a second server", "/pps/f/control?server", 3, EBUSY);
}

void TestBroker::open_refuses()
{
    QFETCH(std::string, path);
    QFETCH(unsigned, mode);
    broker->run([this](Broker &b) { b.serve(Control, service.get()); });
    Connection connection;
    QVERIFY(!connection.openOn(broker->connect(), path, mode));
    QTEST(connection.error(), "error");
    QVERIFY(!connection.isOpen());
}

void TestBroker::service_isToldOfItsClients()
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
        QVERIFY(service->events == (Events{"opened", "message msg::play", "message msg::stop\n", "closed", "opened"}));
        QCOMPARE(service->peers.begin()->second.adopted, name);
        QCOMPARE(service->peers.begin()->second.process, getpid());
    });
}

void TestBroker::service_mayCallBackAtAnyTime()
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

void TestBroker::service_thatEnds_isReadToItsEnd()
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

void TestBroker::remoteServer_thatEnds_closesItsClients()
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

void TestBroker::client_thatDoesNotRead_isDisconnectedAtOneMebibyte()
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

void TestBroker::service_isTold_onceTheClientHasReadEverything()
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

void TestBroker::publisherOnly_isNeverSentAnything()
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

void TestBroker::listing_showsObjectsServicesAndFolders()
{
    QVERIFY(broker->publish("/pps/a/o", "a::1"));
    QVERIFY(broker->publish("/pps/a/f/o", "a::1"));
    QVERIFY(broker->publish("/pps/ab/o", "a::1"));
    broker->run([&](Broker &b) { b.serve("/pps/a/control", service.get()); });
    COMPARE_TEXT(readNow(*broker->open("/pps/a/.list", Subscribe)), "@.list\ncontrol::service\nf::folder\no::object\n");
    auto root = broker->open("/pps/.list", Subscribe);
    COMPARE_TEXT(readNow(*root), "@.list\na::folder\nab::folder\n");
    COMPARE_TEXT(readNow(*root), "");
    COMPARE_TEXT(readNow(*broker->open("/pps/none/.list", Subscribe)), "@.list\n");
    for (int i = 0; i < 6000; ++i) {
        QVERIFY(broker->publish("/pps/many/" + std::to_string(i), "a::1"));
    }
    auto many = broker->open("/pps/many/.list", Subscribe);
    std::set<std::string> names;
    while (many->hasMore()) {
        Message message;
        QVERIFY(message.parse(readNow(*many)));
        for (const Message::Entry &entry : message.entries()) {
            names.insert(entry.name);
        }
    }
    QCOMPARE(names.size(), static_cast<size_t>(6000));
}

QTEST_GUILESS_MAIN(TestBroker)
#include "tst_broker.moc"
