// The command line program `voro`: finds the command, checks its arguments, runs it.

#include "Command.h"
#include "LogFilter.h"
#include "Output.h"

#include <QtCore/QCoreApplication>

#include <langinfo.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace voro {

namespace {

QByteArray generalHelp()
{
    QByteArray text = "usage: voro COMMAND [ARGUMENT...]\n\nPlays and records media and shows what happens inside.\n\n";
    for (const Command *command : allCommands()) {
        text += "  " + QByteArray(command->help.name).leftJustified(12) + command->help.summary + '\n';
    }
    return text
           + "\n  voro COMMAND --help   says more about a command\n"
             "  voro help COMMAND     the same\n"
             "  voro --version        says which version this is\n\n"
             "The exit status is 0 on success, 1 on an error, 2 when the arguments are unusable.\n";
}

const Command &findCommand(const QByteArray &name)
{
    QByteArrayList names;
    for (const Command *command : allCommands()) {
        if (name == command->help.name) {
            return *command;
        }
        names.append(command->help.name);
    }
    refuseUnknown(name.startsWith('-') ? "option" : "command", name, names);
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

ExitStatus run(const Command &command, const QByteArrayList &raw, int argc, char *argv[])
{
    try {
        const Arguments arguments(command.help, raw);
        if (arguments.wantsHelp()) {
            print(helpText(command.help));
            return Success;
        }
        const QCoreApplication application(argc, argv);
        QCoreApplication::setApplicationName(QStringLiteral("voro"));
        QCoreApplication::setApplicationVersion(QStringLiteral(VORO_VERSION));
        const LogFilter log;
        return command.run(arguments);
    } catch (const UsageError &error) {
        const QByteArray name = command.help.name;
        return refuse(name + QLatin1String(": ") + error.reason, name + ' ');
    }
}

ExitStatus run(int argc, char *argv[])
{
    QByteArrayList arguments(argv + 1, argv + argc);
    if (arguments.isEmpty()) {
        std::fputs(generalHelp().constData(), stderr);
        return Unusable;
    }
    QByteArray name = arguments.takeFirst();
    if (name == "help" && !arguments.isEmpty()) {
        name = arguments.takeFirst();
        arguments.prepend("--help");
    }
    const bool wantsHelp = name == "help" || name == "--help" || name == "-h";
    if (wantsHelp || name == "--version") {
        if (!arguments.isEmpty()) {
            return refuse(QStringLiteral("%1 stands alone").arg(QLatin1String(name)), {});
        }
        print(wantsHelp ? generalHelp() : QByteArray("voro " VORO_VERSION "\n"));
        return Success;
    }
    try {
        return run(findCommand(name), arguments, argc, argv);
    } catch (const UsageError &error) {
        return refuse(error.reason, {});
    }
}

} // namespace

} // namespace voro

int main(int argc, char *argv[])
{
    voro::useUtf8();
    return voro::run(argc, argv);
}
