#include "Acceptor.h"

#include <fcntl.h>
#include <sys/socket.h>

#include <cerrno>

namespace voro::pps {

namespace {

Fd spareDescriptor()
{
    return Fd(open("/dev/null", O_RDONLY | O_CLOEXEC));
}

} // namespace

Acceptor::Acceptor() : m_spare(spareDescriptor()) {}

bool Acceptor::accept(int listener, Fd &socket)
{
    socket.reset(accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
    if (socket.isValid()) {
        return true;
    }
    if (errno != EMFILE && errno != ENFILE) {
        return errno == EINTR || errno == ECONNABORTED;
    }
    m_spare.reset();
    const bool isTaken = Fd(accept4(listener, nullptr, nullptr, SOCK_CLOEXEC)).isValid();
    m_spare = spareDescriptor();
    return isTaken;
}

} // namespace voro::pps
