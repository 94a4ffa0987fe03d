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
 * Brings those who show pictures together with those who have them: the items of applications, which connect and say
 * the name of their frame queue, and the workers whose output has that name. Each gets one end of a socket, whoever
 * comes first; from then on the daemon has no part in it.
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

    /** Somebody has pictures for that name from now on. Who had them before gets no more viewers. */
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
    void bring(const std::string &name);

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
