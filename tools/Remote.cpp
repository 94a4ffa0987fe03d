// voro remote: watches and commands whatever holds the device's now-playing role.

#include "Command.h"
#include "Display.h"
#include "Output.h"
#include "Problem.h"
#include "SignalPrinter.h"
#include "StopSignals.h"

#include <multimedia/MetaData.h>
#include <multimedia/NowPlayingController.h>
#include <voro/PpsObject.h>

#include <QtCore/QCoreApplication>

#include <array>
#include <cstdlib>
#include <functional>
#include <utility>

namespace voro {

namespace {

using multimedia::MediaError;
using multimedia::MediaState;
using multimedia::NowPlayingController;
using multimedia::RepeatMode;
using multimedia::ShuffleMode;
using Operands = QByteArrayList;

using Task = std::function<MediaError::Type(NowPlayingController &controller)>;

constexpr QLatin1String ControllerService("/pps/services/multimedia/mediacontroller/control?wait");

/** A command that is passed on, and how many operands it may have. */
struct Action {
    const char *name;
    qsizetype minimum;
    qsizetype maximum;
    const char *operand;
    /** Makes the task of the operands; throws UsageError when they are unusable. */
    Task (*prepare)(const Operands &operands);
    /** Whether it is the device that does it, whoever plays. */
    bool isForDevice = false;
};

template<MediaError::Type (NowPlayingController::*Function)()>
Task plain(const Operands &)
{
    return [](NowPlayingController &controller) { return (controller.*Function)(); };
}

/** Changes the volume by a number of percent, as "+7%"; the library's commands change it by a step. */
Task changeVolume(const QByteArray &text)
{
    bool isNumber = false;
    const int change = text.endsWith('%') ? text.chopped(1).toInt(&isNumber) : 0;
    if (!isNumber || std::abs(change) > 100) {
        throw UsageError{
            QStringLiteral("volume: '%1' is not a change by up to 100%, as +10%").arg(QString::fromLocal8Bit(text))};
    }
    return [change](NowPlayingController &) {
        PpsObject control(ControllerService);
        const QVariantMap message{{QStringLiteral("msg"), QLatin1String(change < 0 ? "v_down" : "v_up")},
                                  {QStringLiteral("dat"), std::abs(change)}};
        const bool isTaken = control.open(PpsOpenMode::PublishSubscribe) && control.write(PpsObject::encode(message));
        return isTaken ? MediaError::None : MediaError::Write;
    };
}

Task setVolume(const Operands &operands)
{
    const QByteArray &text = operands.first();
    if (text.startsWith('+') || text.startsWith('-')) {
        return changeVolume(text);
    }
    return [volume = volumeFrom("volume", text)](NowPlayingController &controller) {
        return controller.setVolume(volume);
    };
}

Task setMute(const Operands &operands)
{
    return [isMuted = switchFrom("mute", operands.first())](NowPlayingController &controller) {
        return controller.setMute(isMuted);
    };
}

Task repeat(const Operands &operands)
{
    if (operands.isEmpty()) {
        return [](NowPlayingController &controller) { return controller.repeat(); };
    }
    const auto mode = enumeratorFrom<RepeatMode>("repeat", operands.first(), {"Unsupported"});
    return [mode](NowPlayingController &controller) { return controller.repeat(mode); };
}

Task shuffle(const Operands &operands)
{
    if (operands.isEmpty()) {
        return [](NowPlayingController &controller) { return controller.shuffle(); };
    }
    const auto mode = enumeratorFrom<ShuffleMode>("shuffle", operands.first(), {"Unsupported"});
    return [mode](NowPlayingController &controller) { return controller.shuffle(mode); };
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
    Action{"volume", 1, 1, "F", setVolume, true},
    Action{"volume-up", 0, 0, "", plain<&NowPlayingController::volumeUp>, true},
    Action{"volume-down", 0, 0, "", plain<&NowPlayingController::volumeDown>, true},
    Action{"mute", 1, 1, "on or off", setMute, true},
    Action{"repeat", 0, 1, "MODE", repeat},
    Action{"shuffle", 0, 1, "MODE", shuffle},
};

ExitStatus failed(MediaError::Type error)
{
    complain(QLatin1String("remote: ") + problemOf(error));
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
    tell(qOverload<unsigned int>(&C::durationChanged),
         [](unsigned int duration) { printField("duration", timeText(duration)); });
    tell(qOverload<unsigned int>(&C::positionChanged),
         [](unsigned int position) { printField("position", timeText(position)); });
    tell(&C::iconUrlChanged, [](const QUrl &url) { printField("icon", url); });
    tell(&C::nextEnabledChanged, [](bool enabled) { printField("next", enabled); });
    tell(&C::previousEnabledChanged, [](bool enabled) { printField("previous", enabled); });
    tell(&C::repeatModeChanged, [](RepeatMode::Type mode) { printEnumerator("repeat", mode); });
    tell(&C::shuffleModeChanged, [](ShuffleMode::Type mode) { printEnumerator("shuffle", mode); });
    tell(&C::trackChanged, [] { print("another track\n"); });
}

/** Asks what is played; false when nobody answers. */
bool isServed()
{
    const StopSignals::AtOnce atOnce;
    const NowPlayingController controller;
    return controller.mediaState() != MediaState::Unprepared;
}

/** Whether somebody plays who can be commanded. */
bool hasSource()
{
    const StopSignals::AtOnce atOnce;
    PpsObject control(ControllerService);
    bool isRead = control.open(PpsOpenMode::PublishSubscribe) && control.write("msg::md_subscribe\n");
    while (isRead) {
        const QVariantMap objects = PpsObject::decode(control.read(&isRead));
        const QVariantMap message = objects.value(QStringLiteral("@control")).toMap();
        if (message.value(QStringLiteral("msg")) == QLatin1String("m_active_pid")) {
            return message.value(QStringLiteral("dat")).toInt() != 0;
        }
    }
    return false;
}

ExitStatus watch(bool json)
{
    StopSignals stopSignals;
    QObject::connect(&stopSignals, &StopSignals::stop, [] { QCoreApplication::exit(Success); });
    NowPlayingController controller;
    tellChanges(controller, json);
    if (!isServed()) {
        return failed(MediaError::Read);
    }
    return ExitStatus(QCoreApplication::exec());
}

/** Prints what is played, once. */
ExitStatus status(bool json)
{
    // While somebody listens the service has everything at hand for the getters of another controller.
    const NowPlayingController listener;
    QObject::connect(&listener, &NowPlayingController::trackChanged, &listener, [] {});
    if (!isServed()) {
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
    printField("duration", timeText(controller.duration()));
    printField("position", timeText(controller.position()));
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

ExitStatus perform(const Action &action, const Operands &operands)
{
    const Task task = action.prepare(operands);
    NowPlayingController controller;
    const bool isHeard = action.isForDevice || hasSource();
    MediaError::Type error = task(controller);
    if (error == MediaError::None && !isHeard) {
        // The first command makes the service look for players on the session bus, and is lost.
        if (!hasSource()) {
            complain(QStringLiteral("remote: nothing plays that could be commanded"));
            return Failure;
        }
        error = task(controller);
    }
    return error == MediaError::None ? Success : failed(error);
}

QByteArrayList commandNames()
{
    return namesOf(Actions) << "status"
                            << "watch";
}

ExitStatus runRemote(const Arguments &arguments)
{
    if (arguments.operands().isEmpty()) {
        throw UsageError{QStringLiteral("a command is missing")};
    }
    const QByteArray name = arguments.operands().first();
    const Operands operands = arguments.operands().mid(1);
    for (const auto &[report, function] : {std::pair("status", &status), std::pair("watch", &watch)}) {
        if (name == report) {
            checkOperands({report, 0, 0, "", nullptr}, operands);
            return function(arguments.has("--json"));
        }
    }
    for (const Action &action : Actions) {
        if (name != action.name) {
            continue;
        }
        checkOperands(action, operands);
        return perform(action, operands);
    }
    refuseUnknown("command", name, commandNames());
}

} // namespace

const Command RemoteCommand{
    .help =
        {
            .name = "remote",
            .synopsis = "[--json] COMMAND",
            .summary = "watches and commands what is now playing",
            .details = "  play pause playpause stop next previous forward rewind\n"
                       "  volume F                 sets the volume: 0.5 or 50%, or changes it: +7% or -7%\n"
                       "  volume-up volume-down    changes it by 5%\n"
                       "  mute on|off\n"
                       "  repeat [none|track|all]  asks for a repeat mode, or for the next one\n"
                       "  shuffle [off|all]        asks for a shuffle mode, or for the next one\n"
                       "  status                   prints what is played\n"
                       "  watch                    prints every change until ^C",
            .options = {{"--json", nullptr, "prints status and changes as one JSON object a line"}},
            .words = commandNames,
        },
    .run = runRemote,
};

} // namespace voro
