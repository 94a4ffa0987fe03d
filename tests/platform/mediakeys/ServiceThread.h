#pragma once

#include <QtCore/QMutex>
#include <QtCore/QSemaphore>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>

#include <services/mediakeys/MediaKeyService.h>

/** The media key service and its broker in a thread of their own, as in the daemon. VORO_RUNTIME_DIR leads to them. */
class ServiceThread : private QThread {
public:
    explicit ServiceThread(voro::mediakeys::Mode mode = voro::mediakeys::Mode::All);
    ~ServiceThread() override;

    /** The folder in which it looks for devices; it is there from the beginning. */
    QString deviceFolder() const { return m_devices.filePath(QStringLiteral("input")); }
    /** Runs as somebody who may read only what everybody may. To be called before start(). */
    void dropPermissions() { m_hasPermissions = false; }
    /** Returns when clients can connect. */
    void start();

    /** What was to be done for keys that nobody registered, since the last call. */
    QStringList takeCommands();

private:
    void run() override;

    QTemporaryDir m_folder;
    QTemporaryDir m_devices;
    const voro::mediakeys::Mode m_mode;
    bool m_hasPermissions = true;
    QSemaphore m_isReady;
    QMutex m_mutex;
    QStringList m_commands;
};
