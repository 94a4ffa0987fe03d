#include "MprisAdaptor.h"

#include "HolderModel.h"
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

QDBusMessage busCall(const char *method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(BusService, BusPath, BusService, method);
    message.setArguments(arguments);
    return message;
}

} // namespace

MprisAdaptor::MprisAdaptor(const HolderModel &model) : m_model(model)
{
    connect(&model, &HolderModel::leaving, this, &MprisAdaptor::hide);
    connect(&model, &HolderModel::appeared, this, &MprisAdaptor::show);
    connect(&model, &HolderModel::playerPropertiesChanged, this, &MprisAdaptor::emitChanges);
    connect(&model, &HolderModel::desktopEntryFound, this, &MprisAdaptor::emitDesktopEntry);
    connect(&model, &HolderModel::seeked, this, &MprisAdaptor::emitSeeked);
}

MprisAdaptor::~MprisAdaptor()
{
    blockSignals(true);
    detach();
}

// --- On the bus

void MprisAdaptor::attach(const QDBusConnection &bus)
{
    m_bus = bus;
    m_bus->registerVirtualObject(mpris::Path, this);
    if (m_model.hasHolder()) {
        show();
        Q_EMIT shownChanged();
    }
}

void MprisAdaptor::detach()
{
    if (m_bus) {
        const bool wasShown = isShown();
        m_busName.clear();
        m_application.clear();
        m_bus->unregisterObject(mpris::Path);
        m_bus.reset();
        if (wasShown) {
            Q_EMIT shownChanged();
        }
    }
}

void MprisAdaptor::show()
{
    if (m_bus && m_model.hasHolder()) {
        m_published = m_model.playerProperties();
        claim(mpris::busName(m_model.name()));
        findApplication();
    }
}

/** Looks for the holder on the bus under the name of its desktop file, under which a desktop commands it. */
void MprisAdaptor::findApplication()
{
    const QString entry = m_model.desktopEntry();
    if (entry.isEmpty()) {
        return;
    }
    auto *const watcher =
        new QDBusPendingCallWatcher(m_bus->asyncCall(busCall("GetConnectionUnixProcessID", {entry})), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, entry] {
        watcher->deleteLater();
        const QDBusPendingReply<uint> reply = *watcher;
        if (isShown() && !reply.isError() && reply.value() == m_model.process() && entry == m_model.desktopEntry()) {
            m_application = entry;
            const QVariantMap changes{{mpris::CanQuit, true}, {mpris::CanRaise, true}};
            signal(mpris::PropertiesInterface, "PropertiesChanged", {mpris::RootInterface, changes, QStringList()});
        }
    });
}

void MprisAdaptor::hide()
{
    m_application.clear();
    if (isShown()) {
        m_bus->send(busCall("ReleaseName", {std::exchange(m_busName, QString())}));
    }
}

void MprisAdaptor::claim(const QString &busName)
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

void MprisAdaptor::claimed(uint result)
{
    if (result == PrimaryOwner || result == AlreadyOwner) {
        return;
    }
    const QString other = mpris::busName(m_model.name(), QStringLiteral(".instance%1").arg(m_model.process()));
    if (m_busName != other) {
        claim(other);
        return;
    }
    log::warn(log::Category::NowPlaying, "the session bus refuses the name %s", qUtf8Printable(other));
    m_busName.clear();
    Q_EMIT shownChanged();
}

void MprisAdaptor::signal(const QString &interface, const QString &name, const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createSignal(mpris::Path, interface, name);
    message.setArguments(arguments);
    m_bus->send(message);
}

void MprisAdaptor::emitChanges()
{
    if (!isShown()) {
        return;
    }
    const QVariantMap present = m_model.playerProperties();
    QVariantMap changes;
    QStringList gone;
    for (auto property = present.cbegin(); property != present.cend(); ++property) {
        if (m_published.value(property.key()) != property.value()) {
            changes.insert(property.key(), property.value());
        }
    }
    for (auto property = m_published.cbegin(); property != m_published.cend(); ++property) {
        if (!present.contains(property.key())) {
            gone += property.key();
        }
    }
    m_published = present;
    if (!changes.isEmpty() || !gone.isEmpty()) {
        signal(mpris::PropertiesInterface, "PropertiesChanged", {mpris::PlayerInterface, changes, gone});
    }
}

void MprisAdaptor::emitDesktopEntry(const QString &entry)
{
    if (isShown()) {
        const QVariantMap changes{{mpris::DesktopEntry, entry}};
        signal(mpris::PropertiesInterface, "PropertiesChanged", {mpris::RootInterface, changes, QStringList()});
        findApplication();
    }
}

void MprisAdaptor::emitSeeked()
{
    if (isShown()) {
        signal(mpris::PlayerInterface, "Seeked", {m_model.position()});
    }
}

// --- Calls

// Qt leaves calls for the introspection of a virtual object to handleMessage().
QString MprisAdaptor::introspect(const QString &) const
{
    return {};
}

QDBusMessage MprisAdaptor::answer(const QDBusMessage &message)
{
    if (message.interface() == mpris::PropertiesInterface) {
        return callProperties(message);
    }
    return message.member() == "Introspect" ? message.createReply(introspection()) : call(message);
}

bool MprisAdaptor::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
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

