#include "PlayerFixture.h"
#include "private/Logger.h"
#include "ScriptedService.h"

#include <multimedia/AudioRecorder.h>
#include <multimedia/MediaKeyWatcher.h>
#include <multimedia/NowPlayingConnection.h>
#include <multimedia/NowPlayingController.h>
#include <multimedia/SystemSound.h>

#include <QtTest/QtTest>

#include <Files.h>

using namespace voro::multimedia;

namespace {

/**
 * Compares the lines for debugging with a paragraph of the file, but for what is another in each run. Lines that tell
 * of functions being entered and left are left out.
 */
void compare(voro::test::LogCatcher &log, const char *paragraph)
{
    static const QRegularExpression address(QStringLiteral("0x[0-9a-f]+"));
    static const QRegularExpression identifier(QStringLiteral("(::|generated: )[0-9a-z]+(?=\")"));
    QStringList lines = log.takeDebugLines();
    lines.removeIf([](const QString &line) { return line.startsWith(QLatin1String("FunctionTracer::")); });
    lines.replaceInStrings(address, QStringLiteral("0x")).replaceInStrings(identifier, QStringLiteral("\\1ID"));
    const QString all = QString::fromUtf8(readFile(QStringLiteral(LINES)));
    const QString heading = QStringLiteral("# %1\n").arg(QLatin1String(paragraph));
    QCOMPARE(lines, all.section(heading, 1).section(QStringLiteral("\n\n"), 0, 0).trimmed().split(QLatin1Char('\n')));
}

using Properties = std::initializer_list<std::pair<const char *, QVariant>>;

void set(QObject &object, Properties properties)
{
    for (const auto &[name, value] : properties) {
        object.setProperty(name, value);
    }
}

/** The second time there is nothing to do. */
void setTwice(QObject &object, Properties properties)
{
    for (const auto &property : properties) {
        set(object, {property, property});
    }
}

} // namespace

