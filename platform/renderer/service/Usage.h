#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>

namespace voro::renderer {

/** What a process has used. */
struct Usage {
    std::chrono::milliseconds processor{0};
    long threads = 0;

    /** Empty where the system does not say. */
    static std::optional<Usage> of(pid_t process);
};

} // namespace voro::renderer
