#include "MemoryFiles.h"

#include <fcntl.h>
#include <renderer/common/MemoryFile.h>

#include <cerrno>

namespace voro::renderer {

namespace {

/** Whether somebody has a file open for writing, or mapped: there is no lease for readers then. */
bool isInUse(const pps::Fd &watch)
{
    return fcntl(watch.get(), F_SETLEASE, F_RDLCK) != 0 && errno == EAGAIN;
}

} // namespace

void MemoryFiles::release()
{
    std::erase_if(m_files, [](const File &file) { return !isInUse(file.watch); });
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
    // The descriptor of a new file does not count as one that writes; those of its name do.
    const pps::Fd file = makeMemoryFile(size);
    const std::string name = nameOf(file);
    pps::Fd watch(open(name.c_str(), O_RDONLY | O_CLOEXEC));
    pps::Fd shared(open(name.c_str(), O_RDWR | O_CLOEXEC));
    if (!watch.isValid() || !shared.isValid()) {
        return {};
    }
    m_files.push_back({std::move(watch), size});
    return shared;
}

} // namespace voro::renderer
