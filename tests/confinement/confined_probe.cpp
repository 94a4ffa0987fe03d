// Confines itself as a worker does and tries what an attacker would.

#include "Attempts.h"

#include <fcntl.h>
#include <renderer/worker/process/Confinement.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <span>
#include <string_view>

int main(int argc, char **argv)
{
    if (argc < 4) {
        return 2;
    }
    const auto isGiven = [options = std::span(argv + 4, argv + argc)](std::string_view option) {
        return std::ranges::find(options, option) != options.end();
    };
    constexpr id_t Nobody = 65534;
    if (isGiven("nobody") && (setgid(Nobody) != 0 || setuid(Nobody) != 0 || prctl(PR_SET_DUMPABLE, 1) != 0)) {
        return 3;
    }
    const Surroundings surroundings{argv[1], static_cast<uint16_t>(std::atoi(argv[2])), std::atoi(argv[3]),
                                    STDOUT_FILENO};
    open((surroundings.folder + "/file").c_str(), O_RDONLY | O_CLOEXEC);
    voro::renderer::restrictProcess();
    voro::renderer::Confinement confinement(
        {.namespaces = !isGiven("-N"), .landlock = !isGiven("-L"), .systemCalls = !isGiven("-S")});
    const voro::renderer::Reach reach{.network = isGiven("network"), .windows = isGiven("windows")};
    confinement.begin();
    if (!reach.network) {
        confinement.leaveNetwork();
    }
    confinement.complete(reach);
    tryAll(surroundings);
    // As workers end: a leak check would have to trace this process.
    _exit(0);
}
