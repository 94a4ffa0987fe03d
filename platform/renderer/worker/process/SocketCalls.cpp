#include "SoundServer.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

// Replaces the C library's socketpair() in the whole process by a pipe: GStreamer reads at its first end and writes at
// the second. Descriptors cannot wait in a pipe. Those that wait in sockets count as the user's, and too many would
// keep all other processes from passing theirs. Only a search for a sound server on the network gets real pairs, for
// datagrams.

extern "C" __attribute__((visibility("default"))) int socketpair(int family, int type, int, int ends[2]) noexcept
{
    constexpr int Flags = SOCK_CLOEXEC | SOCK_NONBLOCK;
    if (family == AF_UNIX && (type & ~Flags) == SOCK_DGRAM && voro::renderer::isSoundServerFar()) {
        return static_cast<int>(syscall(SYS_socketpair, family, type, 0, ends));
    }
    if (family != AF_UNIX || (type & ~Flags) != SOCK_STREAM) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return pipe2(ends, O_CLOEXEC | (type & SOCK_NONBLOCK ? O_NONBLOCK : 0));
}
