#include "Files.h"

#include "MediaFiles.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QCryptographicHash>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QStandardPaths>

#include <filesystem>

namespace {

QString pathIn(const QUrl &folder, const QString &name)
{
    return QDir(folder.toLocalFile()).filePath(name);
}

/** Why a name cannot be a file's, empty when it can. */
QString problemOfName(const QString &name)
{
    if (name.trimmed().isEmpty()) {
        return Files::tr("A name is missing.");
    }
    if (name.contains(QLatin1Char('/')) || name.startsWith(QLatin1Char('.'))) {
        return Files::tr("A name has no slash and begins with no dot.");
    }
    return {};
}

QByteArray linesOf(const QList<QUrl> &media)
{
    QByteArray lines;
    for (const QUrl &medium : media) {
        lines += medium.toEncoded() + '\n';
    }
    return lines;
}

} // namespace

QUrl Files::music()
{
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    return QUrl::fromLocalFile(QFileInfo(music).isDir() ? music : QDir::homePath());
}

QUrl Files::recordings()
{
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::MusicLocation) + QStringLiteral("/Recordings");
    QDir().mkpath(folder);
    return QUrl::fromLocalFile(folder);
}

QUrl Files::sample()
{
    const QString file = QCoreApplication::applicationDirPath() + QStringLiteral("/" VORO_DATA "/voro/sample.ogg");
    return QFileInfo::exists(file) ? QUrl::fromLocalFile(QDir::cleanPath(file)) : QUrl();
}

bool Files::isFolder(const QUrl &url) const
{
    return QFileInfo(url.toLocalFile()).isDir();
}

QString Files::nameOf(const QUrl &url) const
{
    return QFileInfo(url.fileName()).completeBaseName();
}

double Files::sizeOf(const QUrl &url) const
{
    return static_cast<double>(QFileInfo(url.toLocalFile()).size());
}

double Files::freeSpaceOf(const QUrl &folder) const
{
    std::filesystem::path place(folder.toLocalFile().toStdString());
    std::error_code error;
    // A folder that will be made on use counts as the one above.
    while (!std::filesystem::exists(place, error) && place.has_relative_path()) {
        place = place.parent_path();
    }
    const std::filesystem::space_info space = std::filesystem::space(place, error);
    return error ? -1 : static_cast<double>(space.available);
}

QUrl Files::folderOf(const QUrl &url) const
{
    return QUrl::fromLocalFile(QFileInfo(QDir::cleanPath(url.toLocalFile())).path());
}

QUrl Files::addressOf(const QString &text) const
{
    const QUrl url(text.trimmed());
    const bool isThere = url.isLocalFile() ? QFileInfo::exists(url.toLocalFile()) : !url.host().isEmpty();
    return url.isValid() && !url.scheme().isEmpty() && isThere ? url : QUrl();
}

QString Files::pathOf(const QUrl &url) const
{
    return QDir::toNativeSeparators(url.toLocalFile());
}

QString Files::titleOf(const QUrl &folder) const
{
    const QString path = QDir::cleanPath(folder.toLocalFile());
    return path == QDir::rootPath() ? path : QFileInfo(path).fileName();
}

QUrl Files::coverOf(const QUrl &medium)
{
    if (!medium.isLocalFile()) {
        return {};
    }
    const QDir folder = QFileInfo(medium.toLocalFile()).dir();
    const QStringList names{QStringLiteral("cover"), QStringLiteral("folder"), QStringLiteral("front")};
    for (const QString &file : folder.entryList({"*.jpg", "*.jpeg", "*.png"}, QDir::Files)) {
        if (names.contains(QFileInfo(file).completeBaseName(), Qt::CaseInsensitive)) {
            return QUrl::fromLocalFile(folder.filePath(file));
        }
    }
    return {};
}

QUrl Files::fileOf(const QUrl &picture)
{
    const QByteArray text = picture.path().toLatin1();
    const auto comma = text.indexOf(',');
    const auto content = QByteArray::fromBase64Encoding(text.mid(comma + 1));
    if (picture.scheme() != QLatin1String("data") || !text.first(comma + 1).endsWith(";base64,") || !content) {
        return picture;
    }
    // A new name for a new picture, because others keep what they have read.
    const QByteArray name = QCryptographicHash::hash(*content, QCryptographicHash::Sha1).toHex();
    const QString path = m_folder.filePath(QString::fromLatin1(name));
    if (path == m_picture.fileName()) {
        return QUrl::fromLocalFile(path);
    }
    m_picture.remove();
    m_picture.setFileName(path);
    const bool isWritten = m_picture.open(QIODevice::WriteOnly) && m_picture.write(*content) == (*content).size();
    m_picture.close();
    return isWritten ? QUrl::fromLocalFile(path) : picture;
}

