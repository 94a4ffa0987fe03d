#include "PlayerFixture.h"
#include "private/Logger.h"
#include "private/MediaUtils.h"
#include "private/NowPlayingConnectionPrivate.h"
#include "private/NowPlayingControllerPrivate.h"

#include <multimedia/AudioRecorder.h>
#include <multimedia/SystemSound.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QThread>
#include <QtTest/QtTest>

#include <Rows.h>

using namespace voro::multimedia;

using P = MediaPlayer;
using R = AudioRecorder;

/** The lines that the library writes with debugging on. */
class LogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void lines_ofACommand_data();
    void lines_ofACommand() { tryLines<P>(); }
    void lines_ofARecorder_data();
    void lines_ofARecorder() { tryLines<R>(); }
    void lines_ofConstruction();
    void lines_ofAnIdentifier();
    void lines_ofASound();
    void lines_ofAController();
    void lines_ofNowPlaying_data();
    void lines_ofNowPlaying();
    void tracer_tellsEntryAndExit();

private:
    /** Lines have " | " between; announcements of signals are left out, which the rows of other tests compare. */
    template<typename Media>
    void tryLines();
};

namespace {

/** The lines for debugging since the last call, without those that tell of functions being entered and left. */
QStringList linesOf(voro::test::LogCatcher &log)
{
    QStringList lines = log.takeDebugLines();
    lines.removeIf([](const QString &line) { return line.startsWith(QLatin1String("FunctionTracer::")); });
    return lines;
}

} // namespace

void LogTest::initTestCase()
{
    QVERIFY2(ENABLE_DEBUG, "to be run with VOROMULTIMEDIA_LOG_DEBUG=1");
}

void LogTest::lines_ofACommand_data()
{
    const Rows<Preparation, Action, QString> row("given", "act", "lines");
    row("medium", newPlayer, call(&P::setSourceUrl, QUrl(QStringLiteral("http://host/a"))),
        "MediaPlayer::setSourceUrl: url=\"http://host/a\" | "
        "MediaPlayerPrivate::setMediaState: Attempting to change to same state.  mediaState=Unprepared | "
        "MediaPlayerPrivate::setMediaState: Attempting to change to same state.  mediaState=Unprepared");
    row("prepare", withSource, call(&P::prepare),
        "MediaPlayerPrivate::generateAudioOutputUrl: audioOutput=Default | "
        "MediaPlayerPrivate::generateVideoOutputUrl: videoOutput=None | "
        "MediaPlayerPrivate::generateVideoOutputUrl: windowId=\"\" | "
        "MediaPlayerPrivate::generateVideoOutputUrl: windowGroupId=\"\" | "
        "MediaPlayerPrivate::generateVideoOutputUrl: videoOutput=None | "
        "MediaPlayerPrivate::generateVideoOutputUrl: windowId=\"\" | "
        "MediaPlayerPrivate::generateVideoOutputUrl: windowGroupId=\"\" | "
        "MediaPlayerPrivate::attachInput: url=file:///s/s.ogg | "
        "MediaPlayerPrivate::attachInput: Attempting to attach input. url=file:///s/s.ogg, type=\"playlist\" | "
        "MmrContextNotifier::updateTrackParameters: QMap() | "
        "MmrContextNotifier::updateTrackParameters: QMap() | "
        "MediaPlayerPrivate::attachInput: Input attach succeeded | "
        "MediaPlayerPrivate::updateInputParamRepeatMode: mode=0 | MediaPlayerPrivate::toString: repeatMode=0 | "
        "MmrContextNotifier::updateInputParameter:   \"repeat\"=\"\"");
    row("pause", started, call(&P::pause),
        "MediaPlayer::setSpeed: speed=0 | MediaPlayerPrivate::onMmrSpeedChanged: speed=0 | "
        "MediaPlayerPrivate::setMediaState: Attempting to change to same state.  mediaState=Paused");
    row("stop, unprepared", newPlayer, call(&P::stop), "MediaPlayer::stop: Media player is unprepared");
    row("reset, unprepared", newPlayer, call(&P::reset), "MediaPlayerPrivate::unprepare: Already unprepared");
    row("seek", started, call(&P::seekPercent, 0.5),
        "MediaPlayer::seekPercent: percentage=0.5 | MediaPlayerPrivate::seek: track=1 | "
        "MediaPlayerPrivate::seek: position=0");
    row("same volume", newPlayer, call(&P::setVolume, 1.0),
        "MediaPlayer::setVolume: volume=1 | MediaPlayer::setVolume: Volume already set to 1");
    row("auto pause", newPlayer, call(&P::setAutoPause, true), "MediaPlayer::setAutoPause: autoPause=true");
    row("same equalizer", newPlayer, call(&P::setEqualizerPreset, EqualizerPreset::Off),
        "MediaPlayer::setEqualizerPreset: equalizerPreset=Off | "
        "MediaPlayer::setEqualizerPreset: Equalizer preset already set to Off");
    row("repeat mode", newPlayer, call(&P::setRepeatMode, RepeatMode::All),
        "MediaPlayer::setRepeatMode: repeatMode=All | MediaPlayerPrivate::toString: repeatMode=2");
    row("window", newPlayer, call(&P::setClosedCaptionWindowId, QStringLiteral("c")),
        "MediaPlayer::setClosedCaptionWindowId: closedCaptionWindowId=\"c\"");
    row("part of the pictures", startedWithVideo, call(&P::setVideoSourceRect, 1, 2, 3u, 4u),
        "MediaPlayer::setVideoSourceRect: x=1, y=2, width=3, height=4 | "
        "MediaPlayerPrivate::updateVideoOutputParams: rect=QRect(1,2 3x4)");
    row("interval as a variant", newPlayer, call(&P::setStatusIntervalQml, QVariant(1000)),
        "MediaPlayer::setStatusIntervalQml: statusInterval=\"1000\" | "
        "MediaPlayer::setStatusInterval: statusInterval=1000 | "
        "MediaPlayerPrivate::updateContextParams: updateInterval=1000");
}

