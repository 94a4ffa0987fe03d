#include "FileLock.h"

#include <sys/file.h>

#include <cerrno>
#include <thread>

namespace voro::pps {

namespace {

/** The kernel does not notify a process that waits for a lock and for something else, so it polls. */
constexpr std::chrono::milliseconds Interval{5};

} // namespace

int lockFile(int file, std::chrono::milliseconds limit, const std::function<WhileLocked()> &whileLocked)
{
    auto deadline = std::chrono::steady_clock::now() + limit;
    while (flock(file, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            return errno;
        }
        const WhileLocked next = whileLocked();
        if (next == WhileLocked::GiveUp) {
            return ECANCELED;
        }
        const auto now = std::chrono::steady_clock::now();
        if (next == WhileLocked::RetryAnew) {
            deadline = now + limit;
        } else if (now > deadline) {
            return ETIMEDOUT;
        } else {
            std::this_thread::sleep_for(Interval);
        }
    }
    return 0;
}

} // namespace voro::pps
