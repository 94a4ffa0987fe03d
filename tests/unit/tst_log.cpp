#include "PlayerFixture.h"
#include "private/Logger.h"
#include "private/MediaUtils.h"

#include <multimedia/SystemSound.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QThread>
#include <QtTest/QtTest>

using namespace voro::multimedia;

using P = MediaPlayer;
using N = MmrContextNotifier;

/** The lines that the library writes with debugging on. */
class LogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void lines_ofASuccess_data();
    void lines_ofASuccess();
    void lines_ofAFailure_data();
    void lines_ofAFailure();
    void lines_ofConstruction();
    void lines_ofAnIdentifier();
    void lines_ofASound();
    void tracer_tellsEntryAndExit();
};

namespace {

/** Lines have " | " between; those of a failure leave out what debugging adds. */
void row(const char *name, const Preparation &given, const Action &act, const char *lines)
{
    QTest::newRow(name) << given << act << QString::fromLatin1(lines);
}

QStringList linesOf(PlayerFixture &f, const Preparation &given, const Action &act)
{
    given(f);
    f.forget();
    act(f);
    return f.log.takeLinesWithoutTraces();
}

} // namespace

void LogTest::initTestCase()
{
    QVERIFY2(ENABLE_DEBUG, "to be run with VOROMULTIMEDIA_LOG_DEBUG=1");
}

void LogTest::lines_ofASuccess_data()
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

void LogTest::lines_ofASuccess()
{
    QFETCH(Preparation, given);
    QFETCH(Action, act);
    QFETCH(QString, lines);
    PlayerFixture f;
    QCOMPARE(linesOf(f, given, act), lines.split(QStringLiteral(" | ")));
}