QString MprisAdaptor::introspection() const
{
    QStringList missing;
    const QVariantMap player = m_model.playerProperties();
    const QVariantMap root = m_model.rootProperties();
    for (const QString &name : {mpris::DesktopEntry, mpris::LoopStatus, mpris::Shuffle}) {
        if (!player.contains(name) && !root.contains(name)) {
            missing += name;
        }
    }
    return nowplaying::introspection(missing);
}

QVariantMap MprisAdaptor::properties(const QString &interface) const
{
    if (interface == mpris::RootInterface) {
        QVariantMap properties = m_model.rootProperties();
        properties.insert(mpris::CanQuit, !m_application.isEmpty());
        properties.insert(mpris::CanRaise, !m_application.isEmpty());
        return properties;
    }
    if (interface != mpris::PlayerInterface) {
        return {};
    }
    QVariantMap properties = m_model.playerProperties();
    properties.insert("Position", m_model.position());
    return properties;
}

QDBusMessage MprisAdaptor::call(const QDBusMessage &message)
{
    struct Method {
        QString interface;
        QString signature;
    };
    // What is said to be impossible does nothing.
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
        return message.createErrorReply(QDBusError::InvalidArgs, "Wrong arguments for " + name);
    }
    if (name == "OpenUri") {
        return message.createErrorReply(QDBusError::NotSupported, "URIs cannot be opened");
    }
    if (method->interface == mpris::RootInterface) {
        commandApplication(name);
    } else {
        command(name);
    }
    return message.createReply();
}

void MprisAdaptor::commandApplication(const QString &method)
{
    if (m_application.isEmpty()) {
        return;
    }
    const QString path = '/' + QString(m_application).replace('.', '/').replace('-', '_');
    const bool isRaised = method == "Raise";
    QDBusMessage call = QDBusMessage::createMethodCall(m_application, path, "org.freedesktop.Application",
                                                       isRaised ? "Activate" : "ActivateAction");
    if (isRaised) {
        call << QVariantMap();
    } else {
        call << "quit" << QVariantList() << QVariantMap();
    }
    m_bus->send(call);
}

void MprisAdaptor::command(const QString &method)
{
    static const QMap<QString, QString> commands = {{"Next", "next"},   {"Previous", "prev"},
                                                    {"Pause", "pause"}, {"PlayPause", "playpause"},
                                                    {"Stop", "stop"},   {"Play", "play"}};
    const bool isPossible = (method != "Next" || m_model.canGoNext())
                            && (method != "Previous" || m_model.canGoPrevious()) && commands.contains(method);
    if (isPossible) {
        Q_EMIT commanded({commands.value(method)});
    }
}

QDBusMessage MprisAdaptor::callProperties(const QDBusMessage &message)
{
    static const QMap<QString, QString> signatures = {{"Get", "ss"}, {"GetAll", "s"}, {"Set", "ssv"}};
    const QString method = message.member();
    if (!signatures.contains(method)) {
        return message.createErrorReply(QDBusError::UnknownMethod, "There is no method " + method);
    }
    if (message.signature() != signatures.value(method)) {
        return message.createErrorReply(QDBusError::InvalidArgs, "Wrong arguments for a property call");
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
    static const QStringList writable{mpris::LoopStatus, mpris::Shuffle, mpris::Rate, mpris::Volume};
    if (!writable.contains(name)) {
        return message.createErrorReply(QDBusError::PropertyReadOnly, name + " cannot be set");
    }
    const QVariant value = arguments.at(2).value<QDBusVariant>().variant();
    if (value.metaType() != known.value(name).metaType()) {
        return message.createErrorReply(QDBusError::InvalidArgs, "Wrong type for " + name);
    }
    return setProperty(message, name, value);
}

QDBusMessage MprisAdaptor::setProperty(const QDBusMessage &message, const QString &name, const QVariant &value)
{
    if (name == mpris::LoopStatus) {
        return setLoopStatus(message, value.toString());
    }
    if (name == mpris::Volume) {
        return changeVolume(message, value.toDouble());
    }
    if (name == mpris::Shuffle) {
        Q_EMIT commanded({QVariantMap{{"command", "shuffle"}, {"value", value.toBool() ? "all" : "off"}}});
    } else if (value.toDouble() == 0) {
        // The only rate is 1; 0 is a pause.
        command(QStringLiteral("Pause"));
    }
    return message.createReply();
}

QDBusMessage MprisAdaptor::setLoopStatus(const QDBusMessage &message, const QString &status)
{
    const QString mode = mpris::toRepeatMode(status);
    if (mode.isEmpty()) {
        return message.createErrorReply(QDBusError::InvalidArgs, "LoopStatus is None, Track or Playlist");
    }
    Q_EMIT commanded({QVariantMap{{"command", "repeat"}, {"value", mode}}});
    return message.createReply();
}

QDBusMessage MprisAdaptor::changeVolume(const QDBusMessage &message, double volume)
{
    message.setDelayedReply(true);
    const int level = volume > 0 ? static_cast<int>(std::lround(std::min(volume, 1.0) * 100)) : 0;
    Q_EMIT volumeCommanded({VolumeCommand::Set, level}, [message, bus = *m_bus](const QString &problem) {
        bus.send(problem.isEmpty() ? message.createReply() : message.createErrorReply(QDBusError::Failed, problem));
    });
    return {};
}

} // namespace voro::nowplaying
