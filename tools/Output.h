#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace voro {

/** The warning that nothing will be heard. */
inline constexpr char NoSoundServer[] = "no sound server answers; playing without sound";

/** Writes text to standard output at once. */
void print(const QByteArray &text);
/** Writes "voro: " and the text as a line of its own to standard error. */
void complain(const QString &text);

} // namespace voro
