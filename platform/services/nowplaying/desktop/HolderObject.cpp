#include "HolderObject.h"

#include "DesktopEntry.h"
#include "Introspection.h"
#include "Mpris.h"

#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>
#include <QtDBus/QDBusVariant>

#include <pps/Log.h>

#include <cmath>

namespace voro::nowplaying {

namespace {

constexpr auto BusService = "org.freedesktop.DBus";
constexpr auto BusPath = "/org/freedesktop/DBus";
constexpr uint DoNotQueue = 4;
constexpr uint PrimaryOwner = 1;
constexpr uint AlreadyOwner = 4;
/** The properties that can be set, and those that are not always there. */
const QString LoopStatus = QStringLiteral("LoopStatus");
const QString Shuffle = QStringLiteral("Shuffle");
const QString Rate = QStringLiteral("Rate");
const QString Volume = QStringLiteral("Volume");
const QString DesktopEntry = QStringLiteral("DesktopEntry");
/** A report that differs by more than this from where the position should be is a jump. In milliseconds. */
constexpr qint64 Jump = 1000;

QDBusMessage busCall(const char *method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(BusService, BusPath, BusService, method);
    message.setArguments(arguments);
    return message;
}

} // namespace

HolderObject::~HolderObject()
{
    blockSignals(true);
    detach();
}

// --- The model

void HolderObject::setHolder(const QString &name, qint64 process)
{
    hide();
    m_hasHolder = true;
    m_name = name;
    m_process = process;
    m_state = State::Stopped;
    m_metadata = {};
    m_position = {};
    m_track = 0;
    askForDesktopEntry();
    show();
}

void HolderObject::askForDesktopEntry()
{
    m_desktopEntry.clear();
    const auto entry = std::make_shared<QString>();
    const auto read = [entry, process = m_process] { *entry = desktopEntry(process); };
    m_desktopEntryCall.start(read, [this, entry] {
        m_desktopEntry = *entry;
        if (isShown() && !m_desktopEntry.isEmpty()) {
            const QVariantMap changes{{DesktopEntry, m_desktopEntry}};
            signal(mpris::PropertiesInterface, "PropertiesChanged", {mpris::RootInterface, changes, QStringList()});
        }
    });
}

void HolderObject::rename(const QString &name)
{
    hide();
    m_name = name;
    show();
}

void HolderObject::clear()
{
    hide();
    m_hasHolder = false;
}

void HolderObject::setState(State state)
{
    m_state = state;
    m_position.setRate(state == State::Playing ? 1 : 0);
    tellChanges();
}

void HolderObject::setMetadata(const Metadata &metadata)
{
    const bool isOtherTrack = m_track == 0 || metadata.title != m_metadata.title || metadata.artist != m_metadata.artist
                              || metadata.album != m_metadata.album;
    const bool isJump = std::abs(static_cast<qint64>(metadata.position) - m_position.now()) > Jump;
    if (isOtherTrack) {
        m_track = ++m_lastTrack;
    }
    m_metadata = metadata;
    m_position.setDuration(metadata.duration);
    m_position.set(metadata.position);
    tellChanges();
    if (isJump) {
        tellSeeked();
    }
}

void HolderObject::setVolume(double volume)
{
    m_volume = volume;
    tellChanges();
}

void HolderObject::changeTrack()
{
    m_track = ++m_lastTrack;
    tellChanges();
}

// --- On the bus

void HolderObject::attach(const QDBusConnection &bus)
{
    m_bus = bus;
    m_bus->registerVirtualObject(mpris::Path, this);
    if (m_hasHolder) {
        show();
        Q_EMIT shownChanged();
    }
}

void HolderObject::detach()
{
    if (m_bus) {
        const bool wasShown = isShown();
        m_busName.clear();
        m_bus->unregisterObject(mpris::Path);
        m_bus.reset();
        if (wasShown) {
            Q_EMIT shownChanged();
        }
    }
}

void HolderObject::show()
{
    if (m_bus && m_hasHolder) {
        m_told = playerProperties();
        claim(mpris::busName(m_name));
    }
}

void HolderObject::hide()
{
    if (isShown()) {
        m_bus->send(busCall("ReleaseName", {std::exchange(m_busName, QString())}));
    }
}

void HolderObject::claim(const QString &busName)
{
    m_busName = busName;
    auto *const watcher =
        new QDBusPendingCallWatcher(m_bus->asyncCall(busCall("RequestName", {busName, DoNotQueue})), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, number = ++m_claim] {
        watcher->deleteLater();
        const QDBusPendingReply<uint> reply = *watcher;
        if (number == m_claim && isShown()) {
            claimed(reply.isError() ? 0 : reply.value());
        }
    });
}

