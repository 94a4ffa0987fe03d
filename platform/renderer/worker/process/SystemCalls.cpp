#include "SystemCalls.h"

#include "SoundServer.h"

#include <fcntl.h>
#include <linux/netlink.h>
#include <linux/sched.h>
#include <linux/seccomp.h>
#include <netinet/in.h>
#include <pps/Fd.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <span>
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
 * kind of recording; names that an architecture does not have are skipped. On ARM with 32 bits many have other names.
 */
constexpr const char *Allowed[] = {
    // Memory.
    "brk", "madvise", "mincore", "mlock", "mprotect", "mremap", "munmap", "membarrier", "cacheflush",
    // Files that are open, or that may be opened; which ones these are is up to Landlock.
    "access", "close", "close_range", "dup", "dup2", "dup3", "faccessat", "faccessat2", "fadvise64", "fallocate",
    "fdatasync", "fstat", "fstatfs", "fsync", "ftruncate", "getcwd", "getdents64", "lseek", "lstat", "newfstatat",
    "pread64", "preadv", "pwrite64", "pwritev", "read", "readlink", "readlinkat", "readv", "stat", "statfs", "statx",
    "sync_file_range", "umask", "write", "writev", "_llseek", "arm_fadvise64_64", "arm_sync_file_range", "fstat64",
    "fstatat64", "fstatfs64", "ftruncate64", "lstat64", "stat64", "statfs64",
    // Waiting and signals.
    "epoll_create1", "epoll_ctl", "epoll_pwait", "epoll_pwait2", "epoll_wait", "eventfd2", "futex", "pipe", "pipe2",
    "poll", "ppoll", "pselect6", "restart_syscall", "alarm", "setitimer", "rt_sigaction", "rt_sigprocmask",
    "rt_sigreturn", "rt_sigtimedwait", "select", "sigaltstack", "_newselect", "futex_time64", "ppoll_time64",
    "pselect6_time64", "rt_sigtimedwait_time64", "sigreturn",
    // Times.
    "clock_getres", "clock_gettime", "clock_nanosleep", "gettimeofday", "nanosleep", "time", "times",
    "clock_getres_time64", "clock_gettime64", "clock_nanosleep_time64",
    // The process and its threads.
    "arch_prctl", "exit", "exit_group", "get_robust_list", "getegid", "geteuid", "getgid", "getgroups", "getpid",
    "getppid", "getresgid", "getresuid", "getrlimit", "getrusage", "gettid", "getuid", "rseq", "sched_get_priority_max",
    "sched_get_priority_min", "sched_yield", "set_robust_list", "set_tid_address", "sysinfo", "uname", "getrandom",
    "getcpu", "tgkill", "getegid32", "geteuid32", "getgid32", "getgroups32", "getresgid32", "getresuid32", "getuid32",
    "set_tls", "ugetrlimit",
    // Sockets that exist.
    "connect", "getpeername", "getsockname", "getsockopt", "recvfrom", "recvmmsg", "recvmsg", "sendmmsg", "sendmsg",
    "sendto", "shutdown", "recv", "recvmmsg_time64", "send"};

/** What a process may ask about itself, by the number 0, and not about others. */
constexpr const char *OfProcess[] = {"sched_getattr", "sched_getparam", "sched_getscheduler", "sched_getaffinity"};

/** For unknown elements of the user's own. */
constexpr const char *ForDevices[] = {"flock", "ioctl",  "memfd_create", "mkdir",     "mkdirat", "mmap",
                                      "mmap2", "rename", "renameat",     "renameat2", "unlink",  "unlinkat"};

constexpr unsigned long FileControls[] = {F_DUPFD, F_DUPFD_CLOEXEC, F_GETFD,  F_SETFD,     F_GETFL,    F_SETFL,
                                          F_GETLK, F_SETLK,         F_SETLKW, F_ADD_SEALS, F_GET_SEALS};
