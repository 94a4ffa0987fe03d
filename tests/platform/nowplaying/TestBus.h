#pragma once

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

/** A session bus of the test's own; while it exists it is the one of this process and its children. */
class TestBus {
public:
    enum Start { Now, Later };
    explicit TestBus(Start start = Now);
    ~TestBus();
    TestBus(const TestBus &) = delete;
    TestBus &operator=(const TestBus &) = delete;

    QString address() const;
    void start();
    void kill();
    /** Stops it in its tracks, or lets it go on. */
    void stop();
    void goOn();

private:
    QTemporaryDir m_folder;
    QProcess m_process;
};

/** Runs a program on the bus and returns what it printed. */
QByteArray runProgram(const QString &program, const QStringList &arguments);

/** Players of another program. */
class TestPlayers {
public:
    TestPlayers();
    ~TestPlayers();

    qint64 process() const { return m_process.processId(); }
    /** Calls a function of players.py and returns when it is done. */
    void call(const QByteArray &line);
    /** Waits for the next call that a player gets: its name and the call. */
    QByteArray nextCall();
    /** Stops the process in its tracks, or lets it go on. */
    void stop();
    void goOn();

private:
    QByteArray readLine();

    QProcess m_process;
    QByteArrayList m_calls;
};
