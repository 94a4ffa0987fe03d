#include "FilePages.h"

#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace voro::pps {

namespace {

/** A mapping as the system describes it. */
struct Mapping {
    unsigned long begin = 0;
    unsigned long end = 0;
    bool isUnchangedFile = false;
};

/** Reads the first line of a description, which ends with a zero; false for any other line. */
bool parse(std::string_view line, Mapping &mapping)
{
    unsigned long begin = 0;
    unsigned long end = 0;
    char flags[5] = {};
    if (std::sscanf(line.data(), "%lx-%lx %4s", &begin, &end, flags) != 3) {
        return false;
    }
    const bool isFile = line.find(" /") != std::string_view::npos;
    mapping = {begin, end, isFile && flags[1] == '-' && flags[3] == 'p'};
    return true;
}

using Area = std::span<std::byte>;

/** Adds an object's areas that cannot be written. */
int addAreas(dl_phdr_info *object, size_t, void *areas)
{
    static const auto page = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE));
    for (const auto &segment : std::span(object->dlpi_phdr, object->dlpi_phnum)) {
        if (segment.p_type != PT_LOAD || (segment.p_flags & PF_W) != 0) {
            continue;
        }
        const uintptr_t begin = (object->dlpi_addr + segment.p_vaddr) & ~(page - 1);
        const uintptr_t end = (object->dlpi_addr + segment.p_vaddr + segment.p_memsz + page - 1) & ~(page - 1);
        static_cast<std::vector<Area> *>(areas)->emplace_back(reinterpret_cast<std::byte *>(begin), end - begin);
    }
    return 0;
}

/**
 * Gives the areas of all objects back, when all are known: the descriptions are in such pages themselves, and would
 * bring others along with them.
 */
int releaseAreas(dl_phdr_info *, size_t, void *)
{
    std::vector<Area> areas;
    dl_iterate_phdr(addAreas, &areas);
    for (const Area &area : areas) {
        madvise(area.data(), area.size(), MADV_DONTNEED);
    }
    constexpr int Enough = 1;
    return Enough;
}

} // namespace

void releaseFilePages(const std::string &process)
{
    const std::unique_ptr<FILE, int (*)(FILE *)> mappings(std::fopen((process + "/smaps").c_str(), "re"), std::fclose);
    char *text = nullptr;
    size_t size = 0;
    Mapping mapping;
    while (mappings && getline(&text, &size, mappings.get()) >= 0) {
        const std::string_view line(text);
        // Changed pages, like those of relocated addresses, would be lost.
        if (!parse(line, mapping) && line.starts_with("Anonymous:") && line.ends_with(" 0 kB\n")
            && mapping.isUnchangedFile) {
            madvise(reinterpret_cast<void *>(mapping.begin), mapping.end - mapping.begin, MADV_DONTNEED);
        }
    }
    std::free(text);
}

void releaseLibraryPages()
{
    // No other thread loads or unloads anything while a callback runs.
    dl_iterate_phdr(releaseAreas, nullptr);
}

} // namespace voro::pps
