#include "Workers.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <algorithm>

namespace {

QList<pid_t> childrenOf(qint64 daemon, bool areNursery)
{
    QList<pid_t> children;
    const QByteArray parent = "PPid:\t" + QByteArray::number(daemon) + '\n';
    for (const QString &name : QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")}, QDir::Dirs)) {
        QFile status(QStringLiteral("/proc/%1/status").arg(name));
        const QByteArray text = status.open(QFile::ReadOnly) ? status.readAll() : QByteArray();
        if (text.contains(parent) && text.startsWith("Name:\tvoro-nursery\n") == areNursery) {
            children << name.toInt();
        }
    }
    return children;
}

} // namespace

QList<pid_t> workersOf(qint64 daemon)
{
    return childrenOf(daemon, false);
}

QList<pid_t> nurseryOf(qint64 daemon)
{
    return childrenOf(daemon, true);
}

QList<pid_t> workersWith(const QByteArray &file, qint64 daemon)
{
    QList<pid_t> workers = workersOf(daemon);
    workers.removeIf([&file](pid_t worker) {
        const QDir descriptors(QStringLiteral("/proc/%1/fd").arg(worker));
        const QStringList names = descriptors.entryList(QDir::Files | QDir::System);
        return std::none_of(names.begin(), names.end(), [&](const QString &name) {
            return QFile::symLinkTarget(descriptors.filePath(name)).toUtf8() == file;
        });
    });
    return workers;
}

qint64 peakMemory(pid_t process)
{
    constexpr char Field[] = "VmHWM:";
    QFile status(QStringLiteral("/proc/%1/status").arg(process));
    const QByteArray text = status.open(QFile::ReadOnly) ? status.readAll() : QByteArray();
    const qsizetype start = text.indexOf(Field) + static_cast<qsizetype>(sizeof Field);
    return text.mid(start).simplified().split(' ').first().toLongLong();
}

bool hasEnded(pid_t process)
{
    // Where the first process collects nobody, as in some containers, what has ended stays as a zombie.
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    const QByteArray stat = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QByteArrayList fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    // Threads that still end keep its sockets open.
    constexpr int ThreadCount = 17;
    return stat.isEmpty() || (fields.first() == "Z" && fields.value(ThreadCount).toInt() <= 1);
}