void LogTest::lines_ofARecorder_data()
{
    const Rows<PreparationOf<R>, ActionOn<R>, QString> row("given", "act", "lines");
    const auto newRecorder = [](auto &) {};
    const auto url = QUrl(QStringLiteral("file:///rec/a.wav"));
    const auto prepared = after(call(&R::setOutputUrl, url), call(&R::prepare));
    row("file", newRecorder, call(&R::setOutputUrl, url), "AudioRecorder::setOutputUrl: url=file:///s/s.wav");
    row("prepare without a file", newRecorder, call(&R::prepare), "AudioRecorder::prepare: Invalid output URL.");
    row("prepare", call(&R::setOutputUrl, url), call(&R::prepare),
        "AudioRecorderPrivate::updateInputParams: audioManagerHandle=0");
    row("prepare, prepared", prepared, call(&R::prepare), "AudioRecorder::prepare: Recorder is already prepared");
    row("record, started", after(prepared, call(&R::record)), call(&R::record),
        "AudioRecorderPrivate::setMediaState: Attempting to change to same state.  mediaState=Started");
    row("reset, unprepared", newRecorder, call(&R::reset), "AudioRecorderPrivate::unprepare: Already unprepared");
    row("same channels", newRecorder, call(&R::setAudioChannelConfiguration, AudioChannelConfiguration::Default),
        "AudioRecorder::setAudioChannelConfiguration: audioChannelConfiguration=Default | "
        "AudioRecorder::setAudioChannelConfiguration: Attempting to set same audio channel configuration.");
    row("same handle as a variant", newRecorder, call(&R::setAudioManagerHandleQml, QVariant(0)),
        "AudioRecorder::setAudioManagerHandleQml: handle=\"0\" | "
        "AudioRecorder::setAudioManagerHandle: audioManagerHandle=0 | "
        "AudioRecorder::setAudioManagerHandle: Attempting to set same audio manager handle.");
    row("interval as a variant", newRecorder, call(&R::setStatusIntervalQml, QVariant(5)),
        "AudioRecorder::setStatusIntervalQml: statusInterval=\"5\" | "
        "AudioRecorder::setStatusInterval: statusInterval=5 | "
        "AudioRecorderPrivate::updateContextParams: updateInterval=5");
}

template<typename Media>
void LogTest::tryLines()
{
    QFETCH(PreparationOf<Media>, given);
    QFETCH(ActionOn<Media>, act);
    QFETCH(QString, lines);
    MediaFixture<Media> f;
    given(f);
    f.forget();
    act(f);
    QStringList found = linesOf(f.log);
    found.removeIf([](const QString &line) { return isAnnouncement(line); });
    QCOMPARE(found, lines.split(QStringLiteral(" | ")));
}

