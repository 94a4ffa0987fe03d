#include "Media.h"

#include "Programs.h"

#include <QtCore/QDebug>

namespace media {

namespace {

/** The encoder where the extension alone does not say which. */
QStringList encoder(const QString &path)
{
    if (path.endsWith(QLatin1String(".ogg")) || path.endsWith(QLatin1String(".webm"))) {
        return {"-c:a", "libvorbis"};
    }
    if (path.endsWith(QLatin1String(".opus"))) {
        return {"-c:a", "libopus"};
    }
    if (path.endsWith(QLatin1String(".mkv"))) {
        return {"-c:a", "flac"};
    }
    return {};
}

} // namespace

QString makeTone(const QString &path, const Tone &tone)
{
    QStringList arguments = {
        "-nostdin",
        "-loglevel",
        "error",
        "-y",
        "-f",
        "lavfi",
        "-i",
        QStringLiteral("sine=frequency=%1:duration=%2:sample_rate=48000").arg(tone.frequency).arg(tone.seconds)};
    if (tone.hasPicture) {
        arguments += {"-f", "lavfi", "-i", QStringLiteral("testsrc2=size=64x48:rate=10:duration=%1").arg(tone.seconds)};
    }
    arguments += {"-ac", QString::number(tone.channels), "-af", "volume=4"};
    for (const QString &tag : tone.tags) {
        arguments += {"-metadata", tag};
    }
    arguments += encoder(path);
    arguments += QStringLiteral("file:") + path;

    if (!runToEnd(QStringLiteral("ffmpeg"), arguments)) {
        qFatal("The encoder failed for %s", qUtf8Printable(path));
    }
    return path;
}

} // namespace media
