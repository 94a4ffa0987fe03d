#pragma once

#include <pps/Fd.h>
#include <sys/socket.h>

#include <utility>

namespace voro::renderer {

/** A pair of connected, non-blocking sockets; invalid ones when the process has too many. */
inline std::pair<pps::Fd, pps::Fd> socketPair()
{
    int sockets[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, sockets) != 0) {
        return {};
    }
    return {pps::Fd(sockets[0]), pps::Fd(sockets[1])};
}

} // namespace voro::renderer
