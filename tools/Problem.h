#pragma once

#include <multimedia/MediaError.h>

#include <QtCore/QString>
#include <QtCore/QUrl>

namespace voro {

/** That the daemon cannot be reached, and why; empty when it can. It is started for that if need be. */
QString daemonProblem();

/** A sentence as a part of another one: without its full stop and its capital. */
QString fragment(QString sentence);

/**
 * Why a command failed, in words with the error's name behind them: that of a missing daemon comes first. Of a medium
 * that does not play it says more than of anything else.
 */
QString problemOf(multimedia::MediaError::Type error, const QUrl &medium = QUrl());

/** The same of a recording into a file. */
QString recordingProblem(multimedia::MediaError::Type error, const QUrl &file);

} // namespace voro
