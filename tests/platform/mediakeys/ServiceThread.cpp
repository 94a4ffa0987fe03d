#include "ServiceThread.h"

#include <QtCore/QDir>

#include <pps/Runtime.h>
#include <services/common/SharedControl.h>
#include <sys/fsuid.h>

ServiceThread::ServiceThread(voro::mediakeys::Mode mode) : m_mode(mode)
{
    qputenv("VORO_RUNTIME_DIR", m_folder.path().toLocal8Bit());
    qputenv("VORO_AUTOSPAWN", "0");
    QDir().mkdir(deviceFolder());
}

ServiceThread::~ServiceThread()
{
    quit();
    wait();
}

void ServiceThread::start()
{
    QThread::start();
    m_isReady.acquire();
}

QStringList ServiceThread::takeCommands()
{
    const QMutexLocker locker(&m_mutex);
    return std::exchange(m_commands, {});
}

void ServiceThread::run()
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
