#pragma once

#include <QtCore/QString>
#include <QtCore/QUrl>

#include <unordered_map>

/** What a medium says of itself. */
struct Tags {
    QString title;
    QString artist;
    QString album;
    int track = 0;
    qint64 duration = 0; ///< milliseconds
    QUrl cover;          ///< a file
};

/** The tags of the media that were read once, kept in a file between the starts of the program. */
class TagCache {
public:
    TagCache();
    ~TagCache();

    /** Null for a file that was not read, or was changed since. Like all tags here it lives as long as the cache. */
    const Tags *find(const QString &path, qint64 modified) const;
    const Tags &keep(const QString &path, qint64 modified, const Tags &tags);
    /** A file for a cover, which several media may have in common. */
    QUrl coverFile(const QByteArray &content) const;

private:
    struct Entry {
        qint64 modified = 0;
        Tags tags;
    };

    QString m_folder;
    // What was found stays where it is.
    std::unordered_map<QString, Entry> m_entries;
    bool m_isChanged = false;
};
