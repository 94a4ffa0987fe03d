// voro doctor: says which daemon runs, and replaces it.

#include "Command.h"
#include "Output.h"

#include <voro/PpsObject.h>

#include <QtCore/QCoreApplication>

#include <pps/Announcement.h>
#include <pps/Runtime.h>

namespace voro {

namespace {

/** How long, in milliseconds, a daemon may take to end in order. */
constexpr int LongestEnd = 10'000;

ExitStatus failed(const QString &problem)
{
    complain(QLatin1String("doctor: ") + problem);
    return Failure;
}

void report(const std::string &folder)
{
    const auto daemon = pps::runningDaemon(folder);
    if (!daemon) {
        print(QByteArray("daemon: none runs in ") + folder.c_str() + "; the first application starts it\n");
        return;
    }
    print("daemon: version " + QByteArray::fromStdString(daemon->version) + ", protocol "
          + QByteArray::number(daemon->protocol) + ", process " + QByteArray::number(daemon->process) + ", in "
          + folder.c_str() + '\n');
    if (const QString ours = QCoreApplication::applicationVersion(); QString::fromStdString(daemon->version) != ours) {
        print("        this program is version " + ours.toUtf8() + "; voro doctor --restart replaces the daemon\n");
    }
}

ExitStatus run(const Arguments &arguments)
{
    if (!arguments.operands().isEmpty()) {
        throw UsageError{QStringLiteral("'%1' is too much").arg(QString::fromLocal8Bit(arguments.operands().first()))};
    }
    std::string folder;
    if (const int error = pps::runtimeFolder(folder)) {
        return failed(QString::fromStdString(pps::runtimeProblem(folder, error)));
    }
    if (arguments.has("--restart")) {
        if (const auto daemon = pps::runningDaemon(folder)) {
            pps::askToEnd(*daemon, pps::Ending::Now);
            if (!pps::waitForEnd(*daemon, LongestEnd)) {
                return failed(QStringLiteral("process %1 does not end").arg(daemon->process));
            }
        }
        // Whoever opens something has it started.
        PpsObject any(QStringLiteral("/pps/.list"));
        if (!any.open(PpsOpenMode::Subscribe)) {
            return failed(QStringLiteral("no other daemon answers: %1").arg(any.errorString()));
        }
    }
    report(folder);
    return Success;
}

} // namespace

const Command DoctorCommand{
    .help =
        {
            .name = "doctor",
            .synopsis = "[--restart]",
            .summary = "says which daemon runs, and replaces it",
            .details = "  Says which version of the daemon runs and where, and whether this program is of another one.",
            .options =
                {
                    {"--restart", nullptr,
                     "ends the daemon in order and starts the installed one; players go on with their next command"},
                },
        },
    .run = run,
};

} // namespace voro
