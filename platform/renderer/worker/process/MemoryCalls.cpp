#include <renderer/common/MemoryFile.h>
#include <sys/mman.h>

#include <cerrno>

// Every library of the process that makes a file in memory comes by here.

extern "C" __attribute__((visibility("default"))) int memfd_create(const char *, unsigned) noexcept
{
    // A library says only later how large it is to be; it takes no memory until something is written.
    constexpr size_t Largest = size_t{64} << 20;
    const int file = voro::renderer::makeMemoryFile(Largest).release();
    if (file < 0) {
        errno = ENOMEM;
    }
    return file;
}