constexpr int NetworkFamilies[] = {AF_INET, AF_INET6};
constexpr int ProtocolLevels[] = {IPPROTO_IP, IPPROTO_TCP, IPPROTO_UDP, IPPROTO_IPV6, SOL_NETLINK};
/** None that makes the end of a socket take long, or its buffers large. */
constexpr int SocketOptions[] = {SO_REUSEADDR, SO_REUSEPORT, SO_BROADCAST, SO_KEEPALIVE, SO_PRIORITY,
                                 SO_PASSCRED,  SO_OOBINLINE, SO_TIMESTAMP, SO_RCVTIMEO,  SO_SNDTIMEO};
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

    void allow(std::span<const char *const> names)
    {
        for (const char *name : names) {
            add(SCMP_ACT_ALLOW, name);
        }
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

/** A filter as the kernel takes it; empty on failure. */
std::vector<sock_filter> programOf(scmp_filter_ctx filter)
{
    const pps::Fd file(static_cast<int>(syscall(SYS_memfd_create, "filter", MFD_CLOEXEC)));
    if (!file.isValid() || seccomp_export_bpf(filter, file.get()) != 0) {
        return {};
    }
    const off_t size = lseek(file.get(), 0, SEEK_END);
    std::vector<sock_filter> program(static_cast<size_t>(std::max<off_t>(size, 0)) / sizeof(sock_filter));
    const auto bytes = static_cast<ssize_t>(program.size() * sizeof(sock_filter));
    return pread(file.get(), program.data(), static_cast<size_t>(bytes), 0) == bytes ? program
                                                                                     : std::vector<sock_filter>();
}

bool load(std::vector<sock_filter> program)
{
    const sock_fprog whole{static_cast<unsigned short>(program.size()), program.data()};
    const unsigned flags = SECCOMP_FILTER_FLAG_TSYNC | (AreRefusalsLogged ? SECCOMP_FILTER_FLAG_LOG : 0);
    return !program.empty() && syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, flags, &whole) == 0;
}

/** Lets the process signal itself only, for abort() and raise(). */
bool limitSignals()
{
    const Filter filter(seccomp_init(SCMP_ACT_ALLOW));
    return filter
           && seccomp_rule_add(filter.get(), SCMP_ACT_ERRNO(EPERM), SCMP_SYS(tgkill), 1,
                               scmp_arg_cmp{0, SCMP_CMP_NE, static_cast<scmp_datum_t>(getpid()), 0})
                  == 0
           && load(programOf(filter.get()));
}

} // namespace

