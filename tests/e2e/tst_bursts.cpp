#include "Daemon.h"
#include "LogCatcher.h"
#include "Media.h"

#include <multimedia/AudioRecorder.h>
#include <multimedia/MediaPlayer.h>
#include <voro/PpsObject.h>

#include <QtTest/QtTest>

#include <functional>
#include <optional>
#include <random>
#include <utility>
#include <vector>

using namespace voro::multimedia;

namespace {

struct Command {
    const char *name;
    std::function<void()> run;
};

/** What the one context of the daemon publishes of its state. */
QVariantMap publishedState()
{
    const QString contexts = QStringLiteral("/pps/services/multimedia/renderer/context");
    const auto read = [](const QString &path) {
        voro::PpsObject object(path);
        object.open(voro::PpsOpenMode::Subscribe);
        return voro::PpsObject::decode(object.read());
    };
    const QStringList names = read(contexts + QStringLiteral("/.list"))["@.list"].toMap().keys();
    return read(QStringLiteral("%1/%2/state").arg(contexts, names.value(0)))["@state"].toMap();
}

/** Whether an object that says it is in a state is right. */
bool isRight(MediaState::Type said, bool mayWaitPaused)
{
    const QVariantMap published = publishedState();
    const QString state = published["state"].toString();
    const bool isHeld = published["speed"].toInt() == 0;
    switch (said) {
    case MediaState::Started:
        return state == QLatin1String("playing") && !isHeld;
    case MediaState::Paused:
        return isHeld && (state == QLatin1String("playing") || (mayWaitPaused && state == QLatin1String("stopped")));
    case MediaState::Unprepared:
        return state.isEmpty() || state == QLatin1String("idle");
    default:
        return state == QLatin1String("stopped");
    }
}

} // namespace

/** Commands that follow each other without a pass of the event loop. */
class tst_Bursts : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void player_saysWhatItsContextDoes()
    {
        const QUrl tone = QUrl::fromLocalFile(media::makeTone(m_folder.filePath("tone.ogg"), {.seconds = 60}));
        const QUrl blip = QUrl::fromLocalFile(media::makeTone(m_folder.filePath("blip.wav"), {.seconds = 0.02}));
        MediaPlayer player;
        const std::vector<Command> commands = {
            {"prepare", [&] { player.prepare(); }},
            {"play", [&] { player.play(); }},
            {"pause", [&] { player.pause(); }},
            {"stop", [&] { player.stop(); }},
            {"reset", [&] { player.reset(); }},
            {"speed 1", [&] { player.setSpeed(1.0); }},
            {"speed 0", [&] { player.setSpeed(0.0); }},
            {"speed -1", [&] { player.setSpeed(-1.0); }},
            {"start", [&] { player.seekTime(0); }},
            {"middle", [&] { player.seekTime(30'000); }},
            {"end", [&] { player.seekTime(59'990); }},
            {"tone", [&] { player.setSourceUrl(tone); }},
            {"blip", [&] { player.setSourceUrl(blip); }},
            {"silent", [&] { player.setAudioOutput(AudioOutput::None); }},
            {"heard", [&] { player.setAudioOutput(AudioOutput::Default); }},
        };
        run(1000, commands, [&] { return isRight(player.mediaState(), false); });
    }

    void recorder_saysWhatItsContextDoes()
    {
        AudioRecorder recorder;
        recorder.setOutputUrl(QUrl::fromLocalFile(m_folder.filePath("a.wav")));
        const std::vector<Command> commands = {
            {"prepare", [&] { recorder.prepare(); }},
            {"record", [&] { recorder.record(); }},
            {"pause", [&] { recorder.pause(); }},
            {"reset", [&] { recorder.reset(); }},
            {"mono", [&] { recorder.setAudioChannelConfiguration(AudioChannelConfiguration::Mono); }},
            {"stereo", [&] { recorder.setAudioChannelConfiguration(AudioChannelConfiguration::Stereo); }},
        };
        // A recorder that is prepared may be paused before it begins.
        run(200, commands, [&] { return isRight(recorder.mediaState(), true); });
    }

private:
    void run(int bursts, const std::vector<Command> &commands, const std::function<bool()> &isRight)
    {
        std::mt19937 random(1);
        for (int i = 0; i < bursts; ++i) {
            QByteArray names;
            std::optional<voro::test::LogCatcher> refusals{std::in_place};
            for (unsigned count = 1 + random() % 5; count > 0; --count) {
                const Command &command = commands[random() % commands.size()];
                names.append(command.name).append("; ");
                command.run();
            }
            refusals.reset();
            // What is published by now is read in the next pass.
            publishedState();
            QCoreApplication::processEvents();
            if (!QTest::qWaitFor(isRight)) {
                const QVariantMap published = publishedState();
                qWarning() << "burst" << i << names << "ended in" << published["state"] << published["speed"];
                QFAIL("the state that is told is another one");
            }
        }
    }

    QTemporaryDir m_folder;
    const bool m_ends = qputenv("VORO_AUDIO_SINK", "fakesink sync=true")
                        && qputenv("VORO_AUDIO_SOURCE", "audiotestsrc is-live=true samplesperbuffer=441");
    Daemon m_daemon;
};

QTEST_GUILESS_MAIN(tst_Bursts)
#include "tst_bursts.moc"
