/*
 * Loaded into the daemon and its workers: a worker that gets SIGUSR2 tries what an attacker would who took it over, in
 * its main loop.
 */

#include "Attempts.h"

#include <dlfcn.h>
#include <poll.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace {

volatile std::sig_atomic_t isTakenOver = 0;

[[gnu::constructor]] void listen()
{
    std::signal(SIGUSR2, [](int) { isTakenOver = 1; });
}

} // namespace

extern "C" __attribute__((visibility("default"))) int poll(pollfd *descriptors, nfds_t count, int timeout)
{
    static const auto real = reinterpret_cast<int (*)(pollfd *, nfds_t, int)>(dlsym(RTLD_NEXT, "poll"));
    const char *folder = std::getenv("ATTACKED_FOLDER");
    if (isTakenOver != 0 && getpid() == gettid() && folder) {
        isTakenOver = 0;
        tryAll({folder, static_cast<uint16_t>(std::atoi(std::getenv("ATTACKED_PORT"))),
                std::atoi(std::getenv("ATTACKED_SEGMENT")), STDERR_FILENO});
    }
    return real(descriptors, count, timeout);
}
