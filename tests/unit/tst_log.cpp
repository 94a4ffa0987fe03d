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

using namespace voro::multimedia;

using P = MediaPlayer;
using N = MmrContextNotifier;
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
    template<typename Media>
    void tryLines();
};

namespace {

/** Lines have " | " between. */
template<typename Media>
void addRow(const char *name, const PreparationOf<Media> &given, const ActionOn<Media> &act, const char *lines)
{
    QTest::newRow(name) << given << act << QString::fromLatin1(lines);
}

constexpr auto row = addRow<P>;

} // namespace

void LogTest::initTestCase()
{
    QVERIFY2(ENABLE_DEBUG, "to be run with VOROMULTIMEDIA_LOG_DEBUG=1");
}

void LogTest::lines_ofACommand_data()
{
    QTest::addColumn<Preparation>("given");
    QTest::addColumn<Action>("act");
    QTest::addColumn<QString>("lines");
    row("medium", newPlayer, call(&P::setSourceUrl, QUrl(QStringLiteral("http://host/a"))),
        "D MediaPlayer::setSourceUrl: url=\"http://host/a\" | "
        "D MediaPlayerPrivate::setMediaState: Attempting to change to same state.  mediaState=Unprepared | "
        "D MediaPlayerPrivate::setMediaState: Attempting to change to same state.  mediaState=Unprepared | "
        "D MediaPlayer::setSourceUrl: emit sourceChanged()");
    row("same medium", withSource, call(&P::setSourceUrl, QUrl(QStringLiteral("file:///music/a.ogg"))),
        "D MediaPlayer::setSourceUrl: url=file:///s/s.ogg | "
        "W MediaPlayer::setSourceUrl: Ignoring attempt to set same url.");
    row("prepare", withSource, call(&P::prepare),
        "D MediaPlayerPrivate::generateAudioOutputUrl: audioOutput=Default | "
        "D MediaPlayerPrivate::generateVideoOutputUrl: videoOutput=None | "
        "D MediaPlayerPrivate::generateVideoOutputUrl: windowId=\"\" | "
        "D MediaPlayerPrivate::generateVideoOutputUrl: windowGroupId=\"\" | "
        "D MediaPlayerPrivate::generateVideoOutputUrl: videoOutput=None | "
        "D MediaPlayerPrivate::generateVideoOutputUrl: windowId=\"\" | "
        "D MediaPlayerPrivate::generateVideoOutputUrl: windowGroupId=\"\" | "
        "D MediaPlayerPrivate::attachInput: url=file:///s/s.ogg | "
        "D MediaPlayerPrivate::attachInput: Attempting to attach input. url=file:///s/s.ogg, type=\"playlist\" | "
        "D MmrContextNotifier::updateTrackParameters: QMap() | "
        "D MmrContextNotifier::updateTrackParameters: QMap() | "
        "D MediaPlayerPrivate::attachInput: Input attach succeeded | "
        "D MediaPlayerPrivate::updateInputParamRepeatMode: mode=0 | "
        "D MediaPlayerPrivate::toString: repeatMode=0 | "
        "D MmrContextNotifier::updateInputParameter:   \"repeat\"=\"\" | "
        "D MediaPlayerPrivate::setMediaState: emit mediaStateChanged() | "
        "D MediaPlayerPrivate::setMediaState:   mediaState=Prepared");
    row("pause", started, call(&P::pause),
        "D MediaPlayer::setSpeed: speed=0 | D MediaPlayerPrivate::onMmrSpeedChanged: speed=0 | "
        "D MediaPlayerPrivate::setMediaState: emit mediaStateChanged() | "
        "D MediaPlayerPrivate::setMediaState:   mediaState=Paused | "
        "D MediaPlayerPrivate::onMmrSpeedChanged: emit speedChanged() | "
        "D MediaPlayerPrivate::onMmrSpeedChanged:   percentage=0 | "
        "D MediaPlayerPrivate::setMediaState: Attempting to change to same state.  mediaState=Paused");
    row("stop, unprepared", newPlayer, call(&P::stop), "D MediaPlayer::stop: Media player is unprepared");
    row("reset, unprepared", newPlayer, call(&P::reset), "D MediaPlayerPrivate::unprepare: Already unprepared");
    row("seek", started, call(&P::seekPercent, 0.5),
        "D MediaPlayer::seekPercent: percentage=0.5 | D MediaPlayerPrivate::seek: track=1 | "
        "D MediaPlayerPrivate::seek: position=0 | D MediaPlayerPrivate::seek: emit trackChanged() | "
        "D MediaPlayerPrivate::seek:   track=1");
    row("volume", newPlayer, call(&P::setVolume, 0.5),
        "D MediaPlayer::setVolume: volume=0.5 | D MediaPlayer::setVolume: emit volumeChanged() | "
        "D MediaPlayer::setVolume:   volume=0.5");
    row("same volume", newPlayer, call(&P::setVolume, 1.0),
        "D MediaPlayer::setVolume: volume=1 | D MediaPlayer::setVolume: Volume already set to 1");
    row("auto pause", newPlayer, call(&P::setAutoPause, true),
        "D MediaPlayer::setAutoPause: autoPause=true | D MediaPlayer::setAutoPause: emit autoPauseChanged()");
    row("same equalizer", newPlayer, call(&P::setEqualizerPreset, EqualizerPreset::Off),
        "D MediaPlayer::setEqualizerPreset: equalizerPreset=Off | "
        "D MediaPlayer::setEqualizerPreset: Equalizer preset already set to Off");
    row("repeat mode", newPlayer, call(&P::setRepeatMode, RepeatMode::All),
        "D MediaPlayer::setRepeatMode: repeatMode=All | D MediaPlayerPrivate::toString: repeatMode=2 | "
        "D MediaPlayer::setRepeatMode: emit repeatModeChanged() | D MediaPlayer::setRepeatMode:   repeatMode=All");
    row("window", newPlayer, call(&P::setClosedCaptionWindowId, QStringLiteral("c")),
        "D MediaPlayer::setClosedCaptionWindowId: closedCaptionWindowId=\"c\" | "
        "D MediaPlayer::setClosedCaptionWindowId: emit closedCaptionWindowIdChanged() | "
        "D MediaPlayer::setClosedCaptionWindowId:   closedCaptionWindowId=\"c\"");
    row("part of the pictures", startedWithVideo, call(&P::setVideoSourceRect, 1, 2, 3u, 4u),
        "D MediaPlayer::setVideoSourceRect: x=1, y=2, width=3, height=4 | "
        "D MediaPlayerPrivate::updateVideoOutputParams: rect=QRect(1,2 3x4)");
    row("interval as a variant", newPlayer, call(&P::setStatusIntervalQml, QVariant(1000)),
        "D MediaPlayer::setStatusIntervalQml: statusInterval=\"1000\" | "
        "D MediaPlayer::setStatusInterval: statusInterval=1000 | "
        "D MediaPlayerPrivate::updateContextParams: updateInterval=1000");
    row("video size", newPlayer, reported(&N::videoDimensionsChanged, QSize(4, 3)),
        "D MediaPlayerPrivate::onVideoDimensionsChanged: emit m_videoDimensionsChanged() | "
        "D MediaPlayerPrivate::onVideoDimensionsChanged:   videoDimensions=QSize(4, 3)");
    row("error", newPlayer, reported(&N::error, MediaError::Read, 7u, 1u),
        "D MediaPlayerPrivate::setMediaState: emit mediaStateChanged() | "
        "D MediaPlayerPrivate::setMediaState:   mediaState=Stopped | D MediaPlayerPrivate::onMmrError: emit error() | "
        "D MediaPlayerPrivate::onMmrError:   error=Read | D MediaPlayerPrivate::onMmrError:   position=7");
}

