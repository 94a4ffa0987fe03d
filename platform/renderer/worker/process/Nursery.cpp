#include "Nursery.h"

#include "PluginFolders.h"
#include "Setup.h"
#include "SystemPlaces.h"

#include <fcntl.h>
#include <linux/sched.h>
#include <poll.h>
#include <pps/FdPassing.h>
#include <pps/FilePages.h>
#include <pps/Log.h>
#include <renderer/common/FileRequest.h>
#include <renderer/common/Protocol.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <span>
#include <utility>

namespace voro::renderer {

namespace {

/** Where the system describes this process. In namespaces of its own the nursery sees itself among the others only. */
std::string ownFolder()
{
    constexpr const char *AmongOthers = "/.processes/self";
    return access(AmongOthers, F_OK) == 0 ? AmongOthers : "/proc/self";
}

bool hasOneThread()
{
    std::error_code error;
    const std::filesystem::directory_iterator threads(ownFolder() + "/task", error);
    return !error && std::distance(begin(threads), end(threads)) == 1;
}

/** As fork(), but the new process is a child of this one's parent. */
pid_t forkSibling(pps::Fd &pidfd)
{
    int descriptor = -1;
    // Where the C library keeps its thread's id, which fork() would renew.
    int *thread = nullptr;
    prctl(PR_GET_TID_ADDRESS, &thread);
    clone_args arguments{};
    arguments.flags = CLONE_PARENT | CLONE_PIDFD | (thread ? CLONE_CHILD_SETTID | CLONE_CHILD_CLEARTID : 0);
    arguments.pidfd = reinterpret_cast<uintptr_t>(&descriptor);
    arguments.child_tid = reinterpret_cast<uintptr_t>(thread);
    const auto process = static_cast<pid_t>(syscall(SYS_clone3, &arguments, sizeof arguments));
    if (process > 0) {
        pidfd.reset(descriptor);
    }
    return process;
}

void report(int socket, int64_t id, pid_t process, const pps::Fd &pidfd)
{
    const BirthAnswer answer{id, process};
    pps::sendPacket(socket, std::as_bytes(std::span(&answer, 1)), pidfd.get());
}

enum class Birth { Parent, Child, None };

/** Forks and reports the new process to the daemon. */
Birth giveBirth(int socket, int64_t id)
{
    pps::Fd pidfd;
    const pid_t process = forkSibling(pidfd);
    if (process == 0) {
        restrictProcess();
        return Birth::Child;
    }
    report(socket, id, std::max<pid_t>(process, 0), pidfd);
    return process > 0 ? Birth::Parent : Birth::None;
}

/** Gives the sockets of a worker their numbers; they may have each other's. */
void place(std::span<pps::Fd> sockets)
{
    constexpr int Numbers[WorkerSockets] = {WorkerSocket, WorkerFilesSocket, WorkerMediaSocket};
    constexpr int Beyond = 10;
    for (pps::Fd &socket : sockets) {
        socket.reset(fcntl(socket.get(), F_DUPFD_CLOEXEC, Beyond));
    }
    for (size_t i = 0; i < sockets.size(); ++i) {
        dup2(sockets[i].get(), Numbers[i]);
        sockets[i].reset();
    }
}

} // namespace

std::optional<Reach> Nursery::run()
{
    // Workers show their pipelines at that signal.
    std::signal(SIGUSR1, SIG_IGN);
    prctl(PR_SET_NAME, "voro-nursery");
    if (!hasOneThread()) {
        log::warn(log::Category::Worker, "workers cannot be forked: a plugin has started a thread");
        return std::nullopt;
    }
    m_confinement.begin();
    if (!limitNurseryCalls()) {
        log::warn(log::Category::Worker, "this kernel does not limit the nursery's system calls (seccomp)");
    }
    const Birth local = giveBirth(LocalNurserySocket, 0);
    if (local == Birth::Child) {
        close(NetworkNurserySocket);
        m_confinement.leaveNetwork();
        return serve(LocalNurserySocket, false);
    }
    close(LocalNurserySocket);
    return local == Birth::Parent ? serve(NetworkNurserySocket, true) : std::nullopt;
}

std::optional<Reach> Nursery::serve(int socket, bool hasNetwork)
{
    for (const bool hasWindows : {false, true}) {
        m_confinement.prepare({.network = hasNetwork, .windows = hasWindows});
    }
    const PluginFolders plugins;
    mergeFreeMemory();
    constexpr int Idle = 400;
    bool hasRested = false;
    for (;;) {
        pollfd readable{socket, POLLIN, 0};
        if (poll(&readable, 1, hasRested ? -1 : Idle) == 0) {
            hasRested = true;
            pps::releaseFilePages(ownFolder());
        }
        BirthRequest request;
        std::array<pps::Fd, WorkerSockets> sockets;
        const ssize_t size = pps::receivePacket(socket, std::as_writable_bytes(std::span(&request, 1)), sockets);
        if (size < 0 && errno == EAGAIN) {
            continue;
        }
        if (size != sizeof request) {
            return std::nullopt;
        }
        if (request.id == 0) {
            warmUpForFilms();
            if (!hasOneThread()) {
                return std::nullopt;
            }
            continue;
        }
        if (plugins.haveChanged()) {
            log::warn(log::Category::Worker, "plugins came or went");
            return std::nullopt;
        }
        if (request.hasWindows != 0 && access(ScreenServerPlace, F_OK) != 0) {
            // There was no X server yet.
            report(socket, request.id, 0, pps::Fd());
            continue;
        }
        if (giveBirth(socket, request.id) == Birth::Child) {
            prctl(PR_SET_NAME, "voro-renderer");
            close(socket);
            place(sockets);
            return Reach{.network = hasNetwork, .windows = request.hasWindows != 0};
        }
    }
}

} // namespace voro::renderer
