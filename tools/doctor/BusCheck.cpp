#include "BusCheck.h"

#include <QtCore/QByteArrayList>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>

namespace voro::doctor {

namespace {

/** Connects to the address of a Unix socket as D-Bus writes it; 0, or an errno number. */
int tryAddress(const QByteArray &address)
{
    sockaddr_un name{AF_UNIX, {}};
    // An abstract name begins with a NUL.
    size_t begin = 0;
    QByteArray path;
    for (const QByteArray &part : address.mid(address.indexOf(':') + 1).split(',')) {
        if (part.startsWith("path=") || part.startsWith("abstract=")) {
            begin = part.startsWith("abstract=");
            path = QByteArray::fromPercentEncoding(part.mid(part.indexOf('=') + 1));
        }
    }
    const auto length = begin + static_cast<size_t>(path.size());
    if (!address.startsWith("unix:") || path.isEmpty() || length >= sizeof name.sun_path) {
        return EAFNOSUPPORT;
    }
    std::memcpy(name.sun_path + begin, path.constData(), static_cast<size_t>(path.size()));
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + length);
    const bool isConnected = connect(connection, reinterpret_cast<const sockaddr *>(&name), size) == 0;
    const int error = isConnected ? 0 : errno;
    close(connection);
    return error;
}

QByteArray busAddress()
{
    if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) {
        return qgetenv("DBUS_SESSION_BUS_ADDRESS");
    }
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    return folder.isEmpty() ? QByteArray() : "unix:path=" + folder + "/bus";
}

} // namespace

std::vector<Finding> BusCheck::examine() const
{
    const QString remedy = QStringLiteral("start it with the session, or run the program under dbus-run-session");
    const QByteArray address = busAddress();
    if (address.isEmpty()) {
        return {
            {Health::Limited, QStringLiteral("there is no session bus; desktops do not see what is playing"), remedy}};
    }
    if (const int error = tryAddress(address.split(';').first()); error != 0) {
        return {{Health::Limited,
                 QStringLiteral("the session bus at %1 does not answer: %2")
                     .arg(QString::fromLocal8Bit(address), QString::fromLocal8Bit(std::strerror(error))),
                 remedy}};
    }
    return {{Health::Good, QStringLiteral("the session bus answers")}};
}

} // namespace voro::doctor