void HolderObject::claimed(uint result)
{
    if (result == PrimaryOwner || result == AlreadyOwner) {
        return;
    }
    const QString other = mpris::busName(m_name, QStringLiteral(".instance%1").arg(m_process));
    if (m_busName != other) {
        claim(other);
        return;
    }
    log::warn(log::Category::NowPlaying, "the session bus refuses the name %s", qUtf8Printable(other));
    m_busName.clear();
    Q_EMIT shownChanged();
}

void HolderObject::signal(const QString &interface, const QString &name, const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createSignal(mpris::Path, interface, name);
    message.setArguments(arguments);
    m_bus->send(message);
}

void HolderObject::tellChanges()
{
    if (!isShown()) {
        return;
    }
    const QVariantMap present = playerProperties();
    QVariantMap changes;
    QStringList gone;
    for (auto property = present.cbegin(); property != present.cend(); ++property) {
        if (m_told.value(property.key()) != property.value()) {
            changes.insert(property.key(), property.value());
        }
    }
    for (auto property = m_told.cbegin(); property != m_told.cend(); ++property) {
        if (!present.contains(property.key())) {
            gone += property.key();
        }
    }
    m_told = present;
    if (!changes.isEmpty() || !gone.isEmpty()) {
        signal(mpris::PropertiesInterface, "PropertiesChanged", {mpris::PlayerInterface, changes, gone});
    }
}

void HolderObject::tellSeeked()
{
    if (isShown()) {
        signal(mpris::PlayerInterface, "Seeked", {m_position.now() * 1000});
    }
}

// --- Calls

// Qt leaves calls for the introspection of a virtual object to handleMessage().
QString HolderObject::introspect(const QString &) const
{
    return {};
}

QDBusMessage HolderObject::answer(const QDBusMessage &message)
{
    if (message.interface() == mpris::PropertiesInterface) {
        return callProperties(message);
    }
    return message.member() == "Introspect" ? message.createReply(introspection()) : call(message);
}

bool HolderObject::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    if (message.path() != mpris::Path || message.type() != QDBusMessage::MethodCallMessage) {
        return false;
    }
    const QDBusMessage reply = answer(message);
    if (reply.type() == QDBusMessage::InvalidMessage) {
        // It follows later.
        return true;
    }
    return connection.send(reply);
}

QString HolderObject::introspection() const
{
    QStringList missing;
    const QVariantMap player = playerProperties();
    const QVariantMap root = rootProperties();
    for (const QString &name : {DesktopEntry, LoopStatus, Shuffle}) {
        if (!player.contains(name) && !root.contains(name)) {
            missing += name;
        }
    }
    return nowplaying::introspection(missing);
}

QVariantMap HolderObject::rootProperties() const
{
    QVariantMap properties{
        {"CanQuit", false},
        {"CanRaise", false},
        {"HasTrackList", false},
        {"Identity", m_name},
        {"SupportedUriSchemes", QStringList()},
        {"SupportedMimeTypes", QStringList()},
    };
    if (!m_desktopEntry.isEmpty()) {
        properties.insert(DesktopEntry, m_desktopEntry);
    }
    return properties;
}

QVariantMap HolderObject::playerProperties() const
{
    QVariantMap properties{
        {"PlaybackStatus", mpris::fromState(m_state)},
        {Rate, 1.0},
        {"Metadata", mpris::fromMetadata(m_metadata, m_track)},
        {Volume, m_volume},
        {"MinimumRate", 1.0},
        {"MaximumRate", 1.0},
        {"CanGoNext", m_metadata.nextEnabled},
        {"CanGoPrevious", m_metadata.previousEnabled},
        {"CanPlay", true},
        {"CanPause", true},
        {"CanSeek", false},
        {"CanControl", true},
    };
    // A holder that does not give a mode has none.
    if (!m_metadata.repeatMode.isEmpty()) {
        properties.insert(LoopStatus, mpris::fromRepeatMode(m_metadata.repeatMode));
    }
    if (!m_metadata.shuffleMode.isEmpty()) {
        properties.insert(Shuffle, m_metadata.shuffleMode == "all");
    }
    return properties;
}

QVariantMap HolderObject::properties(const QString &interface) const
{
    if (interface == mpris::RootInterface) {
        return rootProperties();
    }
    if (interface != mpris::PlayerInterface) {
        return {};
    }
    QVariantMap properties = playerProperties();
    properties.insert("Position", m_position.now() * 1000);
    return properties;
}

