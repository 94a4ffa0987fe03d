#include "PlayerFixture.h"
#include "private/Logger.h"
#include "RuntimeBroker.h"

#include <QtTest/QtTest>

#include <Rows.h>

#include <cmath>
#include <memory>
#include <utility>

using namespace voro::multimedia;

using P = MediaPlayer;
using N = MmrContextNotifier;

class MediaPlayerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void command_data()
    {
        const PlayerCases row;
        const QString toPrepared = prepareCalls + "; mediaStateChanged(Prepared)";
        const auto halfSpeed = after(started, reported(&N::speedChanged, 500));

        row("prepare", withSource, call(&P::prepare), toPrepared + "; mediaState=Prepared");
        row("prepare, prepared", prepared, call(&P::prepare), "");
        row("play, unprepared", withSource, call(&P::play),
            toPrepared + "; mmr_speed_set 1000; mmr_play; mmr_play; mediaStateChanged(Started); mediaState=Started");
        row("play, started", started, call(&P::play), "mmr_speed_set 1000");
        row("play, stopped", after(started, call(&P::stop)), call(&P::play),
            "mmr_speed_set 1000; mmr_play; mmr_play; mediaStateChanged(Started); mediaState=Started");
        row("play, paused at half the speed", after(halfSpeed, call(&P::pause)), call(&P::play),
            "mmr_speed_set 500; mediaStateChanged(Started); speedChanged(0.5); speed=0.5; mediaState=Started");
        row("pause, unprepared", withSource, call(&P::pause),
            toPrepared
                + "; mmr_speed_set 0; mmr_play; speedChanged(0); mediaStateChanged(Paused); speed=0; "
                  "mediaState=Paused");
        row("pause, started", started, call(&P::pause),
            "mmr_speed_set 0; mediaStateChanged(Paused); speedChanged(0); speed=0; mediaState=Paused");
        row("pause, stopped", after(started, call(&P::stop)), call(&P::pause), "mmr_speed_set 0; mmr_play");
        row("stop, unprepared", newPlayer, call(&P::stop), "-> InvalidState");
        row("stop, prepared", prepared, call(&P::stop), "mmr_stop; mediaStateChanged(Stopped); mediaState=Stopped");
        row("stop, stopped", after(prepared, call(&P::stop)), call(&P::stop), "mmr_stop");
        row("reset, unprepared", newPlayer, call(&P::reset), "");
        row("reset, with all outputs", startedWithVideo, call(&P::reset),
            "mmr_stop; mmr_input_detach; mmr_output_detach 0; mmr_output_detach 1; mmr_output_detach 2; "
            "mmr_track_parameters 1 subpicture_index=0; trackChanged(1); trackChanged(uint 1); "
            "mediaStateChanged(Unprepared); mediaState=Unprepared");
    }

    void command() { tryRow<P>(); }

    void failingCommand_data()
    {
        const PlayerCases row;
        // How far the command gets when a function of the renderer fails, and what it says.
        const auto failed = [&](const char *name, const Preparation &given, const Action &act, const char *function,
                                const QString &calls, const char *lines) {
            row(name, after(given, failing(function, MediaError::Read)), act,
                calls + "; " + QString::fromLatin1(lines) + "; -> Read");
        };
        const auto prepareCallsUpTo = [](int count) { return prepareCalls.section("; ", 0, count - 1); };
        const QByteArray inputLines =
            "C MediaPlayerPrivate::attachInput: Failed to attach input. url=file:///s/s.ogg, type=\"playlist\"; "
            "C MediaPlayerPrivate::attachInput: Unable to attach source input. url=file:///s/s.ogg, e=Read; "
            "C MediaPlayer::prepare: Error attaching input source, error=Read; ";
        failed("prepare, audio output", withSource, call(&P::prepare), "mmr_output_attach", prepareCallsUpTo(1),
               "C MmrContextNotifier::attachOutput: Unable to attach output. url=\"audio:default\", type=\"audio\"; "
               "C MediaPlayer::prepare: Error attaching audio output. url=\"audio:default\", error=Read");
        failed("prepare, audio parameters", withSource, call(&P::prepare), "mmr_output_parameters", prepareCallsUpTo(2),
               "W MediaPlayerPrivate::updateAudioOutputParams: Unable to set output parameters. output_id=0; "
               "C MediaPlayer::prepare: Error attaching output audio type. error=Read");
        failed("prepare, repeat mode", withSource, call(&P::prepare), "mmr_input_parameters", prepareCalls,
               "C MmrContextNotifier::updateInputParameter: Unable to set input parameters.; "
               "C MediaPlayerPrivate::updateInputParamRepeatMode: Unable to set input parameter. error=Read; "
               "W MediaPlayer::prepare: Error updating repeat parameter. error=Read");
        failed("play, input", withSource, call(&P::play), "mmr_input_attach", prepareCallsUpTo(5),
               inputLines + "C MediaPlayer::play: Unable to prepare the player. error=Read");
        failed("play, speed", prepared, call(&P::play), "mmr_speed_set", "mmr_speed_set 1000",
               "C MediaPlayer::setSpeed: Error setting the player speed. error=Read; "
               "C MediaPlayerPrivate::play: Error setting the playback speed. speed=1000, error=Read; "
               "C MediaPlayer::play: Unable to play the player. error=Read");
        failed("play, start", after(started, call(&P::pause), reported(&N::stopped)), call(&P::play), "mmr_play",
               "mmr_speed_set 1000; mmr_play",
               "C MediaPlayer::setSpeed: Error moving the player to a playing state. error=Read; "
               "C MediaPlayerPrivate::play: Error setting the playback speed. speed=1000, error=Read; "
               "C MediaPlayer::play: Unable to play the player. error=Read");
        failed("pause, input", withSource, call(&P::pause), "mmr_input_attach", prepareCallsUpTo(5),
               inputLines + "C MediaPlayer::pause: Unable to prepare the player");
        failed("pause, speed", started, call(&P::pause), "mmr_speed_set", "mmr_speed_set 0",
               "C MediaPlayer::setSpeed: Error setting the player speed. error=Read; "
               "C MediaPlayer::pause: Unable to pause the player");
        failed("stop", started, call(&P::stop), "mmr_stop", "mmr_stop",
               "C MediaPlayer::stop: Error stopping the player. error=Read");
        failed("reset, stop", started, call(&P::reset), "mmr_stop", "mmr_stop",
               "C MediaPlayerPrivate::unprepare: Error stopping the player. error=Read");
        failed("reset, input", started, call(&P::reset), "mmr_input_detach", "mmr_stop; mmr_input_detach",
               "C MediaPlayerPrivate::unprepare: Error detaching playback input. error=Read");
        failed("reset, output", started, call(&P::reset), "mmr_output_detach",
               "mmr_stop; mmr_input_detach; mmr_output_detach 0",
               "C MediaPlayerPrivate::unprepare: Error detaching audio output. error=Read");

        row("a failed command's own error is the result",
            after(started, failing("mmr_stop", MediaError::CommandFailed, MediaError::OutputUnavailable)),
            call(&P::stop),
            "mmr_stop; W MediaPlayerPrivate::lastError: Command failed. Received OutputUnavailable; "
            "C MediaPlayer::stop: Error stopping the player. error=OutputUnavailable; -> OutputUnavailable");
        row("without an error record nothing has changed",
            after(started, [](PlayerFixture &f) { f.renderer.failWithoutRecord("mmr_stop"); }), call(&P::stop),
            "mmr_stop; C MediaPlayer::stop: Error stopping the player. error=None");
        row("outputs stay attached after a failed prepare",
            after(withSource, failing("mmr_input_attach", MediaError::Read), call(&P::prepare),
                  [](PlayerFixture &f) { f.renderer.succeed("mmr_input_attach"); }),
            call(&P::prepare), prepareCalls.section("; ", 1) + "; mediaStateChanged(Prepared); mediaState=Prepared");
    }

    void failingCommand() { tryRow<P>(); }

    void speed_data()
    {
        const PlayerCases row;
        const auto speed = [](double factor) { return call(&P::setSpeed, factor); };
        row("unprepared", newPlayer, speed(2.0), "mmr_speed_set 2000");
        row("started: the renderer's report tells", started, speed(0.5), "mmr_speed_set 500");
        row("prepared: starts", prepared, speed(1.0), "mmr_speed_set 1000; mmr_play");
        row("paused", after(started, call(&P::pause)), speed(2.0),
            "mmr_speed_set 2000; mediaStateChanged(Started); speedChanged(2); speed=2; mediaState=Started");
        row("refused", after(started, failing("mmr_speed_set", MediaError::UnsupportedValue)), speed(-1.0),
            "mmr_speed_set -1000; C MediaPlayer::setSpeed: Error setting the player speed. error=UnsupportedValue; "
            "-> UnsupportedValue");
        row("truncated", started, speed(1.9999), "mmr_speed_set 1999");
        row("truncated toward zero", started, speed(-1.9999), "mmr_speed_set -1999");
        row("beyond all numbers", started, speed(1e300), "mmr_speed_set 2147483647");
        row("no number", started, speed(std::nan("")),
            "mmr_speed_set 0; mediaStateChanged(Paused); speedChanged(0); speed=0; mediaState=Paused");
        row("reported", started, reported(&N::speedChanged, 2000), "speedChanged(2); speed=2");
        row("reported as 0 while stopped: not stored", after(started, call(&P::stop)), reported(&N::speedChanged, 0),
            "speedChanged(0)");
    }

    void speed() { tryRow<P>(); }

    void medium_data()
    {
        const PlayerCases row;
        const auto set = call(&P::setSourceUrl, QUrl(QStringLiteral("http://host/b.ogg")));
        row("new player", newPlayer, set,
            "mmr_input_detach; sourceUrlChanged(http://host/b.ogg); sourceUrl=http://host/b.ogg");
        row("while playing", started, set,
            "mmr_input_detach; " + unprepared
                + "; sourceUrlChanged(http://host/b.ogg); sourceUrl=http://host/b.ogg; mediaState=Unprepared");
        row("the same while playing", started, call(&P::setSourceUrl, QUrl(QStringLiteral("file:///music/a.ogg"))),
            "W MediaPlayer::setSourceUrl: Ignoring attempt to set same url.");
        row("refused", after(started, failing("mmr_input_detach", MediaError::Permission)), set,
            "mmr_input_detach; C MediaPlayerPrivate::detachInput: Error detaching existing input. error=Permission; "
            "C MediaPlayer::setSourceUrl: Unable to detach existing input. error=Permission; -> Permission");
        row("prepared again with its outputs", after(started, set), call(&P::prepare),
            "mmr_output_parameters 0 volume=100; mmr_input_parameters subpicture_index=0; "
            "mmr_input_attach http://host/b.ogg autolist; mmr_track_parameters 0; mmr_input_parameters; "
            "mediaStateChanged(Prepared); mediaState=Prepared");
    }

    void medium() { tryRow<P>(); }

    void seeking_data()
    {
        const PlayerCases row;
        const auto onTrack2 = after(started, reported(&N::trackChanged, 2u));
        const auto ofDuration1001 = after(started, reported(&N::durationChanged, 1001u));
        row("track and position", started, call(&P::seek, 3u, 1500u),
            "mmr_seek 3:1500; trackChanged(3); trackChanged(uint 3); track=3");
        row("the renderer's own report says nothing new", after(started, call(&P::seek, 2u, 0u)),
            reported(&N::trackChanged, 2u), "");
        row("track", started, call(&P::seekTrack, 2u), "mmr_seek 2:0; trackChanged(2); trackChanged(uint 2); track=2");
        // The parameters that the track has go first.
        row("position", onTrack2, call(&P::seekTime, 700u),
            "mmr_track_parameters 2; mmr_seek 2:700; trackChanged(2); trackChanged(uint 2)");
        row("fraction", ofDuration1001, call(&P::seekPercent, 0.5),
            "mmr_seek 1:500; trackChanged(1); trackChanged(uint 1)");
        row("negative fraction", ofDuration1001, call(&P::seekPercent, -0.5),
            "mmr_seek 1:0; trackChanged(1); trackChanged(uint 1)");
        row("endless fraction", ofDuration1001, call(&P::seekPercent, 1e30),
            "mmr_seek 1:4294967295; trackChanged(1); trackChanged(uint 1)");
        row("next", onTrack2, call(&P::nextTrack), "mmr_seek 3:0; trackChanged(3); trackChanged(uint 3); track=3");
        row("previous on the first", after(started, failing("mmr_seek", MediaError::InvalidParameter)),
            call(&P::previousTrack),
            "mmr_seek 0:0; C MmrContextNotifier::seek: Error seeking. track=0, position=0, error=InvalidParameter; "
            "C MediaPlayerPrivate::seek: Unable to seek track. track=0, position=0, error=InvalidParameter; -> "
            "InvalidParameter");
    }

    void seeking() { tryRow<P>(); }

    void report_data()
    {
        const PlayerCases row;
        const auto paused = after(started, call(&P::pause));
        const auto stopped = after(started, call(&P::stop));
        const QVariantMap metaData{{QStringLiteral("title"), QStringLiteral("T")}};
        const auto known =
            after(started, reported(&N::durationChanged, 900u), reported(&N::seekableChanged, true),
                  reported(&N::bufferStatusChanged, BufferStatus::Playing), reported(&N::metaDataChanged, metaData),
                  reported(&N::positionChanged, 80u), reported(&N::videoDimensionsChanged, QSize(4, 3)));

        row("playing", prepared, reported(&N::playing), "mediaStateChanged(Started); mediaState=Started");
        row("playing already", started, reported(&N::playing), "");
        row("paused", started, reported(&N::paused), "mediaStateChanged(Paused); speed=0; mediaState=Paused");
        row("stopped", paused, reported(&N::stopped), "mediaStateChanged(Stopped); speed=1; mediaState=Stopped");
        row("stopped, prepared: stays prepared", prepared, reported(&N::stopped), "");
        row("idle forgets the medium, not the position", known, reported(&N::idle),
            "bufferStatusChanged(Idle); mmr_track_parameters 1; trackChanged(1); trackChanged(uint 1); "
            "durationChanged(0); durationChanged(uint 0); seekableChanged(false); mediaStateChanged(Unprepared); "
            "bufferStatus=Idle; duration=0; mediaState=Unprepared; metaData=QMap(); seekable=false");
        row("completed", started, reported(&N::playbackCompleted),
            "mediaStateChanged(Stopped); playbackCompleted(); mediaState=Stopped");
        row("completed, stopped already", stopped, reported(&N::playbackCompleted), "playbackCompleted()");
        row("error", started, reported(&N::error, MediaError::Read, 70u, 3u),
            "mediaStateChanged(Stopped); error(Read, 70); error(Read, uint 70); mediaState=Stopped");
        row("position", known, reported(&N::positionChanged, 100u),
            "positionChanged(100); positionChanged(uint 100); position=100");
        row("same position: told again", known, reported(&N::positionChanged, 80u),
            "positionChanged(80); positionChanged(uint 80)");
        row("duration", known, reported(&N::durationChanged, 5u),
            "durationChanged(5); durationChanged(uint 5); duration=5");
        row("same duration", known, reported(&N::durationChanged, 900u), "");
        row("track count", known, reported(&N::trackCountChanged, 4u),
            "trackCountChanged(4); trackCountChanged(uint 4); trackCount=4");
        row("same track count", known, reported(&N::trackCountChanged, 0u), "");
        row("buffering", known, reported(&N::buffering, 0.5), "buffering(0.5)");
        row("same buffering", known, reported(&N::buffering, 0.0), "");
        row("buffer status", known, reported(&N::bufferStatusChanged, BufferStatus::Buffering),
            "bufferStatusChanged(Buffering); bufferStatus=Buffering");
        row("same buffer status", known, reported(&N::bufferStatusChanged, BufferStatus::Playing), "");
        row("seekable", known, reported(&N::seekableChanged, false), "seekableChanged(false); seekable=false");
        row("same seekable", known, reported(&N::seekableChanged, true), "");
        row("video size", known, reported(&N::videoDimensionsChanged, QSize(4, 4)),
            "videoDimensionsChanged(QSize(4, 4)); videoDimensions=QSize(4, 4)");
        row("same video size", known, reported(&N::videoDimensionsChanged, QSize(4, 3)), "");
        row("same metadata: told again", known, reported(&N::metaDataChanged, metaData),
            "metaDataChanged(QMap((title, QVariant(QString, T))))");
    }

    void report() { tryRow<P>(); }

    // What the renderer publishes gets to the player by the monitor.
    void publication_data()
    {
        const PlayerCases row;
        row("playback", started,
            published(
                "play-queue current:n:2 total:n:2 | q2 md_title_duration:n:900 | state state::playing speed:n:2000 | "
                "status position::70 bufferlevel::1/2 bufferstatus::playing",
                "bufferStatusChanged(Playing)"),
            "mmr_track_parameters 2; trackChanged(2); trackChanged(uint 2); durationChanged(900); "
            "durationChanged(uint 900); metaDataChanged(QMap((duration, QVariant(int, 900)))); trackCountChanged(2); "
            "trackCountChanged(uint 2); metaDataChanged(QMap((duration, QVariant(int, 900)))); speedChanged(2); "
            "positionChanged(70); positionChanged(uint 70); buffering(0.5); bufferStatusChanged(Playing); speed=2; "
            "bufferStatus=Playing; duration=900; metaData=QMap((duration, QVariant(int, 900))); position=70; track=2; "
            "trackCount=2");
        row("hold", started, published("state state::playing speed:n:0", "speedChanged(0)"),
            "mediaStateChanged(Paused); speedChanged(0); speed=0; mediaState=Paused");
    }

    void publication()
    {
        const RuntimeBroker broker;
        tryRow<P>();
    }

    void commandInASlot_holds()
    {
        PlayerFixture f;
        started(f);
        f.trace.clear();
        bool isDone = false;
        f.emitted.setThen([&] {
            if (!std::exchange(isDone, true)) {
                QCOMPARE(f.media.play(), MediaError::None);
            }
        });
        QCOMPARE(f.media.pause(), MediaError::None);
        QCOMPARE(f.media.mediaState(), MediaState::Started);
        QCOMPARE(f.trace.filter("mmr_"), (QStringList{"mmr_speed_set 0", "mmr_speed_set 1000"}));
    }

    void construction_makesANamedContext_andDestructionRemovesIt()
    {
        PlayerFixture f;
        const QString name = f.media.objectName();
        QVERIFY(name.startsWith(QLatin1String("voro.multimedia.MediaPlayer::")));
        QCOMPARE(f.trace,
                 (QStringList{"mmr_connect", "mmr_context_create " + name + " 0 700", "mmr_context_path 1024"}));
        auto other = std::make_unique<MediaPlayer>();
        QVERIFY(other->objectName() != name);
        f.forget();
        other.reset();
        QCOMPARE(f.trace, (QStringList{"mmr_context_destroy", "mmr_disconnect"}));
    }

    void inputCandidates_followTheKindOfUrl_data()
    {
        const Rows<QUrl, QStringList> row("url", "attached");
        const QString attach = QStringLiteral("mmr_input_attach ");
        const auto local = [&](const char *name, const char *url, const char *path) {
            row(name, QUrl(QString::fromUtf8(url)),
                {attach + "file://" + path + " playlist", attach + path + " autolist"});
        };
        const auto remote = [&](const char *name, const QUrl &url, const char *text) {
            row(name, url, {attach + text + " autolist", attach + text + " playlist"});
        };
        local("file with a blank", "file:///music/a%20b.mp3", "/music/a b.mp3");
        local("file with a letter of two bytes", "file:///music/\xc3\xa4.ogg", "/music/\xc3\xa4.ogg");
        local("path", "/music/a.ogg", "/music/a.ogg");
        remote("stream", QUrl(QStringLiteral("http://host/a.ogg")), "http://host/a.ogg");
        remote("stream with a blank", QUrl(QStringLiteral("http://host/a b%2Fc.ogg")), "http://host/a%20b%2Fc.ogg");
        remote("nothing", QUrl(), "");
    }

    void inputCandidates_followTheKindOfUrl()
    {
        QFETCH(QUrl, url);
        PlayerFixture f;
        f.media.setSourceUrl(url);
        f.renderer.fail("mmr_input_attach", MediaError::Internal);
        QCOMPARE(f.media.prepare(), MediaError::Internal);
        QTEST(QStringList(f.trace.filter("mmr_input_attach")), "attached");
        // Any other error than this one ends the search.
        f.forget();
        f.renderer.fail("mmr_input_attach", MediaError::UnsupportedMediaType);
        QCOMPARE(f.media.prepare(), MediaError::UnsupportedMediaType);
        QCOMPARE(f.trace.filter("mmr_input_attach").size(), 1);
    }

    void everyCommand_isRefused_withoutAContext_data()
    {
        const Rows<Action> row("act");
        row("prepare", call(&P::prepare));
        row("play", call(&P::play));
        row("pause", call(&P::pause));
        row("stop", call(&P::stop));
        row("reset", call(&P::reset));
        row("source", call(&P::setSourceUrl, QUrl(QStringLiteral("file:///a"))));
        row("audio output", call(&P::setAudioOutput, AudioOutput::None));
        row("video output", call(&P::setVideoOutput, VideoOutput::PrimaryDisplay));
        row("video part", call(&P::setVideoSourceRect, 0, 0, 1u, 1u));
        row("captions", call(&P::setClosedCaptionEnabled, false));
        row("caption index", call(&P::setClosedCaptionIndex, 1u));
        row("caption url", call(&P::setClosedCaptionUrl, 1u, QUrl(QStringLiteral("file:///a"))));
        row("volume", call(&P::setVolume, 0.5));
        row("repeat mode", call(&P::setRepeatMode, RepeatMode::All));
        row("speed", call(&P::setSpeed, 1.0));
        row("interval", call(&P::setStatusInterval, 10u));
        row("seek", call(&P::seek, 1u, 1u));
        row("next", call(&P::nextTrack));
    }

    void everyCommand_isRefused_withoutAContext()
    {
        QFETCH(Action, act);
        for (const QString function : {"mmr_connect", "mmr_context_create"}) {
            PlayerFixture f([&](auto &renderer) { renderer.fail(function, MediaError::Internal); });
            f.forget();
            QCOMPARE(keyName(act(f)), "InvalidState");
            QCOMPARE(f.trace, QStringList());
            QVERIFY(!f.log.takeLines().filter("MMR context is null").isEmpty());
        }
    }

    void property_ofQml_isReadAndWrittenThroughVariants()
    {
        PlayerFixture f;
        for (const char *name : {"audioManagerHandle", "closedCaptionIndex", "statusInterval"}) {
            QVERIFY(f.media.setProperty(name, QStringLiteral("5")));
            QCOMPARE(f.media.property(name), QVariant(5u));
            f.log.takeLines();
            f.media.setProperty(name, QStringLiteral("five"));
            QCOMPARE(f.media.property(name), QVariant(5u));
            QCOMPARE(f.log.takeLines().filter("Unable to convert variant").size(), 1);
            // A negative number wraps around.
            f.media.setProperty(name, -1);
            QCOMPARE(f.media.property(name), QVariant(4294967295u));
        }
        for (const char *name : {"duration", "position", "track", "trackCount"}) {
            QCOMPARE(f.media.property(name).metaType(), QMetaType::fromType<unsigned int>());
        }
    }
};

QTEST_GUILESS_MAIN(MediaPlayerTest)
#include "tst_mediaplayer.moc"
