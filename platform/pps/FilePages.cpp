#include "FilePages.h"

#include <sys/mman.h>

#include <cstdio>
#include <fstream>

namespace voro::pps {

namespace {

/** A mapping as the system describes it. */
struct Mapping {
    unsigned long begin = 0;
    unsigned long end = 0;
    bool isUnchangedFile = false;
};

/** Reads the first line of a description; false for any other line. */
bool parse(const std::string &line, Mapping &mapping)
{
    unsigned long begin = 0;
    unsigned long end = 0;
    char flags[5] = {};
    if (std::sscanf(line.c_str(), "%lx-%lx %4s", &begin, &end, flags) != 3) {
        return false;
    }
    const bool isFile = line.find(" /") != std::string::npos;
    mapping = {begin, end, isFile && flags[1] == '-' && flags[3] == 'p'};
    return true;
}

} // namespace

void releaseFilePages(const std::string &process)
{
    std::ifstream mappings(process + "/smaps");
    Mapping mapping;
    for (std::string line; std::getline(mappings, line);) {
        // Changed pages, like those of relocated addresses, would be lost.
        if (!parse(line, mapping) && line.starts_with("Anonymous:") && line.ends_with(" 0 kB")
            && mapping.isUnchangedFile) {
            madvise(reinterpret_cast<void *>(mapping.begin), mapping.end - mapping.begin, MADV_DONTNEED);
        }
    }
}

} // namespace voro::pps
