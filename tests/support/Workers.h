#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include <sys/types.h>

/** The processes whose parent is the daemon, but for those that fork them. */
QList<pid_t> workersOf(qint64 daemon);
/** The two processes that fork workers for the daemon. */
QList<pid_t> nurseryOf(qint64 daemon);
/** Those of them that have a file open. */
QList<pid_t> workersWith(const QByteArray &file, qint64 daemon);
/** How much memory a process has had at most, in KiB. */
qint64 peakMemory(pid_t process);
/** Whether a process has ended, with all its threads. */
bool hasEnded(pid_t process);
