#pragma once

#include <pps/Fd.h>
#include <sys/types.h>

#include <memory>
#include <string>

namespace voro::renderer {

/**
 * The files as an application sees them. One in a sandbox may see others under the same names than the daemon does,
 * and plays and records what it sees itself. May be used by every thread.
 */
class FileView {
public:
    using Shared = std::shared_ptr<const FileView>;

    /**
     * The view of a process, or this process's own for Accounts::Services. When the process has gone, or the system
     * does not let its view be known, that is the one that it had if that is still in use, else one in which no file
     * can be opened. Does not wait for a disk, and belongs to the event loop.
     */
    static Shared of(pid_t process);

    /** As open(2); invalid with errno. Links lead nowhere beyond the view. */
    pps::Fd open(const std::string &path, int flags, mode_t mode = 0) const;
    /** Tells files of this view apart from those of others that have the same names; empty for this process's own. */
    const std::string &name() const { return m_name; }

private:
    FileView(pps::Fd mounts, pps::Fd root, std::string name)
        : m_mounts(std::move(mounts)),
          m_root(std::move(root)),
          m_name(std::move(name))
    {}

    /** Keeps the mount namespace, so that no other one gets its name. */
    const pps::Fd m_mounts;
    /** Invalid for this process's own view. */
    const pps::Fd m_root;
    const std::string m_name;
};

} // namespace voro::renderer
