#include "Media.h"
#include "Workers.h"

#include <multimedia/AudioRecorder.h>
#include <multimedia/MediaKeyWatcher.h>
#include <multimedia/MediaPlayer.h>
#include <multimedia/MetaData.h>
#include <multimedia/NowPlayingConnection.h>
#include <multimedia/NowPlayingController.h>
#include <voro/PpsObject.h>

#include <QtCore/QTemporaryDir>
#include <QtCore/QtEndian>
#include <QtTest/QtTest>

#include <Rows.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <thread>

using namespace voro::multimedia;

namespace {

/**
 * Everything that an application may have of a daemon: three players, a recorder, the now-playing role, two
 * controllers and a watched key.
 */
class Household : public QObject {
public:
    /** Plays the medium; records into files of the folder. */
    Household(const QUrl &medium, const QString &folder) : m_watcher(MediaKey::Play), m_folder(folder)
    {
        for (size_t i = 0; i < Players; ++i) {
            MediaPlayer &player = m_players[i];
            player.setStatusInterval(50);
            player.setSourceUrl(medium);
            player.setRepeatMode(RepeatMode::Track);
            connect(&player, qOverload<MediaError::Type, unsigned>(&MediaPlayer::error), this, [this, i](auto error) {
                ++m_playerErrors[i];
                m_wrong += error != MediaError::Internal;
            });
            connect(&player, qOverload<unsigned>(&MediaPlayer::positionChanged), this, [this, i] { ++m_positions[i]; });
        }
        connect(&m_recorder, qOverload<MediaError::Type, unsigned>(&AudioRecorder::error), this, [this](auto error) {
            ++m_recorderErrors;
            m_wrong += error != MediaError::Internal;
        });
        connect(&m_holder, &NowPlayingConnection::revoked, this, [this] { ++m_revocations; });
        for (NowPlayingController &controller : m_controllers) {
            connect(&controller, &NowPlayingController::metaDataChanged, this, [] {});
        }
        connect(&m_watcher, &MediaKeyWatcher::shortPress, this, [this] { ++m_presses; });
    }

    /** Has all of it at work. Empty, or what does not work. */
    QString start()
    {
        for (MediaPlayer &player : m_players) {
            if (const auto error = player.play(); error != MediaError::None) {
                return QStringLiteral("a player: error %1").arg(error);
            }
        }
        // A recording that was cut off is over; the next one gets a file of its own.
        m_recording = QDir(m_folder).filePath(QStringLiteral("%1.wav").arg(++m_recordings));
        if (const auto error = m_recorder.reset(); error != MediaError::None) {
            return QStringLiteral("the recorder's reset: error %1").arg(error);
        }
        m_recorder.setOutputUrl(QUrl::fromLocalFile(m_recording));
        if (const auto error = m_recorder.record(); error != MediaError::None) {
            return QStringLiteral("the recorder: error %1").arg(error);
        }
        if (!m_holder.isAcquired()) {
            if (const auto error = m_holder.acquire(); error != MediaError::None) {
                return QStringLiteral("the holder: error %1").arg(error);
            }
        }
        m_holder.setMediaState(MediaState::Started);
        m_holder.setMetaData({{QLatin1String(MetaData::Title), QStringLiteral("title")}});
        return {};
    }

    /** Whether the controllers see the role's holder at work, and the players' positions move. */
    bool isAtWork() const
    {
        return std::all_of(m_positions.begin(), m_positions.end(), [](int count) { return count > 2; })
               && std::all_of(m_controllers.begin(), m_controllers.end(), [](const NowPlayingController &controller) {
                      return controller.mediaState() == MediaState::Started
                             && controller.metaData().value(QLatin1String(MetaData::Title)) == QStringLiteral("title");
                  });
    }

    /** Forgets what was told up to now. */
    void forget()
    {
        m_playerErrors = m_positions = {};
        m_recorderErrors = m_revocations = m_presses = m_wrong = 0;
    }

    /** Whether everybody who has to was told that the daemon is gone. Nobody was told twice. */
    bool isTold() const
    {
        return std::all_of(m_players.begin(), m_players.end(),
                           [](const MediaPlayer &player) { return player.mediaState() == MediaState::Stopped; })
               && std::all_of(m_playerErrors.begin(), m_playerErrors.end(), [](int count) { return count == 1; })
               && m_recorder.mediaState() == MediaState::Stopped && m_recorderErrors == 1 && !m_holder.isAcquired()
               && m_revocations == 1 && m_wrong == 0
               && std::all_of(m_controllers.begin(), m_controllers.end(), [](const NowPlayingController &controller) {
                      return controller.mediaState() == MediaState::Stopped
                             && controller.metaData().value(QLatin1String(MetaData::Title)).toString().isEmpty();
                  });
    }

