// voro play: the command's arguments.

#include "Command.h"
#include "MediaFolder.h"
#include "Playback.h"
#include "StandardInput.h"
#include "Window.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace voro {

namespace {

constexpr double SlowestSpeed = 0.25;

std::vector<Medium> mediaFrom(const QByteArrayList &operands, InputUse use)
{
    std::vector<Medium> media;
    if (operands.count("-") > 1) {
        throw UsageError{QStringLiteral("-: standard input can be played once only")};
    }
    for (const QByteArray &operand : operands) {
        if (operand == "-") {
            media.push_back(inputMedium(use));
            continue;
        }
        const QByteArrayList paths = isFolder(operand) ? mediaBelow(operand) : QByteArrayList{operand};
        if (paths.isEmpty()) {
            throw UsageError{
                QStringLiteral("'%1': nothing in this folder can be played").arg(QString::fromLocal8Bit(operand))};
        }
        std::transform(paths.begin(), paths.end(), std::back_inserter(media), mediumFromArgument);
    }
    if (media.empty()) {
        media.push_back(sampleMedium());
    }
    return media;
}

ExitStatus runPlay(const Arguments &arguments)
{
    PlaybackSettings settings;
    settings.start = arguments.time("--start");
    settings.speed = arguments.number("--speed", -FastestSpeed, FastestSpeed);
    if (settings.speed && std::abs(*settings.speed) < SlowestSpeed) {
        throw UsageError{QStringLiteral("--speed: nothing plays slower than at %1").arg(SlowestSpeed)};
    }
    if (settings.speed.value_or(1) < 0 && !settings.start) {
        throw UsageError{QStringLiteral("--speed: nothing comes before the beginning; --start says where to begin")};
    }
    settings.media =
        mediaFrom(arguments.operands(), settings.start ? InputUse::FromAnywhere : InputUse::FromItsBeginning);
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
        if (!QFileInfo::exists(settings.captions->url.toLocalFile())) {
            throw UsageError{
                QStringLiteral("--captions: this machine has no file '%1'").arg(QString::fromLocal8Bit(*captions))};
        }
        if (settings.windowId.isEmpty()) {
            throw UsageError{QStringLiteral("--captions: they are shown in a window, which --window has to name")};
        }
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
            .synopsis = "[OPTION...] [FILE|FOLDER|URL...]",
            .summary = "plays files and streams, one after the other",
            .details =
                "Plays files and streams as a queue; without any, the sample that comes with the program.\n"
                "Of a folder, all sounds and films in it and below are played, in the order of their names.\n"
                "The file - is standard input. A pipe plays while it comes, and cannot be sought in then; with "
                "--start,\n"
                "and what has its table of contents behind it (MPEG-4), is read to its end first, up to 2 GiB.\n"
                "Remotes and the desktop command it as what is now playing; whoever takes that role over pauses it.",
            .options =
                {
                    {"--start", "TIME", "begins the first medium at a position: 1:30, or milliseconds"},
                    {"--speed", "F", "plays at a factor of normal speed: 0.25 to 4, or -4 to -0.25 for backward"},
                    {"--volume", "F", "the volume: 0.5 or 50%"},
                    {"--repeat", "MODE", "none, track or all",
                     [] { return enumeratorNames<multimedia::RepeatMode>({"Unsupported"}); }},
                    {"--shuffle", nullptr, "plays several media in random order"},
                    {"--eq", "NAME", "an equalizer preset, for instance BassBoost or Rock",
                     [] { return enumeratorNames<multimedia::EqualizerPreset>(); }},
                    {"--window", "ID", "shows the video in a window of X11, by its number"},
                    {"--captions", "FILE", "a file of captions of this machine, shown in the window"},
                    {"--no-publish", nullptr, "does not show as what is now playing on the device"},
                    {"--json", nullptr, "prints every signal of the player as one JSON object a line"},
                },
            .keys = keyHelp,
        },
    .run = runPlay,
};

} // namespace voro
