#include "Socket.h"

#include <QtCore/QVersionNumber>

#include <fcntl.h>
#include <pps/Announcement.h>
#include <pps/Runtime.h>
#include <pps/Wire.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace voro {

namespace {

using namespace std::chrono_literals;

/** The first descriptor that a service manager passes on. */
constexpr int FirstPassed = 3;

/** How long, in milliseconds, whoever waits for this daemon waits for another one's end. */
constexpr int ShortWait = 1'000;

bool isOlder(const pps::Announcement &daemon)
{
    return daemon.process > 0
           && QVersionNumber::fromString(QString::fromStdString(daemon.version))
                  < QVersionNumber::fromString(QLatin1String(VORO_VERSION));
}

std::string because(const std::string &what)
{
    return what + ": " + std::strerror(errno);
}

bool hasOption(int socket, int option, int wanted)
{
    int value = 0;
    socklen_t size = sizeof value;
    return getsockopt(socket, SOL_SOCKET, option, &value, &size) == 0 && value == wanted;
}

pps::Fd passedSocket()
{
    const char *process = std::getenv("LISTEN_PID");
    const char *count = std::getenv("LISTEN_FDS");
    const bool isPassed = process && count && std::atol(process) == getpid() && std::atoi(count) >= 1
                          && hasOption(FirstPassed, SO_TYPE, SOCK_SEQPACKET)
                          && hasOption(FirstPassed, SO_ACCEPTCONN, 1);
    // The workers are not meant.
    unsetenv("LISTEN_PID");
    unsetenv("LISTEN_FDS");
    if (isPassed) {
        fcntl(FirstPassed, F_SETFD, FD_CLOEXEC);
    }
    return pps::Fd(isPassed ? FirstPassed : -1);
}

} // namespace

Socket::Socket() : m_listener(passedSocket()) {}

Socket::~Socket()
{
    if (!m_path.empty()) {
        unlink(m_path.c_str());
    }
}

Socket::Outcome Socket::open(const std::string &folder, bool isPatient, std::string &problem)
{
    const bool isPassed = m_listener.isValid();
    const Outcome outcome = lock(folder, isPatient, problem);
    if (outcome != Outcome::Open || isPassed) {
        return outcome;
    }
    return listen(pps::socketPath(folder), problem) ? Outcome::Open : Outcome::Failed;
}

// Whoever holds the lock answers clients, is about to, or is about to end.
Socket::Outcome Socket::lock(const std::string &folder, bool isPatient, std::string &problem)
{
    const std::string path = folder + pps::LockName;
    m_lock.reset(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!m_lock.isValid()) {
        problem = because(path);
        return Outcome::Failed;
    }
    bool isAsked = false;
    auto deadline = std::chrono::steady_clock::now() + 10s;
    while (flock(m_lock.get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            problem = because(path);
            return Outcome::Failed;
        }
        if (const auto running = pps::runningDaemon(folder); running && isOlder(*running) && !isAsked) {
            isAsked = true;
            askToEnd(*running, pps::Ending::WhenIdle);
            if (isPatient) {
                std::fprintf(stderr, "vorod: waits for version %s to have no player\n", running->version.c_str());
            }
            waitForEnd(*running, isPatient ? -1 : ShortWait);
            deadline = std::chrono::steady_clock::now() + 10s;
            continue;
        }
        // With a socket of the service manager, connecting would reach ourselves.
        if (!m_listener.isValid() && pps::connectTo(folder).isValid()) {
            problem = "already running in " + folder;
            return Outcome::AlreadyRunning;
        }
        if (std::chrono::steady_clock::now() > deadline) {
            problem = path + ": held by a daemon that does not answer";
            return Outcome::Failed;
        }
        // The kernel tells nobody when a lock becomes free.
        std::this_thread::sleep_for(5ms);
    }
    // What it says is of another process.
    if (ftruncate(m_lock.get(), 0) != 0) {
        problem = because(path);
        return Outcome::Failed;
    }
    return Outcome::Open;
}

void Socket::announce()
{
    const std::string text = pps::Announcement{getpid(), VORO_VERSION, pps::WireVersion}.toText();
    if (pwrite(m_lock.get(), text.data(), text.size(), 0) < 0) {
        std::perror("vorod: nobody is told that it is ready");
    }
}

// We hold the lock, so a socket that is there was left behind.
bool Socket::listen(const std::string &path, std::string &problem)
{
    m_listener = pps::listenAt(path);
    if (!m_listener.isValid()) {
        problem = because(path);
        return false;
    }
    m_path = path;
    return true;
}

} // namespace voro
