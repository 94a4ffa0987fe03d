#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace voro {

/** Writes text to standard output at once. */
void print(const QByteArray &text);
/** Writes "voro: " and the text as a line of its own to standard error. */
void complain(const QString &text);

} // namespace voro
