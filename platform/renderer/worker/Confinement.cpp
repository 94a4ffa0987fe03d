#include "Confinement.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

namespace voro::renderer {

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// The sanitizer needs more than any medium.
constexpr rlim_t MostMemory = RLIM_INFINITY;
#else
constexpr rlim_t MostMemory = rlim_t(2) << 30;
#endif

constexpr uint64_t Writing = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR
                             | LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR
                             | LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SOCK
                             | LANDLOCK_ACCESS_FS_MAKE_FIFO | LANDLOCK_ACCESS_FS_MAKE_BLOCK
                             | LANDLOCK_ACCESS_FS_MAKE_SYM;

/** Devices are how sound, pictures and shared memory are reached. */
constexpr char Devices[] = "/dev";

bool isConfigured(const char *variable)
{
    const char *value = std::getenv(variable);
    return value && *value;
}

void limit(__rlimit_resource_t resource, rlim_t most)
{
    const rlimit both{most, most};
    setrlimit(resource, &both);
}

} // namespace

void restrictProcess()
{
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // A file that has reached its limit fails the recording and nothing more.
    std::signal(SIGXFSZ, SIG_IGN);
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_DATA, MostMemory);
}

void forbidWriting()
{
    for (const char *variable : {"VORO_AUDIO_SINK", "VORO_AUDIO_SOURCE", "VORO_VIDEO_SINK"}) {
        if (isConfigured(variable)) {
            return;
        }
    }
    landlock_ruleset_attr rules{};
    rules.handled_access_fs = Writing;
    const auto ruleset = static_cast<int>(syscall(SYS_landlock_create_ruleset, &rules, sizeof rules, 0));
    if (ruleset < 0) {
        // An older kernel: the worker runs with its user's rights.
        return;
    }
    landlock_path_beneath_attr devices{};
    devices.allowed_access =
        LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_REMOVE_FILE;
    devices.parent_fd = open(Devices, O_PATH | O_CLOEXEC);
    const bool isConfined = syscall(SYS_landlock_add_rule, ruleset, LANDLOCK_RULE_PATH_BENEATH, &devices, 0) == 0
                            && syscall(SYS_landlock_restrict_self, ruleset, 0) == 0;
    if (!isConfined) {
        std::perror("voro-renderer: landlock");
    }
    close(devices.parent_fd);
    close(ruleset);
}

} // namespace voro::renderer
