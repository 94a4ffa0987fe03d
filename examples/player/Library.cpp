#include "Library.h"

#include "TagReader.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <Files.h>

#include <algorithm>
#include <numeric>

namespace {

constexpr int RescanMs = 200;
constexpr int ReshowMs = 500;

const char *nameOf(mediafiles::Kind kind)
{
    switch (kind) {
    case mediafiles::Kind::Folder:
        return "folder";
    case mediafiles::Kind::Film:
        return "film";
    case mediafiles::Kind::Playlist:
        return "playlist";
    default:
        return "note";
    }
}

bool hasTags(const mediafiles::File &file)
{
    return file.kind == mediafiles::Kind::Sound || file.kind == mediafiles::Kind::Film;
}

} // namespace

Library::Library(QObject *parent) : QAbstractListModel(parent), m_reader(new TagReader)
{
    m_reader->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_reader, &QObject::deleteLater);
    connect(m_reader, &TagReader::found, this, &Library::onFound);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_rescan, qOverload<>(&QTimer::start));
    m_collator.setNumericMode(true);
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
    for (QTimer *timer : {&m_rescan, &m_reshow}) {
        timer->setSingleShot(true);
    }
    m_rescan.setInterval(RescanMs);
    m_reshow.setInterval(ReshowMs);
    connect(&m_rescan, &QTimer::timeout, this, &Library::scan);
    connect(&m_reshow, &QTimer::timeout, this, &Library::show);
    m_thread.start(QThread::LowPriority);
}

Library::~Library()
{
    QMetaObject::invokeMethod(m_reader, &TagReader::clear);
    m_pool.waitForDone();
    m_thread.quit();
    m_thread.wait();
}

void Library::setFolder(const QUrl &folder)
{
    const QString path = QDir::cleanPath(folder.toLocalFile());
    if (path == m_folder) {
        return;
    }
    if (!m_folder.isEmpty()) {
        m_watcher.removePath(m_folder);
    }
    m_folder = path;
    m_watcher.addPath(path);
    Q_EMIT folderChanged();
    scan();
}

void Library::setOrder(Order order)
{
    if (order == m_order) {
        return;
    }
    m_order = order;
    Q_EMIT orderChanged();
    scan();
}

void Library::setSearch(const QString &search)
{
    if (search == m_search) {
        return;
    }
    const bool wasDeep = isDeep();
    m_search = search;
    Q_EMIT searchChanged();
    // Every letter narrows down what was read for the first one.
    if (isDeep() && wasDeep) {
        show();
    } else {
        scan();
    }
}

void Library::scan()
{
    ++m_generation;
    if (m_isReady) {
        m_isReady = false;
        Q_EMIT isReadyChanged();
    }
    QMetaObject::invokeMethod(m_reader, &TagReader::clear);
    m_others.clear();
    const auto read = isDeep() ? &mediafiles::filesBelow : &mediafiles::filesIn;
    m_pool.start([this, read, folder = m_folder, generation = m_generation] {
        const QList<mediafiles::File> files = read(folder);
        QMetaObject::invokeMethod(this, [this, generation, files] { take(generation, files); });
    });
}

void Library::take(int generation, const QList<mediafiles::File> &files)
{
    if (generation != m_generation) {
        return;
    }
    m_entries.clear();
    m_places.clear();
    for (const mediafiles::File &file : files) {
        m_places.insert(file.path, static_cast<int>(m_entries.size()));
        m_entries += Entry{file, m_cache.find(file.path, file.modified)};
    }
    m_asked = 0;
    show();
    m_isReady = true;
    Q_EMIT isReadyChanged();
    askOn();
}

void Library::show()
{
    QList<int> shown;
    QStringList paths;
    for (int i = 0; i < m_entries.size(); ++i) {
        if (matches(m_entries[i])) {
            shown += i;
        }
    }
    if (m_order != ByFolder) {
        std::stable_sort(shown.begin(), shown.end(),
                         [this](int one, int other) { return isBefore(m_entries[one], m_entries[other]); });
    }
    for (const int place : shown) {
        paths += m_entries[place].file.path;
    }
    if (paths == m_shownPaths) {
        m_shown = shown;
        if (!shown.isEmpty()) {
            Q_EMIT dataChanged(index(0), index(count() - 1));
        }
        return;
    }
    beginResetModel();
    m_shown = shown;
    m_shownPaths = paths;
    endResetModel();
    Q_EMIT countChanged();
}

void Library::ask(Entry &entry) const
{
    if (!entry.tags && !entry.isAsked && hasTags(entry.file)) {
        entry.isAsked = true;
        QMetaObject::invokeMethod(m_reader, [reader = m_reader, path = entry.file.path] { reader->read(path); });
    }
}

void Library::askOn()
{
    if (!isDeep()) {
        return;
    }
    while (m_asked < m_entries.size() && (m_entries[m_asked].tags || m_entries[m_asked].isAsked)) {
        ++m_asked;
    }
    if (m_asked < m_entries.size()) {
        ask(m_entries[m_asked]);
    }
}

