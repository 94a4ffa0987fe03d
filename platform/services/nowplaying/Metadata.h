#pragma once

#include <QtCore/QVariant>

#include <optional>

namespace voro::nowplaying {

enum class State { Stopped, Paused, Playing };

/** The state's name in messages: "stopped", "paused", "playing". */
QString toText(State state);
std::optional<State> toState(const QString &text);

/** A source's report of its track. Fields that it did not give are empty, false or 0. */
struct Metadata {
    QString artist;
    QString album;
    QString title;
    QString trackNumber;
    /** Where the artwork is, as the source wrote it. */
    QString artwork;
    /** "none", "track" or "all". */
    QString repeatMode;
    /** "off" or "all". */
    QString shuffleMode;
    bool nextEnabled = false;
    bool previousEnabled = false;
    /** Milliseconds. */
    quint32 position = 0;
    quint32 duration = 0;

    /** Takes a map of a "metadata" message; a value of a wrong type counts as not given. */
    static Metadata fromMap(const QVariantMap &map);
    /**
     * The map of an "md_update" message, which always has every field: modes that were not given are "none" and "off".
     */
    QVariantMap toMap() const;

    bool operator==(const Metadata &other) const = default;
};

/** A text of another program; lists are joined by commas, anything else but numbers and texts is empty. */
QString textOf(const QVariant &value);
/** A number of another program, limited to what 32 bits hold; 0 when it is none. */
quint32 unsignedOf(const QVariant &value);

} // namespace voro::nowplaying
