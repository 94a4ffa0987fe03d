#include "MediaFixture.h"
#include "private/AudioRecorderPrivate.h"
#include "RuntimeBroker.h"

#include <multimedia/AudioRecorder.h>

#include <QtTest/QtTest>

#include <Rows.h>

#include <memory>

using namespace voro::multimedia;

using R = AudioRecorder;
using N = MmrContextNotifier;
using RecorderFixture = MediaFixture<AudioRecorder>;
using Action = ActionOn<AudioRecorder>;
using Preparation = PreparationOf<AudioRecorder>;

namespace {

const Preparation newRecorder = [](RecorderFixture &) {};

void withFile(RecorderFixture &f)
{
    f.media.setOutputUrl(QUrl(QStringLiteral("file:///rec/a%20b.wav")));
}

void prepared(RecorderFixture &f)
{
    withFile(f);
    f.media.prepare();
}

void started(RecorderFixture &f)
{
    withFile(f);
    f.media.record();
}

/** What `prepared` does on a new recorder. */
const QString prepareCalls = QStringLiteral("mmr_output_attach /rec/a b.wav file; "
                                            "mmr_input_parameters audioman_handle=0 audio_type=voice_recording; "
                                            "mmr_input_attach audio:default track");
const QString toPrepared = prepareCalls + "; mediaStateChanged(Prepared)";
const QString unprepared = QStringLiteral("recordingLevelChanged(0); durationChanged(0); durationChanged(uint 0); "
                                          "mediaStateChanged(Unprepared)");
const QString reset = "mmr_stop; mmr_input_detach; mmr_output_detach 0; " + unprepared;

Action setChannels(AudioChannelConfiguration::Type channels)
{
    return call(&R::setAudioChannelConfiguration, channels);
}

} // namespace

class AudioRecorderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void command_data()
    {
        const CasesOf<R> row;
        const auto url = [](const char *text) { return after(call(&R::setOutputUrl, QUrl(QString::fromUtf8(text)))); };
        const auto channels = [](AudioChannelConfiguration::Type value) { return after(withFile, setChannels(value)); };
        const auto attachedWith = [](const char *inputUrl) {
            return QString(prepareCalls).replace("audio:default", inputUrl)
                   + "; mediaStateChanged(Prepared); mediaState=Prepared";
        };

        row("prepare", withFile, call(&R::prepare), toPrepared + "; mediaState=Prepared");
        row("prepare, prepared", prepared, call(&R::prepare), "");
        row("prepare in mono", channels(AudioChannelConfiguration::Mono), call(&R::prepare),
            attachedWith("audio:default?nchan=1"));
        row("prepare in stereo", channels(AudioChannelConfiguration::Stereo), call(&R::prepare),
            attachedWith("audio:default?nchan=2"));
        row("prepare with a handle", after(withFile, call(&R::setAudioManagerHandle, 7u)), call(&R::prepare),
            QString(toPrepared).replace("handle=0", "handle=7") + "; mediaState=Prepared");
        row("prepare without a file", newRecorder, call(&R::prepare), "-> InvalidParameter");
        row("the path is decoded once, and begins with one slash", url("file://///rec/100%2525.wav"), call(&R::prepare),
            QString(toPrepared).replace("/rec/a b.wav", "/rec/100%25.wav") + "; mediaState=Prepared");
        row("record, unprepared", withFile, call(&R::record),
            toPrepared + "; mmr_speed_set 1000; mmr_play; mediaStateChanged(Started); mediaState=Started");
        row("record, prepared", prepared, call(&R::record),
            "mmr_speed_set 1000; mmr_play; mediaStateChanged(Started); mediaState=Started");
        row("pause", started, call(&R::pause), "mmr_speed_set 0; mediaStateChanged(Paused); mediaState=Paused");
        row("reset, unprepared", newRecorder, call(&R::reset), "");
        row("reset, recording", after(started, reported(&N::positionChanged, 900u)), call(&R::reset),
            reset + "; duration=0; mediaState=Unprepared");
        row("reset, after an error", after(started, reported(&N::error, MediaError::Write, 70u, 1u)), call(&R::reset),
            reset + "; mediaState=Unprepared");
        row("reset detaches the output that was attached last", after(prepared, call(&R::reset), prepared),
            call(&R::reset), QString(reset).replace("detach 0", "detach 1") + "; mediaState=Unprepared");
    }

    void command() { tryRow<R>(); }

    void failingCommand_data()
    {
        const CasesOf<R> row;
        // How far the command gets when a function of the renderer fails, and what it says.
        const auto failed = [&](const char *name, const Preparation &given, const Action &act, const char *function,
                                const QString &calls, const char *lines) {
            row(name, after(given, failing(function, MediaError::Permission)), act,
                calls + "; " + QString::fromLatin1(lines) + "; -> Permission");
        };
        const auto prepareCallsUpTo = [](int count) { return prepareCalls.section("; ", 0, count - 1); };
        failed("prepare, file", withFile, call(&R::prepare), "mmr_output_attach", prepareCallsUpTo(1),
               "C AudioRecorder::prepare: Error attaching audio output. url=file:///s/s.wav, error=Permission");
        failed("prepare, parameters", withFile, call(&R::prepare), "mmr_input_parameters", prepareCallsUpTo(2),
               "C AudioRecorderPrivate::updateInputParams: Unable to set input parameters. error=Permission; "
               "C AudioRecorder::prepare: Unable to set input parameters.");
        failed("prepare, input", withFile, call(&R::prepare), "mmr_input_attach", prepareCalls,
               "C AudioRecorder::prepare: Error attaching input source. url=\"audio:default\", error=Permission");
        failed("record, file", withFile, call(&R::record), "mmr_output_attach", prepareCallsUpTo(1),
               "C AudioRecorder::prepare: Error attaching audio output. url=file:///s/s.wav, error=Permission; "
               "C AudioRecorder::record: Unable to prepare the recorder");
        failed("record, speed", prepared, call(&R::record), "mmr_speed_set", "mmr_speed_set 1000",
               "C AudioRecorder::record: Unable to set the recorder speed to normal");
        failed("record, start", prepared, call(&R::record), "mmr_play", "mmr_speed_set 1000; mmr_play",
               "C AudioRecorder::record: Error recording audio. error=Permission");
        failed("pause", started, call(&R::pause), "mmr_speed_set", "mmr_speed_set 0",
               "C AudioRecorder::pause: Error pausing the recorder. error=Permission");
        failed("reset, stop", started, call(&R::reset), "mmr_stop", "mmr_stop",
               "C AudioRecorderPrivate::unprepare: Error stopping the recorder. error=Permission");
        failed("reset, input", started, call(&R::reset), "mmr_input_detach", "mmr_stop; mmr_input_detach",
               "C AudioRecorderPrivate::unprepare: Error detaching recording input. error=Permission");
        failed("reset, file", started, call(&R::reset), "mmr_output_detach",
               "mmr_stop; mmr_input_detach; mmr_output_detach 0",
               "C AudioRecorderPrivate::unprepare: Error detaching recording file. error=Permission");

        row("the renderer's code is passed on as it is",
            after(started, failing("mmr_stop", MediaError::CommandFailed, MediaError::Write)), call(&R::reset),
            "mmr_stop; C AudioRecorderPrivate::unprepare: Error stopping the recorder. error=CommandFailed; "
            "-> CommandFailed");
        // A dictionary that refuses a key; the renderer's destructor sees that it is not lost.
        const auto refused = [&](const char *key, const Action &act, const QString &calls, const char *lines) {
            row(key, after(withFile, [key](RecorderFixture &f) { f.renderer.failKey(QLatin1String(key)); }), act,
                calls + QLatin1String(lines) + "; -> InvalidParameter");
        };
        refused("audioman_handle", call(&R::prepare), prepareCallsUpTo(1),
                "; C AudioRecorderPrivate::updateInputParams: Unable to create audio manager handle parameter. "
                "audioman_handle=0; C AudioRecorder::prepare: Unable to set input parameters.");
        refused("audio_type", call(&R::prepare), prepareCallsUpTo(1),
                "; C AudioRecorderPrivate::updateInputParams: Unable to create voice recording audio type parameter.; "
                "C AudioRecorder::prepare: Unable to set input parameters.");
        refused("updateinterval", call(&R::setStatusInterval, 10u), QString(),
                "C AudioRecorderPrivate::updateContextParams: Unable to create update interval parameter. "
                "updateInterval=10, error=InvalidParameter; "
                "C AudioRecorder::setStatusInterval: Unable to set the status interval.");
        row("a file that failed is attached again",
            after(withFile, failing("mmr_input_attach", MediaError::Read), call(&R::prepare),
                  [](RecorderFixture &f) { f.renderer.succeed("mmr_input_attach"); }),
            call(&R::prepare), toPrepared + "; mediaState=Prepared");
    }

    void failingCommand() { tryRow<R>(); }

    void setting_data()
    {
        const CasesOf<R> row;
        const auto handle = [](unsigned int value) { return call(&R::setAudioManagerHandle, value); };
        const auto interval = [](unsigned int value) { return call(&R::setStatusInterval, value); };
        const auto text = [](void (R::*setter)(const QVariant &), const char *value) {
            return call(setter, QVariant(QString::fromLatin1(value)));
        };
        const QString stereo = QStringLiteral("audioChannelConfigurationChanged(Stereo)");
        const QString handle7 = QStringLiteral("audioManagerHandleChanged(7); audioManagerHandleChanged(uint 7)");
        const QString interval250 =
            QStringLiteral("mmr_context_parameters updateinterval=250; statusIntervalChanged(250); "
                           "statusIntervalChanged(uint 250)");

        row("channels", newRecorder, setChannels(AudioChannelConfiguration::Stereo),
            stereo + "; audioChannelConfiguration=Stereo");
        row("channels, recording", after(started, reported(&N::positionChanged, 70u)),
            setChannels(AudioChannelConfiguration::Stereo),
            reset + "; " + stereo + "; audioChannelConfiguration=Stereo; duration=0; mediaState=Unprepared");
        row("channels, refused", after(started, failing("mmr_input_detach", MediaError::Read)),
            setChannels(AudioChannelConfiguration::Mono),
            "mmr_stop; mmr_input_detach; C AudioRecorderPrivate::unprepare: Error detaching recording input. "
            "error=Read; "
            "C AudioRecorder::setAudioChannelConfiguration: Unable to unprepare the recorder.; -> Read");
        row("handle", newRecorder, handle(7), handle7 + "; audioManagerHandle=7");
        row("handle, no number", newRecorder, text(&R::setAudioManagerHandleQml, "-1"),
            "W AudioRecorder::setAudioManagerHandleQml: Unable to convert variant handle.");
        row("interval", newRecorder, interval(250), interval250 + "; statusInterval=250");
        row("same interval: sent and told again", after(started, interval(250)), interval(250), interval250);
        row("interval, refused", failing("mmr_context_parameters", MediaError::InvalidParameter), interval(250),
            "mmr_context_parameters updateinterval=250; C AudioRecorderPrivate::updateContextParams: Unable to set "
            "input "
            "parameters. error=InvalidParameter; C AudioRecorder::setStatusInterval: Unable to set the status "
            "interval.; "
            "-> InvalidParameter");
        row("interval, no number", newRecorder, text(&R::setStatusIntervalQml, "abc"),
            "W AudioRecorder::setStatusIntervalQml: Unable to convert variant status interval.");
        row("file, recording: for the next time", started,
            call(&R::setOutputUrl, QUrl(QStringLiteral("file:///b.wav"))), "outputUrl=file:///b.wav");
    }

    void setting() { tryRow<R>(); }

    void report_data()
    {
        const CasesOf<R> row;
        const auto recorded =
            after(started, reported(&N::positionChanged, 900u), reported(&N::volumeLevelChanged, 0.5));

        row("recording", prepared, reported(&N::playing), "mediaStateChanged(Started); mediaState=Started");
        row("recording already", started, reported(&N::playing), "");
        row("paused", started, reported(&N::paused), "mediaStateChanged(Paused); mediaState=Paused");
        row("stopped: unprepared without a call", recorded, reported(&N::stopped),
            unprepared + "; duration=0; mediaState=Unprepared");
        row("idle: reset", recorded, reported(&N::idle), reset + "; duration=0; mediaState=Unprepared");
        row("idle, unprepared", newRecorder, reported(&N::idle), "");
        row("idle, reset fails", after(started, failing("mmr_stop", MediaError::Read)), reported(&N::idle),
            "mmr_stop; C AudioRecorderPrivate::unprepare: Error stopping the recorder. error=Read; "
            "C AudioRecorderPrivate::onMmrIdle: Unable to unprepare. error=Read");
        row("completed says nothing", prepared, reported(&N::playbackCompleted), "");
        row("error", recorded, reported(&N::error, MediaError::Write, 70u, 3u),
            "mediaStateChanged(Stopped); error(Write, 70); error(Write, uint 70); mediaState=Stopped");
        row("duration", recorded, reported(&N::positionChanged, 901u),
            "durationChanged(901); durationChanged(uint 901); duration=901");
        row("same duration: told again", recorded, reported(&N::positionChanged, 900u),
            "durationChanged(900); durationChanged(uint 900)");
        row("level", recorded, reported(&N::volumeLevelChanged, 0.25), "recordingLevelChanged(0.25)");
    }

    void report() { tryRow<R>(); }

    void construction_makesANamedContext_andDestructionRemovesIt()
    {
        RecorderFixture f;
        QVERIFY(f.trace.at(1).startsWith("mmr_context_create voro.multimedia.AudioRecorder::"));
        QVERIFY(f.trace.at(1).endsWith(" 0 700"));
        QCOMPARE(f.trace.size(), 3);
        f.forget();
        auto other = std::make_unique<AudioRecorder>();
        QCOMPARE(f.trace.first(), "mmr_connect");
        f.forget();
        other.reset();
        QCOMPARE(f.trace, (QStringList{"mmr_context_destroy", "mmr_disconnect"}));
    }

    void commands_sayThatThereIsNoContext_data()
    {
        const Rows<Action, QByteArray> row("act", "result");
        row("prepare succeeds, required so", call(&R::prepare), "None");
        row("record", call(&R::record), "InvalidState");
        row("pause", call(&R::pause), "InvalidState");
        row("reset", call(&R::reset), "InvalidState");
        row("interval", call(&R::setStatusInterval, 10u), "InvalidState");
    }

    void commands_sayThatThereIsNoContext()
    {
        QFETCH(Action, act);
        const QHash<QString, QString> lines{{"mmr_connect", "Unable to connect to MMR"},
                                            {"mmr_context_create", "Error creating player context. error=None"}};
        for (auto line = lines.begin(); line != lines.end(); ++line) {
            RecorderFixture f([&](auto &renderer) { renderer.fail(line.key(), MediaError::Internal); });
            withFile(f);
            QCOMPARE(f.log.takeLines(), QStringList("C AudioRecorder::AudioRecorder: " + line.value()));
            f.forget();
            const QStringList earlier = f.state();
            QTEST(QByteArray(keyName(act(f))), "result");
            QCOMPARE(f.trace, QStringList());
            QCOMPARE(f.state(), earlier);
            QCOMPARE(f.log.takeLines().filter("MMR context is null").size(), 1);
        }
    }

    void variants_holdUnsignedNumbers()
    {
        RecorderFixture f;
        for (const char *name : {"audioManagerHandle", "duration", "statusInterval"}) {
            QCOMPARE(f.media.property(name).metaType(), QMetaType::fromType<unsigned int>());
        }
        QCOMPARE(f.media.deviceMode(), DeviceMode::Capture);
    }
};

QTEST_GUILESS_MAIN(AudioRecorderTest)
#include "tst_audiorecorder.moc"