void LogTest::lines_ofARecorder_data()
{
    QTest::addColumn<PreparationOf<R>>("given");
    QTest::addColumn<ActionOn<R>>("act");
    QTest::addColumn<QString>("lines");
    const auto recorderRow = addRow<R>;
    const auto newRecorder = [](auto &) {};
    const auto url = QUrl(QStringLiteral("file:///rec/a.wav"));
    const auto prepared = after(call(&R::setOutputUrl, url), call(&R::prepare));
    recorderRow("file", newRecorder, call(&R::setOutputUrl, url), "D AudioRecorder::setOutputUrl: url=file:///s/s.wav");
    recorderRow("prepare without a file", newRecorder, call(&R::prepare),
                "D AudioRecorder::prepare: Invalid output URL.");
    recorderRow("prepare", call(&R::setOutputUrl, url), call(&R::prepare),
                "D AudioRecorderPrivate::updateInputParams: audioManagerHandle=0 | "
                "D AudioRecorderPrivate::setMediaState: emit mediaStateChanged() | "
                "D AudioRecorderPrivate::setMediaState:   mediaState=Prepared");
    recorderRow("prepare, prepared", prepared, call(&R::prepare),
                "D AudioRecorder::prepare: Recorder is already prepared");
    recorderRow("record, started", after(prepared, call(&R::record)), call(&R::record),
                "D AudioRecorderPrivate::setMediaState: Attempting to change to same state.  mediaState=Started");
    recorderRow("reset", prepared, call(&R::reset),
                "D AudioRecorderPrivate::onVolumeLevelChanged: emit recordingLevelChanged() | "
                "D AudioRecorderPrivate::onVolumeLevelChanged:   percentage=0 | "
                "D AudioRecorderPrivate::onMmrDurationChanged: emit durationChanged() | "
                "D AudioRecorderPrivate::onMmrDurationChanged:   duration=0 | "
                "D AudioRecorderPrivate::setMediaState: emit mediaStateChanged() | "
                "D AudioRecorderPrivate::setMediaState:   mediaState=Unprepared");
    recorderRow("reset, unprepared", newRecorder, call(&R::reset),
                "D AudioRecorderPrivate::unprepare: Already unprepared");
    recorderRow(
        "error", prepared, reported(&N::error, MediaError::Write, 7u, 1u),
        "D AudioRecorderPrivate::setMediaState: emit mediaStateChanged() | "
        "D AudioRecorderPrivate::setMediaState:   mediaState=Stopped | "
        "D AudioRecorderPrivate::onMmrError: emit error() | D AudioRecorderPrivate::onMmrError:   error=Write | "
        "D AudioRecorderPrivate::onMmrError:   position=7");
    recorderRow("channels", newRecorder, call(&R::setAudioChannelConfiguration, AudioChannelConfiguration::Mono),
                "D AudioRecorder::setAudioChannelConfiguration: audioChannelConfiguration=Mono | "
                "D AudioRecorder::setAudioChannelConfiguration: emit audioChannelConfigurationChanged() | "
                "D AudioRecorder::setAudioChannelConfiguration:   audioChannelConfiguration=Mono");
    recorderRow("same channels", newRecorder,
                call(&R::setAudioChannelConfiguration, AudioChannelConfiguration::Default),
                "D AudioRecorder::setAudioChannelConfiguration: audioChannelConfiguration=Default | "
                "D AudioRecorder::setAudioChannelConfiguration: Attempting to set same audio channel configuration.");
    recorderRow("handle as a variant", newRecorder, call(&R::setAudioManagerHandleQml, QVariant(7)),
                "D AudioRecorder::setAudioManagerHandleQml: handle=\"7\" | "
                "D AudioRecorder::setAudioManagerHandle: audioManagerHandle=7 | "
                "D AudioRecorder::setAudioManagerHandle: emit audioManagerHandleChanged() | "
                "D AudioRecorder::setAudioManagerHandle:   audioManagerHandle=7");
    recorderRow("same handle", newRecorder, call(&R::setAudioManagerHandle, 0u),
                "D AudioRecorder::setAudioManagerHandle: audioManagerHandle=0 | "
                "D AudioRecorder::setAudioManagerHandle: Attempting to set same audio manager handle.");
    recorderRow("interval as a variant", newRecorder, call(&R::setStatusIntervalQml, QVariant(5)),
                "D AudioRecorder::setStatusIntervalQml: statusInterval=\"5\" | "
                "D AudioRecorder::setStatusInterval: statusInterval=5 | "
                "D AudioRecorderPrivate::updateContextParams: updateInterval=5 | "
                "D AudioRecorder::setStatusInterval: emit statusIntervalChanged() | "
                "D AudioRecorder::setStatusInterval:   statusInterval=5");
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
    QCOMPARE(f.log.takeLinesWithoutTraces(), lines.split(QStringLiteral(" | ")));
}

