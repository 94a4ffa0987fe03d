#pragma once

#include <QtCore/QSocketNotifier>

#include <pps/Fd.h>
#include <sys/types.h>

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace voro::renderer {

/** A child process that was given sockets. */
class Process {
public:
    struct Socket {
        int descriptor;
        /** The descriptor that it is in the process. */
        int number;
    };

    /** Starts a program with the sockets, which stay the caller's, and with options. It gets no X server. */
    Process(const std::string &program, std::span<const Socket> sockets, const std::vector<std::string> &options);
    /** Takes over one that was started as a child of this process. */
    Process(pid_t id, pps::Fd descriptor);
    /** Kills it when it still runs, and waits for its end. */
    ~Process();
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;

    bool isRunning() const { return m_id > 0; }
    pid_t id() const { return m_id; }
    /** Calls back from the event loop when it ended; not when it never started. */
    void onEnd(std::function<void()> callback);
    void kill();
    /** Detaches from the process: it is not killed with this object, and its end is not reported. */
    void detach();
    /** Whether it was ended by a signal that is not kill()'s. */
    bool hasCrashed() const;
    /** How it ended, in words. */
    std::string ending() const;

private:
    void watch(pps::Fd descriptor);
    void reap();
    void close();

    int m_status = 0;
    pid_t m_id = -1;
    pps::Fd m_descriptor;
    std::unique_ptr<QSocketNotifier> m_ended;
    std::function<void()> m_callback;
};

} // namespace voro::renderer
