#pragma once

#include "Medium.h"

namespace voro {

/** As many bytes as a copy of standard input may take: it may lie in memory. */
inline constexpr qint64 MostInput = qint64{2} << 30;
/** As many bytes as are kept of standard input that plays while it comes. */
inline constexpr qint64 MostKept = qint64{256} << 20;

enum class InputUse { FromItsBeginning, FromAnywhere };

/**
 * What standard input gives: the file that it is, a copy of what comes through it when it ends within half a second or
 * is played from anywhere, else what comes while it comes. Lives as long as the program. Says what is waited for when
 * that takes long. Throws UsageError when it is a terminal, has to be copied and has more bytes than `most`, or cannot
 * be kept.
 */
Medium inputMedium(InputUse use, qint64 most = MostInput);

/**
 * Whether a medium can be played before it has come to its end, as far as its first bytes, which a file holds, tell:
 * of an MPEG-4 file the table of contents has to come before what it lists. Not known is false.
 */
bool playsBeforeItsEnd(int file);

} // namespace voro
