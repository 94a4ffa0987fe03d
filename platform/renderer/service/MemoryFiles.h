#pragma once

#include <pps/Fd.h>

#include <cstddef>
#include <vector>

namespace voro::renderer {

/** Makes the files in memory that a worker uses, and bounds those that are in use at a time, by whomever. */
class MemoryFiles {
public:
    static constexpr size_t MostSize = size_t{512} << 20;
    static constexpr size_t MostFiles = 16;

    /** A file of that size, which cannot grow; invalid with errno when the worker has too much, or there is no room. */
    pps::Fd make(size_t size);
    /** Lets go of what nobody uses any more. */
    void release();

private:
    struct File {
        /** Open for reading; all others who use the file have it open for writing. */
        pps::Fd watch;
        size_t size;
    };
    std::vector<File> m_files;
};

} // namespace voro::renderer
