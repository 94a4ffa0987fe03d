#pragma once

#include <linux/filter.h>
#include <renderer/common/Reach.h>

#include <vector>

namespace voro::renderer {

enum class Devices { Closed, Open };
enum class Files { ReadOnly, Writable };

/** The system calls that a worker may make, as a program for the kernel, which takes a while to make. */
class SystemCalls {
public:
    SystemCalls(Devices devices, Files files, Reach reach);

    /** From now on the process makes no other calls. False when the kernel refuses. */
    bool enforce() const;

private:
    std::vector<sock_filter> m_program;
};

/**
 * The same for a process that forks workers: no programs, no other processes' memory, none of the kernel's rarer
 * interfaces. What it forks inherits that.
 */
bool limitNurseryCalls();

} // namespace voro::renderer
