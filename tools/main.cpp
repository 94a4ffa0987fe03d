// The command line program `voro`: finds the command, checks its arguments, runs it.

#include "Command.h"
#include "Output.h"

#include <QtCore/QCoreApplication>

#include <langinfo.h>

#include <array>
#include <clocale>
#include <cstdlib>
#include <cstring>

namespace voro {

namespace {

const std::array Commands{&PlayCommand,  &RecordCommand, &PublishCommand, &RemoteCommand, &KeysCommand,
                          &SoundCommand, &DemoCommand,   &DoctorCommand,  &PpsCommand};

QByteArray generalHelp()
{
    QByteArray text = "usage: voro COMMAND [ARGUMENT...]\n\nPlays and records media and shows what happens inside.\n\n";
    for (const Command *command : Commands) {
        text += "  " + QByteArray(command->help.name).leftJustified(10) + command->help.summary + '\n';
    }
    return text
           + "\n  voro COMMAND --help   says more about a command\n"
             "  voro --version        says which version this is\n\n"
             "The exit status is 0 on success, 1 on an error, 2 when the arguments are unusable.\n";
}

const Command *findCommand(const QByteArray &name)
{
    for (const Command *command : Commands) {
        if (name == command->help.name) {
            return command;
        }
    }
    return nullptr;
}

/** Qt wants UTF-8 and says so at length; a machine without a locale set gets it without the speech. */
void useUtf8()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
        setenv("LC_ALL", "C.UTF-8", 1);
    }
}

ExitStatus refuse(const QString &reason, const QByteArray &command)
{
    complain(reason + QStringLiteral(" (see voro %1--help)").arg(QLatin1String(command)));
    return Unusable;
}

ExitStatus run(int argc, char *argv[])
{
    const QByteArrayList arguments(argv + 1, argv + argc);
    if (arguments.isEmpty()) {
        return refuse(QStringLiteral("a command is missing"), {});
    }
    const QByteArray &name = arguments.first();
    if (name == "--help" || name == "--version") {
        if (arguments.size() > 1) {
            return refuse(QStringLiteral("%1 stands alone").arg(QLatin1String(name)), {});
        }
        print(name == "--help" ? generalHelp() : QByteArray("voro " VORO_VERSION "\n"));
        return Success;
    }
    const Command *command = findCommand(name);
    if (!command) {
        return refuse(QStringLiteral("unknown %1 '%2'")
                          .arg(name.startsWith('-') ? QLatin1String("option") : QLatin1String("command"),
                               QString::fromLocal8Bit(name)),
                      {});
    }
    try {
        const Arguments parsed(command->help, arguments.mid(1));
        if (parsed.wantsHelp()) {
            print(helpText(command->help));
            return Success;
        }
        const QCoreApplication application(argc, argv);
        QCoreApplication::setApplicationName(QStringLiteral("voro"));
        QCoreApplication::setApplicationVersion(QStringLiteral(VORO_VERSION));
        return command->run(parsed);
    } catch (const UsageError &error) {
        return refuse(name + QLatin1String(": ") + error.reason, name + ' ');
    }
}

} // namespace

} // namespace voro

int main(int argc, char *argv[])
{
    voro::useUtf8();
    return voro::run(argc, argv);
}