/** Compares the lines that the library writes with debugging on with lines.txt: a paragraph a class, in their order. */
class LogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY2(ENABLE_DEBUG, "to be run with VOROMULTIMEDIA_LOG_DEBUG=1"); }

    void linesOfThePlayer()
    {
        const RuntimeBroker broker;
        PlayerFixture f;
        MediaPlayer &player = f.media;
        player.setVideoOutput(VideoOutput::PrimaryDisplay);
        setTwice(player, {{"windowId", "w"}, {"windowGroupId", "w"}, {"closedCaptionWindowId", "w"}});
        player.reset();
        player.stop();
        player.setSourceUrl(QUrl(QStringLiteral("file:///music/a.ogg")));
        player.prepare();
        player.prepare();
        for (const auto &[objects, last] :
             {std::pair("play-queue current:n:2 total:n:3", "trackCountChanged(3)"),
              {"input a::1", "mmr_input_parameters a=1"},
              {"p2 name::value", "mmr_track_parameters 2 name=value subpicture_index=0"},
              {"status position::4500 bufferlevel::1/2 bufferstatus::playing", "bufferStatusChanged(Playing)"},
              {"state state::playing speed:n:1000", "mediaStateChanged(Started)"}}) {
            QCOMPARE(published(objects, last)(f), MediaError::None);
        }
        player.setSpeed(0.5);
        player.pause();
        player.seek(3, 1500);
        setTwice(
            player,
            {{"volume", 0.5}, {"autoPause", true}, {"equalizerPreset", QVariant::fromValue(EqualizerPreset::Jazz)}});
        set(player, {{"audioManagerHandle", 7},
                     {"repeatMode", QVariant::fromValue(RepeatMode::All)},
                     {"statusInterval", 250},
                     {"closedCaptionEnabled", false},
                     {"closedCaptionIndex", 2}});
        player.setVideoSourceRect(1, 2, 3, 4);
        player.setClosedCaptionUrl(1, QUrl(QStringLiteral("file:///films/a.srt")));
        Q_EMIT f.notifier.durationChanged(900u);
        Q_EMIT f.notifier.seekableChanged(true);
        Q_EMIT f.notifier.metaDataChanged(QVariantMap{{QStringLiteral("title"), QStringLiteral("T")}});
        Q_EMIT f.notifier.videoDimensionsChanged(QSize(4, 3));
        Q_EMIT f.notifier.stopped();
        Q_EMIT f.notifier.error(MediaError::Read, 70u, 3u);
        Q_EMIT f.notifier.playbackCompleted();
        player.setVideoOutput(VideoOutput::None);
        player.setAudioOutput(AudioOutput::Default);
        player.setAudioOutput(AudioOutput::None);
        compare(f.log, "MediaPlayer");
    }

    void linesOfTheRecorder()
    {
        MediaFixture<AudioRecorder> f;
        AudioRecorder &recorder = f.media;
        recorder.prepare();
        recorder.setOutputUrl(QUrl(QStringLiteral("file:///rec/a.wav")));
        setTwice(recorder, {{"audioChannelConfiguration", QVariant::fromValue(AudioChannelConfiguration::Mono)},
                            {"audioManagerHandle", 7}});
        recorder.setProperty("statusInterval", 250);
        recorder.reset();
        recorder.prepare();
        recorder.prepare();
        recorder.record();
        Q_EMIT f.notifier.playing();
        Q_EMIT f.notifier.positionChanged(900u);
        Q_EMIT f.notifier.volumeLevelChanged(0.5);
        Q_EMIT f.notifier.error(MediaError::Write, 70u, 1u);
        recorder.reset();
        compare(f.log, "AudioRecorder");
    }

    void linesOfTheConnection()
    {
        using C = NowPlayingConnection;
        voro::test::LogCatcher log;
        RuntimeBroker broker;
        ScriptedService service(broker, QStringLiteral("/pps/services/multimedia/mediaplayer/control"));
        service.answer(QStringLiteral("msg::acquire"), {QStringLiteral("res::acquire")});
        C connection(QStringLiteral("player"));
        QStringList trace;
        const SignalLog emitted(&connection, trace);
        connection.trackChange();
        connection.setDeviceMode(DeviceMode::Capture);
        connection.setConnectionName(QStringLiteral("recorder"));
        setTwice(connection, {{"preemptable", false}});
        connection.acquire();
        connection.acquire();
        connection.setOverlayStyle(OverlayStyle::Fancy);
        setTwice(connection, {{"audioManagerHandle", 7}});
        connection.setMediaState(MediaState::Started);
        connection.trackChange();
        connection.setMetaData({{QStringLiteral("title"), QStringLiteral("T")}});
        QCoreApplication::processEvents();
        for (const char *message :
             {"msg::track|dat::sendData", "msg::track|dat::next",
              R"(msg::track|dat:json:{"command":"repeat","value":"all"})",
              R"(msg::track|dat:json:{"command":"shuffle","value":"off"})", "msg::track|dat::holdData"}) {
            const qsizetype before = trace.size();
            service.send(QString::fromLatin1(message));
            QTRY_COMPARE(trace.size(), before + 1);
            QCoreApplication::processEvents();
        }
        set(connection, {{"iconUrl", QUrl(QStringLiteral("http://host/a.png"))}, {"duration", 9}, {"position", 7}});
        setTwice(connection, {{"nextEnabled", false},
                              {"previousEnabled", false},
                              {"repeatMode", QVariant::fromValue(RepeatMode::All)},
                              {"shuffleMode", QVariant::fromValue(ShuffleMode::Off)}});
        QCoreApplication::processEvents();
        service.send(QStringLiteral("msg::none"));
        service.send(QStringLiteral("msg::track|dat::louder"));
        service.send(QStringLiteral(R"(msg::revoke|dat:json:{"name":"other","pid":4000})"));
        QTRY_COMPARE(trace.last(), QStringLiteral("revoked()"));
        service.answer(QStringLiteral("msg::acquire"), {QStringLiteral("res::acquire|err::revoked")});
        connection.acquire();
        compare(log, "NowPlayingConnection");
    }

    void linesOfTheController()
    {
        using C = NowPlayingController;
        voro::test::LogCatcher log;
        RuntimeBroker broker;
        ScriptedService service(broker, QStringLiteral("/pps/services/multimedia/mediacontroller/control"));
        service.answer(QStringLiteral("md_subscribe"), {QStringLiteral(R"(msg::md_update|dat:json:{"duration":9})"),
                                                        QStringLiteral(R"(msg::md_update|dat:json:{"position":7})")});
        C controller;
        static_cast<void>(controller.position());
        service.answer(QStringLiteral("md_subscribe"), {});
        controller.repeat(RepeatMode::All);
        controller.shuffle(ShuffleMode::Off);
        QSignalSpy trackChanges(&controller, &C::trackChanged);
        disconnect(connect(&controller, &C::metaDataChanged, [] {}));
        service.send(QStringLiteral("msg::m_state|dat::playing"));
        for (
            const char *update :
            {R"("track":"T","track_number":"3","artist":"A","album":"B","albumArtwork":"file:///a.png")",
             R"("nextEnabled":true,"prevEnabled":true,"position":5,"duration":9,"repeat_mode":"all","shuffle_mode":"off")"}) {
            service.send(QStringLiteral("msg::md_update|dat:json:{%1}").arg(QLatin1String(update)));
        }
        service.send(QStringLiteral("msg::m_state|dat::trackchange"));
        QVERIFY(trackChanges.wait());
        compare(log, "NowPlayingController");
    }

    void linesOfKeysAndSounds()
    {
        voro::test::LogCatcher log;
        RuntimeBroker broker;
        ScriptedService keys(broker, QStringLiteral("/pps/services/multimedia/mediaplayer/control"));
        ScriptedService sounds(broker, QStringLiteral("/pps/services/multimedia/sound/control"));
        MediaKeyWatcher watcher(MediaKey::Play);
        QSignalSpy shortPresses(&watcher, &MediaKeyWatcher::shortPress);
        QSignalSpy mediumPresses(&watcher, &MediaKeyWatcher::mediumPress);
        watcher.setNotification(MediaKeyNotification::Threshold);
        keys.send(QStringLiteral("msg::key|dat::bn_play_short"));
        keys.send(QStringLiteral("msg::key|dat::bn_play_med"));
        QVERIFY(mediumPresses.wait() && shortPresses.size() == 1);
        watcher.setKey(MediaKey::None);
        SystemSound sound(SystemSound::InputKeypress);
        sound.play();
        sound.setSound(SystemSound::InputKeypress);
        compare(log, "MediaKeyWatcher and SystemSound");
    }

    void tracer_tellsEntryAndExit()
    {
        PlayerFixture f;
        f.forget();
        f.media.volumeChanged(1.0);
        QCOMPARE(f.log.takeDebugLines(), QStringList());
        f.media.stop();
        const int thread = static_cast<int>(reinterpret_cast<quintptr>(QThread::currentThreadId()));
        const QStringList lines = f.log.takeDebugLines();
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines.at(0), QStringLiteral("FunctionTracer::FunctionTracer: START%1MediaPlayer::stop").arg(thread));
        const QRegularExpression end(
            QStringLiteral("^FunctionTracer::~FunctionTracer: => END%1\\(\\d+ms\\):$").arg(thread));
        QVERIFY2(end.match(lines.at(2)).hasMatch(), qPrintable(lines.at(2)));
    }
};

QTEST_GUILESS_MAIN(LogTest)
#include "tst_log.moc"
