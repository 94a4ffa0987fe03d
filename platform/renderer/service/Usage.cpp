#include "Usage.h"

#include <fcntl.h>
#include <pps/Fd.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <string>

namespace voro::renderer {

std::optional<Usage> Usage::of(pid_t process)
{
    const pps::Fd file(open(("/proc/" + std::to_string(process) + "/stat").c_str(), O_RDONLY | O_CLOEXEC));
    std::array<char, 1024> text{};
    if (!file.isValid() || read(file.get(), text.data(), text.size() - 1) <= 0) {
        return {};
    }
    // The name, in parentheses, may hold anything. Behind it follow the state, ten numbers, the times in the process
    // and in the kernel, four numbers, and how many threads there are.
    const char *behindName = std::strrchr(text.data(), ')');
    unsigned long user = 0;
    unsigned long kernel = 0;
    long threads = 0;
    if (!behindName
        || std::sscanf(behindName + 1, " %*c %*d %*d %*d %*d %*d %*u %*u %*u %*u %*u %lu %lu %*d %*d %*d %*d %ld",
                       &user, &kernel, &threads)
               != 3) {
        return {};
    }
    const auto ticks = static_cast<unsigned long>(sysconf(_SC_CLK_TCK));
    return Usage{std::chrono::milliseconds((user + kernel) * std::milli::den / ticks), threads};
}

} // namespace voro::renderer
