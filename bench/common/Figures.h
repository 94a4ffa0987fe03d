#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/** CLOCK_MONOTONIC in nanoseconds: the same clock in every process. */
int64_t now();

/** Measured values of one kind. */
class Figures {
public:
    void add(double value) { m_values.push_back(value); }
    size_t count() const { return m_values.size(); }
    double median() const;
    /** The value below which the given share (0 to 1) of the values lies. */
    double quantile(double share) const;

private:
    std::vector<double> m_values;
};

/** Prints one row of a Markdown table: "| what | ours | peer | wanted |". */
void printRow(const std::string &what, const std::string &ours, const std::string &peer, const std::string &wanted);
void printHead(const std::string &title);
/** "1.23 ms" from nanoseconds. */
std::string milliseconds(double nanoseconds);
/** "1.5 MB" with something behind it. */
std::string megabytes(long kilobytes, const char *suffix = "");
std::string text(double value, int digits, const char *unit);

} // namespace bench
