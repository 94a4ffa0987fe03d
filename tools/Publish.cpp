// voro publish: holds the device's now-playing role, as a media application does, and prints what it is asked to do.

#include "Command.h"
#include "Display.h"
#include "Output.h"
#include "Problem.h"
#include "SignalPrinter.h"
#include "StopSignals.h"

#include <multimedia/MetaData.h>
#include <multimedia/NowPlayingConnection.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QSocketNotifier>

#include <unistd.h>

#include <array>
#include <utility>

namespace voro {

namespace {

using multimedia::MediaError;
using multimedia::MediaState;
using multimedia::NowPlayingConnection;
using multimedia::PriorityLevel;
using multimedia::RepeatMode;
using multimedia::ShuffleMode;

void setMetaData(NowPlayingConnection &connection, const QString &key, const QByteArray &value)
{
    QVariantMap metaData = connection.metaData();
    metaData.insert(key, QString::fromLocal8Bit(value));
    connection.setMetaData(metaData);
}

MediaError::Type acquire(NowPlayingConnection &connection)
{
    const StopSignals::AtOnce atOnce;
    return connection.acquire();
}

/** A line of standard input: its first word, whether something follows, and what it does. */
struct LineCommand {
    const char *name;
    bool hasValue;
    MediaError::Type (*run)(NowPlayingConnection &connection, const QByteArray &value);
};

/** A setter as a command that cannot fail. */
template<auto Set>
MediaError::Type set(NowPlayingConnection &connection, const QByteArray &value)
{
    Set(connection, value);
    return MediaError::None;
}

using Connection = NowPlayingConnection;

constexpr std::array LineCommands{
    LineCommand{"state", true, set<[](Connection &connection, const QByteArray &value) {
                    connection.setMediaState(enumeratorFrom<MediaState>("state", value));
                }>},
    LineCommand{"meta", true, set<[](Connection &connection, const QByteArray &value) {
                    const auto equals = value.indexOf('=');
                    if (equals <= 0) {
                        throw UsageError{
                            QStringLiteral("meta: '%1' is not KEY=VALUE").arg(QString::fromLocal8Bit(value))};
                    }
                    setMetaData(connection, QString::fromLocal8Bit(value.left(equals)), value.mid(equals + 1));
                }>},
    LineCommand{"position", true, set<[](Connection &connection, const QByteArray &value) {
                    connection.setPosition(millisecondsFrom("position", value));
                }>},
    LineCommand{"duration", true, set<[](Connection &connection, const QByteArray &value) {
                    connection.setDuration(millisecondsFrom("duration", value));
                }>},
    LineCommand{"icon", true, set<[](Connection &connection, const QByteArray &value) {
                    connection.setIconUrl(QUrl(QString::fromLocal8Bit(value)));
                }>},
    LineCommand{"repeat", true, set<[](Connection &connection, const QByteArray &value) {
                    connection.setRepeatMode(enumeratorFrom<RepeatMode>("repeat", value));
                }>},
    LineCommand{"shuffle", true, set<[](Connection &connection, const QByteArray &value) {
                    connection.setShuffleMode(enumeratorFrom<ShuffleMode>("shuffle", value));
                }>},
    LineCommand{"next", true, set<[](Connection &connection, const QByteArray &value) {
                    connection.setNextEnabled(switchFrom("next", value));
                }>},
    LineCommand{"previous", true, set<[](Connection &connection, const QByteArray &value) {
                    connection.setPreviousEnabled(switchFrom("previous", value));
                }>},
    LineCommand{"track", false, [](Connection &connection, const QByteArray &) { return connection.trackChange(); }},
    LineCommand{"acquire", false, [](Connection &connection, const QByteArray &) { return acquire(connection); }},
    LineCommand{"revoke", false, [](Connection &connection, const QByteArray &) { return connection.revoke(); }},
    LineCommand{"quit", false, set<[](Connection &, const QByteArray &) { QCoreApplication::quit(); }>},
};

/** Does what a line says; UsageError when it says nothing that is known. */
MediaError::Type obey(NowPlayingConnection &connection, const QByteArray &line)
{
    const auto blank = line.indexOf(' ');
    const QByteArray name = blank < 0 ? line : line.left(blank);
    const QByteArray value = blank < 0 ? QByteArray() : line.mid(blank + 1).trimmed();
    for (const LineCommand &command : LineCommands) {
        if (name != command.name) {
            continue;
        }
        if (command.hasValue && value.isEmpty()) {
            throw UsageError{QStringLiteral("%1: a value is missing").arg(QLatin1String(name))};
        }
        if (!command.hasValue && !value.isEmpty()) {
            throw UsageError{QStringLiteral("%1 takes no value").arg(QLatin1String(name))};
        }
        return command.run(connection, value);
    }
    throw UsageError{QStringLiteral("unknown line '%1'").arg(QString::fromLocal8Bit(line))};
}

/** Prints what the connection is told, for a person. */
void tellRequests(NowPlayingConnection &connection)
{
    using C = NowPlayingConnection;
    const auto tell = [&connection](auto signal, auto text) {
        QObject::connect(&connection, signal, &connection,
                         [=](auto... arguments) { print(printable(text(arguments...)).toUtf8() + '\n'); });
    };
    for (const auto &[signal, word] :
         {std::pair(&C::acquired, "acquired"), std::pair(&C::play, "play"), std::pair(&C::pause, "pause"),
          std::pair(&C::stop, "stop"), std::pair(&C::next, "next"), std::pair(&C::previous, "previous"),
          std::pair(&C::forward, "forward"), std::pair(&C::rewind, "rewind"), std::pair(&C::repeat, "repeat"),
          std::pair(&C::shuffle, "shuffle")}) {
        tell(signal, [text = QString::fromLatin1(word)] { return text; });
    }
    tell(&C::repeatRequest, [](RepeatMode::Type mode) { return QLatin1String("repeat ") + enumeratorName(mode); });
    tell(&C::shuffleRequest, [](ShuffleMode::Type mode) { return QLatin1String("shuffle ") + enumeratorName(mode); });
    tell(&C::controllerActiveChanged,
         [](bool active) { return QLatin1String(active ? "watched" : "not watched") + QString(); });
    tell(&C::revoked, [&connection] {
        // Who gives the role up himself still has it here.
        if (connection.isAcquired()) {
            return QStringLiteral("revoked");
        }
        return QStringLiteral("revoked by %1 (process %2)")
            .arg(connection.lastRevokingConnectionName())
            .arg(connection.lastRevokingConnectionPid());
    });
}

/** Holds the role and does what standard input says, until it is told to end. */
class Publication {
public:
    explicit Publication(NowPlayingConnection &connection) : m_connection(connection) {}

