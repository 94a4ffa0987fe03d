#pragma once

#include <QtCore/QStringList>

namespace voro::nowplaying {

/** The description of the holder's object on the bus, as XML, without the properties that it does not have. */
QString introspection(const QStringList &missing);

} // namespace voro::nowplaying
