#pragma once

#include "Tags.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QCollator>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QSet>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

#include <MediaFiles.h>

class TagReader;

/**
 * The media of a folder. In the order of folders it is what the folder shows; in another order, or with something that
 * is searched for, it is every medium in it and below it. Folders and tags are read in the background: tags of the
 * lines that are seen, or of all when the order or the search wants them.
 */
class Library : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QUrl folder READ folder WRITE setFolder NOTIFY folderChanged)
    Q_PROPERTY(Order order READ order WRITE setOrder NOTIFY orderChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged)
    /** Whether the folder has been read. */
    Q_PROPERTY(bool isReady READ isReady NOTIFY isReadyChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /** How many titles were found out; for bindings to what titleOf() says. */
    Q_PROPERTY(int titlesFound READ titlesFound NOTIFY titlesFoundChanged)
public:
    enum Order { ByFolder, ByTitle, ByArtist, ByAlbum };
    Q_ENUM(Order)
    enum Role { UrlRole = Qt::UserRole, KindRole, TitleRole, ArtistRole, DurationRole, SizeRole, CoverRole };

    explicit Library(QObject *parent = nullptr);
    ~Library() override;

    QUrl folder() const { return QUrl::fromLocalFile(m_folder); }
    void setFolder(const QUrl &folder);
    Order order() const { return m_order; }
    void setOrder(Order order);
    QString search() const { return m_search; }
    void setSearch(const QString &search);
    bool isReady() const { return m_isReady; }
    int count() const { return static_cast<int>(m_shown.size()); }
    int titlesFound() const { return m_titlesFound; }

    int rowCount(const QModelIndex &parent) const override;
    /** Asks for the tags of a line that is seen first. */
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /** The media as they are shown, from top to bottom. */
    Q_INVOKABLE QList<QUrl> media() const;
    Q_INVOKABLE int indexOf(const QUrl &url) const;
    /** The title of any medium whose tags were read once, else the name of its file. */
    Q_INVOKABLE QString titleOf(const QUrl &url) const;
    /** Reads the tags of a medium, which may lie in another folder, if nobody has read them. */
    Q_INVOKABLE void readTags(const QUrl &url);

Q_SIGNALS:
    void folderChanged();
    void orderChanged();
    void searchChanged();
    void isReadyChanged();
    void countChanged();
    void titlesFoundChanged();

private:
    struct Entry {
        mediafiles::File file;
        const Tags *tags = nullptr;
        bool isAsked = false;
    };

    /** Whether all that is below the folder is shown, rather than the folder. */
    bool isDeep() const { return m_order != ByFolder || !m_search.isEmpty(); }
    void scan();
    void take(int generation, const QList<mediafiles::File> &files);
    void show();
    void ask(Entry &entry) const;
    /** Asks for the next tags that nobody has seen yet. */
    void askOn();
    void onFound(const QString &path, const Tags &found, const QByteArray &picture);
    const Tags &keep(const QString &path, qint64 modified, Tags tags, const QByteArray &picture);
    QString titleOf(const Entry &entry) const;
    bool matches(const Entry &entry) const;
    bool isBefore(const Entry &one, const Entry &other) const;

    QString m_folder;
    Order m_order = ByFolder;
    QString m_search;
    bool m_isReady = false;
    int m_generation = 0;
    mutable QList<Entry> m_entries;
    /** The places of the entries that are shown, in their order. */
    QList<int> m_shown;
    QStringList m_shownPaths;
    QHash<QString, int> m_places;
    /** The media of other folders whose tags are being read. */
    QSet<QString> m_others;
    int m_titlesFound = 0;
    /** The entries before this one have been asked for. */
    int m_asked = 0;
    QCollator m_collator;
    TagCache m_cache;
    QFileSystemWatcher m_watcher;
    /** Several changes are one. */
    QTimer m_rescan;
    QTimer m_reshow;
    QThreadPool m_pool;
    QThread m_thread;
    TagReader *m_reader;
};
