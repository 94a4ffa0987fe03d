#include "DesktopEntry.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

namespace voro::nowplaying {

// This runs in a thread that may outlast the program's static objects, so there are none here.

namespace {

constexpr qint64 MaximumSize = 1024 * 1024;

QByteArray processFile(qint64 process, const char *name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(process).arg(QLatin1String(name)));
    return file.open(QFile::ReadOnly) ? file.read(MaximumSize) : QByteArray();
}

// What runs on a terminal is in the terminal's group.
bool hasTerminal(qint64 process)
{
    const QByteArray status = processFile(process, "stat");
    // Behind the program's name: state, parent, process group, session, terminal.
    const QByteArrayList fields = status.mid(status.lastIndexOf(')') + 2).split(' ');
    return fields.value(4) != "0";
}

QString checked(const QString &name)
{
    const QRegularExpression good(QRegularExpression::anchoredPattern(QStringLiteral("[A-Za-z0-9._-]{1,255}")));
    return good.match(name).hasMatch() ? name : QString();
}

/** The inverse of systemd's way to write any character in a unit's name. */
QString unescaped(QString name)
{
    const QRegularExpression escape(QStringLiteral(R"(\\x([0-9a-f]{2}))"));
    for (auto match = escape.match(name); match.hasMatch(); match = escape.match(name, match.capturedStart() + 1)) {
        name.replace(match.capturedStart(), match.capturedLength(), QChar(match.captured(1).toUShort(nullptr, 16)));
    }
    return name;
}

} // namespace

QString desktopEntryFromEnvironment(const QByteArray &environment, qint64 process)
{
    QString path;
    bool isForIt = false;
    for (const QByteArray &variable : environment.split('\0')) {
        if (variable.startsWith("GIO_LAUNCHED_DESKTOP_FILE=")) {
            path = QString::fromUtf8(variable.mid(variable.indexOf('=') + 1));
        } else if (variable == "GIO_LAUNCHED_DESKTOP_FILE_PID=" + QByteArray::number(process)) {
            // Others have inherited it.
            isForIt = true;
        }
    }
    const QFileInfo file(path);
    return isForIt && file.suffix() == "desktop" ? checked(file.completeBaseName()) : QString();
}

QString desktopEntryFromGroups(const QByteArray &groups)
{
    // app[-LAUNCHER]-NAME-RANDOM.scope, app[-LAUNCHER]-NAME[@RANDOM].service; there is no dash in NAME but an escaped
    // one.
    const QRegularExpression unit(
        QStringLiteral(R"(/app-(?:[^/-]+-)?([^/@-]+)(?:-[^/-]+\.scope|(?:@[^/]*)?\.service)(?:/|$))"),
        QRegularExpression::MultilineOption);
    return checked(unescaped(unit.match(QString::fromUtf8(groups)).captured(1)));
}

QString desktopEntry(qint64 process)
{
    const QString entry = desktopEntryFromEnvironment(processFile(process, "environ"), process);
    return entry.isEmpty() && !hasTerminal(process) ? desktopEntryFromGroups(processFile(process, "cgroup")) : entry;
}

} // namespace voro::nowplaying
