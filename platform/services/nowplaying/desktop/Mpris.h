#pragma once

#include <services/nowplaying/Desktop.h>

/* The names and values of MPRIS, the desktop's interface for players, and what they are here. */

namespace voro::nowplaying::mpris {

inline const QString Path = QStringLiteral("/org/mpris/MediaPlayer2");
inline const QString RootInterface = QStringLiteral("org.mpris.MediaPlayer2");
inline const QString PlayerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
inline const QString PropertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
/** Players' names begin so. */
inline const QString NamePrefix = QStringLiteral("org.mpris.MediaPlayer2.");
/** Our own names begin so. */
inline const QString OurPrefix = QStringLiteral("org.mpris.MediaPlayer2.voro.");
/** The daemon of playerctl, which is no player but stands for the one that was active last. */
inline const QString ProxyName = QStringLiteral("org.mpris.MediaPlayer2.playerctld");

/** The properties that can be set, and those that a player need not have. */
inline const QString LoopStatus = QStringLiteral("LoopStatus");
inline const QString Shuffle = QStringLiteral("Shuffle");
inline const QString Rate = QStringLiteral("Rate");
inline const QString Volume = QStringLiteral("Volume");
inline const QString DesktopEntry = QStringLiteral("DesktopEntry");
inline const QString CanQuit = QStringLiteral("CanQuit");
inline const QString CanRaise = QStringLiteral("CanRaise");

/** How long a player may take for an answer, in milliseconds. */
inline constexpr int Patience = 5000;

/** The bus name of a holder; `suffix` makes it another one. */
QString busName(const QString &holder, const QString &suffix = {});

/** "Playing", "Paused", "Stopped" and back; anything else is stopped. */
QString fromState(State state);
State toState(const QString &status);

/** "None", "Track", "Playlist" for "none", "track", "all" and back; empty for anything else. */
QString fromRepeatMode(const QString &mode);
QString toRepeatMode(const QString &status);

/** Metadata for the bus. `track` is the track's number, 0 while there is none. */
QVariantMap fromMetadata(const Metadata &metadata, quint64 track);
/**
 * Takes over the entries of a player's metadata; whatever has a wrong type or is too large counts as not given.
 * Returns what identifies the track.
 */
QString takeMetadata(const QVariant &value, Metadata &metadata);

/** A place of artwork as a URL that needs nothing from the net; empty when it is none. */
QString artworkUrl(const QString &artwork);

} // namespace voro::nowplaying::mpris
