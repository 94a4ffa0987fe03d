// voro demo: shows the player application.

#include "Command.h"
#include "Medium.h"
#include "Output.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>

#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace voro {

namespace {

/** Whether a window has somewhere to go; a platform plugin that was chosen knows by itself. */
bool hasDisplay()
{
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (!qEnvironmentVariableIsEmpty(name)) {
            return true;
        }
    }
    return false;
}

ExitStatus fail(const QString &reason)
{
    complain(QStringLiteral("demo: ") + reason);
    return Failure;
}

ExitStatus runDemo(const Arguments &arguments)
{
    QByteArrayList media;
    for (const QByteArray &operand : arguments.operands()) {
        media += mediumFromArgument(operand).url.toEncoded();
    }
    if (media.isEmpty()) {
        media += sampleMedium().url.toEncoded();
    }

    if (!hasDisplay()) {
        return fail(QStringLiteral("there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set"));
    }
    QByteArray player = QFile::encodeName(QCoreApplication::applicationDirPath() + QStringLiteral("/voro-player"));
    std::vector<char *> command{player.data()};
    for (QByteArray &medium : media) {
        command.push_back(medium.data());
    }
    command.push_back(nullptr);
    execv(player.constData(), command.data());
    return fail(errno == ENOENT ? QStringLiteral("the application voro-player is not installed")
                                : QStringLiteral("%1: %2").arg(QFile::decodeName(player),
                                                               QString::fromLocal8Bit(std::strerror(errno))));
}

} // namespace

const Command DemoCommand{
    .help =
        {
            .name = "demo",
            .synopsis = "[FILE|FOLDER|URL...]",
            .summary = "shows the player application",
            .details = "  FILE, URL    what it plays, one after the other; without any the sample that comes with the "
                       "program\n"
                       "  FOLDER       the folder that it shows; beside files what is in it plays, too",
            .options = {},
        },
    .run = runDemo,
};

} // namespace voro