void LogTest::lines_ofConstruction()
{
    PlayerFixture good;
    const QStringList lines = linesOf(good.log);
    QVERIFY(lines.contains(QStringLiteral("MediaPlayer::MediaPlayer: Creating context...")));
    QVERIFY(lines.contains(QStringLiteral("MediaPlayer::MediaPlayer:   context=\"%1\"").arg(good.media.objectName())));
}

void LogTest::lines_ofAnIdentifier()
{
    voro::test::LogCatcher log;
    const QString identifier = MediaUtils::instance()->generateUniqueId();
    QCOMPARE(linesOf(log),
             QStringList(QStringLiteral("MediaUtils::generateUniqueId: \"generated: %1\"").arg(identifier)));
}

void LogTest::lines_ofASound()
{
    const QTemporaryDir folder;
    qputenv("VORO_RUNTIME_DIR", folder.path().toUtf8());
    qputenv("VORO_AUTOSPAWN", "0");
    voro::test::LogCatcher log;
    SystemSound sound(SystemSound::InputKeypress);
    log.takeDebugLines();
    sound.play();
    QCOMPARE(linesOf(log),
             (QStringList{"SystemSoundPrivate::play: sound=9", "SystemSoundPrivate::send: sound=9, msg=\"play_sound\"",
                          "SystemSoundPrivate::toString: sound=9"}));
    sound.setSound(SystemSound::InputKeypress);
    QCOMPARE(linesOf(log).last(), QStringLiteral("SystemSoundPrivate::setSound: Ignoring sound already set"));
}

void LogTest::lines_ofAController()
{
    NowPlayingController controller;
    NowPlayingControllerPrivate parts(&controller);
    voro::test::LogCatcher log;
    QVariantMap result;
    const QVariantMap update{{"msg", "md_update"}, {"dat", QVariantMap{{"track", "T"}, {"prevEnabled", true}}}};
    QVERIFY(parts.processPpsRead(update, result));
    const QStringList lines = linesOf(log);
    const QString prefix = QStringLiteral("NowPlayingControllerPrivate::processPpsRead: ");
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines.at(0).startsWith(prefix + "control=QMap("));
    QVERIFY(lines.at(1).startsWith(prefix + "control received: QMap("));
    QCOMPARE(lines.at(2), prefix + "metadata 'title':QVariant(QString, \"T\")");
    QCOMPARE(lines.at(3), prefix + "metadata 'prevEnabled':QVariant(bool, true)");
    parts.processPpsRead({{"msg", "m_state"}, {"dat", "paused"}}, result);
    QCOMPARE(linesOf(log).last(), prefix + "pps state received: '\"paused\"");
}

using C = NowPlayingConnection;
using NowPlaying = std::function<void(NowPlayingConnection &, NowPlayingConnectionPrivate &)>;