QVariantList Files::captionsOf(const QUrl &medium) const
{
    if (!medium.isLocalFile() || mediafiles::kindOf(medium.fileName()) != mediafiles::Kind::Film) {
        return {};
    }
    const QFileInfo film(medium.toLocalFile());
    const QString name = film.completeBaseName();
    QVariantList captions;
    for (const QString &file : film.dir().entryList({"*.srt", "*.vtt", "*.ass", "*.ssa", "*.sub"}, QDir::Files)) {
        const QString own = QFileInfo(file).completeBaseName();
        if (own != name && !own.startsWith(name + QLatin1Char('.'))) {
            continue;
        }
        // What stands between the film's name and the extension, as in "film.de.srt" and "film.de.forced.srt".
        const QString rest = own.mid(name.size() + 1);
        const QString code = rest.section(QLatin1Char('.'), 0, 0);
        const QString kind = rest.section(QLatin1Char('.'), 1);
        const QString language = mediafiles::nameOfLanguage(code);
        const QString text = kind.isEmpty() ? language : QStringLiteral("%1 (%2)").arg(language, kind);
        const QVariantMap caption{{QStringLiteral("url"), QUrl::fromLocalFile(film.dir().filePath(file))},
                                  {QStringLiteral("text"), language.isEmpty() ? file : text}};
        if (isOwnLanguage(code)) {
            captions.prepend(caption);
        } else {
            captions.append(caption);
        }
    }
    return captions;
}

QString Files::nameOfLanguage(const QString &code) const
{
    return mediafiles::nameOfLanguage(code);
}

bool Files::isOwnLanguage(const QString &code) const
{
    const QLocale::Language language = QLocale(code).language();
    return !code.isEmpty() && language != QLocale::C && language == QLocale().language();
}

QUrl Files::newRecording(const QString &extension) const
{
    const QString name = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH-mm-ss"));
    QString path = pathIn(recordings(), name + QLatin1Char('.') + extension);
    for (int i = 2; QFileInfo::exists(path); ++i) {
        path = pathIn(recordings(), QStringLiteral("%1 (%2).%3").arg(name).arg(i).arg(extension));
    }
    return QUrl::fromLocalFile(path);
}

QString Files::rename(const QUrl &file, const QString &name) const
{
    const QString problem = problemOfName(name);
    if (!problem.isEmpty()) {
        return problem;
    }
    const QFileInfo old(file.toLocalFile());
    const QString path = old.dir().filePath(name.trimmed() + QLatin1Char('.') + old.suffix());
    if (path == old.filePath()) {
        return {};
    }
    if (QFileInfo::exists(path)) {
        return tr("There is already “%1”.").arg(QFileInfo(path).fileName());
    }
    QFile renamed(old.filePath());
    return renamed.rename(path) ? QString() : tr("It cannot be renamed: %1.").arg(renamed.errorString());
}

QString Files::remove(const QUrl &file) const
{
    QFile removed(file.toLocalFile());
    return removed.remove() ? QString() : tr("It cannot be deleted: %1.").arg(removed.errorString());
}

bool Files::markCutShort(const QUrl &recording) const
{
    if (sizeOf(recording) == 0) {
        return false;
    }
    rename(recording, tr("%1 (cut short)").arg(nameOf(recording)));
    return true;
}

QList<QUrl> Files::mediaOf(const QList<QUrl> &urls) const
{
    QList<QUrl> media;
    for (const QUrl &url : urls) {
        if (!isFolder(url)) {
            media += url;
            continue;
        }
        for (const mediafiles::File &file : mediafiles::filesBelow(url.toLocalFile())) {
            media += QUrl::fromLocalFile(file.path);
        }
    }
    return media;
}

QList<QUrl> Files::readPlaylist(const QUrl &playlist) const
{
    QFile file(playlist.toLocalFile());
    QList<QUrl> media;
    if (!file.open(QIODevice::ReadOnly)) {
        return media;
    }
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) {
            continue;
        }
        media += line.contains(QLatin1String("://"))
                     ? QUrl(line)
                     : QUrl::fromLocalFile(QFileInfo(playlist.toLocalFile()).dir().absoluteFilePath(line));
    }
    return media;
}

QString Files::addToPlaylist(const QString &name, const QUrl &medium) const
{
    const QString problem = problemOfName(name);
    if (!problem.isEmpty()) {
        return problem;
    }
    QFile file(pathIn(music(), name.trimmed() + QStringLiteral(".m3u8")));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append) || file.write(linesOf({medium})) < 0 || !file.flush()) {
        return tr("The playlist cannot be written: %1.").arg(file.errorString());
    }
    return {};
}

QUrl Files::makeQueue(const QList<QUrl> &media)
{
    // A new name each time, because the player takes the same URL for the same medium.
    QFile file(m_folder.filePath(QStringLiteral("%1.m3u8").arg(m_queueCount++)));
    if (!file.open(QIODevice::WriteOnly) || file.write(linesOf(media)) < 0) {
        return {};
    }
    return QUrl::fromLocalFile(file.fileName());
}
