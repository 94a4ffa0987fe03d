#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

/** A sound server of the test's own whose only sink, "null", plays into nothing in real time. */
class PulseServer {
public:
    /** Starts the server and makes it the one that this process and its children play to. */
    PulseServer();
    ~PulseServer();

    /** Adds a sink, which becomes the default one; what is to be given to removeSink(). */
    QByteArray addSink(const char *name);
    /** Takes a sink away; what played to it is moved to another one. */
    void removeSink(const QByteArray &sink);

    /** Serves on a port of this machine, too, to who knows the cookie; the server's name there. */
    QByteArray serveOnNetwork();

    /** What the server's control program answers to these arguments. */
    static QByteArray control(const QStringList &arguments);

    /** Kills the server. */
    void kill();
    /** Starts it again, at the same place. */
    void start();
    /** Lets it hang, until it is resumed or killed. */
    void suspend();
    void resume();

private:
    QString socketPath() const;
    QString readinessPath() const;

    QTemporaryDir m_folder;
    QProcess m_process;
};

/** Records what the null sink plays, as 16-bit mono samples at 48 kHz. */
class MonitorRecorder {
public:
    /** Returns when the recording runs. */
    MonitorRecorder();
    ~MonitorRecorder();

    /** Reads on until the last `milliseconds` hold the tone as nearly all of their power, or the time is over. */
    bool waitForTone(double frequency, int milliseconds, int timeout = 20'000);
    /** What was recorded since the beginning or the last clear(). */
    QByteArray samples();
    void clear();

private:
    QProcess m_process;
    QByteArray m_samples;
};
