#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace media {

/**
 * Encodes what a filter graph of the encoder generates into a file, with additional output arguments. Ends the test
 * program when that fails.
 */
void encode(const QString &path, const QString &graph, const QStringList &arguments = {});

/** A graph of so many seconds: silence in the first half, noise in the second. */
QString silenceThenNoise(int seconds);

} // namespace media
