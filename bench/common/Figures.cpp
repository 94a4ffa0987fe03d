#include "Figures.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace bench {

int64_t now()
{
    timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * static_cast<int64_t>(1'000'000'000) + time.tv_nsec;
}

double Figures::quantile(double share) const
{
    if (m_values.empty()) {
        return 0;
    }
    std::vector<double> sorted = m_values;
    std::sort(sorted.begin(), sorted.end());
    return sorted[std::min(sorted.size() - 1, static_cast<size_t>(share * static_cast<double>(sorted.size())))];
}

double Figures::median() const
{
    return quantile(0.5);
}

void printHead(const std::string &title)
{
    std::printf("\n### %s\n\n| what | ours | peer | wanted |\n|---|---|---|---|\n", title.c_str());
    std::fflush(stdout);
}

void printRow(const std::string &what, const std::string &ours, const std::string &peer, const std::string &wanted)
{
    std::printf("| %s | %s | %s | %s |\n", what.c_str(), ours.c_str(), peer.c_str(), wanted.c_str());
    std::fflush(stdout);
}

std::string text(double value, int digits, const char *unit)
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.*f%s", digits, value, unit);
    return buffer;
}

std::string megabytes(long kilobytes, const char *suffix)
{
    return text(static_cast<double>(kilobytes) / 1000, 1, " MB") + suffix;
}

std::string milliseconds(double nanoseconds)
{
    return text(nanoseconds / 1e6, 2, " ms");
}

} // namespace bench
