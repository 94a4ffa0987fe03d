#include "DaemonRecord.h"

#include "Fd.h"
#include "Runtime.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/syscall.h>

#include <cerrno>
#include <csignal>
#include <sstream>

namespace voro::pps {

namespace {

// Whoever can write to the file must not write to terminals by it.
bool isVersion(const std::string &text)
{
    constexpr size_t MaximumVersion = 64;
    return text.size() <= MaximumVersion
           && text.find_first_not_of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz.+~-")
                  == std::string::npos;
}

} // namespace

std::string DaemonRecord::toText() const
{
    return std::to_string(process) + '\n' + version + '\n' + std::to_string(protocol) + '\n';
}

std::optional<DaemonRecord> runningDaemon(const std::string &folder)
{
    const Fd file(open((folder + LockName).c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!file.isValid() || flock(file.get(), LOCK_SH | LOCK_NB) == 0 || errno != EWOULDBLOCK) {
        return std::nullopt;
    }
    char buffer[256];
    const ssize_t size = read(file.get(), buffer, sizeof buffer);
    std::istringstream text(std::string(buffer, static_cast<size_t>(size > 0 ? size : 0)));
    DaemonRecord daemon;
    text >> daemon.process >> daemon.version >> daemon.protocol;
    return isVersion(daemon.version) ? daemon : DaemonRecord{.version = "unknown"};
}

void askToEnd(const DaemonRecord &daemon, Ending ending)
{
    if (daemon.process > 0) {
        kill(daemon.process, ending == Ending::Now ? SIGTERM : SIGUSR1);
    }
}

bool waitForEnd(const DaemonRecord &daemon, int milliseconds)
{
    const Fd handle(static_cast<int>(syscall(SYS_pidfd_open, daemon.process, 0)));
    if (!handle.isValid()) {
        return errno == ESRCH;
    }
    pollfd end{handle.get(), POLLIN, 0};
    int ready;
    do {
        ready = poll(&end, 1, milliseconds);
    } while (ready < 0 && errno == EINTR);
    return ready > 0;
}

} // namespace voro::pps
