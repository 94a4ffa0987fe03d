#include "Start.h"

#include "FileLock.h"
#include "Runtime.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

extern char **environ;

namespace voro::pps {

namespace {

constexpr std::string_view KeptNames[] = {"DBUS_SESSION_BUS_ADDRESS",
                                          "HOME",
                                          "LOGNAME",
                                          "PATH",
                                          "TMPDIR",
                                          "USER",
                                          "all_proxy",
                                          "http_proxy",
                                          "https_proxy",
                                          "no_proxy",
                                          "ASAN_OPTIONS",
                                          "LSAN_OPTIONS",
                                          "TSAN_OPTIONS",
                                          "UBSAN_OPTIONS"};
constexpr std::string_view KeptPrefixes[] = {"PIPEWIRE_", "PULSE_", "VORO_", "XDG_"};
/** File names are UTF-8, messages the same for everybody. */
constexpr char Locale[] = "LANG=C.UTF-8";

/** Pointers into this process's environment. */
std::vector<char *> daemonEnvironment()
{
    std::vector<char *> environment{const_cast<char *>(Locale)};
    for (char **variable = environ; variable && *variable; ++variable) {
        if (isForDaemon(*variable)) {
            environment.push_back(*variable);
        }
    }
    environment.push_back(nullptr);
    return environment;
}

bool mayStart()
{
    const char *setting = std::getenv("VORO_AUTOSPAWN");
    return !setting || std::strcmp(setting, "0") != 0;
}

std::optional<std::string> folderOf(const char *file)
{
    const std::unique_ptr<char, decltype(&std::free)> path(realpath(file, nullptr), &std::free);
    return path
               ? std::optional(std::string(path.get(), static_cast<size_t>(std::strrchr(path.get(), '/') - path.get())))
               : std::nullopt;
}

// The daemon of the installation or build tree of the library or program that this code is in.
std::string daemonProgram()
{
    static const char anchor = 0;
    Dl_info info{};
    const bool known = dladdr(&anchor, &info) != 0 && info.dli_fname;
    for (const char *file : {known ? info.dli_fname : "", "/proc/self/exe"}) {
        const auto folder = folderOf(file);
        if (const std::string daemon = folder.value_or("") + "/" VORO_DAEMON;
            folder && access(daemon.c_str(), X_OK) == 0) {
            return daemon;
        }
    }
    return {};
}

// Runs the program, which returns when the daemon is ready.
int runDaemon(const std::string &program)
{
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    char background[] = "--background";
    char *const arguments[] = {const_cast<char *>(program.c_str()), background, nullptr};
    pid_t process = 0;
    const int failure =
        posix_spawn(&process, program.c_str(), nullptr, &attributes, arguments, daemonEnvironment().data());
    posix_spawnattr_destroy(&attributes);
    if (failure != 0) {
        return failure;
    }
    // Do not wait longer for a daemon that does not come up.
    const Fd handle(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
    pollfd end{handle.get(), POLLIN, 0};
    int ready = 0;
    do {
        ready = poll(&end, 1, static_cast<int>(std::chrono::milliseconds(LongestStart).count()));
    } while (ready < 0 && errno == EINTR);
    if (ready == 0) {
        kill(process, SIGKILL);
    }
    int status = 0;
    pid_t ended;
    do {
        ended = waitpid(process, &status, 0);
    } while (ended < 0 && errno == EINTR);
    // An application that ignores or collects its children hides the status; connecting then shows the result.
    return ended < 0 || (WIFEXITED(status) && WEXITSTATUS(status) == 0) ? 0 : ECONNREFUSED;
}

} // namespace

bool isForDaemon(std::string_view variable)
{
    const std::string_view name = variable.substr(0, variable.find('='));
    return std::find(std::begin(KeptNames), std::end(KeptNames), name) != std::end(KeptNames)
           || std::any_of(std::begin(KeptPrefixes), std::end(KeptPrefixes),
                          [name](std::string_view prefix) { return name.starts_with(prefix); });
}

int startDaemon(const std::string &folder)
{
    if (!mayStart()) {
        return ECONNREFUSED;
    }
    const Fd lock(::open((folder + "/start.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!lock.isValid()) {
        return errno;
    }
    const auto hasDaemon = [&folder] { return connectTo(folder).isValid(); };
    // The process that holds the lock starts the daemon.
    const int error =
        lockFile(lock.get(), LongestStart, [&] { return hasDaemon() ? WhileLocked::GiveUp : WhileLocked::Retry; });
    if (error == ECANCELED || (error == 0 && hasDaemon())) {
        return 0;
    }
    if (error != 0) {
        return error;
    }
    const std::string program = daemonProgram();
    return program.empty() ? ENOENT : runDaemon(program);
}

} // namespace voro::pps
