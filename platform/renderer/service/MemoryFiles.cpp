#include "MemoryFiles.h"

#include <fcntl.h>
#include <renderer/common/MemoryFile.h>

#include <cerrno>

namespace voro::renderer {

namespace {

/** Empties a file for good: it cannot grow again, nor be written to when it must not shrink. */
bool empty(const pps::Fd &file, size_t size)
{
    return ftruncate(file.get(), 0) == 0
           || (fallocate(file.get(), FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(size)) == 0
               && fcntl(file.get(), F_ADD_SEALS, F_SEAL_WRITE) == 0);
}

/**
 * Empties the file unless it is open or mapped elsewhere: only then is the write lease granted, which also delays an
 * open in between. A descriptor of the path alone does not count.
 */
bool isEmptied(const pps::Fd &file, size_t size)
{
    const bool isUnused = fcntl(file.get(), F_SETLEASE, F_WRLCK) == 0;
    const bool isEmpty = isUnused && empty(file, size);
    if (isUnused) {
        fcntl(file.get(), F_SETLEASE, F_UNLCK);
    }
    return isEmpty;
}

} // namespace

void MemoryFiles::release()
{
    std::erase_if(m_files, [](const File &file) { return isEmptied(file.ours, file.size); });
}

pps::Fd MemoryFiles::make(size_t size)
{
    release();
    size_t total = 0;
    for (const File &file : m_files) {
        total += file.size;
    }
    if (m_files.size() >= MostFiles || size > MostSize - total) {
        errno = ENOMEM;
        return {};
    }
    // A lease takes no notice of the descriptor of a new file, but of those that were opened by name.
    const pps::Fd file = makeMemoryFile(size);
    const std::string name = nameOf(file);
    pps::Fd ours(open(name.c_str(), O_RDWR | O_CLOEXEC));
    pps::Fd shared(open(name.c_str(), O_RDWR | O_CLOEXEC));
    if (!ours.isValid() || !shared.isValid()) {
        return {};
    }
    m_files.push_back({std::move(ours), size});
    return shared;
}

} // namespace voro::renderer
