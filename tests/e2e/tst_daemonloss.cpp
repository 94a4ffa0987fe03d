#include "Household.h"
#include "Media.h"
#include "StartFolder.h"
#include "Workers.h"

#include <voro/PpsObject.h>

#include <QtTest/QtTest>

#include <Rows.h>

#include <csignal>
#include <thread>

using namespace voro::multimedia;

namespace {

int openDescriptors()
{
    return static_cast<int>(QDir(QStringLiteral("/proc/self/fd")).count());
}

/** How often the daemon is lost. */
constexpr int Rounds = 3;

} // namespace

/** What applications see of the end of the daemon at any moment. */
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
        const StartFolder runtime;
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
            QTRY_VERIFY(hasEnded(daemon));

            const QString recording = household.recording();
            problem = household.start();
            QVERIFY2(problem.isEmpty(), qPrintable(problem));
            QVERIFY2(runtime.daemon() != daemon, "the old one answers");
            QTRY_VERIFY(std::all_of(workers.begin(), workers.end(), hasEnded));
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
        const StartFolder runtime;
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
        const StartFolder runtime;
        MediaPlayer player;
        QSignalSpy errors(&player, qOverload<MediaError::Type, uint>(&MediaPlayer::error));
        player.setSourceUrl(m_tone);
        QCOMPARE(player.prepare(), MediaError::None);
        QTRY_VERIFY(player.duration() > 0);
        const pid_t daemon = runtime.daemon();
        ::kill(daemon, SIGKILL);
        while (!hasEnded(daemon)) {
            std::this_thread::yield();
        }
        QCOMPARE(player.play(), MediaError::None);
        QSignalSpy positions(&player, qOverload<uint>(&MediaPlayer::positionChanged));
        player.setStatusInterval(50);
        QTRY_VERIFY(positions.size() > 3);
        QCOMPARE(player.mediaState(), MediaState::Started);
        QCOMPARE(errors.size(), 0);
    }

    void subscriber_startsTheNextDaemon()
    {
        const StartFolder runtime;
        voro::PpsObject controller("/pps/services/multimedia/mediacontroller/control");
        QByteArray messages;
        connect(&controller, &voro::PpsObject::readyRead, [&] { messages += controller.read(); });
        QVERIFY(controller.open(voro::PpsOpenMode::PublishSubscribe) && controller.write("msg::md_subscribe"));
        QTRY_VERIFY(!messages.isEmpty());
        const pid_t daemon = runtime.daemon();
        ::kill(daemon, SIGKILL);
        QTRY_VERIFY(runtime.daemon() != daemon && runtime.daemon() > 0);
    }

private:
    QTemporaryDir m_folder;
    QUrl m_tone;
};

QTEST_GUILESS_MAIN(tst_DaemonLoss)
#include "tst_daemonloss.moc"
