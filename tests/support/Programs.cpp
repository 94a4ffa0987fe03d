#include "Programs.h"

#include <QtCore/QProcess>

namespace {

/** As long as a test itself may take. */
constexpr int PatienceMs = 300'000;

} // namespace

std::optional<QByteArray> runToEnd(const QString &program, const QStringList &arguments, const QString &folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    if (!process.waitForFinished(PatienceMs) || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0) {
        qWarning("%s %s failed", qUtf8Printable(program), qUtf8Printable(arguments.join(QLatin1Char(' '))));
        return std::nullopt;
    }
    return process.readAllStandardOutput();
}

QByteArray decoded(const QString &file, int rate)
{
    return runToEnd(QStringLiteral("ffmpeg"), {"-v", "error", "-nostdin", "-i", file, "-f", "s16le", "-ac", "1", "-ar",
                                               QString::number(rate), "-"})
        .value_or(QByteArray());
}
