#pragma once

#include <pps/Fd.h>

#include <string>

namespace voro {

/**
 * The daemon's place in a runtime folder: the lock that makes it the only one, held for life, and the listening
 * socket, which it removes at its end when it made it.
 */
class Socket {
public:
    enum class Outcome { Open, AlreadyRunning, Failed };

    Socket() = default;
    ~Socket();
    Socket(const Socket &) = delete;
    Socket &operator=(const Socket &) = delete;

    /** Takes the socket that the service manager passed on, or makes one. `problem` says what failed. */
    Outcome open(const std::string &folder, std::string &problem);
    /** Gives the listening socket away. */
    int release() { return m_listener.release(); }

private:
    Outcome lock(const std::string &folder, std::string &problem);
    bool listen(const std::string &path, std::string &problem);

    pps::Fd m_lock;
    pps::Fd m_listener;
    std::string m_path;
};

} // namespace voro
