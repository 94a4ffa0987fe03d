#include "Daemon.h"
#include "Files.h"
#include "Media.h"
#include "Workers.h"

#include <multimedia/MediaPlayer.h>

#include <QtTest/QtTest>

#include <Rows.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <semaphore>
#include <thread>

using namespace voro::multimedia;

namespace {

int openDescriptors(qint64 process)
{
    return static_cast<int>(QDir(QStringLiteral("/proc/%1/fd").arg(process)).count());
}

constexpr int Players = 16;

/** A player and what became of it. */
struct Victim {
    MediaPlayer player;
    QSignalSpy errors{&player, qOverload<MediaError::Type, uint>(&MediaPlayer::error)};
    QSignalSpy positions{&player, qOverload<uint>(&MediaPlayer::positionChanged)};
    QSignalSpy completions{&player, &MediaPlayer::playbackCompleted};
    QString path;
};

} // namespace

using Command = void (*)(MediaPlayer &player);

/** What a player does when the processes that work for it end. */
class tst_Faults : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        qputenv("VORO_AUDIO_SINK", "fakesink sync=true");
        m_url = QUrl::fromLocalFile(media::makeTone(m_folder.filePath("tone.ogg"), {.seconds = 60}));
    }

    void init() { m_daemon = std::make_unique<Daemon>(); }

    void cleanup() { m_daemon.reset(); }

    /** Workers would share a descriptor, and a thread would stay behind when they are forked. */
    void nursery_hasOneThread_andNoDescriptorButItsSocket_data()
    {
        const Rows<QString, qsizetype> row("folder", "entries");
        row("threads", "task", 1);
        if (geteuid() == 0) {
            // The three standard ones, and the socket.
            row("descriptors", "fd", 4);
        }
    }

    void nursery_hasOneThread_andNoDescriptorButItsSocket()
    {
        QFETCH(const QString, folder);
        QFETCH(const qsizetype, entries);
        MediaPlayer player;
        QCOMPARE(player.setSourceUrl(m_url), MediaError::None);
        QCOMPARE(player.prepare(), MediaError::None);
        QTRY_COMPARE(nurseryOf(m_daemon->processId()).size(), 2);
        for (const pid_t half : nurseryOf(m_daemon->processId())) {
            const QDir all(QStringLiteral("/proc/%1/%2").arg(half).arg(folder));
            // While it makes a worker it has that one's sockets.
            QTRY_COMPARE(all.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size(), entries);
        }
    }

    void nurseryKilled_workersAreStartedAllTheSame_data()
    {
        const Rows<int> row("half");
        row("the one with the network", 0);
        row("the one without", 1);
    }

    void nurseryKilled_workersAreStartedAllTheSame()
    {
        QFETCH(const int, half);
        MediaPlayer players[6];
        for (MediaPlayer &player : players) {
            QCOMPARE(player.setSourceUrl(m_url), MediaError::None);
            QCOMPARE(player.play(), MediaError::None);
            // It is started again until it has gone too often.
            const QList<pid_t> nursery = nurseryOf(m_daemon->processId());
            if (!nursery.isEmpty()) {
                ::kill(nursery[half], SIGKILL);
                QTRY_VERIFY(areGone(nursery));
            }
        }
        for (const MediaPlayer &player : players) {
            QTRY_VERIFY(player.position() > 0);
        }
    }

    void manyPlayers_leaveNothing()
    {
        const auto churn = [this](int count) {
            for (int i = 0; i < count; ++i) {
                MediaPlayer player;
                QCOMPARE(player.setSourceUrl(m_url), MediaError::None);
                // Every twentieth one takes a worker.
                if (i % 20 == 0) {
                    QCOMPARE(player.prepare(), MediaError::None);
                }
            }
        };
        churn(20);
        QTRY_COMPARE(workersOf(m_daemon->processId()).size(), 1);
        const int ours = openDescriptors(QCoreApplication::applicationPid());
        const int theirs = openDescriptors(m_daemon->processId());
        churn(300);
        QTRY_COMPARE(workersOf(m_daemon->processId()).size(), 1);
        QCOMPARE(openDescriptors(QCoreApplication::applicationPid()), ours);
        QTRY_VERIFY(openDescriptors(m_daemon->processId()) <= theirs);
    }

    void manyPlayers_outliveTheirWorkers_data()
    {
        const Rows<int, Command> row("before", "command");
        row("prepare", Nothing, [](MediaPlayer &player) { player.prepare(); });
        row("play", Prepared, [](MediaPlayer &player) { player.play(); });
        row("seek", Playing, [](MediaPlayer &player) { player.seekTime(30'000); });
        row("reset", Playing, [](MediaPlayer &player) { player.reset(); });
    }

    void manyPlayers_outliveTheirWorkers()
    {
        QFETCH(const int, before);
        QFETCH(const Command, command);
        std::vector<std::unique_ptr<Victim>> victims;
        for (int i = 0; i < Players; ++i) {
            // A file of its own for each tells whose worker is whose.
            auto victim = std::make_unique<Victim>();
            victim->path = m_folder.filePath(QStringLiteral("copy%1.ogg").arg(i));
            QFile::copy(m_url.toLocalFile(), victim->path);
            victim->player.setStatusInterval(50);
            QCOMPARE(victim->player.setSourceUrl(QUrl::fromLocalFile(victim->path)), MediaError::None);
            if (before >= Prepared) {
                QCOMPARE(victim->player.prepare(), MediaError::None);
            }
            if (before == Playing) {
                QCOMPARE(victim->player.play(), MediaError::None);
            }
            victims.push_back(std::move(victim));
        }

        // The workers die while the players in the middle do it.
        std::binary_semaphore start(0);
        std::thread killer([&] {
            start.acquire();
            for (const pid_t worker : workersOf(m_daemon->processId())) {
                ::kill(worker, SIGKILL);
            }
        });
        for (unsigned i = 0; i < Players; ++i) {
            if (i == Players / 2) {
                start.release();
            }
            command(victims[i]->player);
        }
        killer.join();

        // Each has a worker, wants none, or has said that it lost it; also one that had to be told so by what it did.
        const auto isSettled = [this](const auto &victim) {
            return !victim->errors.isEmpty() || victim->player.mediaState() == MediaState::Unprepared
                   || !workersWith(victim->path.toUtf8(), m_daemon->processId()).isEmpty();
        };
        QTRY_VERIFY_WITH_TIMEOUT(std::all_of(victims.begin(), victims.end(), isSettled), 20'000);
        for (const auto &victim : victims) {
            QVERIFY(victim->errors.count() <= 1);
            for (const QList<QVariant> &error : victim->errors) {
                QCOMPARE(error.first().value<MediaError::Type>(), MediaError::Internal);
            }
            victim->positions.clear();
            QCOMPARE(victim->player.play(), MediaError::None);
        }
        for (const auto &victim : victims) {
            QTRY_VERIFY2_WITH_TIMEOUT(victim->positions.count() > 2, qPrintable(victim->path), 20'000);
        }
    }

    void fileCutWhilePlaying_isTold_data()
    {
        const Rows<bool, bool> row("isSought", "isRepeated");
        row("goes on", false, false);
        row("is sought in", true, false);
        row("is repeated", false, true);
    }

    void fileCutWhilePlaying_isTold()
    {
        QFETCH(const bool, isSought);
        QFETCH(const bool, isRepeated);
        std::vector<std::unique_ptr<Victim>> victims;
        for (const char *name : {"cut.wav", "cut.ogg", "cut.opus", "cut.mp3", "cut.flac", "cut.m4a", "cut.mkv"}) {
            auto victim = std::make_unique<Victim>();
            victim->path = media::makeTone(m_folder.filePath(QLatin1String(name)), {.seconds = 60});
            victims.push_back(std::move(victim));
        }
        for (const auto &victim : victims) {
            QCOMPARE(victim->player.setStatusInterval(50), MediaError::None);
            QCOMPARE(victim->player.setRepeatMode(isRepeated ? RepeatMode::Track : RepeatMode::None), MediaError::None);
            QCOMPARE(victim->player.setSourceUrl(QUrl::fromLocalFile(victim->path)), MediaError::None);
            QCOMPARE(victim->player.play(), MediaError::None);
            QTRY_VERIFY(victim->player.position() > 0);
        }
        for (const auto &victim : victims) {
            QVERIFY(QFile::resize(victim->path, 1000));
            if (isSought) {
                QCOMPARE(victim->player.seekTime(50'000), MediaError::None);
            }
        }
        for (const auto &victim : victims) {
            QTRY_COMPARE_WITH_TIMEOUT(victim->errors.count(), 1, 20'000);
            QCOMPARE(victim->errors.first().first().value<MediaError::Type>(), MediaError::Read);
            QVERIFY(victim->completions.isEmpty());
            QCOMPARE(victim->player.mediaState(), MediaState::Stopped);
            // Where a seek found nothing any more is not a place where it played.
            QVERIFY(isSought || victim->player.position() < 30'000);
            QCOMPARE(victim->player.setSourceUrl(m_url), MediaError::None);
            QCOMPARE(victim->player.play(), MediaError::None);
        }
    }

    void diskBreaks_isTold_andMended_itPlays()
    {
        const QDir disk(m_folder.filePath(QStringLiteral("disk")));
        QVERIFY(disk.mkpath(QStringLiteral(".")));
        QVERIFY(m_daemon->stop());
        // The sanitizers' own library would have to be the first one.
        qputenv("ASAN_OPTIONS", qgetenv("ASAN_OPTIONS") + ":verify_asan_link_order=0");
        QVERIFY(m_daemon->start({QStringLiteral("LD_PRELOAD=" BROKEN_DISK)}));
        for (const char *name : {"a.wav", "a.flac", "a.mkv"}) {
            Victim victim;
            QCOMPARE(victim.player.setStatusInterval(50), MediaError::None);
            const QString path = media::makeTone(disk.filePath(QLatin1String(name)), {.seconds = 600});
            QCOMPARE(victim.player.setSourceUrl(QUrl::fromLocalFile(path)), MediaError::None);
            QCOMPARE(victim.player.play(), MediaError::None);
            QTRY_VERIFY(victim.player.position() > 0);
            QVERIFY(QFile::setPermissions(path, {}));
            QTRY_COMPARE_WITH_TIMEOUT(victim.errors.count(), 1, 30'000);
            QCOMPARE(victim.errors.first().first().value<MediaError::Type>(), MediaError::Read);
            QCOMPARE(victim.player.mediaState(), MediaState::Stopped);
            QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
            victim.positions.clear();
            QCOMPARE(victim.player.play(), MediaError::None);
            QTRY_VERIFY(victim.positions.count() > 2);
        }
    }

private:
    enum { Nothing, Prepared, Playing };

    /** Whether the daemon knows of none of them any more. */
    static bool areGone(const QList<pid_t> &workers)
    {
        return std::all_of(workers.begin(), workers.end(), [](pid_t worker) { return ::kill(worker, 0) != 0; });
    }

    std::unique_ptr<Daemon> m_daemon;
    QTemporaryDir m_folder;
    QUrl m_url;
};

QTEST_GUILESS_MAIN(tst_Faults)
#include "tst_faults.moc"