SystemCalls::SystemCalls(Devices devices, Files files, Reach reach)
{
    const Filter filter(seccomp_init(SCMP_ACT_ERRNO(EPERM)));
    if (!filter) {
        return;
    }
    Rules rules(filter.get());
    rules.allow(Allowed);
    rules.allowWith("fcntl", 1, FileControls);
    rules.allowWith("fcntl64", 1, FileControls);
    rules.allowWith("ioctl", 1, DeviceControls);
    rules.allowWith("prctl", 0, ProcessControls);
    // Threads, no processes. The arguments of clone3 cannot be looked at; without it the C library takes clone.
    rules.add(SCMP_ACT_ALLOW, "clone", scmp_arg_cmp{0, SCMP_CMP_MASKED_EQ, CLONE_THREAD, CLONE_THREAD});
    rules.add(SCMP_ACT_ERRNO(ENOSYS), "clone3");
    for (const char *name : OfProcess) {
        rules.add(SCMP_ACT_ALLOW, name, isEqual(0, 0));
    }
    // The C library asks by a thread's number, and goes on when there is no such call.
    rules.add(SCMP_ACT_ERRNO(ENOSYS), "sched_getaffinity", scmp_arg_cmp{0, SCMP_CMP_NE, 0, 0});
    // Limits may be asked for, not set.
    rules.add(SCMP_ACT_ALLOW, "prlimit64", isEqual(0, 0), isEqual(2, 0));
    // A descriptor for reading could be opened again for writing by its name in /proc.
    const scmp_datum_t changes = files == Files::ReadOnly ? O_ACCMODE | O_TRUNC | O_CREAT : 0;
    rules.add(SCMP_ACT_ALLOW, "open", scmp_arg_cmp{1, SCMP_CMP_MASKED_EQ, changes, 0});
    rules.add(SCMP_ACT_ALLOW, "openat", scmp_arg_cmp{2, SCMP_CMP_MASKED_EQ, changes, 0});
    if (files == Files::ReadOnly) {
        // Libraries that try to write first open a file for reading after this error only.
        for (const scmp_datum_t change : {O_WRONLY, O_RDWR}) {
            rules.add(SCMP_ACT_ERRNO(EACCES), "open", scmp_arg_cmp{1, SCMP_CMP_MASKED_EQ, O_ACCMODE, change});
            rules.add(SCMP_ACT_ERRNO(EACCES), "openat", scmp_arg_cmp{2, SCMP_CMP_MASKED_EQ, O_ACCMODE, change});
        }
    }
    // No pairs and no datagrams: what they hold on their way counts as the user's.
    rules.add(
        SCMP_ACT_ALLOW, "socket", isEqual(0, AF_UNIX),
        scmp_arg_cmp{1, SCMP_CMP_MASKED_EQ, static_cast<scmp_datum_t>(~(SOCK_CLOEXEC | SOCK_NONBLOCK)), SOCK_STREAM});
    rules.allowWith("setsockopt", 1, ProtocolLevels);
    for (const int option : SocketOptions) {
        rules.add(SCMP_ACT_ALLOW, "setsockopt", isEqual(1, SOL_SOCKET), isEqual(2, static_cast<scmp_datum_t>(option)));
    }
    if (reach.network) {
        if (isSoundServerFar()) {
            rules.add(SCMP_ACT_ALLOW, "socketpair", isEqual(0, AF_UNIX),
                      scmp_arg_cmp{1, SCMP_CMP_MASKED_EQ, static_cast<scmp_datum_t>(~(SOCK_CLOEXEC | SOCK_NONBLOCK)),
                                   SOCK_DGRAM});
        }
        rules.allowWith("socket", 0, NetworkFamilies);
        rules.add(SCMP_ACT_ALLOW, "socket", isEqual(0, AF_NETLINK), isEqual(2, NETLINK_ROUTE));
    }
    // Memory that is shared without a file would not count: files in memory come from the daemon, which counts them.
    for (const char *name : {"mmap", "mmap2"}) {
        rules.add(SCMP_ACT_ALLOW, name, scmp_arg_cmp{3, SCMP_CMP_MASKED_EQ, MAP_ANONYMOUS, 0});
        rules.add(SCMP_ACT_ALLOW, name, scmp_arg_cmp{3, SCMP_CMP_MASKED_EQ, MAP_ANONYMOUS | MAP_SHARED, MAP_ANONYMOUS});
    }
    if (devices == Devices::Open) {
        rules.allow(ForDevices);
    }
    if (rules.areGood() && seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_OPTIMIZE, 2) == 0) {
        m_program = programOf(filter.get());
    }
}

bool limitNurseryCalls()
{
    constexpr const char *Refused[] = {"execve",
                                       "execveat",
                                       "ptrace",
                                       "process_vm_readv",
                                       "process_vm_writev",
                                       "kill",
                                       "tkill",
                                       "pidfd_send_signal",
                                       "io_uring_setup",
                                       "bpf",
                                       "keyctl",
                                       "add_key",
                                       "request_key",
                                       "userfaultfd",
                                       "kexec_load",
                                       "init_module",
                                       "finit_module",
                                       "perf_event_open",
                                       "setns",
                                       "chroot",
                                       "open_by_handle_at",
                                       "rt_sigqueueinfo"};
    const Filter filter(seccomp_init(SCMP_ACT_ALLOW));
    if (!filter) {
        return false;
    }
    Rules rules(filter.get());
    for (const char *name : Refused) {
        rules.add(SCMP_ACT_ERRNO(EPERM), name);
    }
    return rules.areGood() && load(programOf(filter.get()));
}

bool SystemCalls::enforce() const
{
    return limitSignals() && load(m_program);
}

} // namespace voro::renderer
