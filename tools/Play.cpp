// voro play: the command's arguments.

#include "Command.h"
#include "Playback.h"

namespace voro {

namespace {

constexpr double FastestSpeed = 100;

std::vector<Medium> mediaFrom(const QByteArrayList &operands)
{
    std::vector<Medium> media;
    for (const QByteArray &operand : operands) {
        media.push_back(mediumFromArgument(operand));
    }
    if (media.empty()) {
        media.push_back(sampleMedium());
    }
    return media;
}

ExitStatus run(const Arguments &arguments)
{
    PlaybackSettings settings;
    settings.media = mediaFrom(arguments.operands());
    settings.start = arguments.milliseconds("--start");
    settings.speed = arguments.number("--speed", -FastestSpeed, FastestSpeed);
    // The renderer counts in thousandths; less than one is a pause without an end.
    if (settings.speed && std::abs(*settings.speed) < 0.001) {
        throw UsageError{QStringLiteral("--speed: a speed of 0 never gets anywhere")};
    }
    settings.volume = arguments.number("--volume", 0, 1).value_or(settings.volume);
    settings.repeatMode =
        arguments.enumerator<multimedia::RepeatMode>("--repeat", {"Unsupported"}).value_or(settings.repeatMode);
    settings.equalizerPreset =
        arguments.enumerator<multimedia::EqualizerPreset>("--eq").value_or(settings.equalizerPreset);
    settings.windowId = QString::fromLocal8Bit(arguments.value("--window").value_or(QByteArray()));
    if (const auto captions = arguments.value("--captions")) {
        settings.captions = mediumFromArgument(*captions);
    }
    settings.json = arguments.has("--json");
    settings.isPublished = !arguments.has("--no-publish");
    return Playback(std::move(settings)).run();
}

} // namespace

const Command PlayCommand{
    .help =
        {
            .name = "play",
            .synopsis = "[OPTION...] [FILE|URL...]",
            .summary = "plays files and streams, one after the other",
            .details =
                "Plays files and streams as a queue; without any, the sample that comes with the program.\n"
                "On a terminal these keys work: space pauses and goes on, left and right seek by five seconds,\n"
                "up and down (or + and -) change the volume, n and p go to the next and previous track, c switches\n"
                "captions off and on, q quits.\n"
                "Remotes and the desktop command it as what is now playing; whoever takes that role over pauses it.",
            .options =
                {
                    {"--start", "MS", "begins the first medium at a position in milliseconds"},
                    {"--speed", "F", "plays at a factor of normal speed"},
                    {"--volume", "F", "the volume from 0 to 1"},
                    {"--repeat", "MODE", "none, track or all"},
                    {"--eq", "NAME", "an equalizer preset, for instance BassBoost or Rock"},
                    {"--window", "ID", "shows the video in a window"},
                    {"--captions", "URL", "a file of captions, shown in the window"},
                    {"--no-publish", nullptr, "does not show as what is now playing on the device"},
                    {"--json", nullptr, "prints every signal of the player as one JSON object a line"},
                },
        },
    .run = run,
};

} // namespace voro
