// voro sound: plays a system sound.

#include "Command.h"
#include "Output.h"
#include "Problem.h"

#include <multimedia/SystemSound.h>
#include <voro/PpsObject.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

namespace voro {

namespace {

using multimedia::SystemSound;

ExitStatus list()
{
    for (const QByteArray &name : enumeratorNames<SystemSound>({"None"})) {
        print(name + '\n');
    }
    return Success;
}

/** Whether the service tells that there is no sound server, which may keep it waiting. */
bool isSilent(PpsObject &status)
{
    constexpr int Patience = 2'000;
    QEventLoop loop;
    bool isSilent = false;
    QObject::connect(&status, &PpsObject::readyRead, &loop, [&] {
        const QVariantMap objects = PpsObject::decode(status.read());
        isSilent = objects.value(QStringLiteral("@status")).toMap().value(QStringLiteral("silent")).toBool();
        loop.quit();
    });
    QTimer::singleShot(Patience, &loop, &QEventLoop::quit);
    loop.exec();
    return isSilent;
}

ExitStatus play(SystemSound::Type type)
{
    PpsObject status(QStringLiteral("/pps/services/multimedia/sound/status"));
    status.open(PpsOpenMode::Subscribe);
    // What became of an earlier sound.
    status.read();
    SystemSound sound;
    const bool isRefused = !sound.setSound(type);
    sound.play();
    if (isRefused) {
        const QString problem = daemonProblem();
        complain(QLatin1String("sound: ")
                 + (problem.isEmpty() ? QStringLiteral("there is no sound service") : problem));
    } else if (isSilent(status)) {
        complain(QStringLiteral("sound: ") + QLatin1String(NoSoundServer));
    }
    return isRefused ? Failure : Success;
}

ExitStatus runSound(const Arguments &arguments)
{
    const QByteArrayList &operands = arguments.operands();
    if (operands.isEmpty()) {
        throw UsageError{QStringLiteral("NAME or list is missing")};
    }
    if (operands.size() > 1) {
        throw UsageError{QStringLiteral("'%1' is too much").arg(QString::fromLocal8Bit(operands.at(1)))};
    }
    if (operands.first() == "list") {
        return list();
    }
    return play(enumeratorFrom<SystemSound>("NAME", operands.first(), {"None"}));
}

} // namespace

const Command SoundCommand{
    .help =
        {
            .name = "sound",
            .synopsis = "NAME|list",
            .summary = "plays a system sound",
            .details = "  NAME    plays the system sound of that name\n"
                       "  list    prints the names",
            .options = {},
            .words = [] { return enumeratorNames<SystemSound>({"None"}) << "list"; },
        },
    .run = runSound,
};

} // namespace voro
