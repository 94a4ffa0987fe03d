#include "Daemon.h"

#include <QtCore/QFile>

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace {

constexpr int StartSeconds = 60;

/** The socket on which the daemon tells that it is ready. */
class NotifySocket {
public:
    explicit NotifySocket(const QByteArray &path) : m_socket(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
        const timeval limit{StartSeconds, 0};
        setsockopt(m_socket, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
        unlink(path.constData());
        if (bind(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
            qFatal("cannot bind %s", path.constData());
        }
    }
    ~NotifySocket() { close(m_socket); }
    NotifySocket(const NotifySocket &) = delete;
    NotifySocket &operator=(const NotifySocket &) = delete;

    bool wait()
    {
        char message[64];
        ssize_t size = 0;
        // The end of an earlier daemon may interrupt it.
        do {
            size = recv(m_socket, message, sizeof message, 0);
        } while (size < 0 && errno == EINTR);
        return size > 0;
    }

private:
    int m_socket;
};

} // namespace

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

Daemon::Daemon(const QStringList &environment) : Daemon(Later)
{
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
    const QByteArray path = m_folder.filePath(QStringLiteral("notify")).toLocal8Bit();
    NotifySocket ready(path);
    m_process.setEnvironment(QProcess::systemEnvironment() + environment
                             + QStringList(QLatin1String("NOTIFY_SOCKET=") + QString::fromLocal8Bit(path)));
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
