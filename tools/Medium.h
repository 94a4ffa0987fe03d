#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QUrl>

namespace voro {

/** Something to play, as named on the command line. */
struct Medium {
    QUrl url;
    /** What a person calls it when it has no title: the file's name or the address. */
    QString name;
};

/**
 * The medium that an argument names: a file by its path as the shell gives it, or a URL when the argument has a scheme
 * and there is no such file. Throws UsageError for an empty argument and a URL that is none.
 */
Medium mediumFromArgument(const QByteArray &argument);

/** The file of that path, existing or not. */
Medium mediumFromPath(const QByteArray &path);

/**
 * The file of this machine that an argument names, existing or not. Throws UsageError for an empty argument and for a
 * name that is not UTF-8, the only text a URL can name.
 */
Medium newFileFromArgument(const QByteArray &argument);

/** The piece of music that comes with the program. */
Medium sampleMedium();

} // namespace voro
