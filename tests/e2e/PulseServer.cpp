#include "PulseServer.h"

#include "NotifySocket.h"
#include "Programs.h"
#include "Tone.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QDebug>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QTimer>

#include <netinet/in.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>

PulseServer::PulseServer()
{
    // Whatever the user has configured must not reach the test's server, nor the other way round.
    qputenv("PULSE_RUNTIME_PATH", m_folder.path().toLocal8Bit());
    qputenv("PULSE_STATE_PATH", m_folder.path().toLocal8Bit());
    qputenv("PULSE_COOKIE", m_folder.filePath(QStringLiteral("cookie")).toLocal8Bit());
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("NOTIFY_SOCKET"), readinessPath());
    m_process.setProcessEnvironment(environment);
    // A test that crashes leaves nothing running.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    start();
    qputenv("PULSE_SERVER", "unix:" + socketPath().toLocal8Bit());
}

QString PulseServer::socketPath() const
{
    return m_folder.filePath(QStringLiteral("native"));
}

QString PulseServer::readinessPath() const
{
    return m_folder.filePath(QStringLiteral("ready"));
}

void PulseServer::start()
{
    QFile::remove(socketPath());
    const NotifySocket readiness(readinessPath());
    m_process.start(QStringLiteral("pulseaudio"),
                    {"-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "-L",
                     QStringLiteral("module-null-sink sink_name=null"), "-L", "module-rescue-streams", "-L",
                     QStringLiteral("module-native-protocol-unix auth-anonymous=1 socket=%1").arg(socketPath())});
    // Its socket can be seen before anybody can connect to it.
    if (!readiness.wait()) {
        qFatal("No sound server: %s", m_process.readAll().constData());
    }
}

void PulseServer::suspend()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP);
}

void PulseServer::resume()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT);
}

QByteArray PulseServer::control(const QStringList &arguments)
{
    return runToEnd(QStringLiteral("pactl"), arguments).value().trimmed();
}

QByteArray PulseServer::addSink(const char *name)
{
    const QByteArray module =
        control({"load-module", "module-null-sink", QStringLiteral("sink_name=%1").arg(QLatin1String(name))});
    control({"set-default-sink", QString::fromLatin1(name)});
    return module;
}

void PulseServer::removeSink(const QByteArray &sink)
{
    control({"unload-module", QString::fromLatin1(sink)});
}

QByteArray PulseServer::serveOnNetwork()
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    if (bind(socket, generic, length) != 0 || getsockname(socket, generic, &length) != 0) {
        qFatal("no port to serve on");
    }
    close(socket);
    const QByteArray port = QByteArray::number(ntohs(address.sin_port));
    if (control({"load-module", "module-native-protocol-tcp", "listen=127.0.0.1", "port=" + port,
                 "auth-cookie=" + qEnvironmentVariable("PULSE_COOKIE")})
            .isEmpty()) {
        qFatal("port %s was taken meanwhile", port.constData());
    }
    return "tcp:127.0.0.1:" + port;
}

PulseServer::~PulseServer()
{
    kill();
}

void PulseServer::kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

MonitorRecorder::MonitorRecorder()
{
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.start(QStringLiteral("parec"), {"--device=null.monitor", "--format=s16le", "--rate=48000", "--channels=1",
                                              "--latency-msec=10", "--raw"});
    if (!m_process.waitForReadyRead(20'000)) {
        qFatal("The monitor cannot be recorded: %s", m_process.readAllStandardError().constData());
    }
}

MonitorRecorder::~MonitorRecorder()
{
    m_process.kill();
    m_process.waitForFinished();
}

QByteArray MonitorRecorder::samples()
{
    m_samples += m_process.readAllStandardOutput();
    return m_samples;
}

void MonitorRecorder::clear()
{
    m_process.readAllStandardOutput();
    m_samples.clear();
}

bool MonitorRecorder::waitForTone(double frequency, int milliseconds, int timeout)
{
    const QDeadlineTimer deadline(timeout);
    const qsizetype wanted = static_cast<qsizetype>(milliseconds) * 48 * 2;
    while (!deadline.hasExpired()) {
        const QByteArray heard = samples();
        if (heard.size() >= wanted) {
            const QByteArray last = heard.last(wanted);
            if (tone::firstSound(last) >= 0 && tone::share(last, frequency) > 0.9) {
                return true;
            }
        }
        // The recorder's event loop is not the player's: the player goes on through it as well.
        QEventLoop loop;
        QObject::connect(&m_process, &QProcess::readyRead, &loop, &QEventLoop::quit);
        QTimer::singleShot(deadline.remainingTime(), &loop, &QEventLoop::quit);
        loop.exec();
    }
    return false;
}
