#pragma once

#include <pps/Fd.h>

#include <cstddef>
#include <vector>

namespace voro::renderer {

/** Makes the files in memory that a worker uses, and bounds those that are in use at a time, by whomever. */
class MemoryFiles {
public:
    /** Enough for the pictures of 8K. */
    static constexpr size_t MostSize = size_t{640} << 20;
    static constexpr size_t MostFiles = 16;

    /** A file of that size, which cannot grow; invalid with errno when the worker has too much, or there is no room. */
    pps::Fd make(size_t size);
    /** Empties what nobody has open or mapped any more, and counts it no longer. */
    void release();

private:
    struct File {
        pps::Fd ours;
        size_t size;
    };
    std::vector<File> m_files;
};

} // namespace voro::renderer
