#include "Sources.h"

#include <QtCore/QSettings>
#include <QtCore/QStandardPaths>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>

#include <Bus.h>

#include <algorithm>

namespace {

const QString Prefix = QStringLiteral("org.mpris.MediaPlayer2.");
/** Of the one name by which the device shows the role's holder to other programs. */
const QString HolderPrefix = Prefix + QStringLiteral("voro.");
const QString Path = QStringLiteral("/org/mpris/MediaPlayer2");
const QString Root = QStringLiteral("org.mpris.MediaPlayer2");
const QString PlayerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString Properties = QStringLiteral("org.freedesktop.DBus.Properties");

QDBusMessage call(const QString &service, const QString &interface, const QString &method)
{
    return QDBusMessage::createMethodCall(service, Path, interface, method);
}

QDBusMessage callForAll(const QString &service, const QString &interface)
{
    return call(service, Properties, QStringLiteral("GetAll")) << interface;
}

/** The name of the icon that a desktop file gives. */
QString iconOf(const QString &desktopEntry)
{
    const QString file = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, desktopEntry + ".desktop");
    const QSettings entry(file, QSettings::IniFormat);
    return file.isEmpty() ? QString() : entry.value(QStringLiteral("Desktop Entry/Icon")).toString();
}

} // namespace

Sources::Sources(QObject *parent) : QAbstractListModel(parent), m_bus(application::sessionBus())
{
    if (!m_bus.isConnected()) {
        return;
    }
    m_bus.connect(QStringLiteral("org.freedesktop.DBus"), {}, QStringLiteral("org.freedesktop.DBus"),
                  QStringLiteral("NameOwnerChanged"), this, SLOT(onOwnerChanged(QString, QString, QString)));
    m_bus.connect({}, Path, Properties, QStringLiteral("PropertiesChanged"), this,
                  SLOT(onPropertiesChanged(QString, QVariantMap, QStringList)));
    whenAnswered(m_bus.interface()->asyncCall(QStringLiteral("ListNames")), [this](const QVariant &names) {
        for (const QString &name : names.toStringList()) {
            add(name);
        }
    });
}

void Sources::whenAnswered(const QDBusPendingCall &call, const std::function<void(const QVariant &)> &use)
{
    const auto watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, use] {
        watcher->deleteLater();
        if (const QDBusMessage answer = watcher->reply(); answer.type() == QDBusMessage::ReplyMessage) {
            use(answer.arguments().value(0));
        }
    });
}

void Sources::add(const QString &service)
{
    if (!service.startsWith(Prefix)) {
        return;
    }
    whenAnswered(m_bus.interface()->asyncCall(QStringLiteral("GetNameOwner"), service),
                 [this, service](const QVariant &owner) {
                     remove(service);
                     beginInsertRows({}, count(), count());
                     m_players += Player{service, owner.toString(), service.mid(Prefix.size()), {}, {}};
                     endInsertRows();
                     Q_EMIT countChanged();
                     const auto take = [this, id = owner.toString()](const QVariant &properties) {
                         update(id, qdbus_cast<QVariantMap>(properties));
                     };
                     whenAnswered(m_bus.asyncCall(callForAll(service, Root)), take);
                     whenAnswered(m_bus.asyncCall(callForAll(service, PlayerInterface)), take);
                 });
}

void Sources::remove(const QString &service)
{
    for (int row = count(); row-- > 0;) {
        if (m_players[row].service == service) {
            beginRemoveRows({}, row, row);
            m_players.removeAt(row);
            endRemoveRows();
            setActive(std::find_if(m_players.cbegin(), m_players.cend(), [](const Player &it) { return it.isPlaying; })
                      - m_players.cbegin());
            Q_EMIT countChanged();
        }
    }
}

void Sources::update(const QString &owner, const QVariantMap &properties)
{
    for (int row = 0; row < count(); ++row) {
        Player &player = m_players[row];
        if (player.owner != owner) {
            continue;
        }
        for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
            if (property.key() == QLatin1String("Identity")) {
                player.name = property->toString();
            } else if (property.key() == QLatin1String("DesktopEntry")) {
                player.icon = iconOf(property->toString());
            } else if (property.key() == QLatin1String("PlaybackStatus")) {
                player.isPlaying = *property == QLatin1String("Playing");
            } else if (property.key() == QLatin1String("Metadata")) {
                player.title = qdbus_cast<QVariantMap>(*property).value(QStringLiteral("xesam:title")).toString();
            }
        }
        Q_EMIT dataChanged(index(row), index(row));
        setActive(player.isPlaying || m_active >= count() ? row : m_active);
    }
}

void Sources::setActive(qsizetype row)
{
    const auto holder = std::find_if(m_players.cbegin(), m_players.cend(),
                                     [](const Player &it) { return it.service.startsWith(HolderPrefix); });
    if (holder != m_players.cend()) {
        row = holder - m_players.cbegin();
    }
    m_active = row < count() ? row : 0;
    Q_EMIT activeChanged();
}

void Sources::onOwnerChanged(const QString &service, const QString &, const QString &now)
{
    if (now.isEmpty()) {
        remove(service);
    } else {
        add(service);
    }
}

void Sources::onPropertiesChanged(const QString &, const QVariantMap &changed, const QStringList &)
{
    update(message().service(), changed);
}

int Sources::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant Sources::data(const QModelIndex &index, int role) const
{
    const Player &player = m_players.at(index.row());
    switch (role) {
    case NameRole:
        return player.name;
    case IconRole:
        return player.icon;
    case TitleRole:
        return player.title;
    case IsPlayingRole:
        return player.isPlaying;
    default:
        return {};
    }
}

QHash<int, QByteArray> Sources::roleNames() const
{
    return {{NameRole, "name"}, {IconRole, "icon"}, {TitleRole, "sourceTitle"}, {IsPlayingRole, "isPlaying"}};
}

void Sources::playPause(int row)
{
    m_bus.asyncCall(call(m_players.at(row).service, PlayerInterface, QStringLiteral("PlayPause")));
}

void Sources::raise(int row)
{
    m_bus.asyncCall(call(m_players.at(row).service, Root, QStringLiteral("Raise")));
}
