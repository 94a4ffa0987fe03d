#include "TestBus.h"

#include <QtCore/QDebug>
#include <QtCore/QFile>

#include <sys/prctl.h>

#include <csignal>

namespace {

constexpr int Patience = 20'000;

void dieWithTest(QProcess &process)
{
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

} // namespace

TestBus::TestBus(Start start)
{
    dieWithTest(m_process);
    qputenv("DBUS_SESSION_BUS_ADDRESS", address().toLatin1());
    if (start == Now) {
        this->start();
    }
}

TestBus::~TestBus()
{
    kill();
    qputenv("DBUS_SESSION_BUS_ADDRESS", "");
}

QString TestBus::address() const
{
    return "unix:path=" + m_folder.filePath("bus");
}

void TestBus::start()
{
    m_process.setReadChannel(QProcess::StandardOutput);
    m_process.start("dbus-daemon",
                    {"--session", "--nofork", "--nopidfile", "--print-address", "--address=" + address()});
    // It prints its address when it can be connected to.
    if (!m_process.waitForReadyRead(Patience)) {
        qFatal("no session bus: %s", m_process.readAllStandardError().constData());
    }
    m_process.readAllStandardOutput();
}

void TestBus::kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

void TestBus::stop()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP);
}

void TestBus::goOn()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT);
}

QByteArray runProgram(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(Patience)) {
        qFatal("%s does not end", qPrintable(program));
    }
    return process.readAll();
}

TestPlayers::TestPlayers()
{
    dieWithTest(m_process);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start("/usr/bin/python3", {QStringLiteral(PLAYERS_SCRIPT)});
    if (!m_process.waitForStarted()) {
        qFatal("no players");
    }
}

TestPlayers::~TestPlayers()
{
    goOn();
    m_process.closeWriteChannel();
    m_process.waitForFinished();
}

QByteArray TestPlayers::readLine()
{
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(Patience)) {
            qFatal("the players say nothing");
        }
    }
    return m_process.readLine().trimmed();
}

void TestPlayers::call(const QByteArray &line)
{
    m_process.write(line + '\n');
    for (QByteArray said = readLine(); said != "done"; said = readLine()) {
        m_calls += said;
    }
}

QByteArray TestPlayers::nextCall()
{
    return m_calls.isEmpty() ? readLine() : m_calls.takeFirst();
}

void TestPlayers::stop()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP);
}

void TestPlayers::goOn()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT);
}
