#include "Media.h"

#include "Programs.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMap>

namespace media {

void encode(const QString &path, const QString &graph, const QStringList &arguments)
{
    const QStringList input = {"-nostdin", "-loglevel", "error", "-y", "-f", "lavfi", "-i", graph};
    if (!runToEnd(QStringLiteral("ffmpeg"), input + arguments + QStringList(QStringLiteral("file:") + path))) {
        qFatal("cannot encode %s", qUtf8Printable(path));
    }
}

QString makeTone(const QString &path, const Tone &tone)
{
    // Where the extension alone does not say which.
    const QMap<QString, QString> encoders{{"ogg", "libvorbis"}, {"opus", "libopus"}, {"mkv", "flac"}};
    QString graph = QStringLiteral("sine=frequency=%1:duration=%2:sample_rate=48000,volume=4[out0]")
                        .arg(tone.frequency)
                        .arg(tone.seconds);
    if (tone.hasPicture) {
        graph += QStringLiteral(";testsrc2=size=64x48:rate=10:duration=%1[out1]").arg(tone.seconds);
    }
    QStringList arguments = {"-ac", QString::number(tone.channels)};
    for (const QString &tag : tone.tags) {
        arguments += {"-metadata", tag};
    }
    if (const QString encoder = encoders.value(QFileInfo(path).suffix()); !encoder.isEmpty()) {
        arguments += {"-c:a", encoder};
    }
    encode(path, graph, arguments);
    return path;
}

} // namespace media
