#include "Landlock.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace voro::renderer {

namespace {

/** The attributes of a ruleset as newer kernels know them; an older kernel gets the beginning. */
struct Ruleset {
    uint64_t files = 0;
    /** From version 4. */
    uint64_t network = 0;
    /** From version 6. */
    uint64_t scopes = 0;
};

constexpr uint64_t Execute = 1U << 0;
constexpr uint64_t WriteFile = 1U << 1;
constexpr uint64_t ReadFile = 1U << 2;
constexpr uint64_t ReadFolder = 1U << 3;
constexpr uint64_t RemoveFile = 1U << 5;
constexpr uint64_t MakeFile = 1U << 8;
constexpr uint64_t Truncate = 1U << 14;
constexpr uint64_t ControlDevice = 1U << 15;
/** The rights that a rule for a single file, not a folder, can grant. */
constexpr uint64_t OfFiles = Execute | WriteFile | ReadFile | Truncate | ControlDevice;

/** By Landlock::Access. */
constexpr uint64_t KindsOf[] = {
    ReadFile | ReadFolder,
    ReadFile | WriteFile,
    ReadFile | ReadFolder | WriteFile | Truncate | MakeFile | RemoveFile,
    ReadFile | ReadFolder | WriteFile | ControlDevice,
};

constexpr uint64_t BindTcp = 1U << 0;
constexpr uint64_t ConnectTcp = 1U << 1;

constexpr uint64_t AbstractSockets = 1U << 0;
constexpr uint64_t Signals = 1U << 1;

/** How many kinds of access to files a version knows; each is one bit. */
unsigned kindsOfAccess(int version)
{
    constexpr unsigned Kinds[] = {0, 13, 14, 15, 15, 16};
    return Kinds[std::min<size_t>(static_cast<size_t>(version), std::size(Kinds) - 1)];
}

size_t sizeOfRuleset(int version)
{
    if (version < 4) {
        return sizeof(uint64_t);
    }
    return version < 6 ? 2 * sizeof(uint64_t) : sizeof(Ruleset);
}

} // namespace

int Landlock::version()
{
    static const auto version =
        static_cast<int>(syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION));
    return std::max(version, 0);
}

Landlock::Landlock() : m_files((uint64_t{1} << kindsOfAccess(version())) - 1) {}

void Landlock::allow(const char *path, Access access)
{
    pps::Fd parent(open(path, O_PATH | O_CLOEXEC));
    struct stat status {};
    if (!parent.isValid() || fstat(parent.get(), &status) != 0) {
        return;
    }
    uint64_t kinds = KindsOf[static_cast<size_t>(access)];
    if (!S_ISDIR(status.st_mode)) {
        kinds &= OfFiles;
    }
    m_rules.push_back({std::move(parent), kinds & m_files});
}

bool Landlock::enforce()
{
    Ruleset attributes{.files = m_files,
                       .network = BindTcp | (m_areConnectionsAllowed ? 0 : ConnectTcp),
                       .scopes = Signals | AbstractSockets};
    const pps::Fd ruleset(
        static_cast<int>(syscall(SYS_landlock_create_ruleset, &attributes, sizeOfRuleset(version()), 0)));
    if (!ruleset.isValid()) {
        return false;
    }
    for (const Rule &rule : m_rules) {
        landlock_path_beneath_attr beneath{};
        beneath.allowed_access = rule.access;
        beneath.parent_fd = rule.parent.get();
        if (syscall(SYS_landlock_add_rule, ruleset.get(), LANDLOCK_RULE_PATH_BENEATH, &beneath, 0) != 0) {
            return false;
        }
    }
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && syscall(SYS_landlock_restrict_self, ruleset.get(), 0) == 0;
}

} // namespace voro::renderer