void LogTest::lines_ofAFailure_data()
{
    QTest::addColumn<Preparation>("given");
    QTest::addColumn<Action>("act");
    QTest::addColumn<QString>("lines");
    const auto failed = [](const char *name, const Preparation &given, const char *function, const Action &act,
                           const char *lines) {
        row(name, after(given, failing(function, MediaError::Read)), act, lines);
    };
    const QUrl url(QStringLiteral("file:///music/b.ogg"));
    const auto windows = after(withSource, call(&P::setVideoOutput, VideoOutput::PrimaryDisplay));

    failed("prepare, audio output", withSource, "mmr_output_attach", call(&P::prepare),
           "C MmrContextNotifier::attachOutput: Unable to attach output. url=\"audio:default\", type=\"audio\" | "
           "C MediaPlayer::prepare: Error attaching audio output. url=\"audio:default\", error=Read");
    failed("prepare, audio parameters", withSource, "mmr_output_parameters", call(&P::prepare),
           "W MediaPlayerPrivate::updateAudioOutputParams: Unable to set output parameters. output_id=0 | "
           "C MediaPlayer::prepare: Error attaching output audio type. error=Read");
    failed("play, input", withSource, "mmr_input_attach", call(&P::play),
           "C MediaPlayerPrivate::attachInput: Failed to attach input. url=file:///s/s.ogg, type=\"playlist\" | "
           "C MediaPlayerPrivate::attachInput: Unable to attach source input. url=file:///s/s.ogg, e=Read | "
           "C MediaPlayer::prepare: Error attaching input source, error=Read | "
           "C MediaPlayer::play: Unable to prepare the player. error=Read");
    failed("pause, repeat mode", withSource, "mmr_input_parameters", call(&P::pause),
           "C MmrContextNotifier::updateInputParameter: Unable to set input parameters. | "
           "C MediaPlayerPrivate::updateInputParamRepeatMode: Unable to set input parameter. error=Read | "
           "W MediaPlayer::prepare: Error updating repeat parameter. error=Read | "
           "C MediaPlayer::pause: Unable to prepare the player");
    failed("play, speed", prepared, "mmr_speed_set", call(&P::play),
           "C MediaPlayer::setSpeed: Error setting the player speed. error=Read | "
           "C MediaPlayerPrivate::play: Error setting the playback speed. speed=1000, error=Read | "
           "C MediaPlayer::play: Unable to play the player. error=Read");
    failed("pause, start", prepared, "mmr_play", call(&P::pause),
           "C MediaPlayer::setSpeed: Error moving the player to a playing state. error=Read | "
           "C MediaPlayer::pause: Unable to pause the player");
    failed("stop", started, "mmr_stop", call(&P::stop), "C MediaPlayer::stop: Error stopping the player. error=Read");
    failed("reset, stop", started, "mmr_stop", call(&P::reset),
           "C MediaPlayerPrivate::unprepare: Error stopping the player. error=Read");
    failed("reset, input", started, "mmr_input_detach", call(&P::reset),
           "C MediaPlayerPrivate::unprepare: Error detaching playback input. error=Read");
    failed("reset, output", started, "mmr_output_detach", call(&P::reset),
           "C MediaPlayerPrivate::unprepare: Error detaching audio output. error=Read");
    failed("medium", started, "mmr_input_detach", call(&P::setSourceUrl, url),
           "C MediaPlayerPrivate::detachInput: Error detaching existing input. error=Read | "
           "C MediaPlayer::setSourceUrl: Unable to detach existing input. error=Read");
    failed("video output, input", windows, "mmr_input_detach", call(&P::setVideoOutput, VideoOutput::None),
           "C MediaPlayerPrivate::detachInput: Error detaching existing input. error=Read | "
           "W MediaPlayer::setVideoOutput: Unable to detach existing input. error=8");
    failed("video output", startedWithVideo, "mmr_output_detach", call(&P::setVideoOutput, VideoOutput::None),
           "C MediaPlayerPrivate::detachOutput: Error detaching existing output. output=1, error=Read | "
           "W MediaPlayer::setVideoOutput: Unable to detach the video output. error=8");
    failed("seek", started, "mmr_seek", call(&P::seek, 2u, 3u),
           "C MmrContextNotifier::seek: Error seeking. track=2, position=3, error=Read | "
           "C MediaPlayerPrivate::seek: Unable to seek track. track=2, position=3, error=Read");
    failed("captions", newPlayer, "mmr_track_parameters", call(&P::setClosedCaptionEnabled, false),
           "C MmrContextNotifier::updateTrackParameters: Unable to set track parameters. track=1 | "
           "W MediaPlayerPrivate::updateTrackParamSubpictureDisabled: Unable to set track subpicture enabled. "
           "error=Read | "
           "C MediaPlayer::setClosedCaptionEnabled: Unable to set the closed caption enabled. enabled=false, "
           "error=Read");
    failed("new track", newPlayer, "mmr_track_parameters", reported(&N::trackChanged, 2u),
           "C MmrContextNotifier::updateTrackParameters: Unable to set track parameters. track=2 | "
           "W MediaPlayerPrivate::updateTrackParamSubpictureIndex: Unable to set track parameters. error=Read | "
           "C MediaPlayerPrivate::onTrackChanged: Unable to update the current track with the closed caption index. "
           "index=0, error=Read");
    failed("part of the pictures", startedWithVideo, "mmr_output_parameters",
           call(&P::setVideoSourceRect, 1, 2, 3u, 4u),
           "C MediaPlayerPrivate::updateVideoOutputParams: Unable to set video source parameters on player. "
           "rect=QRect(1,2 3x4) | "
           "C MediaPlayer::setVideoSourceRect: Unable to set video source parameters. src=QRect(1,2 3x4), error=Read");
    failed("interval", newPlayer, "mmr_context_parameters", call(&P::setStatusInterval, 5u),
           "C MediaPlayerPrivate::updateContextParams: Unable to set input parameters. error=Read | "
           "C MediaPlayer::setStatusInterval: Unable to set the status interval.");
    failed("volume", prepared, "mmr_output_parameters", call(&P::setVolume, 0.5),
           "W MediaPlayerPrivate::updateAudioOutputParams: Unable to set output parameters. output_id=0 | "
           "C MediaPlayer::setVolume: Unable to set volume parameter. volume=0.5");
    row("volume out of range", newPlayer, call(&P::setVolume, 2.0),
        "W MediaPlayer::setVolume: Volume value out of range. volume=2");
    row("caption url of another track", newPlayer, call(&P::setClosedCaptionUrl, 2u, url),
        "W MediaPlayer::setClosedCaptionUrl: Setting the closed caption url is limited to track 1.");
    row("caption index out of range", after(reported(&N::trackChanged, 3u), reported(&N::trackCountChanged, 2u)),
        call(&P::setClosedCaptionIndex, 1u),
        "C MediaPlayerPrivate::updateTrackParamSubpictureIndex: Unable to set out of range track parameters. "
        "track=3, count=2 | "
        "C MediaPlayer::setClosedCaptionIndex: Unable to set the closed caption index. index=1, "
        "error=InvalidParameter");
    row("a failed command's own error", after(started, failing("mmr_stop", MediaError::CommandFailed, 5)),
        call(&P::stop),
        "W MediaPlayerPrivate::lastError: Command failed. Received UnsupportedMediaType | "
        "C MediaPlayer::stop: Error stopping the player. error=UnsupportedMediaType");
}

void LogTest::lines_ofAFailure()
{
    QFETCH(Preparation, given);
    QFETCH(Action, act);
    QFETCH(QString, lines);
    PlayerFixture f;
    QStringList found = linesOf(f, given, act);
    found.removeIf([](const QString &line) { return line.startsWith(QLatin1String("D ")); });
    QCOMPARE(found, lines.split(QStringLiteral(" | ")));
}

void LogTest::lines_ofConstruction()
{
    PlayerFixture good;
    const QStringList lines = good.log.takeLinesWithoutTraces();
    QVERIFY(lines.contains(QStringLiteral("D MediaPlayer::MediaPlayer: Creating context...")));
    QVERIFY(
        lines.contains(QStringLiteral("D MediaPlayer::MediaPlayer:   context=\"%1\"").arg(good.player.objectName())));
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

void LogTest::tracer_tellsEntryAndExit()
{
    PlayerFixture f;
    f.forget();
    f.player.volumeChanged(1.0);
    QCOMPARE(f.log.takeLines(), QStringList());
    f.player.stop();
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
