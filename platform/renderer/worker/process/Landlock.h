#pragma once

#include <pps/Fd.h>

#include <cstdint>
#include <vector>

namespace voro::renderer {

/**
 * What a process may do with files, the network and other processes, as the kernel's Landlock enforces it: nothing that
 * the running kernel can forbid, but for the rules that are added. Kernels enforce more with every version.
 */
class Landlock {
public:
    enum class Access {
        Read,
        /** Writing to what is there. */
        Write,
        /** Making, changing and removing files. */
        Create,
        /** Everything that devices can be asked for. */
        Control,
    };

    Landlock();

    /** Allows access to a file, or to everything below a folder; what does not exist is skipped. */
    void allow(const char *path, Access access);
    /** Allows connections to servers on the network. */
    void allowConnections() { m_areConnectionsAllowed = true; }
    /** Restricts the calling thread and the threads that it starts from now on. False when the kernel refuses. */
    bool enforce();

    /** The version of the kernel's interface; 0 without. */
    static int version();

private:
    bool m_areConnectionsAllowed = false;
    uint64_t m_files = 0;
    struct Rule {
        pps::Fd parent;
        uint64_t access;
    };
    std::vector<Rule> m_rules;
};

} // namespace voro::renderer
