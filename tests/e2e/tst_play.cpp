#include "Daemon.h"
#include "Media.h"

#include <multimedia/MediaPlayer.h>
#include <multimedia/MetaData.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

#include <sys/stat.h>

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
    void attachError_tellsTheCause_data();
    void attachError_tellsTheCause();
    void pause_holdsThePosition();
    void pauseOfUnprepared_preparesHeld();
    void stopThenPlay_startsAgain();
    void seek_movesThePosition();
    void speed_changesThePace();
    void statusInterval_setsThePaceOfReports();
    void secondMedium_isLearnt_withoutAnEventLoopPass();
    void reset_thenPrepare_staysPrepared();
    void sixteenPlayers_playTogether();

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

void tst_Play::attachError_tellsTheCause_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<MediaError::Type>("error");

    const auto write = [this](const char *name, const QByteArray &content) {
        QFile file(m_folder.filePath(name));
        QVERIFY(file.open(QFile::WriteOnly));
        file.write(content);
    };
    QFile ogg(tone("whole.ogg", 2));
    QVERIFY(ogg.open(QFile::ReadOnly));
    write("cut.ogg", ogg.read(40));
    write("empty.ogg", {});
    write("text.mp3", QByteArray("These are only words.\n").repeated(100));
    QVERIFY(mkdir(qPrintable(m_folder.filePath("folder.ogg")), 0700) == 0 || errno == EEXIST);
    QVERIFY(mkfifo(qPrintable(m_folder.filePath("fifo.ogg")), 0600) == 0 || errno == EEXIST);

    QTest::newRow("missing") << QByteArray("no such file.ogg") << MediaError::SourceUnavailable;
    QTest::newRow("bytes that are no UTF-8") << QByteArray("no%FF%FEsuch.ogg") << MediaError::SourceUnavailable;
    QTest::newRow("empty") << QByteArray("empty.ogg") << MediaError::ResourceCorrupted;
    QTest::newRow("text") << QByteArray("text.mp3") << MediaError::UnsupportedMediaType;
    QTest::newRow("cut off in its head") << QByteArray("cut.ogg") << MediaError::ResourceCorrupted;
    QTest::newRow("folder") << QByteArray("folder.ogg") << MediaError::UnsupportedMediaType;
    QTest::newRow("fifo") << QByteArray("fifo.ogg") << MediaError::UnsupportedMediaType;
    QTest::newRow("device") << QByteArray("/dev/zero") << MediaError::UnsupportedMediaType;
}

void tst_Play::attachError_tellsTheCause()
{
    QFETCH(QByteArray, name);
    QFETCH(MediaError::Type, error);
    const QByteArray path = name.startsWith('/') ? name : m_folder.path().toUtf8() + '/' + name.replace(' ', "%20");
    MediaPlayer player;
    QCOMPARE(player.setSourceUrl(QUrl::fromEncoded("file://" + path)), MediaError::None);
    QCOMPARE(player.prepare(), error);
    QCOMPARE(player.mediaState(), MediaState::Unprepared);

    // The same player plays the next good medium.
    QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(tone("good.wav", 1))), MediaError::None);
    QCOMPARE(player.play(), MediaError::None);
}

void tst_Play::pause_holdsThePosition()
{
    MediaPlayer player;
    States states(player);
    QSignalSpy positions(&player, qOverload<uint>(&MediaPlayer::positionChanged));
    QCOMPARE(player.setStatusInterval(50), MediaError::None);
    QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(tone("long.ogg", 60))), MediaError::None);
    QCOMPARE(player.play(), MediaError::None);
    QTRY_VERIFY(player.position() > 200);
    QCOMPARE(player.pause(), MediaError::None);
    QCOMPARE(player.mediaState(), MediaState::Paused);
    QCOMPARE(player.speed(), 0.0);
    QTRY_VERIFY(player.position() > 200);
    const uint held = player.position();

    QCOMPARE(player.play(), MediaError::None);
    QCOMPARE(player.mediaState(), MediaState::Started);
    QCOMPARE(player.speed(), 1.0);
    positions.clear();
    QTRY_VERIFY(player.position() > held + 200);
    QVERIFY(positions.first().first().toUInt() + 150 > held);
    QCOMPARE(states.take(),
             (QList{MediaState::Prepared, MediaState::Started, MediaState::Paused, MediaState::Started}));
}

void tst_Play::pauseOfUnprepared_preparesHeld()
{
    MediaPlayer player;
    QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(tone("long.ogg", 60))), MediaError::None);
    QCOMPARE(player.pause(), MediaError::None);
    QTRY_COMPARE(player.mediaState(), MediaState::Paused);
    QTRY_VERIFY(player.duration() > 0);
    QCOMPARE(player.position(), 0u);
    QCOMPARE(player.play(), MediaError::None);
    QTRY_VERIFY(player.position() > 0);
}

