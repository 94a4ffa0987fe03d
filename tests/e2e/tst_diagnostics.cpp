#include "Files.h"
#include "Media.h"
#include "Workers.h"

#include <multimedia/MediaPlayer.h>

#include <QtTest/QtTest>

#include <csignal>

using namespace voro::multimedia;

/** What daemon and workers write to standard error. */
class DiagnosticsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void log_holdsWhatIsChosen()
    {
        QProcess daemon;
        start(daemon, "all,-keys,colour");
        MediaPlayer player;
        play(player);
        QVERIFY(isWritten(daemon, "voro-renderer: worker: gets "));
        QVERIFY(isWritten(daemon, "msg::play "));
        QVERIFY2(
            m_log.contains("VORO_LOG: 'colour' is not one of all, daemon, renderer, worker, graph, nowplaying, keys, "
                           "sound\n"),
            m_log.constData());
        QVERIFY2(!m_log.contains(": keys: "), m_log.constData());
        daemon.terminate();
        QVERIFY(daemon.waitForFinished());
    }

    void graph_isShown_onRequestAndOnAFailure()
    {
        QProcess daemon;
        start(daemon, "-worker,graph");
        MediaPlayer player;
        play(player);
        QVERIFY(!m_log.contains("digraph"));
        const QByteArrayList lock = readFile(m_folder.filePath(QStringLiteral("vorod.lock"))).split('\n');
        const QList<pid_t> workers = workersOf(lock.first().toLongLong());
        QVERIFY(!workers.isEmpty());
        // Whichever plays; a spare worker has nothing to show and goes on as well.
        for (const pid_t worker : workers) {
            QCOMPARE(kill(worker, SIGUSR1), 0);
        }
        QVERIFY2(isWritten(daemon, "wavparse"), m_log.constData());
        QVERIFY(m_log.contains("digraph pipeline"));
        QCOMPARE(player.pause(), MediaError::None);

        m_log.clear();
        const QString junk = writeFile(m_folder.filePath(QStringLiteral("junk.ogg")), QByteArray(10'000, 'x'));
        player.setSourceUrl(QUrl::fromLocalFile(junk));
        QVERIFY(player.play() != MediaError::None);
        QVERIFY(isWritten(daemon, "digraph pipeline"));
        QVERIFY2(!m_log.contains("voro-renderer: worker: "), m_log.constData());
        daemon.terminate();
        QVERIFY(daemon.waitForFinished());
    }

private:
    /** Starts a daemon in a runtime folder of its own. */
    void start(QProcess &daemon, const char *chosen)
    {
        m_log.clear();
        qputenv("VORO_RUNTIME_DIR", m_folder.path().toLocal8Bit());
        qputenv("VORO_AUTOSPAWN", "0");
        daemon.setProcessChannelMode(QProcess::MergedChannels);
        daemon.setEnvironment(QProcess::systemEnvironment()
                              + QStringList{QLatin1String("VORO_LOG=") + QLatin1String(chosen),
                                            QStringLiteral("VORO_AUDIO_SINK=fakesink sync=true")});
        daemon.start(QStringLiteral(VOROD), QStringList());
        QVERIFY(isWritten(daemon, "serves multimedia in"));
    }

    /** Has a player play a file for longer than a test takes. */
    void play(MediaPlayer &player)
    {
        const QString file = media::makeTone(m_folder.filePath(QStringLiteral("a.wav")), {.seconds = 30});
        player.setSourceUrl(QUrl::fromLocalFile(file));
        QCOMPARE(player.play(), MediaError::None);
    }

    /** Waits until the daemon or a worker has written a text. */
    bool isWritten(QProcess &daemon, const QByteArray &text)
    {
        return QTest::qWaitFor(
            [&] {
                m_log += daemon.readAll();
                return m_log.contains(text);
            },
            60'000);
    }

    QTemporaryDir m_folder;
    QByteArray m_log;
};

QTEST_GUILESS_MAIN(DiagnosticsTest)
#include "tst_diagnostics.moc"
