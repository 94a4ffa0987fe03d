#include "UsageWatch.h"

#include <fcntl.h>
#include <pps/Fd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <utility>

namespace voro::renderer {

/** Empty where the system does not say. */
std::optional<UsageWatch::Usage> UsageWatch::usageOf(pid_t process)
{
    const pps::Fd file(open(("/proc/" + std::to_string(process) + "/stat").c_str(), O_RDONLY | O_CLOEXEC));
    std::array<char, 1024> text{};
    if (!file.isValid() || read(file.get(), text.data(), text.size() - 1) <= 0) {
        return {};
    }
    // The name, in parentheses, may hold anything. Behind it follow the state, ten numbers, the times in the process
    // and in the kernel, four numbers, how many threads there are, three numbers, and the resident pages.
    const char *behindName = std::strrchr(text.data(), ')');
    unsigned long user = 0;
    unsigned long kernel = 0;
    long threads = 0;
    long pages = 0;
    if (!behindName
        || std::sscanf(behindName + 1,
                       " %*c %*d %*d %*d %*d %*d %*u %*u %*u %*u %*u %lu %lu %*d %*d %*d %*d %ld %*d %*u %*u %ld",
                       &user, &kernel, &threads, &pages)
               != 4) {
        return {};
    }
    const auto ticks = static_cast<unsigned long>(sysconf(_SC_CLK_TCK));
    return Usage{std::chrono::milliseconds((user + kernel) * std::milli::den / ticks), threads,
                 int64_t{pages} * sysconf(_SC_PAGESIZE)};
}

void UsageWatch::notePosition(int64_t position)
{
    m_hasProgress |= m_position != position;
    m_position = position;
}

/** The processor time since there was progress. A process that is idle three quarters of the time wastes none. */
std::chrono::milliseconds UsageWatch::wasted(std::chrono::milliseconds processor)
{
    const Look now{Clock::now(), processor};
    const bool isBusy = (now.processor - m_last.processor) * 4 > now.time - m_last.time;
    m_last = now;
    if (std::exchange(m_hasProgress, false) || !isBusy) {
        m_progress = now;
    }
    // Many threads use the time of a long seek at once.
    return std::min(now.processor - m_progress.processor,
                    std::chrono::duration_cast<std::chrono::milliseconds>(now.time - m_progress.time));
}

std::string UsageWatch::findExcess(pid_t process)
{
    const auto usage = usageOf(process);
    if (!usage) {
        return {};
    }
    if (const auto time = wasted(usage->processor); time > m_limits.processor) {
        return "has used " + std::to_string(time.count()) + " ms of processor time without progress";
    }
    if (usage->threads > m_limits.threads) {
        return "has " + std::to_string(usage->threads) + " threads";
    }
    if (usage->memory > m_limits.memory) {
        return "has " + std::to_string(usage->memory >> 20) + " MiB of memory";
    }
    return {};
}

} // namespace voro::renderer
