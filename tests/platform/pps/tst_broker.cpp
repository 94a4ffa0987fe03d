#include "BrokerThread.h"

#include <QtTest/QtTest>

#include <pps/Fd.h>
#include <pps/Text.h>
#include <Rows.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <set>
#include <vector>

using namespace voro::pps;

namespace {

constexpr auto Object = "/pps/f/o";
constexpr auto All = "/pps/f/.all";

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

/** Plain objects: what their readers get of what was published. */
class TestBroker : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() { broker = std::make_unique<BrokerThread>(); }
    void cleanup() { broker.reset(); }

    void reading_costsNothing_whileTheReaderSleeps()
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

    void filter_letsThePassingAttributesThrough()
    {
        std::string path = std::string(Object) + "?f=b";
        for (int i = 0; i < 40; ++i) {
            path += ",f=a";
        }
        auto reader = broker->open(path, Subscribe);
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
        // What was pushed and is gone again is never read.
        for (const char *removal : {"-e", "*@o\na::1", "-@o"}) {
            QVERIFY(broker->publish(Object, "e::5"));
            QVERIFY(broker->publish(Object, removal));
            QVERIFY(!delta->isReadable());
            COMPARE_TEXT(readNow(*delta), "");
        }
    }

    void all_showsChangesAndDeletions()
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

    void all_changesDuringALongRead_areNotMissed()
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

    void fence_isReadBeforeNewerContent_onlyOfItsObject()
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

    void fence_isNothingToAFirstReader()
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

    void fences_comeOneByOne()
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

    void object_isBounded()
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

    void publish_refuses_data()
    {
        const Rows<QByteArray, QByteArray> row("path", "text");
        row("no path", "o", "a::1");
        row("a folder", All, "a::1");
        row("a service object", "/pps/f/control", "a::1");
        row("no text", Object, {});
        row("another object's name", Object, "@p\na::1");
        row("two object lines", Object, "@o\n@o\na::1");
        row("a late object line", Object, "a::1\n@o");
        row("a bad line", Object, "a::1\nb:n:x");
        row("more after a deletion", Object, "-@o\na::1");
    }

    void publish_refuses()
    {
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, text);
        QVERIFY(!broker->publish(path.toStdString(), text.toStdString()));
        broker->run([](Broker &b) { QVERIFY(b.content(Object).empty()); });
    }

    void listing_showsObjectsServicesAndFolders()
    {
        QVERIFY(broker->publish("/pps/a/o", "a::1"));
        QVERIFY(broker->publish("/pps/a/f/o", "a::1"));
        QVERIFY(broker->publish("/pps/ab/o", "a::1"));
        const auto server = broker->open("/pps/a/control?server", PublishSubscribe);
        COMPARE_TEXT(readNow(*broker->open("/pps/a/.list", Subscribe)),
                     "@.list\ncontrol::service\nf::folder\no::object\n");
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
            for (const Message::Attribute &entry : message.attributes()) {
                names.insert(entry.name);
            }
        }
        QCOMPARE(names.size(), static_cast<size_t>(6000));
    }

    void manyAttributes_keepTheirOrder_howeverTheyAreWritten()
    {
        constexpr int Attributes = 100;
        const auto line = [](int i, const char *value) { return "a" + std::to_string(i) + "::" + value + "\n"; };
        std::string first;
        std::string second;
        std::string expected = "@o\n";
        for (int i = 0; i < Attributes; ++i) {
            first += line(i, "old");
            second += line(Attributes - 1 - i, "new");
            expected += i % 2 ? line(i, "new") : "";
        }
        for (int i = 0; i < Attributes; i += 2) {
            second += "-a" + std::to_string(i) + "\n";
        }
        for (const int back : {4, 2}) {
            second += line(back, "again") + "-a" + std::to_string(back) + "\n" + line(back, "back");
            expected += line(back, "back");
        }
        QVERIFY(broker->publish(Object, first));
        QVERIFY(broker->publish(Object, second));
        COMPARE_TEXT(readNow(*broker->open(Object, Subscribe)), QByteArray::fromStdString(expected));
    }

    void connections_areAccepted_inParts()
    {
        std::vector<Fd> clients;
        std::vector<size_t> counts;
        broker->run([&](Broker &b) {
            const int listener = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
            sockaddr_un address{};
            address.sun_family = AF_UNIX;
            // The kernel chooses a name.
            QCOMPARE(::bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof(sa_family_t)), 0);
            QCOMPARE(::listen(listener, SOMAXCONN), 0);
            socklen_t size = sizeof address;
            getsockname(listener, reinterpret_cast<sockaddr *>(&address), &size);
            for (int i = 0; i < 100; ++i) {
                clients.emplace_back(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
                QCOMPARE(::connect(clients.back().get(), reinterpret_cast<const sockaddr *>(&address), size), 0);
            }
            b.onClientCountChanged([&] { counts.push_back(b.clientCount()); });
            b.listen(listener);
        });
        size_t last = 0;
        do {
            broker->run([&](Broker &) { last = counts.empty() ? 0 : counts.back(); });
        } while (last < clients.size());
        broker->run([](Broker &b) { b.onClientCountChanged({}); });
        QVERIFY(counts == (std::vector<size_t>{64, 100}));
    }

private:
    std::unique_ptr<BrokerThread> broker;
};

QTEST_GUILESS_MAIN(TestBroker)
#include "tst_broker.moc"
