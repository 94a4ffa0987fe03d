#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

/** What is known of media files by their names and folders. */
namespace mediafiles {

enum class Kind { Other, Folder, Sound, Film, Playlist };

struct File {
    QString path;
    Kind kind = Kind::Other;
    qint64 size = 0;
    qint64 modified = 0; ///< milliseconds since 1970
};

/** By the extension of a file's name. */
Kind kindOf(const QString &name);

/** What a folder shows: its folders, then its media and playlists, each in the order of their names. */
QList<File> filesIn(const QString &folder);
/** The media of a folder and of all folders below it, folder by folder. Links to folders are not followed. */
QList<File> filesBelow(const QString &folder);

/** A language by its code ("de", "deu", "pt-BR"), as those call it who speak it; empty for what is no language. */
QString nameOfLanguage(const QString &code);

} // namespace mediafiles
