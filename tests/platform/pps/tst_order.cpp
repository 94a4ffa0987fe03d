#include "BrokerThread.h"
#include "ChildProcess.h"
#include "RawClient.h"

#include <QtTest/QtTest>

#include <Rows.h>

using namespace voro::pps;

namespace {

constexpr auto Control = "/pps/f/control";

/** Records the messages of all clients. */
struct Recorder : Service {
    std::vector<std::string> messages;
    void clientOpened(ClientId, const Peer &) override { messages.push_back("+"); }
    void clientMessage(ClientId, std::string_view text) override { messages.emplace_back(text); }
    void clientClosed(ClientId) override { messages.push_back("-"); }
};

QByteArray joined(const std::vector<std::string> &messages)
{
    QByteArray text;
    for (const std::string &message : messages) {
        text += QByteArray::fromStdString(message) + ' ';
    }
    return text;
}

std::string numbered(int i)
{
    return "n:n:" + std::to_string(i);
}

} // namespace

class TestOrder : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        recorder = std::make_unique<Recorder>();
        broker = std::make_unique<BrokerThread>();
        broker->run([this](Broker &b) { b.serve(Control, recorder.get()); });
    }
    void cleanup() { broker.reset(); }

    void process_thatIsKilled_hasWrittenAllBeforeItsObjectsClose()
    {
        constexpr int Sockets = 10;
        constexpr int Messages = 100;
        for (int round = 0; round < 10; ++round) {
            std::vector<int> sockets;
            for (int i = 0; i < Sockets; ++i) {
                sockets.push_back(broker->connect());
            }
            ChildProcess child([&](ChildProcess &self) {
                std::vector<std::unique_ptr<Connection>> connections;
                for (const int socket : sockets) {
                    connections.push_back(std::make_unique<Connection>());
                    if (!connections.back()->openOn(socket, Control, PublishSubscribe)) {
                        return 1;
                    }
                }
                self.say();
                self.hear();
                for (int i = 0; i < Messages; ++i) {
                    connections[static_cast<size_t>(i / 3) % connections.size()]->write(numbered(i));
                }
                self.say();
                self.sleep();
            });
            for (const int socket : sockets) {
                close(socket);
            }
            QVERIFY(child.hear());
            // Killed while its messages wait in the sockets, which the broker then reads in an order of its own.
            broker->run([&](Broker &) {
                recorder->messages.clear();
                child.say();
                QVERIFY(child.hear());
                child.kill();
            });
            std::vector<std::string> messages;
            do {
                broker->run([&](Broker &) { messages = recorder->messages; });
            } while (std::count(messages.begin(), messages.end(), "-") < Sockets);
            std::vector<std::string> expected;
            for (int i = 0; i < Messages; ++i) {
                expected.push_back(numbered(i));
            }
            expected.insert(expected.end(), Sockets, "-");
            QCOMPARE(joined(messages), joined(expected));
        }
    }

    void numbers_thatNeverCome_areSkipped_data()
    {
        const Rows<std::vector<uint64_t>> row("numbers");
        row("a gap", std::vector<uint64_t>{2, 5, 6});
        row("backwards", std::vector<uint64_t>{5, 4, 3});
        row("the largest", std::vector<uint64_t>{UINT64_MAX, 0, UINT64_MAX, 1});
    }

    void numbers_thatNeverCome_areSkipped()
    {
        QFETCH(std::vector<uint64_t>, numbers);
        RawClient client(broker->connect());
        QVERIFY(client.send(request(Request::Open, Control, 42, 1)));
        QCOMPARE(client.receive(), static_cast<int>(Reply::Opened));
        std::vector<std::string> expected;
        for (size_t i = 0; i < numbers.size(); ++i) {
            expected.push_back(numbered(static_cast<int>(i)));
            QVERIFY(client.send(request(Request::Write, expected.back(), 42, numbers[i])));
        }
        QVERIFY(client.send(request(Request::Close, "", 42, 100)));
        client.waitForEnd();
        QVERIFY(this->numbers() == expected);
    }

    void process_thatIsAlwaysBehind_holdsNobodyUp()
    {
        constexpr int Messages = 200;
        RawClient first(broker->connect());
        RawClient second(broker->connect());
        RawClient other(broker->connect());
        for (RawClient *client : {&first, &second, &other}) {
            QVERIFY(client->send(request(Request::Open, Control, client == &other ? 43 : 42, 1)));
            QCOMPARE(client->receive(), static_cast<int>(Reply::Opened));
        }
        broker->run([&](Broker &) {
            for (int i = 0; i < Messages; ++i) {
                const auto number = static_cast<uint64_t>(2 * i + 10);
                QVERIFY((i % 2 ? second : first).send(request(Request::Write, numbered(i), 42, number)));
            }
            QVERIFY(other.send(request(Request::Write, "other::", 43, 2)));
        });
        QTRY_VERIFY(numbers().size() > Messages);
        auto messages = numbers();
        const auto found = std::find(messages.begin(), messages.end(), "other::");
        QVERIFY(found - messages.begin() < Messages / 2);
        messages.erase(found);
        for (int i = 0; i < Messages; ++i) {
            QCOMPARE(messages[static_cast<size_t>(i)], numbered(i));
        }
    }

private:
    std::vector<std::string> numbers()
    {
        std::vector<std::string> result;
        broker->run([&](Broker &) { result = recorder->messages; });
        std::erase_if(result, [](const std::string &message) { return message == "+" || message == "-"; });
        return result;
    }

    std::unique_ptr<Recorder> recorder;
    std::unique_ptr<BrokerThread> broker;
};

QTEST_GUILESS_MAIN(TestOrder)
#include "tst_order.moc"
