#include "Daemon.h"
#include "Media.h"
#include "Programs.h"
#include "PulseServer.h"
#include "Tone.h"

#include <multimedia/AudioRecorder.h>
#include <multimedia/MediaPlayer.h>
#include <voro/audio_manager.h>

#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
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

/** Whether what is played really sounds, heard at the sound server, and what is recorded there. */
class tst_Sound : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void play_soundsAtTheSink_data();
    void play_soundsAtTheSink();
    void preparedLongAgo_soundsAtOnce();
    void pauseVolumeAndType_reachTheServer();
    void filmSoughtToItsEnd_rightAfterPlay_ends();
    void serverEnds_playerStops_andSoundsWithTheNextOne();
    void serverEnds_shortMediumIsPlayedToItsEnd();
    void deviceGone_holds_data();
    void deviceGone_holds();
    void recording_holdsWhatIsHeard();
    void serverEnds_recordingStays();

private:
    PulseServer m_server;
    Daemon m_daemon;
    QTemporaryDir m_folder;
};

void tst_Sound::initTestCase()
{
    QVERIFY(m_folder.isValid());
}

void tst_Sound::play_soundsAtTheSink_data()
{
    Rows<QString>("name").each({"tone.wav", "tone.ogg", "tone.mp3", "tone.m4a"});
}

void tst_Sound::play_soundsAtTheSink()
{
    QFETCH(QString, name);
    const QString path = media::makeTone(m_folder.filePath(name), {.frequency = 880, .seconds = 10});
    MonitorRecorder recorder;
    MediaPlayer player;
    QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(path)), MediaError::None);
    QCOMPARE(player.play(), MediaError::None);
    QVERIFY(recorder.waitForTone(880, 300));
}

void tst_Sound::preparedLongAgo_soundsAtOnce()
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

void tst_Sound::pauseVolumeAndType_reachTheServer()
{
    const QString path = media::makeTone(m_folder.filePath("pause.wav"), {.frequency = 600, .seconds = 60});
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
    QCOMPARE(player.pause(), MediaError::None);
    QTRY_VERIFY(tone::firstSound(newest(recorder, 48'000)) < 0);
    QCOMPARE(player.play(), MediaError::None);
    QVERIFY(recorder.waitForTone(600, 200));
    const auto isLouderThan = [&recorder](int level) { return tone::firstSound(newest(recorder, 9'600), level) >= 0; };
    QVERIFY(isLouderThan(8'000));
    QCOMPARE(player.setVolume(0.1), MediaError::None);
    QVERIFY(QTest::qWaitFor([&] { return !isLouderThan(4'000) && isLouderThan(300); }, 20'000));
}

void tst_Sound::filmSoughtToItsEnd_rightAfterPlay_ends()
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

void tst_Sound::deviceGone_holds_data()
{
    const Rows<bool> row("isAutoPause");
    row("auto-pause", true);
    row("no auto-pause", false);
}

void tst_Sound::deviceGone_holds()
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

void tst_Sound::serverEnds_playerStops_andSoundsWithTheNextOne()
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

void tst_Sound::serverEnds_shortMediumIsPlayedToItsEnd()
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

void tst_Sound::recording_holdsWhatIsHeard()
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
    connect(&recorder, &AudioRecorder::recordingLevelChanged, this, [&](double now) { level = std::max(level, now); });
    QTRY_VERIFY_WITH_TIMEOUT(recorder.duration() >= 1000, 20'000);
    QCOMPARE(recorder.reset(), MediaError::None);
    // Everything is there in the next line.
    const QByteArray samples = decoded(file);
    QVERIFY2(samples.size() >= 900 * 96, qPrintable(QString::number(samples.size() / 96)));
    QVERIFY(tone::share(samples.mid(200 * 96), 440) > 0.95);
    QVERIFY(level > 0.5);
}

void tst_Sound::serverEnds_recordingStays()
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

QTEST_GUILESS_MAIN(tst_Sound)
#include "tst_sound.moc"
