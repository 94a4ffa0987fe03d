#include "MediaFiles.h"

#include <QtCore/QCollator>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>

#include <algorithm>

namespace mediafiles {

namespace {

const QStringList Films{"mp4", "m4v",  "mkv", "webm", "avi", "mov", "ogv",
                        "mpg", "mpeg", "ts",  "m2ts", "3gp", "flv", "wmv"};
const QStringList Sounds{"ogg", "oga", "opus", "mp3", "flac", "wav", "m4a", "m4b", "aac", "mka", "amr", "wma", "aiff"};
const QStringList Playlists{"m3u", "m3u8", "pls", "xspf"};

void sortByName(QFileInfoList &files)
{
    QCollator order;
    order.setNumericMode(true);
    order.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(files.begin(), files.end(), [&order](const QFileInfo &one, const QFileInfo &other) {
        return one.isDir() != other.isDir() ? one.isDir() : order.compare(one.fileName(), other.fileName()) < 0;
    });
}

} // namespace

Kind kindOf(const QString &name)
{
    const QString extension = QFileInfo(name).suffix().toLower();
    if (Sounds.contains(extension)) {
        return Kind::Sound;
    }
    if (Films.contains(extension)) {
        return Kind::Film;
    }
    return Playlists.contains(extension) ? Kind::Playlist : Kind::Other;
}

QList<File> filesIn(const QString &folder)
{
    QFileInfoList infos = QDir(folder).entryInfoList(QDir::AllDirs | QDir::Files | QDir::NoDotAndDotDot, QDir::NoSort);
    sortByName(infos);
    QList<File> files;
    files.reserve(infos.size());
    for (const QFileInfo &info : infos) {
        const Kind kind = info.isDir() ? Kind::Folder : kindOf(info.fileName());
        if (kind != Kind::Other) {
            files += {info.filePath(), kind, info.size(), info.lastModified().toMSecsSinceEpoch()};
        }
    }
    return files;
}

QList<File> filesBelow(const QString &folder)
{
    QList<File> files;
    QStringList folders{folder};
    while (!folders.isEmpty()) {
        QStringList below;
        for (const File &file : filesIn(folders.takeFirst())) {
            if (file.kind == Kind::Sound || file.kind == Kind::Film) {
                files += file;
            } else if (file.kind == Kind::Folder && !QFileInfo(file.path).isSymLink()) {
                below += file.path;
            }
        }
        folders = below + folders;
    }
    return files;
}

QString nameOfLanguage(const QString &code)
{
    const QLocale locale(code);
    if (code.isEmpty() || locale.language() == QLocale::C) {
        return {};
    }
    QString name = locale.nativeLanguageName();
    if (!code.contains(QLatin1Char('-')) && !code.contains(QLatin1Char('_'))) {
        // The language alone: the name that says nothing of a country is the shortest one.
        for (const QLocale &other :
             QLocale::matchingLocales(locale.language(), locale.script(), QLocale::AnyTerritory)) {
            const QString otherName = other.nativeLanguageName();
            name = otherName.isEmpty() || otherName.size() >= name.size() ? name : otherName;
        }
    }
    return name.isEmpty() ? QLocale::languageToString(locale.language()) : name.left(1).toUpper() + name.mid(1);
}

} // namespace mediafiles
