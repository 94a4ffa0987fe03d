#pragma once

#include "Daemon.h"
#include "Files.h"
#include "Rows.h"

#include <QtTest/QtTest>

#include <csignal>

/* The program voro as a person or a script runs it. */

inline constexpr int PatienceMs = 60'000;

struct Result {
    int status;
    QByteArray out;
    QByteArray err;
};

inline Result voro(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(VORO_PROGRAM), arguments, QIODevice::ReadOnly);
    if (!process.waitForFinished(PatienceMs) || process.exitStatus() != QProcess::NormalExit) {
        qFatal("voro %s did not end by itself", qPrintable(arguments.join(QLatin1Char(' '))));
    }
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

/** A voro that runs beside the test. */
class RunningVoro : public QProcess {
public:
    explicit RunningVoro(const QStringList &arguments)
    {
        setProcessChannelMode(QProcess::MergedChannels);
        start(QStringLiteral(VORO_PROGRAM), arguments);
        waitForStarted();
    }
    ~RunningVoro() override
    {
        kill();
        waitForFinished();
    }

    /** Waits until the text is printed and forgets the output up to its end. */
    bool waitFor(const QByteArray &text)
    {
        m_output += readAll();
        while (!m_output.contains(text)) {
            if (!waitForReadyRead(PatienceMs)) {
                return false;
            }
            m_output += readAll();
        }
        m_output.remove(0, m_output.indexOf(text) + text.size());
        return true;
    }

    /** The output that is not forgotten. */
    QByteArray rest() { return m_output + readAll(); }

    /** Interrupts it as ^C does; its exit status, or -1. */
    int interrupt()
    {
        ::kill(static_cast<pid_t>(processId()), SIGINT);
        return waitForFinished(PatienceMs) && exitStatus() == NormalExit ? exitCode() : -1;
    }

private:
    QByteArray m_output;
};

inline QByteArray lastLine(const QByteArray &text)
{
    const QByteArrayList lines = text.split('\n');
    return lines.size() < 2 ? QByteArray() : lines.at(lines.size() - 2);
}

/** A daemon whose workers play into nothing and record silence, both in real time. */
class SilentDaemon : public Daemon {
public:
    explicit SilentDaemon(int samplesAtOnce = 441)
        : Daemon({"VORO_AUDIO_SINK=fakesink sync=true",
                  QStringLiteral("VORO_AUDIO_SOURCE=audiotestsrc is-live=true wave=silence samplesperbuffer=%1")
                      .arg(samplesAtOnce)})
    {}
};
