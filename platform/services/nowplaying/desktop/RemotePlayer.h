#pragma once

#include "RunningPosition.h"

#include <QtCore/QObject>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

#include <services/nowplaying/Desktop.h>

#include <functional>

namespace voro::nowplaying {

/**
 * A player of another program on the session bus. Everything that it reports is checked; missing reports are not
 * waited for.
 */
class RemotePlayer : public QObject {
    Q_OBJECT
public:
    /** The player behind a bus name, and the owner of that name. */
    RemotePlayer(const QDBusConnection &bus, const QString &name, const QString &owner);

    const QString &name() const { return m_name; }
    const QString &owner() const { return m_owner; }
    /** Whether it has said what it is. */
    bool isKnown() const { return m_hasProperties && m_player.process > 0; }
    /** Whether it has answered, or never will. */
    bool hasSettled() const { return m_openQuestions == 0; }
    bool isPlaying() const { return m_player.state == State::Playing; }
    /** As it is now, its position included. */
    Player player() const;

    void propertiesChanged(const QVariantMap &changed, const QStringList &invalidated);
    void seeked(qint64 position);
    /** The call that carries the command out; a problem for people when the player cannot do it. */
    QDBusMessage makeCommand(const QVariant &data, QString &problem) const;

Q_SIGNALS:
    /** isKnown(), hasSettled(), the state or anything of the track but its position going on has changed. */
    void changed(const voro::nowplaying::PlayerChange &change);

private:
    /** Calls and hands the arguments of the answer on; nothing is handed on when there is none. */
    void ask(const QDBusMessage &message, const std::function<void(const QVariantList &)> &answered);
    void askForProperties();
    void askForProcess();
    /** It does not answer; whatever it has said does not count any more. */
    void forget();
    void take(const QVariantMap &properties);
    void updatePosition(const QVariantMap &properties, bool isOtherTrack);
    QDBusMessage makeModeCommand(const QVariantMap &data, QString &problem) const;

    QDBusConnection m_bus;
    const QString m_name;
    const QString m_owner;
    int m_openQuestions = 0;
    bool m_isAsking = false;
    bool m_isToAskAgain = false;
    bool m_hasProperties = false;
    Player m_player;
    /** What identifies the track; empty when it does not say. */
    QString m_track;
    RunningPosition m_position;
    QVariantMap m_properties;
};

} // namespace voro::nowplaying
