#pragma once

#include <QtCore/QDir>
#include <QtCore/QMutex>
#include <QtCore/QSemaphore>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>

#include <pps/Runtime.h>
#include <services/common/SharedControl.h>
#include <services/mediakeys/MediaKeyService.h>
#include <sys/fsuid.h>

/** The media key service and its broker in a thread of their own, as in the daemon. VORO_RUNTIME_DIR leads to them. */
class ServiceThread : private QThread {
public:
    explicit ServiceThread(voro::mediakeys::Mode mode = voro::mediakeys::Mode::All) : m_mode(mode)
    {
        qputenv("VORO_RUNTIME_DIR", m_folder.path().toLocal8Bit());
        qputenv("VORO_AUTOSPAWN", "0");
        QDir().mkdir(deviceFolder());
    }
    ~ServiceThread() override
    {
        quit();
        wait();
    }

    /** The folder in which it looks for devices; it is there from the beginning. */
    QString deviceFolder() const { return m_devices.filePath(QStringLiteral("input")); }
    /** Runs as somebody who may read only what everybody may. To be called before start(). */
    void dropPermissions() { m_hasPermissions = false; }
    /** Returns when clients can connect. */
    void start()
    {
        QThread::start();
        m_isReady.acquire();
    }

    /** What was to be done for keys that nobody registered, since the last call. */
    QStringList takeCommands()
    {
        const QMutexLocker locker(&m_mutex);
        return std::exchange(m_commands, {});
    }

private:
    void run() override
    {
        voro::pps::Broker broker;
        QSocketNotifier brokerReady(broker.fd(), QSocketNotifier::Read);
        connect(&brokerReady, &QSocketNotifier::activated, [&broker] { broker.process(); });
        voro::mediakeys::MediaKeyService service(broker, m_mode, deviceFolder().toStdString());
        service.setCommand([this](std::string_view message) {
            const QMutexLocker locker(&m_mutex);
            m_commands.append(QString::fromUtf8(message.data(), static_cast<qsizetype>(message.size())));
        });
        voro::SharedControl control(broker, "/pps/services/multimedia/mediaplayer/control");
        control.add(service);
        broker.listen(voro::pps::listenAt(voro::pps::socketPath(m_folder.path().toStdString())).release());
        if (!m_hasPermissions) {
            constexpr uid_t Nobody = 65534;
            // Of this thread only.
            setfsuid(Nobody);
        }
        m_isReady.release();
        exec();
    }

    QTemporaryDir m_folder;
    QTemporaryDir m_devices;
    const voro::mediakeys::Mode m_mode;
    bool m_hasPermissions = true;
    QSemaphore m_isReady;
    QMutex m_mutex;
    QStringList m_commands;
};
