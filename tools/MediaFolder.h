#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayList>

namespace voro {

/** Whether the path is that of a folder. */
bool isFolder(const QByteArray &path);

/**
 * The paths of the sounds and films in a folder, in the order of their names, and behind them those in its folders.
 * Playlists, hidden files and folders that are links are left out.
 */
QByteArrayList mediaBelow(const QByteArray &folder);

} // namespace voro
