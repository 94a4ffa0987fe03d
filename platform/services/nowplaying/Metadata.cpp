#include "Metadata.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace voro::nowplaying {

namespace {

constexpr State States[] = {State::Stopped, State::Paused, State::Playing};

bool isTrue(const QVariant &value)
{
    return value.toString() == QLatin1String("true");
}

QString oneOf(const QStringList &known, const QVariant &value)
{
    const QString text = textOf(value);
    return known.contains(text) ? text : QString();
}

QString orElse(const QString &text, const char *other)
{
    return text.isEmpty() ? QString::fromLatin1(other) : text;
}

} // namespace

QString toText(State state)
{
    switch (state) {
    case State::Playing:
        return QStringLiteral("playing");
    case State::Paused:
        return QStringLiteral("paused");
    default:
        return QStringLiteral("stopped");
    }
}

std::optional<State> toState(const QString &text)
{
    const auto found =
        std::find_if(std::begin(States), std::end(States), [&text](State state) { return toText(state) == text; });
    return found == std::end(States) ? std::nullopt : std::optional(*found);
}

QString textOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return value.toString();
    case QMetaType::QStringList:
    case QMetaType::QVariantList: {
        QStringList texts;
        for (const QVariant &item : value.toList()) {
            if (item.typeId() == QMetaType::QString) {
                texts += item.toString();
            }
        }
        return texts.join(QLatin1String(", "));
    }
    default:
        return {};
    }
}

quint32 unsignedOf(const QVariant &value)
{
    constexpr double Maximum = std::numeric_limits<quint32>::max();
    const double number = value.toDouble();
    return std::isnan(number) ? 0 : static_cast<quint32>(std::clamp(number, 0.0, Maximum));
}

Metadata Metadata::fromMap(const QVariantMap &map)
{
    const auto value = [&map](const char *key) { return map.value(QLatin1String(key)); };
    Metadata metadata;
    metadata.artist = textOf(value("artist"));
    metadata.album = textOf(value("album"));
    // A number here is that of a track without a title.
    metadata.title = value("track").typeId() == QMetaType::QString ? value("track").toString() : QString();
    metadata.trackNumber = textOf(value("track_number"));
    metadata.artwork = textOf(value("albumArtwork"));
    metadata.repeatMode = oneOf({"none", "track", "all"}, value("repeat_mode"));
    metadata.shuffleMode = oneOf({"off", "all"}, value("shuffle_mode"));
    metadata.nextEnabled = isTrue(value("nextEnabled"));
    metadata.previousEnabled = isTrue(value("prevEnabled"));
    metadata.position = unsignedOf(value("position"));
    metadata.duration = unsignedOf(value("duration"));
    return metadata;
}

QVariantMap Metadata::toMap() const
{
    return {
        {"artist", artist},
        {"album", album},
        {"track", title},
        {"track_number", trackNumber},
        {"albumArtwork", artwork},
        {"repeat_mode", orElse(repeatMode, "none")},
        {"shuffle_mode", orElse(shuffleMode, "off")},
        {"nextEnabled", nextEnabled},
        {"prevEnabled", previousEnabled},
        {"position", position},
        {"duration", duration},
    };
}

} // namespace voro::nowplaying
