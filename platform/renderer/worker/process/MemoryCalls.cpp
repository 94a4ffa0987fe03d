#include <renderer/common/MemoryFile.h>
#include <sys/mman.h>

#include <cerrno>

// Replaces the C library's memfd_create() in the whole process.

extern "C" __attribute__((visibility("default"))) int memfd_create(const char *, unsigned) noexcept
{
    // The caller sets the size only later. The largest one takes no memory until something is written.
    constexpr size_t Largest = size_t{64} << 20;
    const int file = voro::renderer::makeMemoryFile(Largest).release();
    if (file < 0) {
        errno = ENOMEM;
    }
    return file;
}
