#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace voro::renderer {

/** Finds out when a process uses more than any medium needs, like a decoder in an endless loop. */
class UsageWatch {
public:
    struct Limits {
        /** Of processor time and of time, without progress. */
        std::chrono::milliseconds processor{30'000};
        long threads = 512;
        /** Resident, in bytes: all that the limit of a worker's data leaves it, and its files in memory. */
        int64_t memory = int64_t{3} << 30;
    };

    explicit UsageWatch(const Limits &limits) : m_limits(limits) {}

    /** The process did something that somebody waited for. */
    void noteProgress() { m_hasProgress = true; }
    /** Another position than before is progress. */
    void notePosition(int64_t position);

    /** Looks at the process. Returns the limit that it exceeds, in words; empty when it exceeds none. */
    std::string findExcess(pid_t process);

private:
    using Clock = std::chrono::steady_clock;
    struct Usage {
        std::chrono::milliseconds processor{0};
        long threads = 0;
        int64_t memory = 0;
    };
    static std::optional<Usage> usageOf(pid_t process);
    std::chrono::milliseconds wasted(std::chrono::milliseconds processor);

    /** When the process was looked at, and what it had used by then. */
    struct Look {
        Clock::time_point time;
        std::chrono::milliseconds processor{0};
    };
    const Limits m_limits;
    std::optional<int64_t> m_position;
    bool m_hasProgress = true;
    Look m_last;
    /** The last look at which it had made progress, or had mostly been idle. */
    Look m_progress;
};

} // namespace voro::renderer
