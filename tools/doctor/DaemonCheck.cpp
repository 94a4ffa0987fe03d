#include "DaemonCheck.h"

#include <QtCore/QCoreApplication>

#include <Folders.h>
#include <pps/DaemonRecord.h>
#include <pps/Runtime.h>
#include <Problem.h>

namespace voro::doctor {

std::vector<Finding> DaemonCheck::examine() const
{
    if (const QString problem = daemonProblem(); !problem.isEmpty()) {
        return {{Health::Missing, problem, QStringLiteral("start vorod in a terminal and read what it says")}};
    }
    std::string folder;
    const auto daemon = pps::runtimeFolder(folder) == 0 ? pps::runningDaemon(folder) : std::nullopt;
    const QString version = daemon ? QString::fromStdString(daemon->version) : QString();
    PpsObject contexts(QStringLiteral("/pps/services/multimedia/renderer/context/.list"));
    int count = 0;
    if (contexts.open(PpsOpenMode::Subscribe)) {
        readFolder(contexts, [&count](const QString &, bool isFolder) { count += isFolder; });
    }
    const QString text =
        QStringLiteral("the daemon answers: version %1, protocol %2, process %3, in %4; players and recorders: %5")
            .arg(version)
            .arg(daemon ? daemon->protocol : 0)
            .arg(daemon ? daemon->process : 0)
            .arg(QString::fromLocal8Bit(folder.c_str()))
            .arg(count);
    if (version != QCoreApplication::applicationVersion()) {
        return {{Health::Limited, text,
                 QStringLiteral("voro doctor --restart, because this program is version %1")
                     .arg(QCoreApplication::applicationVersion())}};
    }
    return {{Health::Good, text}};
}

} // namespace voro::doctor