QDBusMessage HolderObject::call(const QDBusMessage &message)
{
    struct Method {
        QString interface;
        QString signature;
    };
    // Raise, Quit and seeking are said to be impossible; they do nothing then.
    static const QMap<QString, Method> methods = {
        {"Raise", {mpris::RootInterface, ""}},      {"Quit", {mpris::RootInterface, ""}},
        {"Next", {mpris::PlayerInterface, ""}},     {"Previous", {mpris::PlayerInterface, ""}},
        {"Pause", {mpris::PlayerInterface, ""}},    {"PlayPause", {mpris::PlayerInterface, ""}},
        {"Stop", {mpris::PlayerInterface, ""}},     {"Play", {mpris::PlayerInterface, ""}},
        {"Seek", {mpris::PlayerInterface, "x"}},    {"SetPosition", {mpris::PlayerInterface, "ox"}},
        {"OpenUri", {mpris::PlayerInterface, "s"}},
    };
    const QString name = message.member();
    const auto method = methods.constFind(name);
    if (method == methods.cend() || (!message.interface().isEmpty() && message.interface() != method->interface)) {
        return message.createErrorReply(QDBusError::UnknownMethod, "There is no method " + name);
    }
    if (message.signature() != method->signature) {
        return message.createErrorReply(QDBusError::InvalidArgs, name + " takes other arguments");
    }
    if (name == "OpenUri") {
        return message.createErrorReply(QDBusError::NotSupported, "URIs cannot be opened");
    }
    command(name);
    return message.createReply();
}

void HolderObject::command(const QString &method)
{
    static const QMap<QString, QString> commands = {{"Next", "next"},   {"Previous", "prev"},
                                                    {"Pause", "pause"}, {"PlayPause", "playpause"},
                                                    {"Stop", "stop"},   {"Play", "play"}};
    const bool isPossible = (method != "Next" || m_metadata.nextEnabled)
                            && (method != "Previous" || m_metadata.previousEnabled) && commands.contains(method);
    if (isPossible) {
        Q_EMIT commanded({commands.value(method)});
    }
}

QDBusMessage HolderObject::callProperties(const QDBusMessage &message)
{
    static const QMap<QString, QString> signatures = {{"Get", "ss"}, {"GetAll", "s"}, {"Set", "ssv"}};
    const QString method = message.member();
    if (message.signature() != signatures.value(method)) {
        return message.createErrorReply(QDBusError::InvalidArgs, "This is no call of a property");
    }
    const QVariantList arguments = message.arguments();
    const QString interface = arguments.at(0).toString();
    const QVariantMap known = properties(interface);
    if (known.isEmpty()) {
        return message.createErrorReply(QDBusError::UnknownInterface, "There is no interface " + interface);
    }
    if (method == "GetAll") {
        return message.createReply(known);
    }
    const QString name = arguments.at(1).toString();
    if (!known.contains(name)) {
        return message.createErrorReply(QDBusError::UnknownProperty, "There is no property " + name);
    }
    if (method == "Get") {
        return message.createReply(QVariant::fromValue(QDBusVariant(known.value(name))));
    }
    static const QStringList writable{LoopStatus, Shuffle, Rate, Volume};
    if (!writable.contains(name)) {
        return message.createErrorReply(QDBusError::PropertyReadOnly, name + " cannot be set");
    }
    const QVariant value = arguments.at(2).value<QDBusVariant>().variant();
    if (value.metaType() != known.value(name).metaType()) {
        return message.createErrorReply(QDBusError::InvalidArgs, name + " is of another type");
    }
    return setProperty(message, name, value);
}

QDBusMessage HolderObject::setProperty(const QDBusMessage &message, const QString &name, const QVariant &value)
{
    if (name == LoopStatus) {
        return setLoopStatus(message, value.toString());
    }
    if (name == Volume) {
        return changeVolume(message, value.toDouble());
    }
    if (name == Shuffle) {
        Q_EMIT commanded({QVariantMap{{"command", "shuffle"}, {"value", value.toBool() ? "all" : "off"}}});
    } else if (value.toDouble() == 0) {
        // The only rate is 1; 0 is a pause.
        command(QStringLiteral("Pause"));
    }
    return message.createReply();
}

QDBusMessage HolderObject::setLoopStatus(const QDBusMessage &message, const QString &status)
{
    const QString mode = mpris::toRepeatMode(status);
    if (mode.isEmpty()) {
        return message.createErrorReply(QDBusError::InvalidArgs, "LoopStatus is None, Track or Playlist");
    }
    Q_EMIT commanded({QVariantMap{{"command", "repeat"}, {"value", mode}}});
    return message.createReply();
}

QDBusMessage HolderObject::changeVolume(const QDBusMessage &message, double volume)
{
    message.setDelayedReply(true);
    const int level = volume > 0 ? static_cast<int>(std::lround(std::min(volume, 1.0) * 100)) : 0;
    Q_EMIT volumeCommanded({VolumeCommand::Set, level}, [message, bus = *m_bus](const QString &problem) {
        bus.send(problem.isEmpty() ? message.createReply() : message.createErrorReply(QDBusError::Failed, problem));
    });
    return {};
}

} // namespace voro::nowplaying
