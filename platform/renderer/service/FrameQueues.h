#pragma once

#include <QtCore/QSocketNotifier>

#include <pps/Acceptor.h>
#include <pps/broker/Accounts.h>
#include <pps/Fd.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace voro::renderer {

/**
 * Connects items of applications, which send the name of their frame queue, with the workers whose output has that
 * name. Each gets one end of a pair of sockets, in whatever order they come; the daemon takes no further part.
 */
class FrameQueues {
public:
    /** Hands a worker its end. */
    using Give = std::function<void(int socket)>;

    explicit FrameQueues(pps::Accounts &accounts) : m_accounts(accounts) {}
    ~FrameQueues();
    FrameQueues(const FrameQueues &) = delete;
    FrameQueues &operator=(const FrameQueues &) = delete;

    /**
     * Makes the socket that items connect to, in the daemon's runtime folder. False, and errno tells why, when it
     * cannot; then pictures are shown in windows only.
     */
    bool listen(const std::string &folder);

    /** Makes a worker the producer for that name, in place of a former one, which gets no more viewers. */
    void add(const std::string &name, const void *worker, Give give);
    void remove(const std::string &name, const void *worker);

private:
    struct Viewer {
        pps::Accounts::Charge charge;
        pps::Fd socket;
        std::unique_ptr<QSocketNotifier> ready;
        /** Empty until the item has sent it. */
        std::string name;
    };
    struct Producer {
        const void *worker;
        Give give;
    };

    void accept();
    void read(int viewer);
    void close(int viewer);
    void connectQueue(const std::string &name);

    pps::Accounts &m_accounts;
    std::string m_path;
    pps::Fd m_listener;
    pps::Acceptor m_acceptor;
    std::unique_ptr<QSocketNotifier> m_pending;
    /** By their sockets. */
    std::map<int, Viewer> m_viewers;
    std::map<std::string, Producer> m_producers;
};

} // namespace voro::renderer
