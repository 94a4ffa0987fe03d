#include "RemotePlayer.h"

#include "Mpris.h"

#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>
#include <QtDBus/QDBusVariant>

#include <cmath>

namespace voro::nowplaying {

namespace {

/** How far "forward" and "rewind" go, in microseconds. */
constexpr qint64 Step = 10'000'000;

const QStringList &keptProperties()
{
    static const QStringList names = {"PlaybackStatus", "LoopStatus", "Shuffle",  "Rate",    "CanGoNext",
                                      "CanGoPrevious",  "CanPlay",    "CanPause", "CanSeek", "CanControl"};
    return names;
}

QDBusMessage playerCall(const QString &owner, const QString &interface, const QString &method,
                        const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(owner, mpris::Path, interface, method);
    message.setAutoStartService(false);
    message.setArguments(arguments);
    return message;
}

} // namespace

RemotePlayer::RemotePlayer(const QDBusConnection &bus, const QString &name, const QString &owner)
    : m_bus(bus),
      m_name(name),
      m_owner(owner)
{
    askForProcess();
    askForProperties();
}

void RemotePlayer::ask(const QDBusMessage &message, const std::function<void(const QVariantList &)> &answered)
{
    ++m_openQuestions;
    auto *const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, mpris::Patience), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, answered] {
        watcher->deleteLater();
        --m_openQuestions;
        answered(watcher->isError() ? QVariantList() : watcher->reply().arguments());
    });
}

void RemotePlayer::askForProcess()
{
    QDBusMessage message = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                          "org.freedesktop.DBus", "GetConnectionUnixProcessID");
    message.setArguments({m_owner});
    ask(message, [this](const QVariantList &answer) {
        m_player.process = answer.isEmpty() ? 0 : answer.first().toUInt();
        Q_EMIT changed({});
    });
}

void RemotePlayer::askForProperties()
{
    if (std::exchange(m_isAsking, true)) {
        m_isToAskAgain = true;
        return;
    }
    ask(playerCall(m_owner, mpris::PropertiesInterface, "GetAll", {mpris::PlayerInterface}),
        [this](const QVariantList &answer) {
            m_isAsking = false;
            const QVariant map = answer.isEmpty() ? QVariant() : answer.first();
            if (map.metaType() == QMetaType::fromType<QDBusArgument>()
                && map.value<QDBusArgument>().currentSignature() == "a{sv}") {
                m_hasProperties = true;
                // What it does not mention it has no longer.
                m_properties.clear();
                QVariantMap all = qdbus_cast<QVariantMap>(map);
                if (!all.contains("Metadata")) {
                    all.insert("Metadata", QVariant());
                }
                take(all);
            } else {
                forget();
            }
            if (std::exchange(m_isToAskAgain, false)) {
                askForProperties();
            }
        });
}

void RemotePlayer::propertiesChanged(const QVariantMap &changed, const QStringList &invalidated)
{
    if (!m_hasProperties || !invalidated.isEmpty()) {
        // It did not answer before, or leaves it to us to ask.
        askForProperties();
    }
    if (m_hasProperties) {
        take(changed);
    }
}

void RemotePlayer::forget()
{
    m_hasProperties = false;
    m_properties.clear();
    m_player = {.process = m_player.process, .state = State::Stopped, .metadata = {}};
    m_track.clear();
    m_position = {};
    Q_EMIT changed({});
}

