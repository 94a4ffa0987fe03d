#include "Module.h"

#include <renderer/common/MemoryFile.h>
#include <renderer/worker/video/ScreenAttach.h>
#include <sys/ipc.h>
#include <sys/mman.h>
#include <sys/shm.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <map>
#include <mutex>

// Every library of the process that shares pictures with an X server comes by here, instead of going to the C library
// and that of the server's extension. A segment is a file in memory, and its number the descriptor: segments of the
// system would not count, and whoever may attach them may attach those of other programs.

namespace {

/** The sizes of the segments that are attached, by address. */
class Attached {
public:
    void add(void *address, size_t size)
    {
        const std::lock_guard lock(m_mutex);
        m_sizes[address] = size;
    }
    /** 0 when there is none. */
    size_t take(const void *address)
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_sizes.find(address);
        const size_t size = found == m_sizes.end() ? 0 : found->second;
        if (size != 0) {
            m_sizes.erase(found);
        }
        return size;
    }

private:
    std::mutex m_mutex;
    std::map<const void *, size_t> m_sizes;
};

Attached &attached()
{
    static Attached attached;
    return attached;
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) int shmget(key_t key, size_t size, int) noexcept
{
    const int file = key == IPC_PRIVATE && size > 0 ? voro::renderer::makeMemoryFile(size).release() : -1;
    if (file < 0) {
        errno = key == IPC_PRIVATE ? ENOMEM : EACCES;
    }
    return file;
}

__attribute__((visibility("default"))) void *shmat(int segment, const void *, int) noexcept
{
    struct stat status {};
    if (fstat(segment, &status) != 0) {
        return MAP_FAILED;
    }
    const auto size = static_cast<size_t>(status.st_size);
    void *address = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, segment, 0);
    if (address != MAP_FAILED) {
        attached().add(address, size);
    }
    return address;
}

__attribute__((visibility("default"))) int shmdt(const void *address) noexcept
{
    const size_t size = attached().take(address);
    if (size == 0) {
        errno = EINVAL;
        return -1;
    }
    return munmap(const_cast<void *>(address), size);
}

__attribute__((visibility("default"))) int shmctl(int segment, int command, shmid_ds *) noexcept
{
    if (command != IPC_RMID) {
        errno = EINVAL;
        return -1;
    }
    return close(segment);
}

__attribute__((visibility("default"))) int XShmAttach(void *display, void *segment)
{
    using namespace voro::renderer;
    static const auto attach = functionOf<AttachToScreen>("screen", AttachToScreenName);
    return attach ? attach(display, segment) : 0;
}
}
