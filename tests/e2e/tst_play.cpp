#include "Daemon.h"
#include "Media.h"

#include <multimedia/MediaPlayer.h>
#include <multimedia/MetaData.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

using namespace voro::multimedia;

namespace {

/** The player's states in the order in which they were reported. */
class States {
public:
    explicit States(MediaPlayer &player)
    {
        QObject::connect(&player, &MediaPlayer::mediaStateChanged, &player,
                         [this](MediaState::Type state) { m_list << state; });
    }
    QList<MediaState::Type> take() { return std::exchange(m_list, {}); }

private:
    QList<MediaState::Type> m_list;
};

QSignalSpy spyOnDuration(MediaPlayer &player)
{
    return QSignalSpy(&player, qOverload<uint>(&MediaPlayer::durationChanged));
}

} // namespace

/** A player, the daemon, a worker and real media; the sound goes nowhere, in real time. */
class tst_Play : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void playToTheEnd_data();
    void playToTheEnd();
    void metaData_comesFromTheTags();
    void path_data();
    void path();
    void secondMedium_isLearnt_withoutAnEventLoopPass();

private:
    QString tone(const QString &name, double seconds, const QStringList &tags = {})
    {
        const QString path = m_folder.filePath(name);
        return QFile::exists(path)
                   ? path
                   : media::makeTone(path,
                                     {.seconds = seconds, .tags = tags, .hasPicture = name.startsWith("pictures")});
    }

    const int m_sink = qputenv("VORO_AUDIO_SINK", "fakesink sync=true");
    Daemon m_daemon;
    QTemporaryDir m_folder;
};

void tst_Play::playToTheEnd_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"t.wav", "t.ogg", "t.opus", "t.flac", "t.mp3", "t.m4a", "t.mp4", "t.mkv", "t.webm", "pictures.mp4"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void tst_Play::playToTheEnd()
{
    QFETCH(QString, name);
    MediaPlayer player;
    States states(player);
    QSignalSpy positions(&player, qOverload<uint>(&MediaPlayer::positionChanged));
    QSignalSpy completed(&player, &MediaPlayer::playbackCompleted);
    QCOMPARE(player.setStatusInterval(100), MediaError::None);
    QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(tone(name, 2))), MediaError::None);
    QCOMPARE(player.prepare(), MediaError::None);
    QTRY_VERIFY(player.duration() != 0);
    QVERIFY2(qAbs(static_cast<int>(player.duration()) - 2000) <= 60, qPrintable(QString::number(player.duration())));
    QTRY_VERIFY(player.isSeekable());
    QTRY_COMPARE(player.trackCount(), 1u);
    QCOMPARE(player.track(), 1u);

    QElapsedTimer time;
    time.start();
    connect(&player, qOverload<uint>(&MediaPlayer::positionChanged), this, [&](uint position) {
        QVERIFY2(position <= time.elapsed() + 200,
                 qPrintable(QString::number(position))); // nothing runs ahead of the sound
    });
    QCOMPARE(player.play(), MediaError::None);
    QVERIFY(completed.wait(20'000));
    QCOMPARE(states.take(), (QList{MediaState::Prepared, MediaState::Started, MediaState::Stopped}));
    QCOMPARE(completed.count(), 1);
    uint last = 0;
    for (const auto &position : std::as_const(positions)) {
        QVERIFY(position.first().toUInt() >= last);
        last = position.first().toUInt();
    }
    QVERIFY2(positions.count() >= 10 && qAbs(static_cast<int>(last) - 2000) <= 100, qPrintable(QString::number(last)));
}

void tst_Play::metaData_comesFromTheTags()
{
    const QString path =
        tone("tagged.flac", 1, {"title=Höhe", "artist=Ann & Bo", "album=Hills", "genre=Test", "track=3/9"});
    MediaPlayer player;
    QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(path)), MediaError::None);
    QCOMPARE(player.prepare(), MediaError::None);
    QTRY_COMPARE(player.metaData().value(MetaData::Title).toString(), QStringLiteral("Höhe"));
    const QVariantMap data = player.metaData();
    QCOMPARE(data.value(MetaData::Artist).toString(), QStringLiteral("Ann & Bo"));
    QCOMPARE(data.value(MetaData::Album).toString(), QStringLiteral("Hills"));
    QCOMPARE(data.value(MetaData::Genre).toString(), QStringLiteral("Test"));
    QCOMPARE(data.value(MetaData::Track).toInt(), 3);
    QCOMPARE(data.value(MetaData::SampleRate).toInt(), 48'000);
    QCOMPARE(data.value(MetaData::Duration).toInt(), 1000);
    QCOMPARE(data.value(MetaData::Width).toInt(), 0);
    QVERIFY(data.value(MetaData::Uri).toString().endsWith(QLatin1String("tagged.flac")));
}

void tst_Play::path_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"a b  c.wav", "100%25.wav", "50%.wav", "a#b.wav", "what?.wav", "Bär · 音.wav",
                             "a&b=c;d'\".wav", "back\\slash.wav"}) {
        QTest::newRow(name) << QString::fromUtf8(name);
    }
}

void tst_Play::path()
{
    QFETCH(QString, name);
    const QString path = m_folder.filePath(name);
    QVERIFY(QFile::copy(tone("path.wav", 1), path));
    MediaPlayer player;
    QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(path)), MediaError::None);
    QCOMPARE(player.prepare(), MediaError::None);
}

void tst_Play::secondMedium_isLearnt_withoutAnEventLoopPass()
{
    MediaPlayer player;
    QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(tone("first.wav", 3, {"title=First"}))), MediaError::None);
    QCOMPARE(player.play(), MediaError::None);
    QTRY_COMPARE(player.duration(), 3000u);
    QTRY_COMPARE(player.trackCount(), 1u);
    QTRY_VERIFY(player.isSeekable());

    auto durations = spyOnDuration(player);
    QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(tone("second.wav", 3, {"title=Second"}))), MediaError::None);
    QCOMPARE(player.play(), MediaError::None);
    QCOMPARE(player.duration(), 0u);
    QTRY_COMPARE(player.duration(), 3000u);
    QTRY_VERIFY(player.isSeekable());
    QTRY_COMPARE(player.metaData().value(MetaData::Title).toString(), QStringLiteral("Second"));
    QCOMPARE(player.mediaState(), MediaState::Started);
    QCOMPARE(durations.last().first().toUInt(), 3000u);
}

QTEST_GUILESS_MAIN(tst_Play)
#include "tst_play.moc"
