#include "Daemon.h"
#include "Media.h"
#include "PulseServer.h"
#include "Tone.h"

#include <multimedia/AudioRecorder.h>
#include <multimedia/MediaPlayer.h>

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

using namespace voro::multimedia;

/** The recorder with a sound server: what the null sink plays is what is recorded. */
class tst_Record : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void recording_holdsWhatIsHeard_data();
    void recording_holdsWhatIsHeard();
    void resetAndPrepare_inARow_staysPrepared();
    void serverGone_reportsAnError_fileStays();

private:
    QUrl url(const char *name) const { return QUrl::fromLocalFile(m_folder.filePath(QLatin1String(name))); }
    static QByteArray decoded(const QUrl &file)
    {
        QProcess decoder;
        decoder.start(QStringLiteral("ffmpeg"), {"-v", "error", "-nostdin", "-i", file.toLocalFile(), "-f", "s16le",
                                                 "-ac", "1", "-ar", "48000", "-"});
        return decoder.waitForFinished(60'000) && decoder.exitCode() == 0 ? decoder.readAllStandardOutput()
                                                                          : QByteArray();
    }

    QTemporaryDir m_folder;
    PulseServer m_server;
    Daemon m_daemon;
    QUrl m_tone;
};

void tst_Record::initTestCase()
{
    m_tone = QUrl::fromLocalFile(media::makeTone(m_folder.filePath("tone.wav"), {.seconds = 60}));
}

void tst_Record::recording_holdsWhatIsHeard_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"a.wav", "a.ogg", "a.opus", "a.flac", "a.mp3", "a.m4a", "a.amr"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void tst_Record::recording_holdsWhatIsHeard()
{
    QFETCH(const QString, name);
    MediaPlayer player;
    player.setSourceUrl(m_tone);
    QCOMPARE(player.play(), MediaError::None);
    MonitorRecorder heard;
    QVERIFY(heard.waitForTone(440, 200));

    const QUrl file = url(qPrintable(name));
    AudioRecorder recorder;
    recorder.setOutputUrl(file);
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
    QCOMPARE(recorder.mediaState(), MediaState::Unprepared);
}

void tst_Record::resetAndPrepare_inARow_staysPrepared()
{
    AudioRecorder recorder;
    recorder.setOutputUrl(url("row.wav"));
    QCOMPARE(recorder.prepare(), MediaError::None);
    for (int i = 0; i < 10; ++i) {
        QCOMPARE(recorder.reset(), MediaError::None);
        QCOMPARE(recorder.prepare(), MediaError::None);
    }
    QSignalSpy states(&recorder, &AudioRecorder::mediaStateChanged);
    // The next report comes behind all that the event loop was kept from.
    QCOMPARE(recorder.setStatusInterval(20), MediaError::None);
    QCOMPARE(recorder.record(), MediaError::None);
    QTRY_VERIFY(recorder.duration() > 0);
    QCOMPARE(recorder.mediaState(), MediaState::Started);
    QCOMPARE(states.size(), 1);

    QCOMPARE(recorder.reset(), MediaError::None);
    QCOMPARE(recorder.prepare(), MediaError::None);
    states.clear();
    QCoreApplication::processEvents();
    QCOMPARE(recorder.mediaState(), MediaState::Prepared);
    QCOMPARE(states.size(), 0);
}

void tst_Record::serverGone_reportsAnError_fileStays()
{
    AudioRecorder recorder;
    recorder.setOutputUrl(url("cut.wav"));
    QCOMPARE(recorder.setStatusInterval(50), MediaError::None);
    QCOMPARE(recorder.record(), MediaError::None);
    QTRY_VERIFY_WITH_TIMEOUT(recorder.duration() >= 500, 20'000);
    QSignalSpy errors(&recorder, qOverload<MediaError::Type, unsigned>(&AudioRecorder::error));
    m_server.kill();
    QTRY_COMPARE(errors.size(), 1);
    QCOMPARE(errors.first().first().value<MediaError::Type>(), MediaError::SourceUnavailable);
    QCOMPARE(recorder.mediaState(), MediaState::Stopped);
    QVERIFY(decoded(url("cut.wav")).size() >= 400 * 96);
    // There is no source any more.
    QCOMPARE(recorder.reset(), MediaError::None);
    QCOMPARE(recorder.prepare(), MediaError::SourceUnavailable);
    QVERIFY(decoded(url("cut.wav")).size() >= 400 * 96);
}

QTEST_GUILESS_MAIN(tst_Record)
#include "tst_record.moc"
