#pragma once

#include "Session.h"

#include <QtCore/QSocketNotifier>

#include <sys/types.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>

namespace voro::renderer {

/** A child process that was given sockets. */
class Process {
public:
    struct Socket {
        int descriptor;
        /** The descriptor that it is in the process. */
        int number;
    };

    /** Starts a program with the sockets, which stay the caller's, in a session. */
    Process(const std::string &program, std::initializer_list<Socket> sockets, const Session &session);
    /** Kills it when it still runs, and waits for its end. */
    ~Process();
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;

    bool isRunning() const { return m_id > 0; }
    /** Calls back from the event loop when it ended; not when it never started. */
    void onEnd(std::function<void()> callback);
    void kill();
    /** Leaves it alone: it ends by itself, and nobody hears of it. */
    void letGo();
    /** How it ended, in words. */
    std::string ending() const;

private:
    void reap();
    void close();

    int m_status = 0;
    pid_t m_id = -1;
    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_ended;
    std::function<void()> m_callback;
};

} // namespace voro::renderer
