#pragma once

#include "BlockingCall.h"

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QTimer>
#include <QtDBus/QDBusConnection>

namespace voro::nowplaying {

/**
 * The connection to the session bus, for as long as there is one: it comes with the bus and again after it was lost.
 */
class SessionBus : public QObject {
    Q_OBJECT
public:
    SessionBus();
    ~SessionBus() override;

    bool isConnecting() const { return m_connecting.isRunning(); }
    bool isConnected() const { return m_isConnected; }
    QDBusConnection connection() const { return QDBusConnection(m_name); }

Q_SIGNALS:
    void connected();
    /** The connection is lost; receivers release it before they return. */
    void disconnected();
    /** Whether there is a bus is known: isConnecting() is false. */
    void settled();

private Q_SLOTS:
    void lose();

private:
    void seek();
    void connectToBus();
    void finish();
    void drop();
    void watchForSocket();

    const QString m_address;
    /** The bus's socket when it has a path. */
    const QString m_socket;
    QString m_name;
    int m_attempts = 0;
    bool m_isConnected = false;
    BlockingCall m_connecting;
    QTimer m_retry;
    QFileSystemWatcher m_watcher;
};

} // namespace voro::nowplaying