    ExitStatus run()
    {
        StopSignals stopSignals;
        QObject::connect(&stopSignals, &StopSignals::stop, [] { QCoreApplication::quit(); });
        QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
        QObject::connect(&input, &QSocketNotifier::activated, [&] { input.setEnabled(read()); });
        if (tries([this] { return acquire(m_connection); })) {
            QCoreApplication::exec();
        }
        return m_status;
    }

private:
    /** Runs a command of the library; says what failed, and is false then. */
    template<typename Function>
    bool tries(Function function)
    {
        const MediaError::Type error = function();
        return error == MediaError::None || fail(problemOf(error));
    }

    bool fail(const QString &reason)
    {
        m_status = Failure;
        complain(QLatin1String("publish: ") + printable(reason));
        return false;
    }

    /** Does the lines that are there; false at the end of the input, which ends nothing else. */
    bool read()
    {
        std::array<char, 4096> bytes;
        const auto count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
        m_input += count > 0 ? QByteArray(bytes.data(), count) : QByteArray("\n");
        for (auto end = m_input.indexOf('\n'); end >= 0; end = m_input.indexOf('\n')) {
            const QByteArray line = m_input.left(end).trimmed();
            m_input.remove(0, end + 1);
            if (!line.isEmpty()) {
                take(line);
            }
        }
        return count > 0;
    }

    void take(const QByteArray &line)
    {
        tries([&] {
            try {
                return obey(m_connection, line);
            } catch (const UsageError &error) {
                fail(error.reason);
                return MediaError::None;
            }
        });
    }

    NowPlayingConnection &m_connection;
    QByteArray m_input;
    ExitStatus m_status = Success;
};

ExitStatus runPublish(const Arguments &arguments)
{
    if (!arguments.operands().isEmpty()) {
        throw UsageError{QStringLiteral("'%1' is too much").arg(QString::fromLocal8Bit(arguments.operands().first()))};
    }
    NowPlayingConnection connection(QString::fromLocal8Bit(arguments.value("--name").value_or("voro publish")));
    connection.setPriorityLevel(arguments.enumerator<PriorityLevel>("--priority").value_or(PriorityLevel::Low));
    connection.setMediaState(arguments.enumerator<MediaState>("--state").value_or(MediaState::Stopped));
    connection.setDuration(arguments.milliseconds("--duration").value_or(0));
    namespace M = multimedia::MetaData;
    for (const auto &[option, key] : {std::pair("--title", M::Title), std::pair("--artist", M::Artist),
                                      std::pair("--album", M::Album), std::pair("--track", M::Track)}) {
        if (const auto value = arguments.value(option)) {
            setMetaData(connection, QLatin1String(key), *value);
        }
    }
    if (const auto icon = arguments.value("--icon")) {
        connection.setIconUrl(QUrl(QString::fromLocal8Bit(*icon)));
    }
    if (arguments.has("--json")) {
        new SignalPrinter(&connection, print, &connection);
    } else {
        tellRequests(connection);
    }
    return Publication(connection).run();
}

} // namespace

const Command PublishCommand{
    .help =
        {
            .name = "publish",
            .synopsis = "[OPTION...]",
            .summary = "holds the now-playing role and prints what it is asked to do",
            .details =
                "Holds the now-playing role as a media application does, and prints what it is asked to do. It does\n"
                "nothing of that; lines of standard input say what is played:\n"
                "  state NAME         Started, Paused or Stopped\n"
                "  meta KEY=VALUE     title, artist, album, track, ...\n"
                "  position MS, duration MS, icon URL\n"
                "  repeat MODE, shuffle MODE\n"
                "  next on|off, previous on|off\n"
                "  track              another track begins\n"
                "  revoke, acquire    gives the role up, takes it again\n"
                "  quit               ends, as ^C does; the end of the input does not",
            .options =
                {
                    {"--name", "N", "the connection's name (voro publish)"},
                    {"--priority", "LEVEL", "low or high: whether others may take the role"},
                    {"--state", "NAME", "Started, Paused or Stopped"},
                    {"--title", "T", "the title; likewise --artist, --album and --track"},
                    {"--artist", "A", "the artist"},
                    {"--album", "A", "the album"},
                    {"--track", "N", "the number of the track"},
                    {"--duration", "MS", "the duration in milliseconds"},
                    {"--icon", "URL", "the artwork"},
                    {"--json", nullptr, "prints every signal of the connection as one JSON object a line"},
                },
        },
    .run = runPublish,
};

} // namespace voro