void RemotePlayer::take(const QVariantMap &properties)
{
    const Player before = m_player;
    const QString trackBefore = m_track;
    for (const QString &name : keptProperties()) {
        if (properties.contains(name)) {
            m_properties.insert(name, properties.value(name));
        }
    }
    const auto isTrue = [this](const char *name) { return m_properties.value(QLatin1String(name)).toBool(); };
    Metadata &metadata = m_player.metadata;
    if (properties.contains("Metadata")) {
        m_track = mpris::takeMetadata(properties.value("Metadata"), metadata);
    }
    m_player.state = mpris::toState(m_properties.value("PlaybackStatus").toString());
    metadata.repeatMode = mpris::toRepeatMode(m_properties.value("LoopStatus").toString());
    metadata.shuffleMode = isTrue("Shuffle") ? QStringLiteral("all") : QStringLiteral("off");
    metadata.nextEnabled = isTrue("CanGoNext");
    metadata.previousEnabled = isTrue("CanGoPrevious");
    // Not everybody gives each track a name of its own, and after a stop a track begins anew.
    const bool isOtherTrack = m_track != trackBefore || metadata.title != before.metadata.title
                              || metadata.artist != before.metadata.artist || metadata.album != before.metadata.album
                              || (before.state == State::Stopped && isPlaying());
    updatePosition(properties, isOtherTrack);
    Q_EMIT changed({m_player.state != before.state, metadata != before.metadata, isOtherTrack});
}

void RemotePlayer::updatePosition(const QVariantMap &properties, bool isOtherTrack)
{
    const double rate = m_properties.contains("Rate") ? m_properties.value("Rate").toDouble() : 1;
    m_position.setDuration(m_player.metadata.duration);
    m_position.setRate(isPlaying() && std::isfinite(rate) ? std::clamp(rate, -100.0, 100.0) : 0);
    if (properties.contains("Position")) {
        m_position.set(unsignedOf(properties.value("Position").toDouble() / 1000));
    } else if (isOtherTrack) {
        m_position.set(0);
    }
}

void RemotePlayer::seeked(qint64 position)
{
    m_position.set(unsignedOf(static_cast<double>(position) / 1000));
    Q_EMIT changed({.metadata = true});
}

Player RemotePlayer::player() const
{
    Player player = m_player;
    player.metadata.position = unsignedOf(m_position.now());
    return player;
}

// --- Commands

QDBusMessage RemotePlayer::makeCommand(const QVariant &data, QString &problem) const
{
    struct Method {
        QString method;
        /** The property that says whether it is possible. */
        QString condition;
        QVariantList arguments;
    };
    static const QMap<QString, Method> methods = {
        {"play", {"Play", "CanPlay", {}}},           {"pause", {"Pause", "CanPause", {}}},
        {"stop", {"Stop", "CanControl", {}}},        {"next", {"Next", "CanGoNext", {}}},
        {"prev", {"Previous", "CanGoPrevious", {}}}, {"forward", {"Seek", "CanSeek", {Step}}},
        {"rewind", {"Seek", "CanSeek", {-Step}}},
    };
    if (data.typeId() == QMetaType::QVariantMap) {
        return makeModeCommand(data.toMap(), problem);
    }
    const Method method = methods.value(data.toString());
    // A player that does not say is asked to try.
    if (m_properties.contains(method.condition) && !m_properties.value(method.condition).toBool()) {
        problem = "the player cannot do this now";
    }
    return playerCall(m_owner, mpris::PlayerInterface, method.method, method.arguments);
}

QDBusMessage RemotePlayer::makeModeCommand(const QVariantMap &data, QString &problem) const
{
    static const QStringList repeatModes = {"none", "all", "track"};
    const bool isRepeat = data.value("command") == "repeat";
    const QString property = isRepeat ? QStringLiteral("LoopStatus") : QStringLiteral("Shuffle");
    const Metadata &metadata = m_player.metadata;
    if (!m_properties.contains(property)) {
        problem = "the player cannot do this";
        return {};
    }
    // Without a value the next mode is meant.
    const qsizetype next = (repeatModes.indexOf(metadata.repeatMode) + 1) % repeatModes.size();
    const QString nextMode = isRepeat ? repeatModes.at(next) : QString(metadata.shuffleMode == "all" ? "off" : "all");
    const QString mode = data.value("value", nextMode).toString();
    const QVariant value = isRepeat ? QVariant(mpris::fromRepeatMode(mode)) : QVariant(mode == "all");
    return playerCall(m_owner, mpris::PropertiesInterface, "Set",
                      {mpris::PlayerInterface, property, QVariant::fromValue(QDBusVariant(value))});
}

} // namespace voro::nowplaying
