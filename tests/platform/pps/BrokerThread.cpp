#include "BrokerThread.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <future>

namespace voro::pps {

BrokerThread::BrokerThread() : m_wake(eventfd(0, EFD_CLOEXEC)), m_thread([this] { loop(); }) {}

BrokerThread::~BrokerThread()
{
    run([this](Broker &) { m_isEnding = true; });
    m_thread.join();
}

void BrokerThread::loop()
{
    while (!m_isEnding) {
        pollfd entries[] = {{m_broker.fd(), POLLIN, 0}, {m_wake.get(), POLLIN, 0}};
        poll(entries, 2, -1);
        m_broker.process();
        if (entries[1].revents) {
            eventfd_t ignored;
            eventfd_read(m_wake.get(), &ignored);
            std::vector<std::function<void()>> functions;
            {
                const std::lock_guard lock(m_mutex);
                functions.swap(m_functions);
            }
            for (const auto &function : functions) {
                function();
            }
        }
    }
}

void BrokerThread::run(const std::function<void(Broker &)> &function)
{
    std::promise<void> done;
    {
        const std::lock_guard lock(m_mutex);
        m_functions.push_back([&] {
            function(m_broker);
            done.set_value();
        });
    }
    eventfd_write(m_wake.get(), 1);
    done.get_future().wait();
}

bool BrokerThread::publish(std::string_view path, std::string_view text, Broker::Fence fence)
{
    bool isGood = false;
    run([&](Broker &broker) { isGood = broker.publish(path, text, fence); });
    return isGood;
}

int BrokerThread::connect(std::string_view onlyPath)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
        std::perror("socketpair");
        std::abort();
    }
    run([&](Broker &broker) { broker.adopt(ends[1], onlyPath); });
    return ends[0];
}

std::unique_ptr<Connection> BrokerThread::open(std::string_view path, unsigned mode)
{
    auto connection = std::make_unique<Connection>();
    if (!connection->openOn(connect(), path, mode)) {
        std::fprintf(stderr, "cannot open %s: %s\n", std::string(path).c_str(), std::strerror(connection->error()));
        std::abort();
    }
    return connection;
}

std::string readNow(Connection &connection)
{
    std::string text;
    return connection.read(text, false) ? text : "FAILED";
}

std::string readNext(Connection &connection)
{
    std::string text;
    return connection.read(text, true) ? text : "FAILED";
}

} // namespace voro::pps
