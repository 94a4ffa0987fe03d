#include "Daemon.h"

#include "NotifySocket.h"

#include <QtCore/QFile>

#include <sys/prctl.h>

#include <csignal>

Daemon::Daemon(Start start)
{
    qputenv("VORO_RUNTIME_DIR", m_folder.path().toLocal8Bit());
    qputenv("VORO_AUTOSPAWN", "0");
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    // A test that crashes leaves nothing running.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    if (start == Now && !this->start()) {
        qFatal("vorod does not start");
    }
}

Daemon::Daemon(const QStringList &environment, QProcess::ProcessChannelMode output) : Daemon(Later)
{
    m_process.setProcessChannelMode(output);
    if (!start(environment)) {
        qFatal("vorod does not start");
    }
}

Daemon::~Daemon()
{
    if (!stop()) {
        qFatal("vorod failed: status %d", m_process.exitCode());
    }
}

qint64 Daemon::processId() const
{
    QFile lock(m_folder.filePath(QStringLiteral("vorod.lock")));
    return m_process.state() == QProcess::Running && lock.open(QFile::ReadOnly) ? lock.readLine().trimmed().toLongLong()
                                                                                : 0;
}

bool Daemon::start(const QStringList &environment)
{
    const QString path = m_folder.filePath(QStringLiteral("notify"));
    const NotifySocket ready(path);
    // What GLib and GStreamer complain about is a fault of the worker, and ends it.
    m_process.setEnvironment(QProcess::systemEnvironment() + QStringList{"G_DEBUG=fatal-criticals"} + environment
                             + QStringList(QLatin1String("NOTIFY_SOCKET=") + path));
    m_process.start(QStringLiteral(VOROD), QStringList());
    return m_process.waitForStarted() && ready.wait();
}

bool Daemon::stop()
{
    if (m_process.state() == QProcess::NotRunning) {
        return true;
    }
    m_process.terminate();
    return m_process.waitForFinished() && m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
}

void Daemon::kill()
{
    ::kill(static_cast<pid_t>(processId()), SIGKILL);
    m_process.waitForFinished();
}
