#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace voro {

/**
 * The window that an option's text names: an X11 window by its number, which may be hexadecimal, or what shows pictures
 * under a name. Throws UsageError for a number that no window of the X server has.
 */
QString windowFrom(const char *option, const QByteArray &text);

} // namespace voro
