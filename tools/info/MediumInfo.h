#pragma once

#include <QtCore/QJsonObject>

namespace voro::info {

/**
 * Reads what a medium's container tells: `container`, `duration` in milliseconds, `bitRate` in bits a second, `tags`,
 * `streams` and `chapters`. Empty for what is no medium. The descriptor has to be one that can be sought in.
 */
QJsonObject read(int descriptor);

} // namespace voro::info
