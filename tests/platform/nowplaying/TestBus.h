#pragma once

#include <QtCore/QDebug>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <sys/prctl.h>

#include <csignal>

inline constexpr int Patience = 20'000;

inline void dieWithTest(QProcess &process)
{
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

/** A session bus of the test's own; while it exists it is the one of this process and its children. */
class TestBus {
public:
    enum Start { Now, Later };
    explicit TestBus(Start start = Now)
    {
        dieWithTest(m_process);
        qputenv("DBUS_SESSION_BUS_ADDRESS", address().toLatin1());
        if (start == Now) {
            this->start();
        }
    }
    ~TestBus()
    {
        kill();
        qputenv("DBUS_SESSION_BUS_ADDRESS", "");
    }
    TestBus(const TestBus &) = delete;
    TestBus &operator=(const TestBus &) = delete;

    QString address() const { return "unix:path=" + m_folder.filePath("bus"); }
    void start()
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
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    /** Stops it in its tracks, or lets it go on. */
    void stop() { ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP); }
    void goOn() { ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT); }

private:
    QTemporaryDir m_folder;
    QProcess m_process;
};

/** Players of another program. */
class TestPlayers {
public:
    TestPlayers()
    {
        dieWithTest(m_process);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start("/usr/bin/python3", {QStringLiteral(PLAYERS_SCRIPT)});
        if (!m_process.waitForStarted()) {
            qFatal("no players");
        }
    }
    ~TestPlayers()
    {
        goOn();
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }

    qint64 process() const { return m_process.processId(); }
    /** Calls a function of players.py and returns when it is done. */
    void call(const QByteArray &line)
    {
        m_process.write(line + '\n');
        for (QByteArray said = readLine(); said != "done"; said = readLine()) {
            m_calls += said;
        }
    }
    /** Waits for the next call that a player gets: its name and the call. */
    QByteArray nextCall() { return m_calls.isEmpty() ? readLine() : m_calls.takeFirst(); }
    /** Stops the process in its tracks, or lets it go on. */
    void stop() { ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP); }
    void goOn() { ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT); }

private:
    QByteArray readLine()
    {
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(Patience)) {
                qFatal("the players say nothing");
            }
        }
        return m_process.readLine().trimmed();
    }

    QProcess m_process;
    QByteArrayList m_calls;
};
