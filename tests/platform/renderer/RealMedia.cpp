#include "RealMedia.h"

#include <QtCore/QProcess>

namespace media {

void encode(const QString &path, const QString &graph, const QStringList &arguments)
{
    QProcess encoder;
    encoder.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const QStringList input = {"-nostdin", "-loglevel", "error", "-y", "-f", "lavfi", "-i", graph};
    encoder.start(QStringLiteral("ffmpeg"), input + arguments + QStringList(QStringLiteral("file:") + path));
    // As long as the test itself may take.
    if (!encoder.waitForFinished(300'000) || encoder.exitStatus() != QProcess::NormalExit || encoder.exitCode() != 0) {
        qFatal("cannot encode %s", qUtf8Printable(path));
    }
}

QString silenceThenNoise(int seconds)
{
    return QStringLiteral("aevalsrc='if(lt(t,%1),0,random(0)-0.5)':duration=%2:sample_rate=44100")
        .arg(seconds / 2.0)
        .arg(seconds);
}

} // namespace media
