// voro pps: looks into PPS objects and writes to them, for people who debug and for tests.

#include "Command.h"
#include "Display.h"
#include "Folders.h"
#include "Output.h"
#include "StopSignals.h"

#include <voro/PpsObject.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QSocketNotifier>

#include <unistd.h>

#include <array>
#include <limits>

namespace voro {

namespace {

QString text(const QByteArray &bytes)
{
    return QString::fromLocal8Bit(bytes);
}

/** Says what failed and why. */
ExitStatus failed(const PpsObject &object)
{
    complain(QStringLiteral("pps: %1: %2").arg(object.path(), object.errorString()));
    return Failure;
}

/** Adds an option to a path that may have some. */
QString withOption(const QString &path, const QString &option)
{
    return path + QLatin1Char(path.contains(QLatin1Char('?')) ? ',' : '?') + option;
}

/** Lines as a terminal may get them. */
QByteArray printableLines(const QByteArray &data)
{
    QByteArrayList lines = data.split('\n');
    for (QByteArray &line : lines) {
        line = printable(QString::fromUtf8(line)).toUtf8();
    }
    return lines.join('\n');
}

/** A read prints as its lines and an empty one after them, so that a reader knows where it ends. */
void printRead(const QByteArray &data)
{
    print(printableLines(data) + (data.endsWith('\n') || data.isEmpty() ? "\n" : "\n\n"));
}

/** Prints what can be read; false when reading fails. */
bool printAll(PpsObject &object)
{
    for (;;) {
        bool ok = false;
        const QByteArray data = object.read(&ok);
        if (!ok) {
            return false;
        }
        if (data.isEmpty()) {
            return true;
        }
        printRead(data);
    }
}

/** Runs the event loop until ^C; a failing read of the object ends it as well. */
ExitStatus follow(PpsObject &object)
{
    StopSignals stopSignals;
    QObject::connect(&stopSignals, &StopSignals::stop, [] { QCoreApplication::exit(Success); });
    QObject::connect(&object, &PpsObject::readyRead, [&object] {
        if (!printAll(object)) {
            QCoreApplication::exit(failed(object));
        }
    });
    return ExitStatus(QCoreApplication::exec());
}

ExitStatus list(const QByteArrayList &operands)
{
    QString folder = operands.isEmpty() ? QStringLiteral("/pps") : text(operands.first());
    while (folder.endsWith(QLatin1Char('/'))) {
        folder.chop(1);
    }
    const auto isMissing = [&folder] {
        complain(QStringLiteral("pps: %1: no such folder").arg(folder));
        return Failure;
    };
    if (folder != QLatin1String("/pps") && !folder.startsWith(QLatin1String("/pps/"))) {
        return isMissing();
    }
    PpsObject object(folder + QLatin1String("/.list"));
    if (!object.open(PpsOpenMode::Subscribe)) {
        return failed(object);
    }
    bool isEmpty = true;
    const bool isRead = readFolder(object, [&isEmpty](const QString &name, bool isFolder) {
        isEmpty = false;
        print(printable(name).toUtf8() + (isFolder ? "/\n" : "\n"));
    });
    // A folder is there as long as something is in it.
    if (isRead && isEmpty && folder != QLatin1String("/pps")) {
        return isMissing();
    }
    return isRead ? Success : failed(object);
}

ExitStatus cat(const QByteArrayList &operands)
{
    PpsObject object(text(operands.first()));
    if (!object.open(PpsOpenMode::Subscribe)) {
        return failed(object);
    }
    object.setBlocking(false);
    bool ok = false;
    const QByteArray data = object.read(&ok);
    if (!ok) {
        return failed(object);
    }
    if (data.isEmpty()) {
        complain(QStringLiteral("pps: %1: there is no such object").arg(object.path()));
        return Failure;
    }
    print(printableLines(data) + (data.endsWith('\n') ? "" : "\n"));
    return Success;
}

ExitStatus watch(const QByteArrayList &operands)
{
    PpsObject object(text(operands.first()));
    if (!object.open(PpsOpenMode::Subscribe)) {
        return failed(object);
    }
    // A blocking read would not let ^C through.
    object.setBlocking(false);
    return follow(object);
}

ExitStatus write(const QByteArrayList &operands)
{
    PpsObject object(text(operands.first()));
    if (!object.open(PpsOpenMode::Publish) || !object.write(operands.mid(1).join('\n') + '\n') || !object.close()) {
        return failed(object);
    }
    return Success;
}

/** Collects standard input and hands out its paragraphs: runs of lines that are not empty. */
class Paragraphs {
public:
    /** Reads what is there; false at the end of the input. */
    bool read()
    {
        std::array<char, 4096> bytes;
        const auto count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
        if (count > 0) {
            m_input.append(bytes.data(), count);
        } else {
            m_input.append("\n\n");
        }
        return count > 0;
    }

