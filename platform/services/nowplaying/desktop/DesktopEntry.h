#pragma once

#include <QtCore/QString>

namespace voro::nowplaying {

/**
 * The desktop file, without its ending, from which a process was started; empty when that cannot be learned. May hang,
 * because the process's memory is read.
 */
QString desktopEntry(qint64 process);

/** The same from what the starter left in the process's environment. */
QString desktopEntryFromEnvironment(const QByteArray &environment, qint64 process);
/** The same from the control groups, of which a desktop names one after each application that it starts. */
QString desktopEntryFromGroups(const QByteArray &groups);

} // namespace voro::nowplaying
