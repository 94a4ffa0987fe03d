#include "Daemon.h"
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
    void init() { m_log.clear(); }

    void log_holdsWhatIsChosen()
    {
        Daemon daemon(chosen("all,-keys,colour"), QProcess::MergedChannels);
        MediaPlayer player;
        play(player);
        QVERIFY(isWritten(daemon, "voro-renderer: worker: gets "));
        QVERIFY(isWritten(daemon, "msg::play "));
        QVERIFY2(
            m_log.contains("VORO_LOG: 'colour' is not one of all, daemon, renderer, worker, graph, nowplaying, keys, "
                           "sound\n"),
            m_log.constData());
        QVERIFY2(!m_log.contains(": keys: "), m_log.constData());
    }

    void graph_isShown_onRequestAndOnAFailure()
    {
        Daemon daemon(chosen("-worker,graph"), QProcess::MergedChannels);
        MediaPlayer player;
        play(player);
        const QList<pid_t> workers = workersOf(daemon.processId());
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
    }

private:
    /** The environment of a daemon with a choice of what it logs. */
    static QStringList chosen(const char *categories)
    {
        return {QLatin1String("VORO_LOG=") + QLatin1String(categories), "VORO_AUDIO_SINK=fakesink sync=true"};
    }

    /** Has a player play a file for longer than a test takes. */
    void play(MediaPlayer &player)
    {
        const QString file = media::makeTone(m_folder.filePath(QStringLiteral("a.wav")), {.seconds = 30});
        player.setSourceUrl(QUrl::fromLocalFile(file));
        QCOMPARE(player.play(), MediaError::None);
    }

    /** Waits until the daemon or a worker has written a text. */
    bool isWritten(Daemon &daemon, const QByteArray &text)
    {
        return QTest::qWaitFor(
            [&] {
                m_log += daemon.takeOutput();
                return m_log.contains(text);
            },
            60'000);
    }

    QTemporaryDir m_folder;
    QByteArray m_log;
};

QTEST_GUILESS_MAIN(DiagnosticsTest)
#include "tst_diagnostics.moc"
