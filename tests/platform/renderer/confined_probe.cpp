// Confines itself as a worker does and tries what an attacker would; prints a line for each attempt: its name and the
// errno number.

#include <fcntl.h>
#include <linux/io_uring.h>
#include <linux/keyctl.h>
#include <netinet/in.h>
#include <renderer/worker/process/Confinement.h>
#include <spawn.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
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
#include <string>
#include <thread>

namespace {

/** A file of the user's and a folder to make things in. */
std::string file;
std::string folder;

std::string in(const char *name)
{
    return folder + '/' + name;
}

long openFor(const char *path, int flags)
{
    return open(path, flags | O_CLOEXEC, 0600);
}

long socketBoundTo(int family)
{
    const int socket = ::socket(family, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return socket < 0 ? -1 : bind(socket, reinterpret_cast<sockaddr *>(&address), sizeof address);
}

long connectTo(const std::string &abstractName)
{
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    abstractName.copy(address.sun_path + 1, sizeof address.sun_path - 1);
    return connect(socket, reinterpret_cast<sockaddr *>(&address),
                   static_cast<socklen_t>(sizeof(sa_family_t) + 1 + abstractName.size()));
}

long spawn(const char *program)
{
    char *const arguments[] = {const_cast<char *>(program), nullptr};
    pid_t child = 0;
    errno = posix_spawn(&child, program, nullptr, nullptr, arguments, environ);
    return errno == 0 ? 0 : -1;
}

long raiseLimit()
{
    const rlimit more{1 << 20, 1 << 20};
    return setrlimit(RLIMIT_NOFILE, &more);
}

long startThread()
{
    std::thread([] {}).join();
    return 0;
}

struct Attempt {
    const char *name;
    long (*make)();
};

const Attempt Attempts[] = {
    // Allowed: without these nothing plays.
    {"read what the system has", [] { return openFor("/etc/passwd", O_RDONLY); }},
    {"read itself", [] { return openFor("/proc/self/stat", O_RDONLY); }},
    {"start a thread", startThread},
    {"connect to a server's socket", [] { return static_cast<long>(socket(AF_UNIX, SOCK_STREAM, 0)); }},
    {"allocate memory", [] { return std::malloc(1 << 20) ? 0L : -1L; }},
    // Files.
    {"read a file", [] { return openFor(file.c_str(), O_RDONLY); }},
    {"list a folder", [] { return openFor(folder.c_str(), O_RDONLY | O_DIRECTORY); }},
    {"read a file by a link", [] { return openFor(("/proc/self/root" + file).c_str(), O_RDONLY); }},
    {"read of the parent",
     [] { return openFor(("/proc/" + std::to_string(getppid()) + "/status").c_str(), O_RDONLY); }},
    {"write a file", [] { return openFor(file.c_str(), O_WRONLY); }},
    {"truncate a file", [] { return static_cast<long>(truncate(file.c_str(), 0)); }},
    {"open and truncate a file", [] { return openFor(file.c_str(), O_RDONLY | O_TRUNC); }},
    {"make a file", [] { return openFor(in("new").c_str(), O_CREAT | O_RDWR); }},
    {"make a folder", [] { return static_cast<long>(mkdir(in("folder").c_str(), 0700)); }},
    {"make a fifo", [] { return static_cast<long>(mkfifo(in("fifo").c_str(), 0600)); }},
    {"remove a file", [] { return static_cast<long>(unlink(file.c_str())); }},
    {"rename a file", [] { return static_cast<long>(rename(file.c_str(), in("other").c_str())); }},
    {"link a file", [] { return static_cast<long>(link(file.c_str(), in("hard").c_str())); }},
    {"make a symbolic link", [] { return static_cast<long>(symlink(file.c_str(), in("soft").c_str())); }},
    {"chmod a file", [] { return static_cast<long>(chmod(file.c_str(), 0666)); }},
    {"chown a file", [] { return static_cast<long>(chown(file.c_str(), getuid(), getgid())); }},
    {"touch a file", [] { return static_cast<long>(utimensat(AT_FDCWD, file.c_str(), nullptr, 0)); }},
    {"set an attribute of a file", [] { return static_cast<long>(setxattr(file.c_str(), "user.a", "b", 1, 0)); }},
    {"write to a terminal", [] { return openFor("/dev/tty", O_RDWR); }},
    {"write to shared memory", [] { return openFor("/dev/shm/voro-probe", O_CREAT | O_RDWR); }},
    {"lock a file by lease", [] { return static_cast<long>(fcntl(STDIN_FILENO, F_SETLEASE, F_WRLCK)); }},
    {"watch files", [] { return syscall(SYS_inotify_init1, 0); }},
    // Programs and processes.
    {"start a program", [] { return spawn("/bin/true"); }},
    {"become a program", [] { return static_cast<long>(execl("/bin/true", "true", nullptr)); }},
    {"fork", [] { return static_cast<long>(fork()); }},
    {"fork by clone3", [] { return syscall(SYS_clone3, nullptr, 0); }},
    {"signal the parent", [] { return static_cast<long>(kill(getppid(), SIGTERM)); }},
    {"probe the parent", [] { return static_cast<long>(kill(getppid(), 0)); }},
    {"signal a thread of the parent", [] { return syscall(SYS_tgkill, getppid(), getppid(), 0); }},
    {"queue a signal", [] { return syscall(SYS_rt_sigqueueinfo, getppid(), SIGUSR1, nullptr); }},
    {"open the parent's pidfd", [] { return syscall(SYS_pidfd_open, getppid(), 0); }},
    {"have a descriptor signal", [] { return static_cast<long>(fcntl(STDIN_FILENO, F_SETOWN, getppid())); }},
    {"trace the parent", [] { return ptrace(PTRACE_ATTACH, getppid(), nullptr, nullptr); }},
    {"read the parent's memory", [] { return syscall(SYS_process_vm_readv, getppid(), nullptr, 0, nullptr, 0, 0); }},
    {"compare with the parent", [] { return syscall(SYS_kcmp, getpid(), getppid(), 0, 0, 0); }},
    {"set the parent's priority",
     [] { return static_cast<long>(setpriority(PRIO_PROCESS, static_cast<id_t>(getppid()), 5)); }},
    {"raise a limit", raiseLimit},
    {"allow core dumps", [] { return static_cast<long>(prctl(PR_SET_DUMPABLE, 1)); }},
    {"outlive the daemon", [] { return static_cast<long>(prctl(PR_SET_PDEATHSIG, 0)); }},
    {"change the user", [] { return static_cast<long>(syscall(SYS_setresuid, getuid(), getuid(), getuid())); }},
    // The kernel.
    {"mount", [] { return static_cast<long>(mount("none", "/mnt", "tmpfs", 0, nullptr)); }},
    {"unshare", [] { return syscall(SYS_unshare, 0x10000000); }},
    {"change the root", [] { return static_cast<long>(chroot("/")); }},
    {"io_uring", [] { return syscall(SYS_io_uring_setup, 1, nullptr); }},
    {"bpf", [] { return syscall(SYS_bpf, 0, nullptr, 0); }},
    {"keys", [] { return syscall(SYS_keyctl, KEYCTL_GET_KEYRING_ID, 0, 0); }},
    {"performance events", [] { return syscall(SYS_perf_event_open, nullptr, 0, -1, -1, 0); }},
    {"user fault handling", [] { return syscall(SYS_userfaultfd, 0); }},
    {"personality", [] { return syscall(SYS_personality, 0x0040000); }},
    {"another filter", [] { return syscall(SYS_seccomp, 2, 0, nullptr); }},
    // Sockets.
    {"bind a port", [] { return socketBoundTo(AF_INET); }},
    {"listen", [] { return static_cast<long>(listen(socket(AF_UNIX, SOCK_STREAM, 0), 1)); }},
    {"a raw socket", [] { return static_cast<long>(socket(AF_PACKET, SOCK_RAW, 0)); }},
    {"a socket of a virtual machine", [] { return static_cast<long>(socket(AF_VSOCK, SOCK_STREAM, 0)); }},
    {"audit messages", [] { return static_cast<long>(socket(AF_NETLINK, SOCK_RAW, 9)); }},
    {"an abstract socket", [] { return connectTo(folder); }},
    {"inject into a terminal", [] { return static_cast<long>(ioctl(STDIN_FILENO, 0x5412, "x")); }},
};

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        return 2;
    }
    folder = argv[1];
    file = in(argv[2]);
    voro::renderer::restrictProcess();
    voro::renderer::confineProcess();
    for (const Attempt &attempt : Attempts) {
        errno = 0;
        const bool isDone = attempt.make() >= 0;
        std::printf("%s=%d\n", attempt.name, isDone ? 0 : errno);
        std::fflush(stdout);
    }
    // As workers end: a leak check would have to trace this process.
    _exit(0);
}
