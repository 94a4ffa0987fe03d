// voro keys: tells of presses of a media key, and puts presses in.

#include "Command.h"
#include "Output.h"
#include "SignalPrinter.h"
#include "StopSignals.h"

#include <multimedia/MediaKeyWatcher.h>
#include <voro/PpsObject.h>

#include <QtCore/QCoreApplication>

#include <cerrno>

namespace voro {

namespace {

using multimedia::MediaKey;
using multimedia::MediaKeyNotification;
using multimedia::MediaKeyWatcher;

/** How long a press lasts unless it is said. */
constexpr unsigned TapMs = 100;

ExitStatus failed(const QString &problem)
{
    complain(QLatin1String("keys: ") + problem);
    return Failure;
}

/** The service's name of a key. */
QString serviceName(MediaKey::Type key)
{
    switch (key) {
    case MediaKey::FastForward:
        return QStringLiteral("forward");
    case MediaKey::VolumeDown:
        return QStringLiteral("vdown");
    case MediaKey::VolumeUp:
        return QStringLiteral("vup");
    case MediaKey::Previous:
        return QStringLiteral("prev");
    default:
        return enumeratorName(key).toLower();
    }
}

ExitStatus watch(MediaKey::Type key, const Arguments &arguments)
{
    // A watcher says nothing of a service that is not there or ends.
    PpsObject service(QStringLiteral("/pps/services/multimedia/mediaplayer/control"));
    if (!service.open(PpsOpenMode::PublishSubscribe)) {
        return failed(service.errorString());
    }
    QObject::connect(&service, &PpsObject::readyRead, [&service] {
        bool ok = false;
        service.read(&ok);
        // With another daemon the key is watched again.
        if (!ok && service.error() != ECONNRESET) {
            QCoreApplication::exit(failed(service.errorString()));
        }
    });
    StopSignals stopSignals;
    QObject::connect(&stopSignals, &StopSignals::stop, [] { QCoreApplication::exit(Success); });
    MediaKeyWatcher watcher(key);
    if (const auto notification = arguments.enumerator<MediaKeyNotification>("--notification");
        notification && *notification != watcher.notification()) {
        watcher.setNotification(*notification);
    }
    if (arguments.has("--json")) {
        new SignalPrinter(&watcher, print, &watcher);
    } else {
        QObject::connect(&watcher, &MediaKeyWatcher::shortPress, [] { print("short press\n"); });
        QObject::connect(&watcher, &MediaKeyWatcher::longPress, [] { print("long press\n"); });
    }
    return ExitStatus(QCoreApplication::exec());
}

ExitStatus press(MediaKey::Type key, const Arguments &arguments)
{
    const QVariantMap request{
        {QStringLiteral("msg"), QStringLiteral("press")},
        {QStringLiteral("dat"), QVariantMap{{QStringLiteral("key"), serviceName(key)},
                                            {QStringLiteral("ms"), arguments.milliseconds("--ms").value_or(TapMs)}}},
    };
    PpsObject service(QStringLiteral("/pps/services/multimedia/mediakeys/control?wait"));
    if (!service.open(PpsOpenMode::PublishSubscribe) || !service.write(PpsObject::encode(request))) {
        return failed(service.errorString());
    }
    const StopSignals::AtOnce atOnce;
    // The answer comes when the key is released.
    const QVariantMap answer = PpsObject::decode(service.read()).value(QStringLiteral("@control")).toMap();
    const QString problem = answer.value(QStringLiteral("error")).toString();
    return problem.isEmpty() ? Success : failed(problem);
}

ExitStatus runKeys(const Arguments &arguments)
{
    const QByteArrayList &operands = arguments.operands();
    if (operands.isEmpty()) {
        throw UsageError{QStringLiteral("watch or press is missing")};
    }
    const bool isPress = operands.first() == "press";
    if (!isPress && operands.first() != "watch") {
        refuseUnknown("action", operands.first(), {"watch", "press"});
    }
    const char *const action = isPress ? "press" : "watch";
    for (const char *option : {"--notification", "--json", "--ms"}) {
        if (arguments.has(option) && isPress != (option == QByteArray("--ms"))) {
            throw UsageError{QStringLiteral("%1 has no %2").arg(QLatin1String(action), QLatin1String(option))};
        }
    }
    if (operands.size() < 2) {
        throw UsageError{QStringLiteral("%1: KEY is missing").arg(QLatin1String(action))};
    }
    if (operands.size() > 2) {
        throw UsageError{
            QStringLiteral("%1: '%2' is too much").arg(QLatin1String(action), QString::fromLocal8Bit(operands.at(2)))};
    }
    const auto key = enumeratorFrom<MediaKey>(action, operands.at(1), {"None"});
    return isPress ? press(key, arguments) : watch(key, arguments);
}

} // namespace

const Command KeysCommand{
    .help =
        {
            .name = "keys",
            .synopsis = "[OPTION...] watch|press KEY",
            .summary = "watches and presses media keys",
            .details = "  watch KEY    prints every press of the key until ^C\n"
                       "  press KEY    presses the key, as if the device had it\n\n"
                       "KEY is FastForward, Pause, Play, PlayPause, Rewind, Stop, VolumeDown, VolumeUp, Previous or "
                       "Next.",
            .options =
                {
                    {"--notification", "KIND",
                     "watch: clicked tells of a short press at every release, threshold not "
                     "after a long one",
                     [] { return enumeratorNames<MediaKeyNotification>(); }},
                    {"--json", nullptr, "watch: prints every signal as one JSON object a line"},
                    {"--ms", "N", "press: how long, in milliseconds (100)"},
                },
            .words =
                [] {
                    return QByteArrayList{"watch", "press"};
                },
        },
    .run = runKeys,
};

} // namespace voro