    /** The next complete paragraph; empty when there is none. */
    QByteArray take()
    {
        while (m_input.startsWith('\n')) {
            m_input.remove(0, 1);
        }
        const auto end = m_input.indexOf("\n\n");
        if (end < 0) {
            return {};
        }
        QByteArray paragraph = m_input.left(end + 1);
        m_input.remove(0, end + 2);
        return paragraph;
    }

private:
    QByteArray m_input;
};

ExitStatus serve(const QByteArrayList &operands)
{
    PpsObject object(withOption(text(operands.first()), QStringLiteral("server")));
    if (!object.open(PpsOpenMode::PublishSubscribe)) {
        return failed(object);
    }
    object.setBlocking(false);
    Paragraphs paragraphs;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        if (!paragraphs.read()) {
            input.setEnabled(false);
        }
        for (QByteArray paragraph = paragraphs.take(); !paragraph.isEmpty(); paragraph = paragraphs.take()) {
            if (!object.write(paragraph)) {
                failed(object);
            }
        }
    });
    return follow(object);
}

struct Action {
    const char *name;
    /** How many operands there may be. */
    qsizetype minimum;
    qsizetype maximum;
    ExitStatus (*run)(const QByteArrayList &operands);
};

constexpr qsizetype Any = std::numeric_limits<qsizetype>::max();
constexpr std::array Actions{
    Action{"ls", 0, 1, list},       Action{"cat", 1, 1, cat},     Action{"watch", 1, 1, watch},
    Action{"write", 2, Any, write}, Action{"serve", 1, 1, serve},
};

ExitStatus runPps(const Arguments &arguments)
{
    if (arguments.operands().isEmpty()) {
        throw UsageError{QStringLiteral("ls, cat, watch, write or serve is missing")};
    }
    const QByteArray name = arguments.operands().first();
    const QByteArrayList operands = arguments.operands().mid(1);
    for (const Action &action : Actions) {
        if (name != action.name) {
            continue;
        }
        if (operands.size() < action.minimum) {
            throw UsageError{QStringLiteral("%1: %2 is missing")
                                 .arg(text(name), QLatin1String(operands.isEmpty() ? "OBJECT" : "ATTRIBUTE"))};
        }
        if (operands.size() > action.maximum) {
            throw UsageError{QStringLiteral("%1: '%2' is too much").arg(text(name), text(operands.at(action.maximum)))};
        }
        return action.run(operands);
    }
    refuseUnknown("action", name, namesOf(Actions));
}

} // namespace

const Command PpsCommand{
    .help =
        {
            .name = "pps",
            .synopsis = "ACTION [ARGUMENT...]",
            .summary = "looks into PPS objects and writes to them",
            .details =
                "  ls [DIR]                    lists a folder's objects and folders (/pps)\n"
                "  cat OBJECT                  prints an object\n"
                "  watch OBJECT[?OPTIONS]      prints an object, or what is sent to a client of it, at every change\n"
                "  write OBJECT ATTRIBUTE...   writes one message; an ATTRIBUTE is a line like name:enc:value\n"
                "  serve OBJECT                owns a service object: prints what clients send, and sends each "
                "paragraph\n"
                "                              of standard input",
            .options = {},
            .words = [] { return namesOf(Actions); },
            .operandsMayBeginWithDash = true,
        },
    .run = runPps,
};

} // namespace voro
