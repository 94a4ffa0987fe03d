#include "Circumstances.h"

#include <sched.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace voro {

namespace {

constexpr rlim_t UsualStack = rlim_t{8} << 20;

void raiseLimits()
{
    for (const auto resource : {RLIMIT_AS, RLIMIT_CPU, RLIMIT_DATA, RLIMIT_FSIZE, RLIMIT_LOCKS, RLIMIT_MEMLOCK,
                                RLIMIT_MSGQUEUE, RLIMIT_NOFILE, RLIMIT_NPROC, RLIMIT_RTTIME, RLIMIT_SIGPENDING}) {
        rlimit limit{};
        if (getrlimit(resource, &limit) == 0) {
            limit.rlim_cur = limit.rlim_max;
            setrlimit(resource, &limit);
        }
    }
    // Threads get stacks of that size.
    rlimit stack{};
    if (getrlimit(RLIMIT_STACK, &stack) == 0) {
        stack.rlim_cur = std::min(UsualStack, stack.rlim_max);
        setrlimit(RLIMIT_STACK, &stack);
    }
}

void resetScheduling()
{
    const sched_param none{};
    sched_setscheduler(0, SCHED_OTHER, &none);
    setpriority(PRIO_PROCESS, 0, 0);
    // The kernel leaves out those that there are not, or that the cgroup forbids.
    cpu_set_t all;
    std::memset(&all, 0xff, sizeof all);
    sched_setaffinity(0, sizeof all, &all);
    // 0: what the first process has.
    prctl(PR_SET_TIMERSLACK, 0, 0, 0, 0);
}

void resetMemoryPreference()
{
    if (std::FILE *file = std::fopen("/proc/self/oom_score_adj", "we")) {
        std::fputs("0", file);
        std::fclose(file);
    }
}

} // namespace

void forgetStarter()
{
    umask(S_IRWXG | S_IRWXO);
    raiseLimits();
    resetScheduling();
    resetMemoryPreference();
}

} // namespace voro
