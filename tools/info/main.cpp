// voro-info: reads what a medium says of itself, for `voro info`. The medium is standard input, because this process
// may open no file: a broken medium can do no more than end it.

#include "MediumInfo.h"

#include <QtCore/QJsonDocument>

#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// Their shadows are larger than any limit.
constexpr rlim_t MostMemory = RLIM_INFINITY;
#else
constexpr rlim_t MostMemory = static_cast<rlim_t>(1) << 30;
#endif
constexpr rlim_t MostSeconds = 20;
/** What the first version of Landlock knows: executing, reading and changing files. */
constexpr uint64_t AllAccess = (LANDLOCK_ACCESS_FS_MAKE_SYM << 1) - 1;

void confine()
{
    const rlimit memory{MostMemory, MostMemory};
    const rlimit time{MostSeconds, MostSeconds};
    setrlimit(RLIMIT_AS, &memory);
    setrlimit(RLIMIT_CPU, &time);
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    landlock_ruleset_attr attributes{};
    attributes.handled_access_fs = AllAccess;
    const auto ruleset = syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes.handled_access_fs, 0);
    if (ruleset >= 0) {
        syscall(SYS_landlock_restrict_self, ruleset, 0);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 1) {
        std::fprintf(stderr, "usage: %s <MEDIUM\n", argv[0]);
        return 2;
    }
    confine();
    const QJsonObject medium = voro::info::read(STDIN_FILENO);
    if (medium.isEmpty()) {
        return 1;
    }
    std::fputs(QJsonDocument(medium).toJson(QJsonDocument::Compact).constData(), stdout);
    std::fflush(stdout);
    // What looks around at the end of a program, as leak checkers do, may open nothing.
    std::_Exit(0);
}
