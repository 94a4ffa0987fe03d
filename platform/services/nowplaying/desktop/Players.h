#pragma once

#include "RemotePlayer.h"

#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusServiceWatcher>

#include <map>
#include <memory>
#include <optional>

namespace voro::nowplaying {

/**
 * The players of other programs on the session bus, and which of them is the one to show and command. Of very many, or
 * many of one program, some are left out.
 */
class Players : public QObject {
    Q_OBJECT
public:
    void attach(const QDBusConnection &bus);
    void detach();

    /** The one that plays, else the one that played last; null when there is none. */
    const RemotePlayer *current() const { return m_current; }
    /** Commands current(), of which there must be one. */
    void command(const TrackCommand &command, const Desktop::Answered &done);

Q_SIGNALS:
    /** current() is another one. */
    void currentChanged();
    /** Something about current() has changed. */
    void currentUpdated(const voro::nowplaying::PlayerChange &change);
    /** The players that were there when the bus came have all been asked, and have answered or never will. */
    void listed();

private Q_SLOTS:
    void propertiesChanged(const QDBusMessage &message);
    void seeked(const QDBusMessage &message);

private:
    struct KnownPlayer {
        std::unique_ptr<RemotePlayer> player;
        quint64 id = 0;
        /** Grows with every player that begins to play. */
        quint64 activity = 0;
        bool wasPlaying = false;
    };

    void list();
    bool hasRoomFor(const QString &owner) const;
    void ownerChanged(const QString &name, const QString &owner);
    void playerChanged(const QString &name, const PlayerChange &change);
    void choose();
    void checkListed();
    /** Calls for every player of the connection that has sent a signal, and chooses once when all have changed. */
    void forOwner(const QString &owner, const std::function<void(RemotePlayer &)> &function);

    std::optional<QDBusConnection> m_bus;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    std::map<QString, KnownPlayer> m_players;
    RemotePlayer *m_current = nullptr;
    /** Tells the current one from another at the same place in memory; 0 when there is none. */
    quint64 m_currentId = 0;
    /** What has changed about the current one since the last choice. */
    PlayerChange m_change;
    bool m_isInSignal = false;
    quint64 m_lastId = 0;
    quint64 m_lastActivity = 0;
    /** The answers that are still to come before the players of the beginning are known by name. */
    int m_openQuestions = 0;
    bool m_isListing = false;
};

} // namespace voro::nowplaying
