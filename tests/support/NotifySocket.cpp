#include "NotifySocket.h"

#include <QtCore/QFile>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>

NotifySocket::NotifySocket(const QString &path) : m_socket(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0))
{
    QFile::remove(path);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    qstrncpy(address.sun_path, QFile::encodeName(path).constData(), sizeof address.sun_path);
    if (bind(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        qFatal("cannot bind %s", qPrintable(path));
    }
}

NotifySocket::~NotifySocket()
{
    close(m_socket);
}

bool NotifySocket::wait() const
{
    constexpr int Patience = 60'000;
    pollfd ready{.fd = m_socket, .events = POLLIN, .revents = 0};
    int count = 0;
    // The end of an earlier daemon may interrupt it.
    do {
        count = poll(&ready, 1, Patience);
    } while (count < 0 && errno == EINTR);
    return count == 1;
}
