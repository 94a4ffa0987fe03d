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

    /** Takes the socket that the service manager passed on to this process, if it did. */
    Socket();
    ~Socket();
    Socket(const Socket &) = delete;
    Socket &operator=(const Socket &) = delete;

    /** Takes the place, and makes a socket unless one was passed on. `problem` says what failed. */
    Outcome open(const std::string &folder, bool isPatient, std::string &problem);
    /** Announces to all clients that wait for a daemon that this one is ready. */
    void announce();
    /** Gives the listening socket away. */
    int release() { return m_listener.release(); }

private:
    Outcome lock(const std::string &folder, bool isPatient, std::string &problem);
    bool listen(const std::string &path, std::string &problem);

    pps::Fd m_listener;
    pps::Fd m_lock;
    std::string m_path;
};

} // namespace voro
