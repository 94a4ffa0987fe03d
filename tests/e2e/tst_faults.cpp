#include "Daemon.h"
#include "Media.h"
#include "Workers.h"

#include <multimedia/MediaPlayer.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

#include <csignal>

using namespace voro::multimedia;

namespace {

int openDescriptors(qint64 process)
{
    return int(QDir(QStringLiteral("/proc/%1/fd").arg(process)).count());
}

} // namespace

/** What a player does when the processes that work for it end. */
class tst_Faults : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void workerKilled_reportsAnError_andPlaysOn_data();
    void workerKilled_reportsAnError_andPlaysOn();
    void workerStopped_isTakenForDead();
    void daemonKilled_commandsFail_andANewPlayerPlays();
    void noDaemon_playerSaysSo();
    void manyPlayers_leaveNothing();

private:
    /** Signals every worker of the daemon; the spare one cannot be told from the others. */
    QList<pid_t> signalWorkers(int signal)
    {
        const QList<pid_t> workers = workersOf(m_daemon->processId());
        for (const pid_t worker : workers)
            ::kill(worker, signal);
        return workers;
    }
    /** Whether the daemon knows of none of them any more. */
    static bool areGone(const QList<pid_t> &workers)
    {
        return std::all_of(workers.begin(), workers.end(), [](pid_t worker) { return ::kill(worker, 0) != 0; });
    }

    std::unique_ptr<Daemon> m_daemon;
    QTemporaryDir m_folder;
    QUrl m_url;
};

void tst_Faults::initTestCase()
{
    qputenv("VORO_AUDIO_SINK", "fakesink sync=true");
    m_url = QUrl::fromLocalFile(media::makeTone(m_folder.filePath("tone.ogg"), {.seconds = 60}));
}

void tst_Faults::init()
{
    m_daemon = std::make_unique<Daemon>();
}

void tst_Faults::cleanup()
{
    m_daemon.reset();
}

void tst_Faults::workerKilled_reportsAnError_andPlaysOn_data()
{
    QTest::addColumn<bool>("isPlaying");
    QTest::newRow("prepared") << false;
    QTest::newRow("playing") << true;
}

void tst_Faults::workerKilled_reportsAnError_andPlaysOn()
{
    QFETCH(bool, isPlaying);
    MediaPlayer player;
    QSignalSpy errors(&player, qOverload<MediaError::Type, uint>(&MediaPlayer::error));
    QCOMPARE(player.setStatusInterval(50), MediaError::None);
    QCOMPARE(player.setSourceUrl(m_url), MediaError::None);
    QCOMPARE(player.prepare(), MediaError::None);
    if (isPlaying) {
        QCOMPARE(player.seekTime(10'000), MediaError::None);
        QCOMPARE(player.play(), MediaError::None);
        QTRY_VERIFY(player.position() > 10'200);
    }
    QTRY_VERIFY(player.duration() > 0);
    const QList<pid_t> killed = signalWorkers(SIGKILL);
    QVERIFY(errors.wait(5'000));
    QCOMPARE(errors.count(), 1);
    QCOMPARE(errors.first().first().value<MediaError::Type>(), MediaError::Internal);
    QCOMPARE(player.mediaState(), MediaState::Stopped);

    // The next play goes on where it was, in another worker.
    QTRY_VERIFY(areGone(killed));
    QSignalSpy positions(&player, qOverload<uint>(&MediaPlayer::positionChanged));
    QCOMPARE(player.play(), MediaError::None);
    QCOMPARE(player.mediaState(), MediaState::Started);
    QTRY_VERIFY(positions.count() > 3);
    QCOMPARE(player.position() > 10'000, isPlaying);
    QCOMPARE(errors.count(), 1);
}

void tst_Faults::workerStopped_isTakenForDead()
{
    MediaPlayer player;
    QSignalSpy errors(&player, qOverload<MediaError::Type, uint>(&MediaPlayer::error));
    QCOMPARE(player.setSourceUrl(m_url), MediaError::None);
    QCOMPARE(player.play(), MediaError::None);
    const QList<pid_t> stopped = signalWorkers(SIGSTOP);
    QVERIFY(errors.wait(20'000));
    for (const pid_t worker : stopped)
        ::kill(worker, SIGKILL);
    QTRY_VERIFY(areGone(stopped));
    QCOMPARE(player.play(), MediaError::None);
}

void tst_Faults::daemonKilled_commandsFail_andANewPlayerPlays()
{
    MediaPlayer player;
    QCOMPARE(player.setSourceUrl(m_url), MediaError::None);
    QCOMPARE(player.play(), MediaError::None);
    const QList<pid_t> workers = workersOf(m_daemon->processId());
    QVERIFY(!workers.isEmpty());
    m_daemon->kill();
    QCOMPARE(player.pause(), MediaError::Internal);
    QCOMPARE(player.stop(), MediaError::Internal);
    QCOMPARE(player.reset(), MediaError::Internal);
    QTRY_VERIFY(areGone(workers));

    QVERIFY(m_daemon->start());
    QCOMPARE(player.play(), MediaError::Internal);
    MediaPlayer next;
    QCOMPARE(next.setSourceUrl(m_url), MediaError::None);
    QCOMPARE(next.play(), MediaError::None);
    QTRY_VERIFY(next.duration() > 0);
}

void tst_Faults::noDaemon_playerSaysSo()
{
    QVERIFY(m_daemon->stop());
    MediaPlayer player;
    QCOMPARE(player.setSourceUrl(m_url), MediaError::InvalidState);
    QCOMPARE(player.prepare(), MediaError::InvalidState);
    QCOMPARE(player.play(), MediaError::InvalidState);
    QCOMPARE(player.mediaState(), MediaState::Unprepared);
}

void tst_Faults::manyPlayers_leaveNothing()
{
    const auto churn = [this](int count) {
        for (int i = 0; i < count; ++i) {
            MediaPlayer player;
            QCOMPARE(player.setSourceUrl(m_url), MediaError::None);
            // Every twentieth one takes a worker.
            if (i % 20 == 0)
                QCOMPARE(player.prepare(), MediaError::None);
        }
    };
    churn(20);
    QTRY_COMPARE(workersOf(m_daemon->processId()).size(), 1);
    const int ours = openDescriptors(QCoreApplication::applicationPid());
    const int theirs = openDescriptors(m_daemon->processId());
    churn(300);
    QTRY_COMPARE(workersOf(m_daemon->processId()).size(), 1);
    QCOMPARE(openDescriptors(QCoreApplication::applicationPid()), ours);
    QTRY_COMPARE(openDescriptors(m_daemon->processId()), theirs);
}

QTEST_GUILESS_MAIN(tst_Faults)
#include "tst_faults.moc"
