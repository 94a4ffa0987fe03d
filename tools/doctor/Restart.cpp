#include "Restart.h"

#include <pps/DaemonRecord.h>
#include <pps/Runtime.h>
#include <Problem.h>

namespace voro::doctor {

namespace {

/** How long, in milliseconds, a daemon may take to end in order. */
constexpr int LongestEnd = 10'000;

} // namespace

QString restartDaemon()
{
    std::string folder;
    if (const int error = pps::runtimeFolder(folder)) {
        return QString::fromStdString(pps::runtimeProblem(folder, error));
    }
    if (const auto daemon = pps::runningDaemon(folder)) {
        pps::askToEnd(*daemon, pps::Ending::Now);
        if (!pps::waitForEnd(*daemon, LongestEnd)) {
            return QStringLiteral("process %1 does not end").arg(daemon->process);
        }
    }
    // Whoever opens something has it started.
    return daemonProblem();
}

} // namespace voro::doctor