void LogTest::lines_ofConstruction()
{
    PlayerFixture good;
    const QStringList lines = good.log.takeLinesWithoutTraces();
    QVERIFY(lines.contains(QStringLiteral("D MediaPlayer::MediaPlayer: Creating context...")));
    QVERIFY(
        lines.contains(QStringLiteral("D MediaPlayer::MediaPlayer:   context=\"%1\"").arg(good.media.objectName())));
}

void LogTest::lines_ofAnIdentifier()
{
    voro::test::LogCatcher log;
    const QString identifier = MediaUtils::instance()->generateUniqueId();
    QCOMPARE(log.takeLinesWithoutTraces(),
             QStringList(QStringLiteral("D MediaUtils::generateUniqueId: \"generated: %1\"").arg(identifier)));
}

void LogTest::lines_ofASound()
{
    const QTemporaryDir folder;
    qputenv("VORO_RUNTIME_DIR", folder.path().toUtf8());
    qputenv("VORO_AUTOSPAWN", "0");
    voro::test::LogCatcher log;
    SystemSound sound(SystemSound::InputKeypress);
    log.takeLines();
    sound.play();
    QCOMPARE(log.takeLinesWithoutTraces(), (QStringList{"D SystemSoundPrivate::play: sound=9",
                                                        "D SystemSoundPrivate::send: sound=9, msg=\"play_sound\"",
                                                        "D SystemSoundPrivate::toString: sound=9"}));
    sound.setSound(SystemSound::InputKeypress);
    QCOMPARE(log.takeLinesWithoutTraces().last(),
             QStringLiteral("D SystemSoundPrivate::setSound: Ignoring sound already set"));
}