    /** What everybody was told, for people. */
    QString report() const
    {
        QString text;
        for (size_t i = 0; i < Players; ++i) {
            text += QStringLiteral("player: state %1, %2 errors, %3 positions; ")
                        .arg(m_players[i].mediaState())
                        .arg(m_playerErrors[i])
                        .arg(m_positions[i]);
        }
        text += QStringLiteral("recorder: state %1, %2 errors; holder: %3 revocations; controllers: ")
                    .arg(m_recorder.mediaState())
                    .arg(m_recorderErrors)
                    .arg(m_revocations);
        for (const NowPlayingController &controller : m_controllers) {
            text += QStringLiteral("state %1, '%2'; ")
                        .arg(controller.mediaState())
                        .arg(controller.metaData().value(QLatin1String(MetaData::Title)).toString());
        }
        return text + QStringLiteral("%1 presses, %2 wrong errors").arg(m_presses).arg(m_wrong);
    }

    /** Whether the watched key was pressed since. */
    bool isKeyPressed() const { return m_presses > 0; }
    /** The file that was recorded into last. */
    QString recording() const { return m_recording; }
    /** Whether the head of a WAV file says how long the file is, to the byte. */
    static bool isComplete(const QString &recording)
    {
        QFile file(recording);
        if (!file.open(QFile::ReadOnly)) {
            return false;
        }
        constexpr qint64 Head = 8;
        const QByteArray head = file.read(Head);
        return head.startsWith("RIFF") && qFromLittleEndian<quint32>(head.constData() + 4) == file.size() - Head;
    }

    MediaPlayer &player(size_t index) { return m_players[index]; }

    static constexpr size_t Players = 3;

private:
    std::array<MediaPlayer, Players> m_players;
    std::array<int, Players> m_playerErrors{};
    std::array<int, Players> m_positions{};
    AudioRecorder m_recorder;
    NowPlayingConnection m_holder;
    std::array<NowPlayingController, 2> m_controllers;
    MediaKeyWatcher m_watcher;
    QString m_folder;
    QString m_recording;
    int m_recordings = 0;
    int m_recorderErrors = 0;
    int m_revocations = 0;
    int m_presses = 0;
    int m_wrong = 0;
};

/**
 * A runtime folder in which applications start the daemon themselves; it is ended with the object. While the object
 * exists VORO_RUNTIME_DIR names the folder.
 */
class SpawnFolder {
public:
    SpawnFolder()
    {
        qputenv("VORO_RUNTIME_DIR", m_folder.path().toLocal8Bit());
        qunsetenv("VORO_AUTOSPAWN");
    }

    ~SpawnFolder()
    {
        if (const pid_t last = daemon(); last > 0) {
            ::kill(last, SIGTERM);
        }
    }

    SpawnFolder(const SpawnFolder &) = delete;
    SpawnFolder &operator=(const SpawnFolder &) = delete;

    /** The daemon that said last that it is ready; 0 when there was none. */
    pid_t daemon() const
    {
        QFile lock(m_folder.filePath(QStringLiteral("vorod.lock")));
        return lock.open(QFile::ReadOnly) ? lock.readLine().trimmed().toInt() : 0;
    }

    /** Whether that one has gone. */
    static bool isGone(pid_t daemon) { return ::kill(daemon, 0) != 0 && errno == ESRCH; }

private:
    QTemporaryDir m_folder;
};

int openDescriptors()
{
    return static_cast<int>(QDir(QStringLiteral("/proc/self/fd")).count());
}

/** How often the daemon is lost. */
constexpr int Rounds = 3;

} // namespace