void Library::onFound(const QString &path, const Tags &found, const QByteArray &picture)
{
    const auto place = m_places.constFind(path);
    if (m_others.remove(path) && place == m_places.cend()) {
        keep(path, QFileInfo(path).lastModified().toMSecsSinceEpoch(), found, picture);
    }
    if (place == m_places.cend()) {
        return;
    }
    Entry &entry = m_entries[*place];
    entry.tags = &keep(path, entry.file.modified, found, picture);
    if (isDeep()) {
        if (!m_reshow.isActive()) {
            m_reshow.start();
        }
    } else if (const int row = static_cast<int>(m_shown.indexOf(*place)); row >= 0) {
        Q_EMIT dataChanged(index(row), index(row));
    }
    askOn();
}

const Tags &Library::keep(const QString &path, qint64 modified, Tags tags, const QByteArray &picture)
{
    tags.cover = picture.isEmpty() ? Files::coverOf(QUrl::fromLocalFile(path)) : m_cache.coverFile(picture);
    const Tags &kept = m_cache.keep(path, modified, tags);
    ++m_titlesFound;
    Q_EMIT titlesFoundChanged();
    return kept;
}

QString Library::titleOf(const Entry &entry) const
{
    if (entry.tags && !entry.tags->title.isEmpty()) {
        return entry.tags->title;
    }
    const QFileInfo file(entry.file.path);
    return entry.file.kind == mediafiles::Kind::Folder ? file.fileName() : file.completeBaseName();
}

bool Library::matches(const Entry &entry) const
{
    if (m_search.isEmpty()) {
        return true;
    }
    const auto contains = [this](const QString &text) { return text.contains(m_search, Qt::CaseInsensitive); };
    return contains(QFileInfo(entry.file.path).fileName())
           || (entry.tags
               && (contains(entry.tags->title) || contains(entry.tags->artist) || contains(entry.tags->album)));
}

bool Library::isBefore(const Entry &one, const Entry &other) const
{
    static const Tags Unknown;
    const Tags &first = one.tags ? *one.tags : Unknown;
    const Tags &second = other.tags ? *other.tags : Unknown;
    // What has no name comes last.
    const auto compare = [this](const QString &text, const QString &otherText) {
        if (text.isEmpty() != otherText.isEmpty()) {
            return text.isEmpty() ? 1 : -1;
        }
        return m_collator.compare(text, otherText);
    };
    int order = m_order == ByArtist ? compare(first.artist, second.artist) : 0;
    if (order == 0 && m_order != ByTitle) {
        order = compare(first.album, second.album);
    }
    if (order == 0 && m_order != ByTitle) {
        order = first.track - second.track;
    }
    return (order != 0 ? order : compare(titleOf(one), titleOf(other))) < 0;
}

int Library::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant Library::data(const QModelIndex &index, int role) const
{
    Entry &entry = m_entries[m_shown.at(index.row())];
    switch (role) {
    case UrlRole:
        return QUrl::fromLocalFile(entry.file.path);
    case KindRole:
        return QString::fromLatin1(nameOf(entry.file.kind));
    case TitleRole:
        ask(entry);
        return titleOf(entry);
    case ArtistRole:
        return entry.tags ? entry.tags->artist : QString();
    case DurationRole:
        return entry.tags ? entry.tags->duration : 0;
    case SizeRole:
        return entry.file.size;
    case CoverRole:
        return entry.tags ? entry.tags->cover : QUrl();
    default:
        return {};
    }
}

QHash<int, QByteArray> Library::roleNames() const
{
    return {{UrlRole, "url"},           {KindRole, "kind"}, {TitleRole, "title"}, {ArtistRole, "artist"},
            {DurationRole, "duration"}, {SizeRole, "size"}, {CoverRole, "cover"}};
}

QList<QUrl> Library::media() const
{
    QList<QUrl> urls;
    for (const int place : m_shown) {
        if (hasTags(m_entries[place].file)) {
            urls += QUrl::fromLocalFile(m_entries[place].file.path);
        }
    }
    return urls;
}

int Library::indexOf(const QUrl &url) const
{
    return static_cast<int>(m_shownPaths.indexOf(url.toLocalFile()));
}

void Library::readTags(const QUrl &url)
{
    const QFileInfo file(url.toLocalFile());
    if (const auto place = m_places.constFind(file.filePath()); place != m_places.cend()) {
        ask(m_entries[*place]);
    } else if (url.isLocalFile() && !m_others.contains(file.filePath())
               && !m_cache.find(file.filePath(), file.lastModified().toMSecsSinceEpoch())) {
        m_others.insert(file.filePath());
        QMetaObject::invokeMethod(m_reader, [reader = m_reader, path = file.filePath()] { reader->read(path); });
    }
}

QString Library::titleOf(const QUrl &url) const
{
    const QFileInfo file(url.isLocalFile() ? url.toLocalFile() : url.fileName());
    const Tags *tags = m_cache.find(file.filePath(), file.lastModified().toMSecsSinceEpoch());
    return tags && !tags->title.isEmpty() ? tags->title : file.completeBaseName();
}
