#include "FileView.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <pps/broker/Accounts.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <map>
#include <utility>

namespace voro::renderer {

namespace {

/** The name of the view in which there are no files. */
constexpr auto Nothing = "nothing";

/** What tells a file from others, as the kernel knows it without asking the disk; empty when there is none. */
std::string identityOf(const pps::Fd &file)
{
    struct statx status {};
    return statx(file.get(), "", AT_EMPTY_PATH | AT_STATX_DONT_SYNC, STATX_INO, &status) == 0
               ? std::to_string(status.stx_dev_major) + ':' + std::to_string(status.stx_dev_minor) + ':'
                     + std::to_string(status.stx_ino)
               : std::string();
}

pps::Fd placeOf(const std::string &process, const char *name)
{
    return pps::Fd(open((process + name).c_str(), O_PATH | O_CLOEXEC));
}

/** A name for a mount namespace and a root in it; empty when the system does not say. */
std::string nameOf(const pps::Fd &mounts, const pps::Fd &root)
{
    const std::string space = identityOf(mounts);
    const std::string place = identityOf(root);
    return space.empty() || place.empty() ? std::string() : space + '/' + place;
}

std::string ownName()
{
    static const std::string name = nameOf(placeOf("/proc/self", "/ns/mnt"), placeOf("/proc/self", "/root"));
    return name;
}

} // namespace

FileView::Shared FileView::of(pid_t process)
{
    static std::map<std::string, std::weak_ptr<const FileView>> views;
    static std::map<pid_t, std::weak_ptr<const FileView>> processes;
    std::erase_if(views, [](const auto &view) { return view.second.expired(); });
    std::erase_if(processes, [](const auto &view) { return view.second.expired(); });
    const auto former = processes[process].lock();
    const bool isOwn = process == pps::Accounts::Services;
    const std::string folder = isOwn ? "/proc/self" : "/proc/" + std::to_string(process);
    pps::Fd mounts = placeOf(folder, "/ns/mnt");
    pps::Fd root = placeOf(folder, "/root");
    std::string name = nameOf(mounts, root);
    if (name == ownName()) {
        name.clear();
        mounts.reset();
        root.reset();
    } else if (name.empty()) {
        if (former) {
            return former;
        }
        // This process's own would let a sandboxed one out that exits, or hides itself, before it is looked at.
        name = Nothing;
        mounts.reset();
        root.reset();
    }
    if (former && former->m_name == name) {
        return former;
    }
    auto view = views[name].lock();
    if (!view) {
        view.reset(new FileView(std::move(mounts), std::move(root), name));
        views[name] = view;
    }
    // It has a count of its own, so that it is known as long as something is done for the process.
    Shared itsView(std::make_shared<Shared>(view), view.get());
    processes[process] = itsView;
    return itsView;
}

pps::Fd FileView::open(const std::string &path, int flags, mode_t mode) const
{
    if (m_name == Nothing) {
        errno = EACCES;
        return {};
    }
    const bool hasRoot = m_root.isValid();
    open_how how{};
    how.flags = static_cast<uint64_t>(flags);
    how.mode = mode;
    // A link such as /proc/self/fd/3 leads to what this process has open.
    how.resolve = RESOLVE_NO_MAGICLINKS | (hasRoot ? RESOLVE_IN_ROOT : 0);
    // Something may be renamed at this very moment, and by intent again and again.
    constexpr int MostAttempts = 100;
    pps::Fd file;
    for (int attempt = 0; attempt < MostAttempts; ++attempt) {
        const int place = hasRoot ? m_root.get() : AT_FDCWD;
        file.reset(static_cast<int>(syscall(SYS_openat2, place, path.c_str(), &how, sizeof how)));
        if (file.isValid() || errno != EAGAIN) {
            break;
        }
    }
    // Kernels before 5.6.
    return hasRoot || file.isValid() || errno != ENOSYS ? std::move(file) : pps::Fd(::open(path.c_str(), flags, mode));
}

} // namespace voro::renderer
