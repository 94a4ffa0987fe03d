#include "RealMedia.h"

#include <Files.h>
#include <Programs.h>

namespace media {

void encode(const QString &path, const QString &graph, const QStringList &arguments)
{
    const QStringList input = {"-nostdin", "-loglevel", "error", "-y", "-f", "lavfi", "-i", graph};
    if (!runToEnd(QStringLiteral("ffmpeg"), input + arguments + QStringList(QStringLiteral("file:") + path))) {
        qFatal("cannot encode %s", qUtf8Printable(path));
    }
}

void Folder::write(const QByteArray &name, const QByteArray &content) const
{
    writeFile(QString::fromUtf8(file(name)), content);
}

QByteArray Folder::content(const QByteArray &name) const
{
    return readFile(QString::fromUtf8(file(name)));
}

void Folder::encode(const QByteArray &name, const QString &graph, const QStringList &arguments) const
{
    media::encode(QString::fromUtf8(file(name)), graph, arguments);
}

QString silenceThenNoise(int seconds)
{
    return QStringLiteral("aevalsrc='if(lt(t,%1),0,random(0)-0.5)':duration=%2:sample_rate=44100")
        .arg(seconds / 2.0)
        .arg(seconds);
}

} // namespace media
