#include "Players.h"

#include "Mpris.h"

#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>

#include <algorithm>

namespace voro::nowplaying {

namespace {

const QString PropertiesChanged = QStringLiteral("PropertiesChanged");
const QString Seeked = QStringLiteral("Seeked");

/** Every signal is compared with all players; one program must not take the places of all others. */
constexpr size_t MostPlayers = 64;
constexpr std::ptrdiff_t MostOfOneOwner = 4;

bool isForeignPlayer(const QString &name)
{
    return name.startsWith(mpris::NamePrefix) && !name.startsWith(mpris::OurPrefix) && name != mpris::ProxyName;
}

QDBusMessage busCall(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method);
    message.setArguments(arguments);
    return message;
}

} // namespace

void Players::attach(const QDBusConnection &bus)
{
    m_bus = bus;
    m_bus->connect(QString(), mpris::Path, mpris::PropertiesInterface, PropertiesChanged, {mpris::PlayerInterface},
                   QString(), this, SLOT(propertiesChanged(QDBusMessage)));
    m_bus->connect(QString(), mpris::Path, mpris::PlayerInterface, Seeked, this, SLOT(seeked(QDBusMessage)));
    m_watcher = std::make_unique<QDBusServiceWatcher>("org.mpris.MediaPlayer2*", *m_bus,
                                                      QDBusServiceWatcher::WatchForOwnerChange);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &name, const QString &, const QString &owner) { ownerChanged(name, owner); });
    m_isListing = true;
    list();
}

void Players::detach()
{
    m_watcher.reset();
    m_bus->disconnect(QString(), mpris::Path, mpris::PropertiesInterface, PropertiesChanged, {mpris::PlayerInterface},
                      QString(), this, SLOT(propertiesChanged(QDBusMessage)));
    m_bus->disconnect(QString(), mpris::Path, mpris::PlayerInterface, Seeked, this, SLOT(seeked(QDBusMessage)));
    m_bus.reset();
    m_players.clear();
    m_openQuestions = 0;
    choose();
}

void Players::list()
{
    const auto ask = [this](const QDBusMessage &message, const std::function<void(const QVariantList &)> &answered) {
        ++m_openQuestions;
        auto *const watcher = new QDBusPendingCallWatcher(m_bus->asyncCall(message), m_watcher.get());
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, answered] {
            --m_openQuestions;
            if (!watcher->isError()) {
                answered(watcher->reply().arguments());
            }
            watcher->deleteLater();
            choose();
        });
    };
    ask(busCall("ListNames", {}), [this, ask](const QVariantList &answer) {
        for (const QString &name : answer.value(0).toStringList()) {
            if (isForeignPlayer(name)) {
                ask(busCall("GetNameOwner", {name}),
                    [this, name](const QVariantList &owner) { ownerChanged(name, owner.value(0).toString()); });
            }
        }
    });
}

void Players::checkListed()
{
    const bool isOpen = m_openQuestions > 0 || std::any_of(m_players.begin(), m_players.end(), [](const auto &entry) {
                            return !entry.second.player->hasSettled();
                        });
    if (m_isListing && !isOpen) {
        m_isListing = false;
        Q_EMIT listed();
    }
}

void Players::ownerChanged(const QString &name, const QString &owner)
{
    if (!isForeignPlayer(name)) {
        return;
    }
    const auto found = m_players.find(name);
    if (found != m_players.end() && found->second.player->owner() == owner) {
        return;
    }
    if (found != m_players.end()) {
        m_players.erase(found);
    }
    if (!owner.isEmpty() && hasRoomFor(owner)) {
        KnownPlayer &entry = m_players[name];
        entry = {std::make_unique<RemotePlayer>(*m_bus, name, owner), ++m_lastId};
        connect(entry.player.get(), &RemotePlayer::changed, this,
                [this, name](const PlayerChange &change) { playerChanged(name, change); });
    }
    choose();
}

bool Players::hasRoomFor(const QString &owner) const
{
    const auto isItsPlayer = [&owner](const auto &entry) { return entry.second.player->owner() == owner; };
    return m_players.size() < MostPlayers
           && std::count_if(m_players.begin(), m_players.end(), isItsPlayer) < MostOfOneOwner;
}

void Players::playerChanged(const QString &name, const PlayerChange &change)
{
    KnownPlayer &entry = m_players[name];
    const bool isPlaying = entry.player->isPlaying();
    if (isPlaying && !std::exchange(entry.wasPlaying, isPlaying)) {
        entry.activity = ++m_lastActivity;
    }
    entry.wasPlaying = isPlaying;
    if (entry.id == m_currentId) {
        m_change.state |= change.state;
        m_change.metadata |= change.metadata;
        m_change.track |= change.track;
    }
    if (!m_isInSignal) {
        choose();
    }
}

void Players::choose()
{
    const auto rank = [this](const KnownPlayer &entry) {
        return std::tuple(entry.player->isKnown(), entry.player->isPlaying(), entry.id == m_currentId, entry.activity);
    };
    const auto best = std::max_element(m_players.begin(), m_players.end(), [&rank](const auto &a, const auto &b) {
        return rank(a.second) < rank(b.second);
    });
    const bool hasAny = best != m_players.end() && best->second.player->isKnown();
    m_current = hasAny ? best->second.player.get() : nullptr;
    const quint64 id = hasAny ? best->second.id : 0;
    const bool isOther = std::exchange(m_currentId, id) != id;
    const PlayerChange change = std::exchange(m_change, {});
    if (isOther) {
        Q_EMIT currentChanged();
    }
    checkListed();
    if (!isOther && change.isAny()) {
        Q_EMIT currentUpdated(change);
    }
}

void Players::command(const TrackCommand &command, const Desktop::Answered &done)
{
    QString problem;
    const QDBusMessage message = m_current->makeCommand(command.data, problem);
    if (!problem.isEmpty()) {
        done(problem);
        return;
    }
    // The answer may come when the player is gone.
    auto *const watcher = new QDBusPendingCallWatcher(m_bus->asyncCall(message, mpris::Patience), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, done] {
        watcher->deleteLater();
        done(watcher->isError() ? watcher->error().message() : QString());
    });
}

void Players::forOwner(const QString &owner, const std::function<void(RemotePlayer &)> &function)
{
    m_isInSignal = true;
    for (const auto &[name, entry] : m_players) {
        if (entry.player->owner() == owner) {
            function(*entry.player);
        }
    }
    m_isInSignal = false;
    choose();
}

void Players::propertiesChanged(const QDBusMessage &message)
{
    if (message.signature() == "sa{sv}as") {
        const QVariantList arguments = message.arguments();
        const auto changed = qdbus_cast<QVariantMap>(arguments.at(1));
        forOwner(message.service(),
                 [&](RemotePlayer &player) { player.propertiesChanged(changed, arguments.at(2).toStringList()); });
    }
}

void Players::seeked(const QDBusMessage &message)
{
    if (message.signature() == "x") {
        forOwner(message.service(),
                 [&message](RemotePlayer &player) { player.seeked(message.arguments().at(0).toLongLong()); });
    }
}

} // namespace voro::nowplaying