/** What applications see of the end of the daemon, in the middle of a command and between two. */
class tst_DaemonLoss : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        qputenv("VORO_AUDIO_SINK", "fakesink sync=true");
        qputenv("VORO_AUDIO_SOURCE", "audiotestsrc is-live=true");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        qputenv("PULSE_SERVER", "unix:/nonexistent");
        m_tone = QUrl::fromLocalFile(media::makeTone(m_folder.filePath("tone.wav"), {.seconds = 120}));
    }

    void everybodyIsTold_andTheNextCommandWorks_data()
    {
        const Rows<int> row("signal");
        row("killed", SIGKILL);
        row("stopped", SIGSTOP);
        row("ended in order", SIGTERM);
    }

    void everybodyIsTold_andTheNextCommandWorks()
    {
        QFETCH(const int, signal);
        const SpawnFolder runtime;
        Household household(m_tone, m_folder.path());
        QString problem = household.start();
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
        int descriptors = 0;
        for (int round = 0; round < Rounds; ++round) {
            QVERIFY2(QTest::qWaitFor([&] { return household.isAtWork(); }, 20'000), qPrintable(household.report()));
            household.forget();
            const pid_t daemon = runtime.daemon();
            const QList<pid_t> workers = workersOf(daemon);
            QVERIFY(!workers.isEmpty());
            if (round == 1) {
                descriptors = openDescriptors();
            } else if (round > 1) {
                QCOMPARE(openDescriptors(), descriptors);
            }

            // It happens while a player is at a command.
            std::thread killer([&] { ::kill(daemon, signal); });
            household.player(static_cast<size_t>(round) % Household::Players).seekTime(50'000);
            killer.join();
            QVERIFY2(QTest::qWaitFor([&] { return household.isTold(); }, 20'000), qPrintable(household.report()));
            QTRY_VERIFY(SpawnFolder::isGone(daemon));

            const QString recording = household.recording();
            problem = household.start();
            QVERIFY2(problem.isEmpty(), qPrintable(problem));
            QVERIFY2(runtime.daemon() != daemon, "the old one answers");
            QTRY_VERIFY(std::all_of(workers.begin(), workers.end(), SpawnFolder::isGone));
            QVERIFY(Household::isComplete(recording));
            // The key is registered again, sooner or later.
            const QString press = QStringLiteral(R"(msg::press
dat:json:{"key":"play","ms":0})");
            QVERIFY(QTest::qWaitFor(
                [&] {
                    voro::PpsObject::sendMessage("/pps/services/multimedia/mediakeys/control", press);
                    return household.isKeyPressed();
                },
                20'000));
        }
    }

    void preparedPlayer_isTold_andPlaysWhereItWas()
    {
        const SpawnFolder runtime;
        MediaPlayer player;
        QSignalSpy errors(&player, qOverload<MediaError::Type, uint>(&MediaPlayer::error));
        QSignalSpy positions(&player, qOverload<uint>(&MediaPlayer::positionChanged));
        player.setStatusInterval(50);
        player.setVolume(0.5);
        player.setSourceUrl(m_tone);
        QCOMPARE(player.prepare(), MediaError::None);
        QCOMPARE(player.seekTime(60'000), MediaError::None);
        QTRY_COMPARE(player.position(), 60'000U);
        QTRY_VERIFY(player.duration() > 0);
        ::kill(runtime.daemon(), SIGKILL);
        QVERIFY(errors.wait());
        QCOMPARE(errors.first().first().value<MediaError::Type>(), MediaError::Internal);
        QCOMPARE(errors.first().at(1).toUInt(), 60'000U);
        QCOMPARE(player.mediaState(), MediaState::Stopped);
        QVERIFY(player.duration() > 0);

        QCOMPARE(player.setVolume(0.25), MediaError::None);
        positions.clear();
        QCOMPARE(player.play(), MediaError::None);
        QTRY_VERIFY(positions.size() > 3);
        QVERIFY(player.position() > 60'000 && player.position() < 90'000);
        QCOMPARE(player.mediaState(), MediaState::Started);
        QCOMPARE(errors.size(), 1);
        QCOMPARE(player.seekTime(10'000), MediaError::None);
        QCOMPARE(player.reset(), MediaError::None);
        QCOMPARE(player.mediaState(), MediaState::Unprepared);
        QCOMPARE(player.play(), MediaError::None);
    }

    // A command that ended the loss is the present; nothing of before is told after it.
    void lostPlayer_playsWithoutHavingBeenTold()
    {
        const SpawnFolder runtime;
        MediaPlayer player;
        QSignalSpy errors(&player, qOverload<MediaError::Type, uint>(&MediaPlayer::error));
        player.setSourceUrl(m_tone);
        QCOMPARE(player.prepare(), MediaError::None);
        QTRY_VERIFY(player.duration() > 0);
        const pid_t daemon = runtime.daemon();
        ::kill(daemon, SIGKILL);
        while (!SpawnFolder::isGone(daemon)) {
            std::this_thread::yield();
        }
        QCOMPARE(player.play(), MediaError::None);
        QSignalSpy positions(&player, qOverload<uint>(&MediaPlayer::positionChanged));
        player.setStatusInterval(50);
        QTRY_VERIFY(positions.size() > 3);
        QCOMPARE(player.mediaState(), MediaState::Started);
        QCOMPARE(errors.size(), 0);
    }

private:
    QTemporaryDir m_folder;
    QUrl m_tone;
};

QTEST_GUILESS_MAIN(tst_DaemonLoss)
#include "tst_daemonloss.moc"
