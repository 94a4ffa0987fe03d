// voro play: the command's arguments.

#include "Command.h"
#include "Playback.h"
#include "Window.h"

namespace voro {

namespace {

constexpr double FastestSpeed = 100;

std::vector<Medium> mediaFrom(const QByteArrayList &operands)
{
    std::vector<Medium> media;
    for (const QByteArray &operand : operands) {
        media.push_back(operand == "-" ? inputMedium() : mediumFromArgument(operand));
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
    settings.start = arguments.time("--start");
    settings.speed = arguments.number("--speed", -FastestSpeed, FastestSpeed);
    // The renderer counts in thousandths; less than one is a pause without an end.
    if (settings.speed && std::abs(*settings.speed) < 0.001) {
        throw UsageError{QStringLiteral("--speed: a speed of 0 never gets anywhere")};
    }
    if (settings.speed.value_or(1) < 0 && !settings.start) {
        throw UsageError{QStringLiteral("--speed: nothing comes before the beginning; --start says where to begin")};
    }
    if (const auto volume = arguments.value("--volume")) {
        settings.volume = volumeFrom("--volume", *volume);
    }
    settings.repeatMode =
        arguments.enumerator<multimedia::RepeatMode>("--repeat", {"Unsupported"}).value_or(settings.repeatMode);
    settings.equalizerPreset =
        arguments.enumerator<multimedia::EqualizerPreset>("--eq").value_or(settings.equalizerPreset);
    if (const auto window = arguments.value("--window")) {
        settings.windowId = windowFrom("--window", *window);
    }
    if (const auto captions = arguments.value("--captions")) {
        settings.captions = mediumFromArgument(*captions);
    }
    settings.isShuffled = arguments.has("--shuffle");
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
                "The file - is standard input, which is read to its end first unless it is a file.\n"
                "Remotes and the desktop command it as what is now playing; whoever takes that role over pauses it.",
            .options =
                {
                    {"--start", "TIME", "begins the first medium at a position: 1:30, or milliseconds"},
                    {"--speed", "F", "plays at a factor of normal speed"},
                    {"--volume", "F", "the volume: 0.5 or 50%"},
                    {"--repeat", "MODE", "none, track or all",
                     [] { return enumeratorNames<multimedia::RepeatMode>({"Unsupported"}); }},
                    {"--shuffle", nullptr, "plays several media in an order of chance"},
                    {"--eq", "NAME", "an equalizer preset, for instance BassBoost or Rock",
                     [] { return enumeratorNames<multimedia::EqualizerPreset>(); }},
                    {"--window", "ID", "shows the video in a window of X11, by its number"},
                    {"--captions", "URL", "a file of captions, shown in the window"},
                    {"--no-publish", nullptr, "does not show as what is now playing on the device"},
                    {"--json", nullptr, "prints every signal of the player as one JSON object a line"},
                },
            .keys = keyHelp,
        },
    .run = run,
};

} // namespace voro
