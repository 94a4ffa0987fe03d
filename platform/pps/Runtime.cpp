#include "Runtime.h"

#include <sys/inotify.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <future>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace voro::pps {

namespace {

/** How long the disk that the folder is on may take. */
constexpr std::chrono::seconds LongestDisk{5};
/** Instead of an errno number: the folder would be in another user's, which that user could not use then. */
constexpr int OthersSession = -1;

struct Place {
    std::string folder;
    /** The session's folder that it is in, if it is. */
    std::string session;
};

Place findPlace()
{
    if (const char *own = std::getenv("VORO_RUNTIME_DIR"); own && *own) {
        return {own, {}};
    }
    if (const char *session = std::getenv("XDG_RUNTIME_DIR"); session && *session) {
        return {std::string(session) + "/voro", session};
    }
    return {"/tmp/voro-" + std::to_string(getuid()), {}};
}

int prepare(const Place &place)
{
    struct stat status {};
    if (!place.session.empty() && stat(place.session.c_str(), &status) == 0 && status.st_uid != geteuid()) {
        return OthersSession;
    }
    const char *folder = place.folder.c_str();
    if (mkdir(folder, 0700) != 0 && errno != EEXIST) {
        return errno;
    }
    if (lstat(folder, &status) != 0) {
        return errno;
    }
    if (!S_ISDIR(status.st_mode)) {
        return ENOTDIR;
    }
    if (status.st_uid != geteuid()) {
        return EPERM;
    }
    return (status.st_mode & 0777) == 0700 || chmod(folder, 0700) == 0 ? 0 : errno;
}

/** The same, but ETIMEDOUT when the disk does not answer, and EAGAIN when no thread is to be had. */
int prepareInTime(const Place &place)
{
    std::packaged_task<int()> task([place] { return prepare(place); });
    std::future<int> result = task.get_future();
    std::thread thread;
    try {
        thread = std::thread(std::move(task));
    } catch (const std::system_error &) {
        return EAGAIN;
    }
    if (result.wait_for(LongestDisk) == std::future_status::ready) {
        thread.join();
        return result.get();
    }
    thread.detach();
    return ETIMEDOUT;
}

/** Whether the process that listens at the other end is ours; errno says why not. */
bool isOurs(int socket)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0) {
        return false;
    }
    errno = EACCES;
    return peer.uid == geteuid();
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
    static std::mutex &mutex = *new std::mutex;
    static std::string &last = *new std::string;
    const Place place = findPlace();
    const std::lock_guard lock(mutex);
    // Once it has answered it does.
    const int error = last == place.folder ? prepare(place) : prepareInTime(place);
    if (error == 0) {
        last = place.folder;
    }
    folder = error == OthersSession ? place.session : place.folder;
    return error == OthersSession ? EPERM : error;
}

std::string runtimeProblem(const std::string &folder, int error)
{
    struct stat status {};
    if (error != EPERM || lstat(folder.c_str(), &status) != 0 || status.st_uid == geteuid()) {
        return folder + ": " + std::strerror(error);
    }
    const std::string owner = status.st_uid == 0 ? "root" : "user " + std::to_string(status.st_uid);
    return folder + ": belongs to " + owner
           + ", but must belong to the user of the daemon; remove it, or set VORO_RUNTIME_DIR to another folder";
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
    // A daemon that hangs must not block its clients for ever.
    const timeval limit{LongestStart.count(), 0};
    setsockopt(socket.get(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    int result;
    do {
        result = connect(socket.get(), reinterpret_cast<const sockaddr *>(&*address), sizeof *address);
    } while (result < 0 && errno == EINTR);
    return result == 0 && isOurs(socket.get()) ? std::move(socket) : Fd();
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

} // namespace voro::pps
