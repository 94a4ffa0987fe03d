#include "ConfinementCheck.h"

#include <QtCore/QFile>

#include <linux/landlock.h>
#include <sched.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace voro::doctor {

namespace {

/** The first version that covers signals and abstract sockets, the last that workers make use of. */
constexpr long WholeLandlock = 6;

Finding landlock()
{
    const long version = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    const QString remedy = QStringLiteral("use a newer kernel, with landlock in the list /sys/kernel/security/lsm");
    if (version <= 0) {
        return {Health::Limited, QStringLiteral("the kernel has no Landlock, one of three layers around workers"),
                remedy};
    }
    const QString text = QStringLiteral("Landlock keeps workers from files and ports, version %1").arg(version);
    return version < WholeLandlock ? Finding{Health::Limited, text + QStringLiteral(" of 6"), remedy}
                                   : Finding{Health::Good, text};
}

Finding systemCalls()
{
    QFile actions(QStringLiteral("/proc/sys/kernel/seccomp/actions_avail"));
    if (!actions.open(QFile::ReadOnly) || !actions.readAll().split(' ').contains("errno")) {
        return {Health::Limited, QStringLiteral("the kernel has no seccomp; a worker may call whatever it likes"),
                QStringLiteral("use a kernel that was built with CONFIG_SECCOMP_FILTER")};
    }
    return {Health::Good, QStringLiteral("seccomp limits what workers may ask the kernel for")};
}

/** Tries in a process of its own whether a user may have namespaces of users, mounts and the net. */
bool hasNamespaces()
{
    const pid_t child = fork();
    if (child == 0) {
        _exit(unshare(CLONE_NEWUSER | CLONE_NEWNS | CLONE_NEWNET) == 0 ? 0 : 1);
    }
    int status = 0;
    return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

Finding namespaces()
{
    if (!hasNamespaces()) {
        return {Health::Limited,
                QStringLiteral("this machine gives users no namespaces; a worker could see names of files and connect "
                               "to other servers"),
                QStringLiteral("sysctl kernel.unprivileged_userns_clone=1 user.max_user_namespaces=15000, or "
                               "kernel.apparmor_restrict_unprivileged_userns=0")};
    }
    return {Health::Good, QStringLiteral("namespaces hide files, processes, servers and the net from workers")};
}

} // namespace

std::vector<Finding> ConfinementCheck::examine() const
{
    return {namespaces(), landlock(), systemCalls()};
}

} // namespace voro::doctor