void LogTest::lines_ofAController()
{
    NowPlayingController controller;
    NowPlayingControllerPrivate parts(&controller);
    voro::test::LogCatcher log;
    QVariantMap result;
    const QVariantMap update{{"msg", "md_update"}, {"dat", QVariantMap{{"track", "T"}, {"prevEnabled", true}}}};
    QVERIFY(parts.processPpsRead(update, result));
    const QStringList lines = log.takeLinesWithoutTraces();
    const QString prefix = QStringLiteral("D NowPlayingControllerPrivate::processPpsRead: ");
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines.at(0).startsWith(prefix + "control=QMap("));
    QVERIFY(lines.at(1).startsWith(prefix + "control received: QMap("));
    QCOMPARE(lines.at(2), prefix + "metadata 'title':QVariant(QString, \"T\")");
    QCOMPARE(lines.at(3), prefix + "metadata 'prevEnabled':QVariant(bool, true)");
    parts.processPpsRead({{"msg", "m_state"}, {"dat", "paused"}}, result);
    QCOMPARE(log.takeLinesWithoutTraces().last(), prefix + "pps state received: '\"paused\"");
}

using NowPlaying = std::function<void(NowPlayingConnection &, NowPlayingConnectionPrivate &)>;

void LogTest::lines_ofNowPlaying_data()
{
    QTest::addColumn<NowPlaying>("act");
    QTest::addColumn<QString>("lines");
    const auto setterRow = [](const char *name, const std::function<void(NowPlayingConnection &)> &act,
                              const char *lines) {
        QTest::newRow(name) << NowPlaying([=](NowPlayingConnection &connection, auto &) { act(connection); })
                            << QString::fromLatin1(lines);
    };
    const auto messageRow = [](const char *name, const QVariantMap &control, const char *lines) {
        QTest::newRow(name) << NowPlaying([=](auto &, NowPlayingConnectionPrivate &parts) {
            parts.handleControlMessage(control);
        }) << QString::fromLatin1(lines);
    };
    setterRow(
        "position", [](auto &c) { c.setPosition(7); },
        "D NowPlayingConnection::setPosition: postion=7 | D NowPlayingConnection::setPosition: emit "
        "positionChanged() | D NowPlayingConnection::setPosition:   position=7");
    setterRow(
        "icon", [](auto &c) { c.setIconUrl(QUrl(QStringLiteral("file:///music/a.png"))); },
        "D NowPlayingConnection::setIconUrl: url=file:///s/s.png | D NowPlayingConnection::setIconUrl: emit "
        "iconUrlChanged() | D NowPlayingConnection::setIconUrl:   iconUrl=file:///s/s.png");
    setterRow(
        "relative icon", [](auto &c) { c.setIconUrl(QUrl(QStringLiteral("a.png"))); },
        "D NowPlayingConnection::setIconUrl: url=\"a.png\" | D NowPlayingConnection::setIconUrl: emit "
        "iconUrlChanged() | D NowPlayingConnection::setIconUrl:   iconUrl=\"a.png\"");
    setterRow(
        "state", [](auto &c) { c.setMediaState(MediaState::Paused); },
        "D NowPlayingConnection::setMediaState: state=3 | D NowPlayingConnection::setMediaState: emit "
        "mediaStateChanged() | D NowPlayingConnection::setMediaState:   mediaState=Paused");
    setterRow(
        "same next", [](auto &c) { c.setNextEnabled(true); },
        "D NowPlayingConnection::setNextEnabled: nextEnabled=true | D NowPlayingConnection::setNextEnabled: Next "
        "button is already enabled");
    setterRow(
        "same shuffle mode", [](auto &c) { c.setShuffleMode(ShuffleMode::Unsupported); },
        "D NowPlayingConnection::setShuffleMode: shuffleMode=0 | D NowPlayingConnection::setShuffleMode: Ignoring "
        "setting the same repeat mode. shuffleMode=0");
    setterRow(
        "preemptable already", [](auto &c) { c.setPreemptable(true); },
        "D NowPlayingConnection::setPreemptable: preemptable=true | D NowPlayingConnection::setPreemptable: This "
        "connection is already  preemtable");
    setterRow(
        "not preemptable", [](auto &c) { c.setPreemptable(false); },
        "D NowPlayingConnection::setPreemptable: preemptable=false | D NowPlayingConnection::setPriorityLevel: "
        "priority level=1 | D NowPlayingConnection::setPreemptable: emit preemptableChanged() | "
        "D NowPlayingConnection::setPreemptable:   preemptable=false");
    setterRow(
        "track change", [](auto &c) { c.trackChange(); },
        "D NowPlayingConnection::trackChange: Service not acquired. error=InvalidState");
    QTest::newRow("registration")
        << NowPlaying([](auto &, NowPlayingConnectionPrivate &parts) {
               parts.registration(QStringLiteral("a"), PriorityLevel::High, OverlayStyle::Plain, 7,
                                  DeviceMode::Capture);
           })
        << QStringLiteral("D NowPlayingConnectionPrivate::registration: overlayStyle=Plain, connectionName=\"a\", "
                          "priority level=High, audioManagerHandle=7, deviceMode=Capture | "
                          "D NowPlayingConnectionPrivate::toString: priority level=High | "
                          "D NowPlayingConnectionPrivate::toString: overlayStyle=Plain | "
                          "D NowPlayingConnectionPrivate::send: msg=QMap((\"dat\", QVariant(QVariantMap, "
                          "QMap((\"audio\", QVariant(QString, \"general\"))(\"audioman_handle\", QVariant(uint, 7))"
                          "(\"name\", QVariant(QString, \"a\"))(\"overlay\", QVariant(QString, \"plain\"))"
                          "(\"prio\", QVariant(QString, \"high\"))(\"recorder\", QVariant(bool, true)))))"
                          "(\"msg\", QVariant(QString, \"register\")))");
    QTest::newRow("nothing to publish") << NowPlaying([](auto &, auto &parts) { parts.onInvalidate(); })
                                        << QStringLiteral(
                                               "D NowPlayingConnectionPrivate::onInvalidate: force=false | "
                                               "D NowPlayingConnectionPrivate::onInvalidate: Not sending data. "
                                               "acquired=false, send=false");
    messageRow("watcher", {{"msg", "track"}, {"dat", "sendData"}},
               "D NowPlayingConnectionPrivate::handleControlMessage: control=QMap((\"dat\", QVariant(QString, "
               "\"sendData\"))(\"msg\", QVariant(QString, \"track\"))) | "
               "D NowPlayingConnectionPrivate::handleControlMessage: SEND metadata | "
               "D NowPlayingConnectionPrivate::handleControlMessage: emit controllerActiveChanged() | "
               "D NowPlayingConnectionPrivate::handleControlMessage:   controllerActive=true");
    messageRow("unknown message", {{"msg", "odd"}},
               "D NowPlayingConnectionPrivate::handleControlMessage: control=QMap((\"msg\", QVariant(QString, "
               "\"odd\"))) | D NowPlayingConnectionPrivate::handleControlMessage: Unknown message. msg=\"odd\"");
}

