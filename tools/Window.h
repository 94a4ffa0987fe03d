#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace voro {

/**
 * The X11 window whose number, which may be hexadecimal, is an option's text. Throws UsageError where the X server has
 * no such window.
 */
QString windowFrom(const char *option, const QByteArray &text);

} // namespace voro
