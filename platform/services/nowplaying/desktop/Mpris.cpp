#include "Mpris.h"

#include <QtCore/QUrl>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusObjectPath>

namespace voro::nowplaying::mpris {

namespace {

constexpr qsizetype MaximumName = 255;
constexpr qsizetype MaximumText = 4096;
constexpr qsizetype MaximumArtwork = 32 * 1024;

const QList<std::pair<QString, QString>> &repeatModes()
{
    static const QList<std::pair<QString, QString>> modes = {{"none", "None"}, {"track", "Track"}, {"all", "Playlist"}};
    return modes;
}

// An element must not begin with a digit, nor be empty.
bool mayStand(char c, bool isFirst, bool isLast)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '-'
           || (c >= '0' && c <= '9' && !isFirst) || (c == '.' && !isFirst && !isLast);
}

QString shortText(const QVariant &value)
{
    return textOf(value).left(MaximumText);
}

} // namespace

QString busName(const QString &holder, const QString &suffix)
{
    const QByteArray bytes = holder.toUtf8().left(MaximumName - OurPrefix.size() - suffix.size());
    QString name = OurPrefix;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const bool isGood = mayStand(bytes[i], name.endsWith('.'), i + 1 == bytes.size());
        name += isGood ? QLatin1Char(bytes[i]) : QLatin1Char('_');
    }
    return name + suffix;
}

QString fromState(State state)
{
    switch (state) {
    case State::Playing:
        return QStringLiteral("Playing");
    case State::Paused:
        return QStringLiteral("Paused");
    default:
        return QStringLiteral("Stopped");
    }
}

State toState(const QString &status)
{
    if (status == "Playing") {
        return State::Playing;
    }
    return status == "Paused" ? State::Paused : State::Stopped;
}

QString fromRepeatMode(const QString &mode)
{
    for (const auto &[ours, theirs] : repeatModes()) {
        if (mode == ours) {
            return theirs;
        }
    }
    return {};
}

QString toRepeatMode(const QString &status)
{
    for (const auto &[ours, theirs] : repeatModes()) {
        if (status == theirs) {
            return ours;
        }
    }
    return {};
}

QVariantMap fromMetadata(const Metadata &metadata, quint64 track)
{
    const QString id = track == 0 ? QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack")
                                  : QStringLiteral("/org/voro/nowplaying/track/%1").arg(track);
    QVariantMap map{{"mpris:trackid", QVariant::fromValue(QDBusObjectPath(id))}};
    const auto insert = [&map](const char *key, const QVariant &value, bool isThere) {
        if (isThere) {
            map.insert(QLatin1String(key), value);
        }
    };
    const QString artwork = artworkUrl(metadata.artwork);
    bool isNumber = false;
    const int number = metadata.trackNumber.toInt(&isNumber);
    insert("xesam:title", metadata.title, !metadata.title.isEmpty());
    insert("xesam:artist", QStringList(metadata.artist), !metadata.artist.isEmpty());
    insert("xesam:album", metadata.album, !metadata.album.isEmpty());
    insert("xesam:trackNumber", number, isNumber);
    insert("mpris:length", static_cast<qint64>(metadata.duration) * 1000, metadata.duration > 0);
    insert("mpris:artUrl", artwork, !artwork.isEmpty());
    return map;
}

QString takeMetadata(const QVariant &value, Metadata &metadata)
{
    QVariantMap map;
    if (value.metaType() == QMetaType::fromType<QDBusArgument>()) {
        const auto argument = value.value<QDBusArgument>();
        if (argument.currentSignature() == "a{sv}") {
            argument >> map;
        }
    }
    metadata.title = shortText(map.value("xesam:title"));
    metadata.artist = shortText(map.value("xesam:artist"));
    metadata.album = shortText(map.value("xesam:album"));
    metadata.trackNumber = shortText(map.value("xesam:trackNumber"));
    metadata.duration = unsignedOf(map.value("mpris:length").toDouble() / 1000);
    metadata.artwork = textOf(map.value("mpris:artUrl"));
    if (metadata.artwork.size() > MaximumArtwork) {
        metadata.artwork.clear();
    }
    const QVariant track = map.value("mpris:trackid");
    const bool isPath = track.metaType() == QMetaType::fromType<QDBusObjectPath>();
    return isPath ? track.value<QDBusObjectPath>().path() : shortText(track);
}

QString artworkUrl(const QString &artwork)
{
    const QUrl url = artwork.startsWith('/') ? QUrl::fromLocalFile(artwork) : QUrl(artwork, QUrl::TolerantMode);
    const bool isLocal = url.isLocalFile() && (url.host().isEmpty() || url.host() == "localhost");
    return url.isValid() && (isLocal || url.scheme() == "data") ? QString::fromLatin1(url.toEncoded()) : QString();
}

} // namespace voro::nowplaying::mpris
