#include "Attempts.h"

#include <fcntl.h>
#include <linux/io_uring.h>
#include <linux/keyctl.h>
#include <netinet/in.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <thread>

namespace {

/** A file of the user's and a folder to make things in. */
std::string file;
std::string folder;
/** Where a server of this machine listens. */
uint16_t serverPort = 0;
/** Memory that another program of the user shares. */
int segment = 0;

std::string in(const char *name)
{
    return folder + '/' + name;
}

long openFor(const char *path, int flags)
{
    return open(path, flags | O_CLOEXEC, 0600);
}

sockaddr_in loopback(uint16_t port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

long socketBoundTo(int family)
{
    const int socket = ::socket(family, SOCK_STREAM, 0);
    const sockaddr_in address = loopback(0);
    return socket < 0 ? -1 : bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address);
}

long connectTo(const std::string &abstractName)
{
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    abstractName.copy(address.sun_path + 1, sizeof address.sun_path - 1);
    // The worker's own function keeps its libraries from it.
    return syscall(SYS_connect, socket, &address, sizeof(sa_family_t) + 1 + abstractName.size());
}

long connectToPort()
{
    const sockaddr_in address = loopback(serverPort);
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    return socket < 0 ? -1 : connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address);
}

long sendDatagram()
{
    const sockaddr_in address = loopback(serverPort);
    const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
    return socket < 0 ? -1 : sendto(socket, "x", 1, 0, reinterpret_cast<const sockaddr *>(&address), sizeof address);
}

long connectToPath(const std::string &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return connect(socket(AF_UNIX, SOCK_STREAM, 0), reinterpret_cast<sockaddr *>(&address), sizeof address);
}

long spawn(const char *program)
{
    char *const arguments[] = {const_cast<char *>(program), nullptr};
    pid_t child = 0;
    errno = posix_spawn(&child, program, nullptr, nullptr, arguments, environ);
    return errno == 0 ? 0 : -1;
}

long forkAndEnd()
{
    const pid_t child = fork();
    if (child == 0) {
        _exit(0);
    }
    return child;
}

/** Opens again for writing what was handed over for reading. */
long reopenHanded()
{
    for (int descriptor = STDERR_FILENO + 1;; ++descriptor) {
        struct stat status {};
        const int flags = fcntl(descriptor, F_GETFL);
        if (flags < 0 && descriptor > 100) {
            errno = ENOENT;
            return -1;
        }
        if (flags >= 0 && (flags & O_ACCMODE) == O_RDONLY && fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)
            && status.st_nlink > 0) {
            return openFor(("/proc/self/fd/" + std::to_string(descriptor)).c_str(), O_RDWR | O_TRUNC);
        }
    }
}

long linger()
{
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const struct linger forLong {
        1, 60
    };
    return socket < 0 ? -1 : setsockopt(socket, SOL_SOCKET, SO_LINGER, &forLong, sizeof forLong);
}

long connectSockets(int type)
{
    int sockets[2];
    return syscall(SYS_socketpair, AF_UNIX, type, 0, sockets);
}

long raiseLimit()
{
    const rlimit more{1 << 20, 1 << 20};
    return setrlimit(RLIMIT_NOFILE, &more);
}

long map(int flags)
{
    return mmap(nullptr, 1, PROT_READ | PROT_WRITE, flags, -1, 0) != MAP_FAILED ? 0 : -1;
}

long startThread()
{
    std::thread([] {}).join();
    return 0;
}

struct Attempt {
    const char *name;
    /** Namespaces, Landlock, system calls; none for what everybody may do. */
    const char *layers;
    /** The option of a worker that may do it all the same. */
    const char *kind;
    std::function<long()> make;
};

