#include "SessionBus.h"

#include <QtCore/QDir>
#include <QtCore/QUrl>

#include <chrono>

namespace voro::nowplaying {

namespace {

using namespace std::chrono_literals;

/** A bus that just made its socket may not answer yet; a socket that was left behind never does. */
constexpr int MaximumAttempts = 6;
constexpr auto FirstRetry = 50ms;

/** The signal by which a connection reports its own end. */
const QString LocalPath = QStringLiteral("/org/freedesktop/DBus/Local");
const QString LocalInterface = QStringLiteral("org.freedesktop.DBus.Local");
const QString Disconnected = QStringLiteral("Disconnected");

QString sessionAddress()
{
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!address.isEmpty() || folder.isEmpty()) {
        return address;
    }
    return "unix:path=" + QString::fromLatin1(QUrl::toPercentEncoding(folder + "/bus", "/-_.\\*"));
}

QString socketOf(const QString &address)
{
    static const QString Unix = "unix:";
    // Of several addresses the first counts.
    const QString first = address.section(';', 0, 0);
    if (first.startsWith(Unix)) {
        for (const QString &field : first.mid(Unix.size()).split(',')) {
            if (field.startsWith("path=")) {
                return QUrl::fromPercentEncoding(field.mid(5).toLatin1());
            }
        }
    }
    return {};
}

QString nearestFolder(const QString &file)
{
    QString folder = QFileInfo(file).path();
    while (!QFileInfo(folder).isDir() && !QDir(folder).isRoot()) {
        folder = QFileInfo(folder).path();
    }
    return folder;
}

} // namespace

SessionBus::SessionBus() : m_address(sessionAddress()), m_socket(socketOf(m_address))
{
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &SessionBus::connectToBus);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &SessionBus::seek);
    seek();
}

SessionBus::~SessionBus()
{
    // Qt's connections are locked while one is being made.
    if (!m_name.isEmpty() && !isConnecting()) {
        drop();
    }
}

void SessionBus::seek()
{
    if (m_address.isEmpty() || m_isConnected || isConnecting()) {
        return;
    }
    watchForSocket();
    m_retry.stop();
    m_attempts = 0;
    if (m_socket.isEmpty() || QFileInfo::exists(m_socket)) {
        connectToBus();
    }
}

void SessionBus::watchForSocket()
{
    if (m_socket.isEmpty()) {
        return;
    }
    const QString folder = nearestFolder(m_socket);
    if (!m_watcher.directories().contains(folder)) {
        if (!m_watcher.directories().isEmpty()) {
            m_watcher.removePaths(m_watcher.directories());
        }
        m_watcher.addPath(folder);
    }
}

void SessionBus::connectToBus()
{
    static int number = 0;
    m_name = QStringLiteral("voro%1").arg(++number);
    // Has Qt make what it destroys at the process's end, which must not happen while the bus is waited for.
    connection();
    m_connecting.start([address = m_address, name = m_name] { QDBusConnection::connectToBus(address, name); },
                       [this] { finish(); });
}

void SessionBus::finish()
{
    QDBusConnection bus = connection();
    m_isConnected =
        bus.isConnected() && bus.connect(QString(), LocalPath, LocalInterface, Disconnected, this, SLOT(lose()));
    if (m_isConnected) {
        if (!m_watcher.directories().isEmpty()) {
            m_watcher.removePaths(m_watcher.directories());
        }
        Q_EMIT connected();
    } else {
        drop();
        if (++m_attempts < MaximumAttempts) {
            m_retry.start(FirstRetry * (1 << m_attempts));
        }
    }
    Q_EMIT settled();
}

void SessionBus::lose()
{
    if (m_isConnected) {
        m_isConnected = false;
        Q_EMIT disconnected();
        drop();
        seek();
    }
}

// Qt ends a connection in a thread of its own, without waiting for it: none of our objects may hang on it by then.
void SessionBus::drop()
{
    connection().disconnect(QString(), LocalPath, LocalInterface, Disconnected, this, SLOT(lose()));
    QDBusConnection::disconnectFromBus(std::exchange(m_name, QString()));
}

} // namespace voro::nowplaying
