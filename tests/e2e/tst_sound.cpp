#include "Daemon.h"
#include "Files.h"
#include "Media.h"
#include "Programs.h"
#include "PulseServer.h"
#include "Tone.h"

#include <multimedia/AudioRecorder.h>
#include <multimedia/MediaPlayer.h>
#include <voro/audio_manager.h>

#include <QtTest/QtTest>

#include <Rows.h>

using namespace voro::multimedia;

namespace {

/** The newest samples, silence before the first one. */
QByteArray newest(MonitorRecorder &recorder, qsizetype bytes)
{
    return recorder.samples().rightJustified(bytes, 0).last(bytes);
}

} // namespace

using Change = MediaError::Type (*)(MediaPlayer &player);

/** Whether what is played really sounds, heard at the sound server, and what is recorded there. */
class tst_Sound : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(m_folder.isValid()); }

    void server_isFoundWithoutBeingNamed_data()
    {
        const Rows<bool, bool> row("isConfigured", "isFar");
        row("at its usual place", false, false);
        row("where the configuration says", true, false);
        row("on the network", true, true);
    }

    void server_isFoundWithoutBeingNamed()
    {
        QFETCH(const bool, isConfigured);
        QFETCH(const bool, isFar);
        const QString path = media::makeTone(m_folder.filePath("found.wav"), {.frequency = 880, .seconds = 10});
        const QByteArray otherSink = isConfigured ? m_server.addSink("other") : QByteArray();
        const auto restore = qScopeGuard([&] {
            qputenv("VORO_RUNTIME_DIR", m_daemon.folder().toLocal8Bit());
            if (isConfigured) {
                m_server.removeSink(otherSink);
            }
        });
        QStringList environment{"PULSE_SERVER="};
        if (isConfigured) {
            const QString configuration = m_folder.filePath("client.conf");
            const QDir parts(configuration + ".d");
            QVERIFY(parts.mkpath("."));
            const QByteArray name = isFar ? m_server.serveOnNetwork() : qgetenv("PULSE_SERVER");
            writeFile(configuration, "; a\n default-server = " + name + '\n');
            writeFile(parts.filePath("sink.conf"), "default-sink = null\n");
            environment << "PULSE_CLIENTCONFIG=" + configuration << "PULSE_RUNTIME_PATH=" + m_folder.path();
        }
        const Daemon daemon(environment);
        MonitorRecorder recorder;
        MediaPlayer player;
        QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(path)), MediaError::None);
        QCOMPARE(player.play(), MediaError::None);
        QVERIFY(recorder.waitForTone(880, 300));
    }

    void preparedLongAgo_soundsAtOnce()
    {
        // A stream that is opened at the sound server long before it plays may start late by that time.
        const QString path = media::makeTone(m_folder.filePath("prepared.wav"), {.frequency = 700, .seconds = 10});
        MediaPlayer player;
        QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(path)), MediaError::None);
        QCOMPARE(player.prepare(), MediaError::None);
        MonitorRecorder recorder;
        QTRY_VERIFY(recorder.samples().size() > 2 * 48'000 * 2);
        QVERIFY(tone::firstSound(recorder.samples()) < 0);

        const qsizetype before = recorder.samples().size();
        QCOMPARE(player.play(), MediaError::None);
        QVERIFY(recorder.waitForTone(700, 100));
        const qsizetype silence = tone::firstSound(recorder.samples().mid(before));
        QVERIFY2(silence >= 0 && silence < 48'000, qPrintable(QString::number(silence)));
    }

    void waitingWorker_isConnected_andSoundsAfterAnotherStartOfTheServer()
    {
        const QString path = media::makeTone(m_folder.filePath("waiting.wav"), {.frequency = 700, .seconds = 10});
        const auto isConnected = [this] {
            return m_server.control({"list", "clients"}).contains("application.name = \"voro-renderer\"");
        };
        QTRY_VERIFY(!isConnected());
        // It has no medium, so that a worker waits for one.
        MediaPlayer player;
        QTRY_VERIFY(isConnected());
        m_server.kill();
        m_server.start();
        MonitorRecorder recorder;
        QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(path)), MediaError::None);
        QCOMPARE(player.play(), MediaError::None);
        QVERIFY(recorder.waitForTone(700, 100));
    }

    void type_reachesTheServer()
    {
        const QString path = media::makeTone(m_folder.filePath("alert.wav"), {.frequency = 600, .seconds = 10});
        unsigned handle = 0;
        QCOMPARE(audio_manager_get_handle(AUDIO_TYPE_ALERT, &handle), 0);
        MonitorRecorder recorder;
        MediaPlayer player;
        QCOMPARE(player.setAudioManagerHandle(handle), MediaError::None);
        QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(path)), MediaError::None);
        QCOMPARE(player.play(), MediaError::None);
        QVERIFY(recorder.waitForTone(600, 200));
        const QByteArray streams = m_server.control({"list", "sink-inputs"});
        QVERIFY2(streams.contains("media.role = \"event\""), streams.constData());
        // Sound in shared memory would wake up the worker more often.
        const QByteArray clients = m_server.control({"list", "clients"});
        QVERIFY2(clients.contains("context.force.disable.shm = \"1\""), clients.constData());
    }

    void change_isHeardAtOnce_data()
    {
        const Rows<Change, int, int> row("change", "least", "most");
        row(
            "pause", [](MediaPlayer &player) { return player.pause(); }, 0, 100);
        row(
            "volume", [](MediaPlayer &player) { return player.setVolume(0.1); }, 300, 4'000);
        row(
            "equalizer", [](MediaPlayer &player) { return player.setEqualizerPreset(EqualizerPreset::TrebleLower); },
            300, 6'000);
    }

    void change_isHeardAtOnce()
    {
        QFETCH(const Change, change);
        QFETCH(const int, least);
        QFETCH(const int, most);
        const QString path = media::makeTone(m_folder.filePath("change.wav"), {.frequency = 12'000, .seconds = 60});
        // The server has two seconds more. A machine that is busy may do it late once, but not twice of three times.
        constexpr qsizetype Limit = 48'000;
        int inTime = 0;
        for (int late = 0; inTime < 2;) {
            MonitorRecorder recorder;
            MediaPlayer player;
            QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(path)), MediaError::None);
            QCOMPARE(player.play(), MediaError::None);
            // Until the server holds as much as it takes.
            QTRY_VERIFY_WITH_TIMEOUT(player.position() > 1'000, 20'000);
            const auto isLouderThan = [&](int level) { return tone::firstSound(newest(recorder, 9'600), level) >= 0; };
            QTRY_VERIFY_WITH_TIMEOUT(isLouderThan(8'000), 20'000);
            const qsizetype before = recorder.samples().size();
            QCOMPARE(change(player), MediaError::None);
            QTRY_VERIFY_WITH_TIMEOUT(!isLouderThan(most), 20'000);
            const qsizetype samples = (recorder.samples().size() - before) / 2;
            (samples < Limit ? inTime : late)++;
            QVERIFY2(late < 2, qPrintable(QString::number(samples)));
            QTRY_VERIFY_WITH_TIMEOUT(least == 0 || isLouderThan(least), 20'000);
        }
    }

    void nextTrack_isReportedWhenItIsHeard_data()
    {
        const Rows<int> row("channels");
        row("of the same format", 2);
        row("of another one", 1);
    }

    void nextTrack_isReportedWhenItIsHeard()
    {
        QFETCH(const int, channels);
        media::makeTone(m_folder.filePath("first.ogg"), {.frequency = 500, .seconds = 4, .channels = channels});
        media::makeTone(m_folder.filePath("second.ogg"), {.frequency = 900, .seconds = 3.5});
        const QString list = writeFile(m_folder.filePath("two.m3u"), "first.ogg\nsecond.ogg\n");
        MonitorRecorder recorder;
        MediaPlayer player;
        const QSignalSpy completions(&player, &MediaPlayer::playbackCompleted);
        uint last = 0;
        qsizetype reported = 0;
        connect(&player, qOverload<uint>(&MediaPlayer::positionChanged), &player,
                [&](uint position) { last = player.track() == 1 ? position : last; });
        connect(&player, qOverload<uint>(&MediaPlayer::trackChanged), &player,
                [&](uint track) { reported = track == 2 ? recorder.samples().size() : 0; });
        QCOMPARE(player.setStatusInterval(20), MediaError::None);
        QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(list)), MediaError::None);
        QCOMPARE(player.play(), MediaError::None);
        QTRY_VERIFY_WITH_TIMEOUT(reported > 0, 20'000);
        QVERIFY2(last > 3'500 && last <= 4'000, qPrintable(QString::number(last)));
        QVERIFY(recorder.waitForTone(900, 100));
        const qsizetype late = (recorder.samples().size() - reported) / 2;
        QVERIFY2(late < 48'000, qPrintable(QString::number(late)));
        QTRY_VERIFY_WITH_TIMEOUT(!completions.isEmpty(), 20'000);
        // Of both everything is heard.
        const auto heard = [&](int frequency) {
            const QByteArray samples = recorder.samples();
            constexpr qsizetype Fiftieth = 1'920;
            int count = 0;
            for (qsizetype place = 0; place + Fiftieth <= samples.size(); place += Fiftieth) {
                count += tone::share(samples.mid(place, Fiftieth), frequency) > 0.9 ? 1 : 0;
            }
            return count * 20;
        };
        QVERIFY2(heard(500) > 3'900, qPrintable(QString::number(heard(500))));
        QTRY_VERIFY2(heard(900) > 3'430, qPrintable(QString::number(heard(900))));
    }

    void filmSoughtToItsEnd_rightAfterPlay_ends()
    {
        const QString path = media::makeTone(m_folder.filePath("film.mp4"), {.seconds = 1.5, .hasPicture = true});
        // Neither of its streams has anything left, and it depends on the moment how far they came before.
        for (int i = 0; i < 10; ++i) {
            MediaPlayer player;
            QSignalSpy completed(&player, &MediaPlayer::playbackCompleted);
            QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(path)), MediaError::None);
            QCOMPARE(player.play(), MediaError::None);
            QCOMPARE(player.seekTime(1600), MediaError::None);
            QTRY_COMPARE_WITH_TIMEOUT(completed.count(), 1, 20'000);
        }
    }

    void serverEnds_playerStops_andSoundsWithTheNextOne()
    {
        const QString path = media::makeTone(m_folder.filePath("server.wav"), {.frequency = 550, .seconds = 60});
        MediaPlayer player;
        QSignalSpy errors(&player, qOverload<MediaError::Type, uint>(&MediaPlayer::error));
        QCOMPARE(player.setStatusInterval(50), MediaError::None);
        // The worker plays this one in another way, and keeps what it needs for that.
        const QString other = media::makeTone(m_folder.filePath("server.mkv"), {.frequency = 660, .seconds = 60});
        QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(other)), MediaError::None);
        QCOMPARE(player.play(), MediaError::None);
        QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(path)), MediaError::None);
        QCOMPARE(player.play(), MediaError::None);
        for (int i = 0; i < 2; ++i) {
            {
                MonitorRecorder recorder;
                QVERIFY(recorder.waitForTone(550, 200));
            }
            errors.clear();
            m_server.kill();
            QTRY_COMPARE(errors.count(), 1);
            QCOMPARE(errors.first().first().value<MediaError::Type>(), MediaError::OutputUnavailable);
            QCOMPARE(player.mediaState(), MediaState::Stopped);

            // Without a server it plays into nothing, in time.
            QSignalSpy positions(&player, qOverload<uint>(&MediaPlayer::positionChanged));
            QCOMPARE(player.play(), MediaError::None);
            QTRY_VERIFY(positions.count() > 2);
            QCOMPARE(player.stop(), MediaError::None);
            m_server.start();
            QCOMPARE(player.play(), MediaError::None);
        }
    }

    void serverEnds_shortMediumIsPlayedToItsEnd()
    {
        const QString path = media::makeTone(m_folder.filePath("long.wav"), {.frequency = 550, .seconds = 60});
        const QString shortPath = media::makeTone(m_folder.filePath("short.wav"), {.frequency = 550, .seconds = 0.05});
        MediaPlayer player;
        QSignalSpy errors(&player, qOverload<MediaError::Type, uint>(&MediaPlayer::error));
        QSignalSpy completions(&player, &MediaPlayer::playbackCompleted);
        QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(path)), MediaError::None);
        QCOMPARE(player.play(), MediaError::None);
        m_server.kill();
        QTRY_COMPARE(errors.count(), 1);

        // It may be read to its end before the loss of the server shows.
        QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(shortPath)), MediaError::None);
        QCOMPARE(player.play(), MediaError::None);
        QTRY_COMPARE(completions.count(), 1);
        QCOMPARE(errors.count(), 1);
        m_server.start();
    }

    void deviceGone_holds_data()
    {
        const Rows<bool> row("isAutoPause");
        row("auto-pause", true);
        row("no auto-pause", false);
    }

    void deviceGone_holds()
    {
        QFETCH(bool, isAutoPause);
        const QString path = media::makeTone(m_folder.filePath("gone.wav"), {.frequency = 600, .seconds = 20});
        const QByteArray headphones = m_server.addSink("headphones");
        MediaPlayer player;
        QCOMPARE(player.setStatusInterval(20), MediaError::None);
        QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(path)), MediaError::None);
        QCOMPARE(player.setAutoPause(isAutoPause), MediaError::None);
        QCOMPARE(player.play(), MediaError::None);
        QTRY_VERIFY(player.position() > 300);
        m_server.removeSink(headphones);
        MonitorRecorder recorder;
        if (isAutoPause) {
            QTRY_COMPARE(player.mediaState(), MediaState::Paused);
            QCOMPARE(player.play(), MediaError::None);
        }
        // It goes on at the device that is left.
        QVERIFY(recorder.waitForTone(600, 300));
        QCOMPARE(player.mediaState(), MediaState::Started);
    }

    void recording_holdsWhatIsHeard()
    {
        MediaPlayer player;
        const QString tone = media::makeTone(m_folder.filePath("record.wav"), {.seconds = 60});
        QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(tone)), MediaError::None);
        QCOMPARE(player.play(), MediaError::None);
        MonitorRecorder heard;
        QVERIFY(heard.waitForTone(440, 200));

        const QString file = m_folder.filePath("recorded.ogg");
        AudioRecorder recorder;
        recorder.setOutputUrl(QUrl::fromLocalFile(file));
        QCOMPARE(recorder.setStatusInterval(50), MediaError::None);
        QCOMPARE(recorder.record(), MediaError::None);
        double level = 0;
        connect(&recorder, &AudioRecorder::recordingLevelChanged, this,
                [&](double now) { level = std::max(level, now); });
        QTRY_VERIFY_WITH_TIMEOUT(recorder.duration() >= 1000, 20'000);
        QCOMPARE(recorder.reset(), MediaError::None);
        // Everything is there in the next line.
        const QByteArray samples = decoded(file);
        QVERIFY2(samples.size() >= 900 * 96, qPrintable(QString::number(samples.size() / 96)));
        QVERIFY(tone::share(samples.mid(200 * 96), 440) > 0.95);
        QVERIFY(level > 0.5);
    }

    void serverEnds_recordingStays()
    {
        const QString file = m_folder.filePath("cut.wav");
        AudioRecorder recorder;
        recorder.setOutputUrl(QUrl::fromLocalFile(file));
        QCOMPARE(recorder.setStatusInterval(50), MediaError::None);
        QCOMPARE(recorder.record(), MediaError::None);
        QTRY_VERIFY_WITH_TIMEOUT(recorder.duration() >= 500, 20'000);
        QSignalSpy errors(&recorder, qOverload<MediaError::Type, unsigned>(&AudioRecorder::error));
        m_server.kill();
        QTRY_COMPARE(errors.size(), 1);
        QCOMPARE(errors.first().first().value<MediaError::Type>(), MediaError::SourceUnavailable);
        QCOMPARE(recorder.mediaState(), MediaState::Stopped);
        // There is no source any more.
        QCOMPARE(recorder.reset(), MediaError::None);
        QCOMPARE(recorder.prepare(), MediaError::SourceUnavailable);
        QVERIFY(decoded(file).size() >= 400 * 96);
    }

private:
    PulseServer m_server;
    Daemon m_daemon;
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_Sound)
#include "tst_sound.moc"