void LogTest::lines_ofNowPlaying()
{
    QFETCH(NowPlaying, act);
    QFETCH(QString, lines);
    NowPlayingConnection connection;
    NowPlayingConnectionPrivate parts(&connection);
    voro::test::LogCatcher log;
    act(connection, parts);
    QCOMPARE(log.takeLinesWithoutTraces(), lines.split(QStringLiteral(" | ")));
}

void LogTest::tracer_tellsEntryAndExit()
{
    PlayerFixture f;
    f.forget();
    f.media.volumeChanged(1.0);
    QCOMPARE(f.log.takeLines(), QStringList());
    f.media.stop();
    const int thread = static_cast<int>(reinterpret_cast<quintptr>(QThread::currentThreadId()));
    const QStringList lines = f.log.takeLines();
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines.at(0), QStringLiteral("D FunctionTracer::FunctionTracer: START%1MediaPlayer::stop").arg(thread));
    const QRegularExpression end(
        QStringLiteral("^D FunctionTracer::~FunctionTracer: => END%1\\(\\d+ms\\):$").arg(thread));
    QVERIFY2(end.match(lines.at(2)).hasMatch(), qPrintable(lines.at(2)));
}

QTEST_GUILESS_MAIN(LogTest)
#include "tst_log.moc"
