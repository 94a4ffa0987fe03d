#pragma once

#include <QtCore/QString>

/** The socket on which a program that is started with it as NOTIFY_SOCKET reports that it is ready. */
class NotifySocket {
public:
    /** Ends the test program when the path cannot be bound. */
    explicit NotifySocket(const QString &path);
    ~NotifySocket();
    Q_DISABLE_COPY_MOVE(NotifySocket)

    /** False when nothing was reported in time. */
    bool wait() const;

private:
    const int m_socket;
};
