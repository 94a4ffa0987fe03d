#include "MemoryFiles.h"

#include <fcntl.h>
#include <renderer/common/MemoryFile.h>

#include <cerrno>

namespace voro::renderer {

namespace {

/**
 * Empties the file for good, since it cannot grow, if nobody else uses it. The lease says so and holds back whoever
 * would open the file in between; the descriptor of a path does not count as open.
 */
bool isEmptied(const pps::Fd &file)
{
    const bool isUnused = fcntl(file.get(), F_SETLEASE, F_WRLCK) == 0;
    const bool isEmpty = isUnused && ftruncate(file.get(), 0) == 0;
    if (isUnused) {
        fcntl(file.get(), F_SETLEASE, F_UNLCK);
    }
    return isEmpty;
}

} // namespace

void MemoryFiles::release()
{
    std::erase_if(m_files, [](const File &file) { return isEmptied(file.ours); });
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
