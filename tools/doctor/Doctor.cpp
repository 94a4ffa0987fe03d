// voro doctor: says what works on this machine, what does not, and what to do about it.

#include "BusCheck.h"
#include "CodecsCheck.h"
#include "ConfinementCheck.h"
#include "DaemonCheck.h"
#include "KeysCheck.h"
#include "Restart.h"
#include "SoundCheck.h"
#include "WindowCheck.h"

#include <QtCore/QElapsedTimer>

#include <Command.h>
#include <Display.h>
#include <Output.h>
#include <SignalPrinter.h>

#include <array>
#include <memory>

namespace voro {

namespace {

using doctor::Check;
using doctor::Finding;
using doctor::Health;

std::vector<std::unique_ptr<Check>> allChecks()
{
    std::vector<std::unique_ptr<Check>> checks;
    checks.push_back(std::make_unique<doctor::DaemonCheck>());
    checks.push_back(std::make_unique<doctor::SoundCheck>());
    checks.push_back(std::make_unique<doctor::CodecsCheck>());
    checks.push_back(std::make_unique<doctor::BusCheck>());
    checks.push_back(std::make_unique<doctor::KeysCheck>());
    checks.push_back(std::make_unique<doctor::WindowCheck>());
    checks.push_back(std::make_unique<doctor::ConfinementCheck>());
    return checks;
}

QByteArrayList checkNames()
{
    QByteArrayList names;
    for (const auto &check : allChecks()) {
        names.append(check->name());
    }
    return names;
}

constexpr std::array HealthNames{"good", "limited", "missing"};

const char *nameOf(Health health)
{
    return HealthNames[static_cast<size_t>(health)];
}

void printForPeople(const Check &check, const Finding &finding)
{
    const QByteArray mark = QByteArray(nameOf(finding.health)).leftJustified(9);
    print(mark + QByteArray(check.name()).leftJustified(13) + printable(finding.text).toUtf8() + '\n');
    if (!finding.remedy.isEmpty()) {
        print(QByteArray(22, ' ') + "try: " + printable(finding.remedy).toUtf8() + '\n');
    }
}

ExitStatus runDoctor(const Arguments &arguments)
{
    const auto checks = allChecks();
    const QByteArrayList &wanted = arguments.operands();
    for (const QByteArray &name : wanted) {
        if (!checkNames().contains(name)) {
            refuseUnknown("check", name, checkNames());
        }
    }
    if (arguments.has("--restart")) {
        if (const QString problem = doctor::restartDaemon(); !problem.isEmpty()) {
            complain(QLatin1String("doctor: ") + problem);
            return Failure;
        }
    }
    QElapsedTimer time;
    time.start();
    ExitStatus status = Success;
    for (const auto &check : checks) {
        if (!wanted.isEmpty() && !wanted.contains(check->name())) {
            continue;
        }
        for (const Finding &finding : check->examine()) {
            if (finding.health == Health::Missing) {
                status = Failure;
            }
            if (arguments.has("--json")) {
                print(SignalPrinter::line(time.elapsed(), "finding",
                                          {{"check", QLatin1String(check->name())},
                                           {"health", QLatin1String(nameOf(finding.health))},
                                           {"text", finding.text},
                                           {"remedy", finding.remedy}}));
            } else {
                printForPeople(*check, finding);
            }
        }
    }
    return status;
}

} // namespace

const Command DoctorCommand{
    .help =
        {
            .name = "doctor",
            .synopsis = "[OPTION...] [CHECK...]",
            .summary = "says what works on this machine and what to do about the rest",
            .details =
                "Examines everything, or what is named:\n\n"
                "  daemon         whether the daemon answers\n"
                "  sound          whether media are heard, and whether there is an input to record from\n"
                "  codecs         the formats that play and can be recorded, and the packages that bring others\n"
                "  bus            the session bus, by which desktops show and command what is playing\n"
                "  keys           the devices that media keys come from\n"
                "  window         the display for films\n"
                "  confinement    what the kernel has to confine workers\n\n"
                "Each finding is good, limited (something works less well than it could) or missing. The exit "
                "status is 1\nwhen something is missing.",
            .options =
                {
                    {"--restart", nullptr,
                     "first ends the daemon in order and starts the installed one; players go on with their next "
                     "command"},
                    {"--json", nullptr, "prints every finding as one JSON object a line"},
                },
            .words = checkNames,
        },
    .run = runDoctor,
};

} // namespace voro
