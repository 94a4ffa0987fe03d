#include "Runtime.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <thread>

extern char **environ;

namespace voro::pps {

namespace {

using namespace std::chrono_literals;

/** The longest time that a daemon may take to start, and that the broker's socket may take no packet. */
constexpr std::chrono::seconds LongestStart = 60s;

std::string folderName()
{
    if (const char *folder = std::getenv("VORO_RUNTIME_DIR"); folder && *folder) {
        return folder;
    }
    if (const char *folder = std::getenv("XDG_RUNTIME_DIR"); folder && *folder) {
        return std::string(folder) + "/voro";
    }
    return "/tmp/voro-" + std::to_string(getuid());
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
    std::string name = program;
    char *const arguments[] = {name.data(), background, nullptr};
    pid_t process = 0;
    const int failure = posix_spawn(&process, program.c_str(), nullptr, &attributes, arguments, environ);
    posix_spawnattr_destroy(&attributes);
    if (failure != 0) {
        return failure;
    }
    // One that does not come up is left.
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
    // An application that ignores or collects its children hides the status; connecting shows then what came of it.
    return ended < 0 || (WIFEXITED(status) && WEXITSTATUS(status) == 0) ? 0 : ECONNREFUSED;
}

/** Nothing, with errno, for a path that is too long for a socket. */
std::optional<sockaddr_un> addressOf(const std::string &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        errno = ENAMETOOLONG;
        return std::nullopt;
    }
    path.copy(address.sun_path, path.size());
    return address;
}

} // namespace

int runtimeFolder(std::string &folder)
{
    folder = folderName();
    if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
        return errno;
    }
    struct stat status {};
    if (lstat(folder.c_str(), &status) != 0) {
        return errno;
    }
    if (!S_ISDIR(status.st_mode)) {
        return ENOTDIR;
    }
    if (status.st_uid != geteuid()) {
        return EPERM;
    }
    return (status.st_mode & 0777) == 0700 || chmod(folder.c_str(), 0700) == 0 ? 0 : errno;
}

std::string socketPath(const std::string &folder)
{
    return folder + "/pps.sock";
}

Fd connectTo(const std::string &folder)
{
    return connectToSocket(socketPath(folder));
}

Fd connectToSocket(const std::string &path)
{
    const auto address = addressOf(path);
    if (!address) {
        return {};
    }
    Fd socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    // A daemon that hangs keeps nobody for ever.
    const timeval limit{LongestStart.count(), 0};
    setsockopt(socket.get(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    int result;
    do {
        result = connect(socket.get(), reinterpret_cast<const sockaddr *>(&*address), sizeof *address);
    } while (result < 0 && errno == EINTR);
    return result == 0 ? std::move(socket) : Fd();
}

Fd listenAt(const std::string &path)
{
    const std::string made = path + ".new";
    const auto address = addressOf(made);
    if (!address) {
        return {};
    }
    unlink(made.c_str());
    Fd socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const bool isMade = bind(socket.get(), reinterpret_cast<const sockaddr *>(&*address), sizeof *address) == 0
                        && listen(socket.get(), SOMAXCONN) == 0 && rename(made.c_str(), path.c_str()) == 0;
    return isMade ? std::move(socket) : Fd();
}

Fd watchForDaemon()
{
    std::string folder;
    Fd watch(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    const bool isWatching =
        runtimeFolder(folder) == 0 && inotify_add_watch(watch.get(), folder.c_str(), IN_MODIFY) >= 0;
    return isWatching ? std::move(watch) : Fd();
}

void takeEvents(int watch)
{
    char events[4096];
    while (read(watch, events, sizeof events) > 0) {
    }
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
    const auto deadline = std::chrono::steady_clock::now() + LongestStart;
    while (flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            return errno;
        }
        // Whoever has it starts the daemon. The kernel tells nobody when it is there, or the lock is free.
        if (connectTo(folder).isValid()) {
            return 0;
        }
        if (std::chrono::steady_clock::now() > deadline) {
            return ETIMEDOUT;
        }
        std::this_thread::sleep_for(5ms);
    }
    if (connectTo(folder).isValid()) {
        return 0;
    }
    const std::string program = daemonProgram();
    return program.empty() ? ENOENT : runDaemon(program);
}

} // namespace voro::pps
