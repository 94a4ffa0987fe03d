#pragma once

#include <voro/PpsObject.h>

#include <QtCore/QString>

#include <functional>

namespace voro {

/**
 * Reads what a folder of PPS holds; false, and an error in the object, which is the folder's `.list`, when that fails.
 */
bool readFolder(PpsObject &list, const std::function<void(const QString &name, bool isFolder)> &take);

/**
 * The folder that shows the renderer context of this process's first object of a class, for instance "MediaPlayer";
 * empty when there is none.
 */
QString contextFolder(const QString &className);

} // namespace voro
