/*
 * Loaded into the daemon and its workers: reads of files in the folder that VORO_BROKEN_DISK names fail, as those of a
 * broken disk do, as long as the folder holds a file "broken".
 */

#include <dlfcn.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

bool isUnreadable(int descriptor)
{
    const char *disk = std::getenv("VORO_BROKEN_DISK");
    char link[64];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    char target[PATH_MAX];
    const ssize_t length = disk ? readlink(link, target, sizeof target) : -1;
    return length > 0 && std::string(target, static_cast<size_t>(length)).starts_with(disk)
           && access((std::string(disk) + "/broken").c_str(), F_OK) == 0;
}

} // namespace

extern "C" __attribute__((visibility("default"))) ssize_t pread(int descriptor, void *buffer, size_t size, off_t place)
{
    static const auto real = reinterpret_cast<ssize_t (*)(int, void *, size_t, off_t)>(dlsym(RTLD_NEXT, "pread"));
    if (isUnreadable(descriptor)) {
        errno = EIO;
        return -1;
    }
    return real(descriptor, buffer, size, place);
}
