#include "Socket.h"

#include <QtCore/QVersionNumber>

#include <fcntl.h>
#include <pps/DaemonRecord.h>
#include <pps/FileLock.h>
#include <pps/Runtime.h>
#include <pps/Wire.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace voro {

namespace {

/** The first descriptor that a service manager passes on. */
constexpr int FirstPassed = 3;

/** How long, in milliseconds, a process that needs this daemon waits for another daemon to end. */
constexpr int ShortWait = 1'000;
/** How long another daemon may hold the lock without answering clients. */
constexpr std::chrono::seconds LongestWait{10};

bool isOlder(const pps::DaemonRecord &daemon)
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
    // Workers must not take it for theirs.
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

// The daemon that holds the lock answers clients, is about to, or is about to end.
Socket::Outcome Socket::lock(const std::string &folder, bool isPatient, std::string &problem)
{
    const std::string path = folder + pps::LockName;
    m_lock.reset(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!m_lock.isValid()) {
        problem = because(path);
        return Outcome::Failed;
    }
    bool isAsked = false;
    const auto whileLocked = [&] {
        const auto running = pps::runningDaemon(folder);
        if (running && isOlder(*running) && !isAsked) {
            isAsked = true;
            askToEnd(*running, pps::Ending::WhenIdle);
            if (isPatient) {
                std::fprintf(stderr, "vorod: waits for version %s to have no player\n", running->version.c_str());
            }
            waitForEnd(*running, isPatient ? -1 : ShortWait);
            return pps::WhileLocked::RetryAnew;
        }
        // With a socket of the service manager, connecting would reach ourselves.
        if (!m_listener.isValid() && pps::connectTo(folder).isValid()) {
            return pps::WhileLocked::GiveUp;
        }
        if (running && running->process > 0) {
            waitForEnd(*running, ShortWait);
        }
        return pps::WhileLocked::Retry;
    };
    switch (const int error = pps::lockFile(m_lock.get(), LongestWait, whileLocked)) {
    case 0:
        break;
    case ECANCELED:
        problem = "already running in " + folder;
        return Outcome::AlreadyRunning;
    case ETIMEDOUT:
        problem = path + ": held by a daemon that does not answer";
        return Outcome::Failed;
    default:
        problem = path + ": " + std::strerror(error);
        return Outcome::Failed;
    }
    // Until this daemon is ready, the file must not name its predecessor.
    if (ftruncate(m_lock.get(), 0) != 0) {
        problem = because(path);
        return Outcome::Failed;
    }
    return Outcome::Open;
}

void Socket::announce()
{
    const std::string text = pps::DaemonRecord{getpid(), VORO_VERSION, pps::WireVersion}.toText();
    if (pwrite(m_lock.get(), text.data(), text.size(), 0) < 0) {
        std::perror("vorod: cannot announce that it is ready");
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
