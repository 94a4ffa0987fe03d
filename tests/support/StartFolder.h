#pragma once

#include <QtCore/QTemporaryDir>

#include <pps/DaemonRecord.h>
#include <pps/Runtime.h>
#include <sys/socket.h>

#include <csignal>

/** A runtime folder without a daemon, in which clients may start one; it is ended, by its id, at the end. */
class StartFolder {
public:
    StartFolder()
    {
        qputenv("VORO_RUNTIME_DIR", folder().toLocal8Bit());
        qunsetenv("VORO_AUTOSPAWN");
    }
    ~StartFolder() { end(); }

    /** Not there before a client makes it. */
    QString folder() const { return m_parent.filePath("runtime"); }

    /** The process that answers at the socket; 0 when none does. */
    pid_t daemon() const
    {
        const voro::pps::Fd socket = voro::pps::connectTo(folder().toStdString());
        ucred peer{};
        socklen_t size = sizeof peer;
        getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, &peer, &size);
        return peer.pid;
    }
    /** Ends the daemon and waits for its end. */
    void end() const
    {
        const pid_t process = daemon();
        if (process == 0) {
            return;
        }
        kill(process, SIGTERM);
        voro::pps::waitForEnd({process, {}, 0}, -1);
    }

private:
    QTemporaryDir m_parent;
};
