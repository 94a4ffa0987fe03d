#pragma once

#include <multimedia/MediaError.h>

#include <QtCore/QString>
#include <QtCore/QUrl>

namespace voro {

/** A sentence for an error; empty for `None`. An unknown number gives a sentence with that number. */
QString errorSentence(int error);

/** A sentence for an error of a medium: for a file it tells what is wrong with it, as that it is missing. */
QString errorSentence(int error, const QUrl &medium);

/** A sentence for an error of a recording: what is wrong with its file or with where it should be. */
QString recordingSentence(int error, const QUrl &file);

} // namespace voro