void tst_Play::stopThenPlay_startsAgain()
{
    MediaPlayer player;
    QCOMPARE(player.stop(), MediaError::InvalidState);
    QCOMPARE(player.setStatusInterval(50), MediaError::None);
    QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(tone("long.ogg", 60))), MediaError::None);
    QCOMPARE(player.play(), MediaError::None);
    QTRY_VERIFY(player.position() > 400);
    QCOMPARE(player.stop(), MediaError::None);
    QCOMPARE(player.mediaState(), MediaState::Stopped);
    QCOMPARE(player.stop(), MediaError::None);
    QSignalSpy positions(&player, qOverload<uint>(&MediaPlayer::positionChanged));
    QCOMPARE(player.play(), MediaError::None);
    QTRY_VERIFY(!positions.isEmpty() && player.position() > 0);
    QVERIFY(player.position() < 400);
}

void tst_Play::seek_movesThePosition()
{
    MediaPlayer player;
    QCOMPARE(player.setStatusInterval(50), MediaError::None);
    QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(tone("long.ogg", 60))), MediaError::None);
    QCOMPARE(player.prepare(), MediaError::None);
    QCOMPARE(player.seekTime(20'000), MediaError::None);
    QTRY_COMPARE(player.position(), 20'000u);
    QCOMPARE(player.play(), MediaError::None);
    QTRY_VERIFY(player.position() > 20'000);
    QCOMPARE(player.seekTime(40'000), MediaError::None);
    QSignalSpy positions(&player, qOverload<uint>(&MediaPlayer::positionChanged));
    QTRY_VERIFY(player.position() > 40'000);
    for (const auto &position : std::as_const(positions)) {
        QVERIFY(position.first().toUInt() >= 40'000);
    }
    QCOMPARE(player.seek(2, 0), MediaError::InvalidParameter);
    QCOMPARE(player.previousTrack(), MediaError::InvalidParameter);
}

void tst_Play::speed_changesThePace()
{
    MediaPlayer player;
    QSignalSpy completed(&player, &MediaPlayer::playbackCompleted);
    QSignalSpy speeds(&player, &MediaPlayer::speedChanged);
    QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(tone("eight.wav", 8))), MediaError::None);
    QCOMPARE(player.setSpeed(4.0), MediaError::InvalidState);
    QCOMPARE(player.prepare(), MediaError::None);
    QCOMPARE(player.setSpeed(4.0), MediaError::None);
    QVERIFY(completed.wait(7'500));
    QVERIFY(!speeds.isEmpty());
    QCOMPARE(speeds.last().first().toDouble(), 4.0);
}

void tst_Play::statusInterval_setsThePaceOfReports()
{
    MediaPlayer player;
    QSignalSpy positions(&player, qOverload<uint>(&MediaPlayer::positionChanged));
    QCOMPARE(player.setStatusInterval(20), MediaError::None);
    QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(tone("long.ogg", 60))), MediaError::None);
    QCOMPARE(player.play(), MediaError::None);
    QTRY_VERIFY(player.position() >= 1000);
    QVERIFY2(positions.count() > 30, qPrintable(QString::number(positions.count())));
    QCOMPARE(player.setStatusInterval(1), MediaError::InvalidParameter);
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

void tst_Play::reset_thenPrepare_staysPrepared()
{
    MediaPlayer player;
    QCOMPARE(player.setSourceUrl(QUrl::fromLocalFile(tone("first.wav", 3))), MediaError::None);
    QCOMPARE(player.play(), MediaError::None);
    QTRY_COMPARE(player.duration(), 3000u);
    for (int i = 0; i < 10; ++i) {
        QCOMPARE(player.reset(), MediaError::None);
        QCOMPARE(player.prepare(), MediaError::None);
    }
    QTRY_COMPARE(player.duration(), 3000u);
    QCOMPARE(player.mediaState(), MediaState::Prepared);
}

void tst_Play::sixteenPlayers_playTogether()
{
    std::vector<std::unique_ptr<MediaPlayer>> players;
    for (int i = 0; i < 16; ++i) {
        players.push_back(std::make_unique<MediaPlayer>());
        QCOMPARE(players.back()->setStatusInterval(100), MediaError::None);
        QCOMPARE(players.back()->setSourceUrl(QUrl::fromLocalFile(tone("long.ogg", 60))), MediaError::None);
        QCOMPARE(players.back()->play(), MediaError::None);
    }
    for (const auto &player : players) {
        QTRY_VERIFY_WITH_TIMEOUT(player->position() > 300, 20'000);
    }
}

QTEST_GUILESS_MAIN(tst_Play)
#include "tst_play.moc"
