// voro info: what a medium says of itself.

#include "Command.h"
#include "Display.h"
#include "InfoReader.h"
#include "Medium.h"
#include "Output.h"
#include "Problem.h"
#include "SignalPrinter.h"

#include <multimedia/MediaError.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QLocale>

#include <words/ErrorWords.h>

namespace voro {

namespace {

using multimedia::MediaError;

/** What MP4 files say of their own form, which is no news for people. */
const QStringList MarksOfContainers{QStringLiteral("compatible_brands"), QStringLiteral("major_brand"),
                                    QStringLiteral("minor_version")};

/** A line with a name and a value; nothing where there is no value. */
void printField(const QString &name, const QString &value)
{
    if (!value.isEmpty()) {
        print("  " + printable(name).toUtf8().leftJustified(13) + ' ' + printable(value).toUtf8() + '\n');
    }
}

QString timeOf(const QJsonValue &milliseconds)
{
    return timeText(static_cast<unsigned>(milliseconds.toDouble()));
}

QString languageOf(const QJsonObject &stream)
{
    const QString code = stream.value(QLatin1String("language")).toString();
    // "Undetermined", which files say that know nothing better.
    if (code == QLatin1String("und")) {
        return {};
    }
    const QLocale locale(code);
    const bool isKnown = locale.language() != QLocale::C;
    return isKnown ? QLocale::languageToString(locale.language()) : code;
}

/** A number of a stream with its unit; empty when the stream has none. */
QString measure(const QJsonObject &stream, const char *key, const char *unit, double divisor = 1)
{
    const double number = stream.value(QLatin1String(key)).toDouble();
    return number > 0 ? QString::number(number / divisor, 'g', 6) + QLatin1String(unit) : QString();
}

QString describe(const QJsonObject &stream)
{
    const QString width = measure(stream, "width", "");
    QStringList parts{
        stream.value(QLatin1String("kind")).toString(),
        stream.value(QLatin1String("codec")).toString(),
        width.isEmpty() ? width : width + QLatin1String(" x ") + measure(stream, "height", ""),
        measure(stream, "frameRate", " pictures a second"),
        measure(stream, "sampleRate", " Hz"),
        measure(stream, "channels", stream.value(QLatin1String("channels")) == 1 ? " channel" : " channels"),
        measure(stream, "bitRate", " kbit/s", 1000),
        languageOf(stream),
        stream.value(QLatin1String("title")).toString()};
    if (stream.value(QLatin1String("isCover")).toBool()) {
        parts.append(QStringLiteral("cover"));
    }
    parts.removeAll(QString());
    return parts.join(QLatin1String(", "));
}

void printForPeople(const Medium &medium, const QJsonObject &info)
{
    print(printable(medium.name).toUtf8() + '\n');
    printField(QStringLiteral("container"), info.value(QLatin1String("container")).toString());
    printField(QStringLiteral("size"), QLocale::c().formattedDataSize(info.value(QLatin1String("size")).toInteger(), 1,
                                                                      QLocale::DataSizeSIFormat));
    printField(QStringLiteral("duration"), timeOf(info.value(QLatin1String("duration"))));
    const QJsonObject tags = info.value(QLatin1String("tags")).toObject();
    for (auto tag = tags.begin(); tag != tags.end(); ++tag) {
        if (!MarksOfContainers.contains(tag.key())) {
            printField(tag.key(), tag.value().toString());
        }
    }
    int number = 0;
    for (const QJsonValue stream : info.value(QLatin1String("streams")).toArray()) {
        printField(QStringLiteral("stream %1").arg(++number), describe(stream.toObject()));
    }
    number = 0;
    for (const QJsonValue chapter : info.value(QLatin1String("chapters")).toArray()) {
        printField(QStringLiteral("chapter %1").arg(++number), timeOf(chapter[QLatin1String("start")])
                                                                   + QLatin1Char(' ')
                                                                   + chapter[QLatin1String("title")].toString());
    }
}

/** What the program beside this one finds in a file; empty for what is no medium. */
QJsonObject infoOf(const QString &path)
{
    InfoReader reader;
    reader.read(path);
    reader.waitForFinished(-1);
    QJsonObject info = reader.result();
    if (!info.isEmpty()) {
        info.insert(QLatin1String("size"), QFileInfo(path).size());
    }
    return info;
}

ExitStatus runInfo(const Arguments &arguments)
{
    if (arguments.operands().isEmpty()) {
        throw UsageError{QStringLiteral("FILE is missing")};
    }
    std::vector<Medium> media;
    for (const QByteArray &operand : arguments.operands()) {
        media.push_back(mediumFromArgument(operand));
        if (!media.back().url.isLocalFile()) {
            throw UsageError{QStringLiteral("'%1' is no file").arg(media.back().name)};
        }
    }
    QElapsedTimer time;
    time.start();
    ExitStatus status = Success;
    for (const Medium &medium : media) {
        const QJsonObject info = infoOf(medium.url.toLocalFile());
        if (info.isEmpty()) {
            const QString problem = fragment(errorSentence(MediaError::UnsupportedMediaType, medium.url));
            complain(QStringLiteral("info: %1: %2").arg(printable(medium.name), problem));
            status = Failure;
        } else if (arguments.has("--json")) {
            print(SignalPrinter::line(time.elapsed(), "info", {{"url", medium.url}, {"medium", info.toVariantMap()}}));
        } else {
            printForPeople(medium, info);
        }
    }
    return status;
}

} // namespace

const Command InfoCommand{
    .help =
        {
            .name = "info",
            .synopsis = "[--json] FILE...",
            .summary = "says what a medium is made of",
            .details = "Prints the container, the size, the duration and the tags of files, their streams with codec, "
                       "language\nand size, and their chapters. Nothing is played, and no daemon is needed.",
            .options = {{"--json", nullptr, "prints everything as one JSON object a file"}},
        },
    .run = runInfo,
};

} // namespace voro
