#include "SoundServer.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

// Every library of the process that makes a pair of sockets comes by here, and gets a pipe: GStreamer reads at its
// first end and writes at the second. Descriptors cannot wait in a pipe. Those that wait in sockets count as the
// user's, and too many would keep all other processes from passing theirs. What looks for a sound server on the network
// needs pairs for datagrams, and gets them then.

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
