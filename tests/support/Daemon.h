#pragma once

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

/**
 * A daemon of its own for a test, in a runtime folder of its own. While it exists VORO_RUNTIME_DIR names that folder,
 * and no other daemon is started by itself (VORO_AUTOSPAWN=0).
 */
class Daemon {
public:
    enum Start { Now, Later };

    /** Makes the folder and starts the daemon in it; returns when clients can connect. */
    explicit Daemon(Start start = Now);
    /** The same with additional variables "NAME=VALUE" in its environment. */
    explicit Daemon(const QStringList &environment, QProcess::ProcessChannelMode output = QProcess::ForwardedChannels);
    /** Ends the daemon. A daemon that crashed or complained (a sanitizer, a leak) ends the test program. */
    ~Daemon();

    /** What it and its workers have written since the last call, if its channels are merged. */
    QByteArray takeOutput() { return m_process.readAll(); }
    QString folder() const { return m_folder.path(); }
    /** The id of the process that serves, 0 when it does not run. Its parent, which guards it, is guardianId(). */
    qint64 processId() const;
    qint64 guardianId() const { return m_process.processId(); }

    /** Starts the daemon, with additional variables "NAME=VALUE" in its environment. */
    bool start(const QStringList &environment = {});
    /** Ends it in order; false when it did not end with status 0. */
    bool stop();
    /** Kills it, as a crash would. */
    void kill();

private:
    QTemporaryDir m_folder;
    QProcess m_process;
};