const Attempt Attempts[] = {
    // Allowed: without these nothing plays.
    {"read what the system has", "", "", [] { return openFor("/etc/passwd", O_RDONLY); }},
    {"read itself", "", "", [] { return openFor("/proc/self/stat", O_RDONLY); }},
    {"start a thread", "", "", startThread},
    {"connect to a server's socket", "", "", [] { return socket(AF_UNIX, SOCK_STREAM, 0); }},
    {"map memory", "", "", [] { return map(MAP_PRIVATE | MAP_ANONYMOUS); }},
    {"allocate memory", "", "", [] { return std::malloc(1 << 20) ? 0L : -1L; }},
    // Memory that would not count.
    {"make a file in memory", "S", "", [] { return syscall(SYS_memfd_create, "probe", 0); }},
    {"share memory without a name", "S", "", [] { return map(MAP_SHARED | MAP_ANONYMOUS); }},
    {"a segment of shared memory", "S", "", [] { return syscall(SYS_shmget, IPC_PRIVATE, 1, 0600); }},
    {"another program's segment of shared memory", "S", "", [] { return syscall(SYS_shmat, segment, nullptr, 0); }},
    // Files.
    {"read a file", "NL", "", [] { return openFor(file.c_str(), O_RDONLY); }},
    {"list a folder", "NL", "", [] { return openFor(folder.c_str(), O_RDONLY | O_DIRECTORY); }},
    {"read a file by a link", "NL", "", [] { return openFor(("/proc/self/root" + file).c_str(), O_RDONLY); }},
    {"read of the parent", "NL", "",
     [] { return openFor(("/proc/" + std::to_string(getppid()) + "/status").c_str(), O_RDONLY); }},
    {"open what was handed for writing", "LS", "", reopenHanded},
    {"write a file", "NL", "", [] { return openFor(file.c_str(), O_WRONLY); }},
    {"truncate a file", "NLS", "", [] { return truncate(file.c_str(), 0); }},
    {"open and truncate a file", "NL", "", [] { return openFor(file.c_str(), O_RDONLY | O_TRUNC); }},
    {"make a file", "NL", "", [] { return openFor(in("new").c_str(), O_CREAT | O_RDWR); }},
    {"make a folder", "NLS", "", [] { return mkdir(in("folder").c_str(), 0700); }},
    {"make a fifo", "NLS", "", [] { return mkfifo(in("fifo").c_str(), 0600); }},
    {"remove a file", "NLS", "", [] { return unlink(file.c_str()); }},
    {"rename a file", "NLS", "", [] { return rename(file.c_str(), in("other").c_str()); }},
    {"link a file", "NLS", "", [] { return link(file.c_str(), in("hard").c_str()); }},
    {"make a symbolic link", "NLS", "", [] { return symlink(file.c_str(), in("soft").c_str()); }},
    {"chmod a file", "NS", "", [] { return chmod(file.c_str(), 0666); }},
    {"chown a file", "NS", "", [] { return chown(file.c_str(), getuid(), getgid()); }},
    {"touch a file", "NS", "", [] { return utimensat(AT_FDCWD, file.c_str(), nullptr, 0); }},
    {"set an attribute of a file", "NS", "", [] { return setxattr(file.c_str(), "user.a", "b", 1, 0); }},
    {"write to a terminal", "NL", "", [] { return openFor("/dev/tty", O_RDWR); }},
    {"write to shared memory", "NL", "", [] { return openFor("/dev/shm/voro-probe", O_CREAT | O_RDWR); }},
    {"lock a file by lease", "S", "", [] { return fcntl(STDIN_FILENO, F_SETLEASE, F_WRLCK); }},
    {"watch files", "S", "", [] { return syscall(SYS_inotify_init1, 0); }},
    // Programs and processes.
    {"start a program", "LS", "", [] { return spawn("/usr/bin/true"); }},
    {"become a program", "LS", "", [] { return execl("/usr/bin/true", "true", nullptr); }},
    {"fork", "S", "", forkAndEnd},
    {"fork by clone3", "S", "", [] { return syscall(SYS_clone3, nullptr, 0); }},
    {"signal the parent", "LS", "", [] { return kill(getppid(), SIGTERM); }},
    {"see how the parent is scheduled", "S", "", [] { return sched_getscheduler(getppid()); }},
    {"change how the parent is scheduled", "S", "",
     [] {
         const sched_param parameters{};
         return sched_setscheduler(getppid(), SCHED_OTHER, &parameters);
     }},
    {"see the parent's limits", "S", "",
     [] {
         rlimit limits{};
         return prlimit(getppid(), RLIMIT_NOFILE, nullptr, &limits);
     }},
    {"probe the parent", "LS", "", [] { return kill(getppid(), 0); }},
    {"signal a thread of the parent", "LS", "", [] { return syscall(SYS_tgkill, getppid(), getppid(), 0); }},
    {"queue a signal", "S", "", [] { return syscall(SYS_rt_sigqueueinfo, getppid(), SIGUSR1, nullptr); }},
    {"open the parent's pidfd", "S", "", [] { return syscall(SYS_pidfd_open, getppid(), 0); }},
    {"have a descriptor signal", "S", "", [] { return fcntl(STDIN_FILENO, F_SETOWN, getppid()); }},
    {"trace the parent", "S", "", [] { return ptrace(PTRACE_ATTACH, getppid(), nullptr, nullptr); }},
    {"read the parent's memory", "S", "",
     [] { return syscall(SYS_process_vm_readv, getppid(), nullptr, 0, nullptr, 0, 0); }},
    {"compare with the parent", "S", "", [] { return syscall(SYS_kcmp, getpid(), getppid(), 0, 0, 0); }},
    {"set the parent's priority", "S", "", [] { return setpriority(PRIO_PROCESS, static_cast<id_t>(getppid()), 5); }},
    {"raise a limit", "S", "", raiseLimit},
    {"allow core dumps", "S", "", [] { return prctl(PR_SET_DUMPABLE, 1); }},
    {"write core files", "NLS", "",
     [] {
         rlimit size{};
         errno = EPERM;
         return getrlimit(RLIMIT_CORE, &size) == 0 && size.rlim_max == 0 ? -1 : 0;
     }},
    {"outlive the daemon", "S", "", [] { return prctl(PR_SET_PDEATHSIG, 0); }},
    {"change the user", "S", "", [] { return syscall(SYS_setresuid, getuid(), getuid(), getuid()); }},
    // The kernel.
    {"mount", "S", "", [] { return mount("none", "/mnt", "tmpfs", 0, nullptr); }},
    {"unshare", "S", "", [] { return syscall(SYS_unshare, 0x10000000); }},
    {"change the root", "S", "", [] { return chroot("/"); }},
    {"io_uring", "S", "", [] { return syscall(SYS_io_uring_setup, 1, nullptr); }},
    {"bpf", "S", "", [] { return syscall(SYS_bpf, 0, nullptr, 0); }},
    {"keys", "S", "", [] { return syscall(SYS_keyctl, KEYCTL_GET_KEYRING_ID, 0, 0); }},
    {"performance events", "S", "", [] { return syscall(SYS_perf_event_open, nullptr, 0, -1, -1, 0); }},
    {"user fault handling", "S", "", [] { return syscall(SYS_userfaultfd, 0); }},
    {"personality", "S", "", [] { return syscall(SYS_personality, 0x0040000); }},
    {"another filter", "S", "", [] { return syscall(SYS_seccomp, 2, 0, nullptr); }},
    // Sockets.
    {"bind a port", "LS", "", [] { return socketBoundTo(AF_INET); }},
    {"listen", "S", "", [] { return listen(socket(AF_UNIX, SOCK_STREAM, 0), 1); }},
    {"a raw socket", "S", "", [] { return socket(AF_PACKET, SOCK_RAW, 0); }},
    {"a socket of a virtual machine", "S", "", [] { return socket(AF_VSOCK, SOCK_STREAM, 0); }},
    {"a pair of sockets", "S", "", [] { return connectSockets(SOCK_STREAM); }},
    {"a pair of sockets for datagrams", "S", "", [] { return connectSockets(SOCK_DGRAM); }},
    {"a socket for datagrams to servers of this machine", "S", "", [] { return socket(AF_UNIX, SOCK_DGRAM, 0); }},
    {"have the end of a socket take long", "S", "", linger},
    {"audit messages", "S", "", [] { return socket(AF_NETLINK, SOCK_RAW, 9); }},
    {"an abstract socket", "NL", "", [] { return connectTo(folder); }},
    {"connect to a port", "NLS", "network", connectToPort},
    {"send a datagram", "NS", "network", sendDatagram},
    {"connect to another server of the user", "N", "", [] { return connectToPath(in("server")); }},
    {"see other processes", "NL", "", [] { return openFor("/proc/1/cmdline", O_RDONLY); }},
    {"inject into a terminal", "S", "", [] { return ioctl(STDIN_FILENO, 0x5412, "x"); }},
};

} // namespace

void tryAll(const Surroundings &surroundings)
{
    folder = surroundings.folder;
    file = in("file");
    serverPort = surroundings.port;
    segment = surroundings.segment;
    for (const Attempt &attempt : Attempts) {
        errno = 0;
        const bool isDone = attempt.make() >= 0;
        const int error = isDone ? 0 : errno;
        dprintf(surroundings.output, "ATTEMPT %d=%s=%d=%s=%s\n", getpid(), attempt.name, error, attempt.layers,
                attempt.kind);
    }
}
