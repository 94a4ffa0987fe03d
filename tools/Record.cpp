// voro record: the command's arguments.

#include "Command.h"
#include "Recording.h"

#include <QtCore/QFileInfo>

#include <cmath>

namespace voro {

namespace {

constexpr double LeastSeconds = 0.001;
constexpr double MostSeconds = 7 * 24 * 60 * 60;

Medium fileFrom(const Arguments &arguments)
{
    if (arguments.operands().isEmpty()) {
        throw UsageError{QStringLiteral("FILE is missing")};
    }
    if (arguments.operands().size() > 1) {
        throw UsageError{QStringLiteral("'%1' is too much").arg(QString::fromLocal8Bit(arguments.operands().at(1)))};
    }
    const QByteArray &operand = arguments.operands().first();
    Medium file = newFileFromArgument(operand);
    const QString given = QString::fromLocal8Bit(operand);
    const QFileInfo present(file.url.toLocalFile());
    if (present.isDir()) {
        throw UsageError{QStringLiteral("'%1' is a folder").arg(given)};
    }
    // A link that leads nowhere is not followed unasked either.
    if ((present.exists() || present.isSymLink()) && !arguments.has("--force")) {
        throw UsageError{QStringLiteral("'%1' exists; --force replaces it").arg(given)};
    }
    return file;
}

ExitStatus runRecord(const Arguments &arguments)
{
    RecordingSettings settings;
    if (const auto seconds = arguments.number("--seconds", LeastSeconds, MostSeconds)) {
        settings.length = static_cast<unsigned>(std::lround(*seconds * 1000));
    }
    settings.channels =
        arguments.enumerator<multimedia::AudioChannelConfiguration>("--channels").value_or(settings.channels);
    settings.json = arguments.has("--json");
    settings.file = fileFrom(arguments);
    return Recording(std::move(settings)).run();
}

} // namespace

const Command RecordCommand{
    .help =
        {
            .name = "record",
            .synopsis = "[OPTION...] FILE",
            .summary = "records the audio input into a file",
            .details = "Records the audio input into a file, whose extension (wav, ogg, opus, flac, mp3, m4a, amr) "
                       "chooses the\n"
                       "format. It ends after --seconds, with ^C or with q, and the file is complete then. On a "
                       "terminal space\n"
                       "pauses and goes on.",
            .options =
                {
                    {"--seconds", "N", "ends when so many seconds are recorded"},
                    {"--channels", "NAME", "default, mono or stereo",
                     [] { return enumeratorNames<multimedia::AudioChannelConfiguration>(); }},
                    {"--force", nullptr, "replaces a file that exists"},
                    {"--json", nullptr, "prints every signal of the recorder as one JSON object a line"},
                },
        },
    .run = runRecord,
};

} // namespace voro
