#include "FileView.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <utility>

namespace voro::renderer {

namespace {

/** What tells an object of the kernel from others; empty when there is none. */
std::string identityOf(const std::string &path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? std::to_string(status.st_dev) + ':' + std::to_string(status.st_ino)
                                            : std::string();
}

/** The mount namespace and the root of a process; empty when the system does not say. */
std::string viewOf(const std::string &process)
{
    const std::string mounts = identityOf(process + "/ns/mnt");
    const std::string root = identityOf(process + "/root/.");
    return mounts.empty() || root.empty() ? std::string() : mounts + '/' + root;
}

} // namespace

FileView::Shared FileView::of(pid_t process)
{
    const std::string folder = "/proc/" + std::to_string(process);
    std::string name = viewOf(folder);
    pps::Fd root;
    if (!name.empty() && name != viewOf("/proc/self")) {
        root.reset(::open((folder + "/root").c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    }
    if (!root.isValid()) {
        name.clear();
    }
    return Shared(new FileView(std::move(root), std::move(name)));
}

pps::Fd FileView::open(const std::string &path, int flags, mode_t mode) const
{
    if (!m_root.isValid()) {
        return pps::Fd(::open(path.c_str(), flags, mode));
    }
    open_how how{};
    how.flags = static_cast<uint64_t>(flags);
    how.mode = mode;
    how.resolve = RESOLVE_IN_ROOT | RESOLVE_NO_MAGICLINKS;
    pps::Fd file;
    do {
        file.reset(static_cast<int>(syscall(SYS_openat2, m_root.get(), path.c_str(), &how, sizeof how)));
        // Something was renamed at this very moment.
    } while (!file.isValid() && errno == EAGAIN);
    return file;
}

} // namespace voro::renderer
