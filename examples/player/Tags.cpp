#include "Tags.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDataStream>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QStandardPaths>

namespace {

constexpr quint32 Format = 1;

QDataStream &operator<<(QDataStream &stream, const Tags &tags)
{
    return stream << tags.title << tags.artist << tags.album << tags.track << tags.duration << tags.cover;
}

QDataStream &operator>>(QDataStream &stream, Tags &tags)
{
    return stream >> tags.title >> tags.artist >> tags.album >> tags.track >> tags.duration >> tags.cover;
}

} // namespace

TagCache::TagCache()
    : m_folder(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + QStringLiteral("/voro"))
{
    QDir().mkpath(m_folder + QStringLiteral("/covers"));
    QFile file(m_folder + QStringLiteral("/tags"));
    if (!file.open(QFile::ReadOnly)) {
        return;
    }
    QDataStream stream(&file);
    quint32 format = 0;
    stream >> format;
    while (format == Format && !stream.atEnd()) {
        QString path;
        Entry entry;
        stream >> path >> entry.modified >> entry.tags;
        if (stream.status() != QDataStream::Ok) {
            return;
        }
        m_entries.insert_or_assign(path, entry);
    }
}

TagCache::~TagCache()
{
    QSaveFile file(m_folder + QStringLiteral("/tags"));
    if (!m_isChanged || !file.open(QFile::WriteOnly)) {
        return;
    }
    QDataStream stream(&file);
    stream << Format;
    for (const auto &[path, entry] : m_entries) {
        stream << path << entry.modified << entry.tags;
    }
    file.commit();
}

const Tags *TagCache::find(const QString &path, qint64 modified) const
{
    const auto entry = m_entries.find(path);
    return entry == m_entries.cend() || entry->second.modified != modified ? nullptr : &entry->second.tags;
}

const Tags &TagCache::keep(const QString &path, qint64 modified, const Tags &tags)
{
    m_isChanged = true;
    return m_entries.insert_or_assign(path, Entry{modified, tags}).first->second.tags;
}

QUrl TagCache::coverFile(const QByteArray &content) const
{
    const QByteArray name = QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex();
    const QString path = m_folder + QStringLiteral("/covers/") + QString::fromLatin1(name);
    if (!QFile::exists(path)) {
        QSaveFile file(path);
        if (!file.open(QFile::WriteOnly) || file.write(content) != content.size() || !file.commit()) {
            return {};
        }
    }
    return QUrl::fromLocalFile(path);
}
