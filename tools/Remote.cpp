// voro remote: watches and commands whatever holds the device's now-playing role.

#include "Command.h"
#include "Display.h"
#include "LogFilter.h"
#include "Output.h"
#include "SignalPrinter.h"
#include "StopSignals.h"

#include <multimedia/MetaData.h>
#include <multimedia/NowPlayingController.h>

#include <QtCore/QCoreApplication>

#include <array>
#include <utility>

namespace voro {

namespace {

using multimedia::MediaError;
using multimedia::MediaState;
using multimedia::NowPlayingController;
using multimedia::RepeatMode;
using multimedia::ShuffleMode;
using Operands = QByteArrayList;

/** A command that is passed on, and how many operands it may have. */
struct Action {
    const char *name;
    qsizetype minimum;
    qsizetype maximum;
    const char *operand;
    MediaError::Type (*run)(NowPlayingController &controller, const Operands &operands);
};

template<MediaError::Type (NowPlayingController::*Function)()>
MediaError::Type plain(NowPlayingController &controller, const Operands &)
{
    return (controller.*Function)();
}

MediaError::Type setVolume(NowPlayingController &controller, const Operands &operands)
{
    return controller.setVolume(numberFrom("volume", operands.first(), 0, 1));
}

MediaError::Type setMute(NowPlayingController &controller, const Operands &operands)
{
    return controller.setMute(switchFrom("mute", operands.first()));
}

MediaError::Type repeat(NowPlayingController &controller, const Operands &operands)
{
    if (operands.isEmpty()) {
        return controller.repeat();
    }
    return controller.repeat(enumeratorFrom<RepeatMode>("repeat", operands.first(), {"Unsupported"}));
}

MediaError::Type shuffle(NowPlayingController &controller, const Operands &operands)
{
    if (operands.isEmpty()) {
        return controller.shuffle();
    }
    return controller.shuffle(enumeratorFrom<ShuffleMode>("shuffle", operands.first(), {"Unsupported"}));
}

constexpr std::array Actions{
    Action{"play", 0, 0, "", plain<&NowPlayingController::play>},
    Action{"pause", 0, 0, "", plain<&NowPlayingController::pause>},
    Action{"playpause", 0, 0, "", plain<&NowPlayingController::playPause>},
    Action{"stop", 0, 0, "", plain<&NowPlayingController::stop>},
    Action{"next", 0, 0, "", plain<&NowPlayingController::next>},
    Action{"previous", 0, 0, "", plain<&NowPlayingController::previous>},
    Action{"forward", 0, 0, "", plain<&NowPlayingController::forward>},
    Action{"rewind", 0, 0, "", plain<&NowPlayingController::rewind>},
    Action{"volume", 1, 1, "F", setVolume},
    Action{"volume-up", 0, 0, "", plain<&NowPlayingController::volumeUp>},
    Action{"volume-down", 0, 0, "", plain<&NowPlayingController::volumeDown>},
    Action{"mute", 1, 1, "on or off", setMute},
    Action{"repeat", 0, 1, "MODE", repeat},
    Action{"shuffle", 0, 1, "MODE", shuffle},
};

ExitStatus failed(MediaError::Type error)
{
    complain(QLatin1String("remote: ") + enumeratorName(error));
    return Failure;
}

/** A line "name: value" for a person. */
void printField(const char *name, const QVariant &value)
{
    print(QByteArray(name) + ": " + printable(value.toString()).toUtf8() + '\n');
}

void printMetaData(const QVariantMap &metaData)
{
    namespace M = multimedia::MetaData;
    for (const char *key : {M::Title, M::Artist, M::Album, M::Track}) {
        const QVariant value = metaData.value(QLatin1String(key));
        if (!value.toString().isEmpty()) {
            printField(key, value);
        }
    }
}

template<typename Enumeration>
void printEnumerator(const char *name, Enumeration value)
{
    printField(name, enumeratorName(value));
}

/** Tells every change, for a person or as JSON. */
void tellChanges(NowPlayingController &controller, bool json)
{
    using C = NowPlayingController;
    if (json) {
        new SignalPrinter(&controller, print, &controller);
        return;
    }
    const auto tell = [&controller](auto signal, auto function) {
        QObject::connect(&controller, signal, &controller, function);
    };
    tell(&C::mediaStateChanged, [](MediaState::Type state) { printEnumerator("state", state); });
    tell(&C::metaDataChanged, printMetaData);
    tell(qOverload<unsigned int>(&C::durationChanged), [](unsigned int duration) { printField("duration", duration); });
    tell(qOverload<unsigned int>(&C::positionChanged), [](unsigned int position) { printField("position", position); });
    tell(&C::iconUrlChanged, [](const QUrl &url) { printField("icon", url); });
    tell(&C::nextEnabledChanged, [](bool enabled) { printField("next", enabled); });
    tell(&C::previousEnabledChanged, [](bool enabled) { printField("previous", enabled); });
    tell(&C::repeatModeChanged, [](RepeatMode::Type mode) { printEnumerator("repeat", mode); });
    tell(&C::shuffleModeChanged, [](ShuffleMode::Type mode) { printEnumerator("shuffle", mode); });
    tell(&C::trackChanged, [] { print("another track\n"); });
}

/** Asks what is played; false when nobody answers. */
bool isServed(LogFilter &log)
{
    const StopSignals::AtOnce atOnce;
    const NowPlayingController controller;
    return log.run([&] { return controller.mediaState() == MediaState::Unprepared; }) == 0;
}

ExitStatus watch(LogFilter &log, bool json)
{
    StopSignals stopSignals;
    QObject::connect(&stopSignals, &StopSignals::stop, [] { QCoreApplication::exit(Success); });
    NowPlayingController controller;
    tellChanges(controller, json);
    if (!isServed(log)) {
        return failed(MediaError::Read);
    }
    return ExitStatus(QCoreApplication::exec());
}

/** Prints what is played, once. */
ExitStatus status(LogFilter &log, bool json)
{
    // While somebody listens the service has everything at hand for the getters of another controller.
    const NowPlayingController listener;
    QObject::connect(&listener, &NowPlayingController::trackChanged, &listener, [] {});
    if (!isServed(log)) {
        return failed(MediaError::Read);
    }
    const NowPlayingController controller;
    if (json) {
        print(SignalPrinter::line(0, "status",
                                  {{"mediaState", QVariant::fromValue(controller.mediaState())},
                                   {"metaData", controller.metaData()},
                                   {"duration", controller.duration()},
                                   {"position", controller.position()},
                                   {"iconUrl", controller.iconUrl()},
                                   {"nextEnabled", controller.isNextEnabled()},
                                   {"previousEnabled", controller.isPreviousEnabled()},
                                   {"repeatMode", QVariant::fromValue(controller.repeatMode())},
                                   {"shuffleMode", QVariant::fromValue(controller.shuffleMode())}}));
        return Success;
    }
    printEnumerator("state", controller.mediaState());
    printMetaData(controller.metaData());
    printField("duration", controller.duration());
    printField("position", controller.position());
    if (const QUrl icon = controller.iconUrl(); !icon.isEmpty()) {
        printField("icon", icon);
    }
    printField("next", controller.isNextEnabled());
    printField("previous", controller.isPreviousEnabled());
    printEnumerator("repeat", controller.repeatMode());
    printEnumerator("shuffle", controller.shuffleMode());
    return Success;
}

void checkOperands(const Action &action, const Operands &operands)
{
    if (operands.size() < action.minimum) {
        throw UsageError{
            QStringLiteral("%1: %2 is missing").arg(QLatin1String(action.name), QLatin1String(action.operand))};
    }
    if (operands.size() > action.maximum) {
        throw UsageError{QStringLiteral("%1: '%2' is too much")
                             .arg(QLatin1String(action.name), QString::fromLocal8Bit(operands.at(action.maximum)))};
    }
}

ExitStatus run(const Arguments &arguments)
{
    if (arguments.operands().isEmpty()) {
        throw UsageError{QStringLiteral("a command is missing")};
    }
    const QByteArray name = arguments.operands().first();
    const Operands operands = arguments.operands().mid(1);
    LogFilter log([] {});
    for (const auto &[report, function] : {std::pair("status", &status), std::pair("watch", &watch)}) {
        if (name == report) {
            checkOperands({report, 0, 0, "", nullptr}, operands);
            return function(log, arguments.has("--json"));
        }
    }
    for (const Action &action : Actions) {
        if (name != action.name) {
            continue;
        }
        checkOperands(action, operands);
        NowPlayingController controller;
        const MediaError::Type error = log.run([&] { return action.run(controller, operands); });
        return error == MediaError::None ? Success : failed(error);
    }
    throw UsageError{QStringLiteral("unknown command '%1'").arg(QString::fromLocal8Bit(name))};
}

} // namespace

const Command RemoteCommand{
    .help =
        {
            .name = "remote",
            .synopsis = "[--json] COMMAND",
            .summary = "watches and commands what is now playing",
            .details = "  play pause playpause stop next previous forward rewind\n"
                       "  volume F                 sets the volume, from 0 to 1\n"
                       "  volume-up volume-down    changes it by a step\n"
                       "  mute on|off\n"
                       "  repeat [none|track|all]  asks for a repeat mode, or for the next one\n"
                       "  shuffle [off|all]        asks for a shuffle mode, or for the next one\n"
                       "  status                   prints what is played\n"
                       "  watch                    prints every change until ^C",
            .options = {{"--json", nullptr, "prints status and changes as one JSON object a line"}},
        },
    .run = run,
};

} // namespace voro
