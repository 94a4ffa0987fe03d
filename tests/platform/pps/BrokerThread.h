#pragma once

#include <pps/broker/Broker.h>
#include <pps/Connection.h>

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace voro::pps {

/** A broker that runs in a thread of its own, as in the daemon, while the test is its client. */
class BrokerThread {
public:
    BrokerThread();
    ~BrokerThread();

    /** Runs a function in the broker's thread and waits for it. */
    void run(const std::function<void(Broker &)> &function);
    /** Publishes from the broker's own process. */
    bool publish(std::string_view path, std::string_view text, Broker::Fence fence = Broker::Fence::None);

    /** A connected socket of a new client, which may have been given one object. */
    int connect(std::string_view onlyPath = {});
    /** An open object of a new client; ends the test program when it does not open. */
    std::unique_ptr<Connection> open(std::string_view path, unsigned mode);

private:
    void loop();

    Broker m_broker;
    std::mutex m_mutex;
    std::vector<std::function<void()>> m_functions;
    bool m_isEnding = false;
    Fd m_wake;
    std::thread m_thread;
};

/** What a read that does not wait gives; "FAILED" for a failing one. */
std::string readNow(Connection &connection);
/** What a read that waits gives. */
std::string readNext(Connection &connection);

} // namespace voro::pps

/** Compares a text of the broker's with what is expected. */
#define COMPARE_TEXT(actual, expected) QCOMPARE(QByteArray::fromStdString(actual), QByteArray(expected))
