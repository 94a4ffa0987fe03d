#pragma once

#include <QtCore/QByteArray>

/* Finding tones in recorded samples. */

namespace tone {

/** How strong a frequency is in 16-bit mono samples at 48 kHz: its share of the signal's power, 0.0 to 1.0. */
double share(const QByteArray &samples, double frequency);

/** The index of the first sample that is louder than the threshold, -1 when none is. */
qsizetype firstSound(const QByteArray &samples, int threshold = 500);

} // namespace tone
