#include "SystemCalls.h"

#include <fcntl.h>
#include <linux/netlink.h>
#include <linux/sched.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <memory>
#include <type_traits>

namespace voro::renderer {

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool AreRefusalsLogged = true;
#else
constexpr bool AreRefusalsLogged = false;
#endif

/**
 * The calls that are allowed whatever their arguments. They were found by tracing workers with every format, output and
 * kind of recording; names that an architecture does not have are skipped.
 */
constexpr const char *Allowed[] = {
    // Memory.
    "brk", "madvise", "mincore", "mlock", "mmap", "mprotect", "mremap", "munmap", "membarrier",
    // Files that are open, or that may be opened; which ones these are is up to Landlock.
    "access", "close", "close_range", "dup", "dup2", "dup3", "faccessat", "faccessat2", "fadvise64", "fallocate",
    "fdatasync", "fstat", "fstatfs", "fsync", "ftruncate", "getcwd", "getdents64", "lseek", "lstat", "newfstatat",
    "open", "openat", "pread64", "preadv", "pwrite64", "pwritev", "read", "readlink", "readlinkat", "readv", "stat",
    "statfs", "statx", "sync_file_range", "umask", "write", "writev",
    // Waiting and signals.
    "epoll_create1", "epoll_ctl", "epoll_pwait", "epoll_pwait2", "epoll_wait", "eventfd2", "futex", "pipe", "pipe2",
    "poll", "ppoll", "pselect6", "restart_syscall", "rt_sigaction", "rt_sigprocmask", "rt_sigreturn", "rt_sigtimedwait",
    "select", "sigaltstack",
    // Times.
    "clock_getres", "clock_gettime", "clock_nanosleep", "gettimeofday", "nanosleep", "time", "times",
    // The process and its threads.
    "arch_prctl", "exit", "exit_group", "get_robust_list", "getegid", "geteuid", "getgid", "getgroups", "getpid",
    "getppid", "getpriority", "getresgid", "getresuid", "getrlimit", "getrusage", "gettid", "getuid", "rseq",
    "sched_get_priority_max", "sched_getattr", "sched_setattr", "sched_get_priority_min", "sched_getaffinity",
    "sched_getparam", "sched_getscheduler", "sched_yield", "set_robust_list", "set_tid_address", "sysinfo", "uname",
    "getrandom", "getcpu",
    // Sockets that exist.
    "connect", "getpeername", "getsockname", "getsockopt", "recvfrom", "recvmmsg", "recvmsg", "sendmmsg", "sendmsg",
    "sendto", "setsockopt", "shutdown", "socketpair",
    // Shared memory: frame queues, the sound server's and the X server's.
    "memfd_create", "shmat", "shmctl", "shmdt", "shmget"};

constexpr unsigned long FileControls[] = {F_DUPFD, F_DUPFD_CLOEXEC, F_GETFD,  F_SETFD,     F_GETFL,    F_SETFL,
                                          F_GETLK, F_SETLK,         F_SETLKW, F_ADD_SEALS, F_GET_SEALS};
constexpr int Families[] = {AF_UNIX, AF_INET, AF_INET6};
constexpr unsigned long DeviceControls[] = {FIONREAD, FIONBIO, FIOCLEX, TCGETS, TIOCGWINSZ};
constexpr unsigned long ProcessControls[] = {PR_SET_NAME, PR_GET_NAME, PR_SET_VMA, PR_GET_DUMPABLE,
                                             PR_GET_NO_NEW_PRIVS};

struct Release {
    void operator()(void *filter) const { seccomp_release(filter); }
};
using Filter = std::unique_ptr<std::remove_pointer_t<scmp_filter_ctx>, Release>;

scmp_arg_cmp isEqual(unsigned argument, scmp_datum_t value)
{
    return {argument, SCMP_CMP_EQ, value, 0};
}

/** Adds rules to a filter and remembers whether one failed. */
class Rules {
public:
    explicit Rules(scmp_filter_ctx filter) : m_filter(filter) {}

    template<typename... Conditions>
    void add(uint32_t action, const char *name, Conditions... conditions)
    {
        const int number = seccomp_syscall_resolve_name(name);
        if (number == __NR_SCMP_ERROR) {
            return;
        }
        m_areGood &= seccomp_rule_add(m_filter, action, number, sizeof...(conditions), conditions...) == 0;
    }

    /** Allows a call when one of its arguments has one of the values. */
    template<typename Values>
    void allowWith(const char *name, unsigned argument, const Values &values)
    {
        for (const auto value : values) {
            add(SCMP_ACT_ALLOW, name, isEqual(argument, static_cast<scmp_datum_t>(value)));
        }
    }

    bool areGood() const { return m_areGood; }

private:
    scmp_filter_ctx m_filter;
    bool m_areGood = true;
};

} // namespace

bool limitSystemCalls(Devices devices)
{
    const Filter filter(seccomp_init(SCMP_ACT_ERRNO(EPERM)));
    if (!filter) {
        return false;
    }
    Rules rules(filter.get());
    for (const char *name : Allowed) {
        rules.add(SCMP_ACT_ALLOW, name);
    }
    rules.allowWith("fcntl", 1, FileControls);
    rules.allowWith("ioctl", 1, DeviceControls);
    rules.allowWith("prctl", 0, ProcessControls);
    // Threads, no processes. The arguments of clone3 cannot be looked at; without it the C library takes clone.
    rules.add(SCMP_ACT_ALLOW, "clone", scmp_arg_cmp{0, SCMP_CMP_MASKED_EQ, CLONE_THREAD, CLONE_THREAD});
    rules.add(SCMP_ACT_ERRNO(ENOSYS), "clone3");
    // Asking for limits, not setting them.
    rules.add(SCMP_ACT_ALLOW, "prlimit64", isEqual(2, 0));
    // abort() and raise().
    rules.add(SCMP_ACT_ALLOW, "tgkill", isEqual(0, static_cast<scmp_datum_t>(getpid())));
    rules.allowWith("socket", 0, Families);
    rules.add(SCMP_ACT_ALLOW, "socket", isEqual(0, AF_NETLINK), isEqual(2, NETLINK_ROUTE));
    if (devices == Devices::Open) {
        for (const char *name : {"ioctl", "mkdir", "rename", "unlink", "flock"}) {
            rules.add(SCMP_ACT_ALLOW, name);
        }
    }
    return rules.areGood() && seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_TSYNC, 1) == 0
           && seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_LOG, AreRefusalsLogged) == 0
           && seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_OPTIMIZE, 2) == 0 && seccomp_load(filter.get()) == 0;
}

} // namespace voro::renderer