void LogTest::lines_ofNowPlaying_data()
{
    const Rows<NowPlaying, QString> row("act", "lines");
    const auto set = [](auto method, auto... arguments) {
        return NowPlaying(
            [=](NowPlayingConnection &connection, auto &) { static_cast<void>((connection.*method)(arguments...)); });
    };
    const auto message = [](const QVariantMap &control) {
        return NowPlaying([=](auto &, NowPlayingConnectionPrivate &parts) { parts.handleControlMessage(control); });
    };
    row("position", set(&C::setPosition, 7),
        "NowPlayingConnection::setPosition: postion=7 | NowPlayingConnection::setPosition: emit "
        "positionChanged() | NowPlayingConnection::setPosition:   position=7");
    row("icon", set(&C::setIconUrl, QUrl(QStringLiteral("file:///music/a.png"))),
        "NowPlayingConnection::setIconUrl: url=file:///s/s.png | NowPlayingConnection::setIconUrl: emit "
        "iconUrlChanged() | NowPlayingConnection::setIconUrl:   iconUrl=file:///s/s.png");
    row("relative icon", set(&C::setIconUrl, QUrl(QStringLiteral("a.png"))),
        "NowPlayingConnection::setIconUrl: url=\"a.png\" | NowPlayingConnection::setIconUrl: emit "
        "iconUrlChanged() | NowPlayingConnection::setIconUrl:   iconUrl=\"a.png\"");
    row("state", set(&C::setMediaState, MediaState::Paused),
        "NowPlayingConnection::setMediaState: state=3 | NowPlayingConnection::setMediaState: emit "
        "mediaStateChanged() | NowPlayingConnection::setMediaState:   mediaState=Paused");
    row("same next", set(&C::setNextEnabled, true),
        "NowPlayingConnection::setNextEnabled: nextEnabled=true | NowPlayingConnection::setNextEnabled: Next "
        "button is already enabled");
    row("same shuffle mode", set(&C::setShuffleMode, ShuffleMode::Unsupported),
        "NowPlayingConnection::setShuffleMode: shuffleMode=0 | NowPlayingConnection::setShuffleMode: Ignoring "
        "setting the same repeat mode. shuffleMode=0");
    row("preemptable already", set(&C::setPreemptable, true),
        "NowPlayingConnection::setPreemptable: preemptable=true | NowPlayingConnection::setPreemptable: This "
        "connection is already  preemtable");
    row("not preemptable", set(&C::setPreemptable, false),
        "NowPlayingConnection::setPreemptable: preemptable=false | NowPlayingConnection::setPriorityLevel: "
        "priority level=1 | NowPlayingConnection::setPreemptable: emit preemptableChanged() | "
        "NowPlayingConnection::setPreemptable:   preemptable=false");
    row("track change", set(&C::trackChange),
        "NowPlayingConnection::trackChange: Service not acquired. error=InvalidState");
    row("registration", NowPlaying([](auto &, NowPlayingConnectionPrivate &parts) {
            parts.registration(QStringLiteral("a"), PriorityLevel::High, OverlayStyle::Plain, 7, DeviceMode::Capture);
        }),
        "NowPlayingConnectionPrivate::registration: overlayStyle=Plain, connectionName=\"a\", "
        "priority level=High, audioManagerHandle=7, deviceMode=Capture | "
        "NowPlayingConnectionPrivate::toString: priority level=High | "
        "NowPlayingConnectionPrivate::toString: overlayStyle=Plain | "
        "NowPlayingConnectionPrivate::send: msg=QMap((\"dat\", QVariant(QVariantMap, "
        "QMap((\"audio\", QVariant(QString, \"general\"))(\"audioman_handle\", QVariant(uint, 7))"
        "(\"name\", QVariant(QString, \"a\"))(\"overlay\", QVariant(QString, \"plain\"))"
        "(\"prio\", QVariant(QString, \"high\"))(\"recorder\", QVariant(bool, true)))))"
        "(\"msg\", QVariant(QString, \"register\")))");
    row("nothing to publish", NowPlaying([](auto &, auto &parts) { parts.onInvalidate(); }),
        "NowPlayingConnectionPrivate::onInvalidate: force=false | "
        "NowPlayingConnectionPrivate::onInvalidate: Not sending data. "
        "acquired=false, send=false");
    row("watcher", message({{"msg", "track"}, {"dat", "sendData"}}),
        "NowPlayingConnectionPrivate::handleControlMessage: control=QMap((\"dat\", QVariant(QString, "
        "\"sendData\"))(\"msg\", QVariant(QString, \"track\"))) | "
        "NowPlayingConnectionPrivate::handleControlMessage: SEND metadata | "
        "NowPlayingConnectionPrivate::handleControlMessage: emit controllerActiveChanged() | "
        "NowPlayingConnectionPrivate::handleControlMessage:   controllerActive=true");
    row("unknown message", message({{"msg", "odd"}}),
        "NowPlayingConnectionPrivate::handleControlMessage: control=QMap((\"msg\", QVariant(QString, "
        "\"odd\"))) | NowPlayingConnectionPrivate::handleControlMessage: Unknown message. msg=\"odd\"");
}

void LogTest::lines_ofNowPlaying()
{
    QFETCH(NowPlaying, act);
    QFETCH(QString, lines);
    NowPlayingConnection connection;
    NowPlayingConnectionPrivate parts(&connection);
    voro::test::LogCatcher log;
    act(connection, parts);
    QCOMPARE(linesOf(log), lines.split(QStringLiteral(" | ")));
}

void LogTest::tracer_tellsEntryAndExit()
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

QTEST_GUILESS_MAIN(LogTest)
#include "tst_log.moc"
