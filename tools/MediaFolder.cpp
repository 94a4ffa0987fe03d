#include "MediaFolder.h"

#include <QtCore/QCollator>
#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QMimeDatabase>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

namespace voro {

namespace {

namespace fs = std::filesystem;

/** What the system counts as sound although it names other media or notes. */
constexpr const char *NoSounds[] = {"audio/x-mpegurl", "audio/x-scpls", "audio/x-ms-asx", "audio/midi"};

bool isMedium(const QString &name)
{
    const QList<QMimeType> types = QMimeDatabase().mimeTypesForFileName(name);
    return std::any_of(types.begin(), types.end(), [](const QMimeType &type) {
        const QString kind = type.name();
        const bool isOther = std::any_of(std::begin(NoSounds), std::end(NoSounds),
                                         [&kind](const char *other) { return kind == QLatin1String(other); });
        return !isOther && (kind.startsWith(QLatin1String("audio/")) || kind.startsWith(QLatin1String("video/")));
    });
}

QString nameOf(const fs::path &path)
{
    return QFile::decodeName(path.filename().c_str());
}

void sortByName(std::vector<fs::path> &paths)
{
    // The locale "C" knows no numbers in names.
    const QLocale own;
    QCollator order(own.language() == QLocale::C ? QLocale(QLocale::English) : own);
    order.setNumericMode(true);
    order.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(paths.begin(), paths.end(), [&order](const fs::path &one, const fs::path &other) {
        return order.compare(nameOf(one), nameOf(other)) < 0;
    });
}

void collect(const fs::path &folder, QByteArrayList &media)
{
    std::vector<fs::path> files;
    std::vector<fs::path> folders;
    std::error_code error;
    // A folder that may not be read has nothing to play.
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code unknown;
        const QString name = nameOf(entry->path());
        if (name.startsWith(QLatin1Char('.'))) {
            continue;
        }
        if (entry->is_directory(unknown) && !entry->is_symlink(unknown)) {
            folders.push_back(entry->path());
        } else if (entry->is_regular_file(unknown) && isMedium(name)) {
            files.push_back(entry->path());
        }
    }
    sortByName(files);
    sortByName(folders);
    for (const fs::path &file : files) {
        media.append(QByteArray(file.c_str()));
    }
    for (const fs::path &below : folders) {
        collect(below, media);
    }
}

} // namespace

bool isFolder(const QByteArray &path)
{
    std::error_code unknown;
    return fs::is_directory(path.toStdString(), unknown);
}

QByteArrayList mediaBelow(const QByteArray &folder)
{
    QByteArrayList media;
    collect(folder.toStdString(), media);
    return media;
}

} // namespace voro
