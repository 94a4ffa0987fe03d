#pragma once

#include <QtCore/QAbstractListModel>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusContext>
#include <QtDBus/QDBusPendingCall>
#include <QtQml/qqmlregistration.h>

#include <functional>

/** The players that are on the session bus, each with its name, its icon and what it does. Empty without a bus. */
class Sources : public QAbstractListModel,
                protected QDBusContext {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /** The name and the icon of the now-playing role's holder, else of the player that plays, or that played last. */
    Q_PROPERTY(QString activeName READ activeName NOTIFY activeChanged)
    Q_PROPERTY(QString activeIcon READ activeIcon NOTIFY activeChanged)
public:
    enum Role { NameRole = Qt::UserRole, IconRole, TitleRole, IsPlayingRole };

    explicit Sources(QObject *parent = nullptr);

    int count() const { return static_cast<int>(m_players.size()); }
    QString activeName() const { return m_active < count() ? m_players.at(m_active).name : QString(); }
    QString activeIcon() const { return m_active < count() ? m_players.at(m_active).icon : QString(); }

    int rowCount(const QModelIndex &parent) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    Q_INVOKABLE void playPause(int row);
    /** Brings the player's window to the front, where it has one that can be. */
    Q_INVOKABLE void raise(int row);

Q_SIGNALS:
    void countChanged();
    void activeChanged();

private Q_SLOTS:
    void onOwnerChanged(const QString &service, const QString &before, const QString &now);
    void onPropertiesChanged(const QString &interface, const QVariantMap &changed, const QStringList &invalidated);

private:
    struct Player {
        QString service;
        QString owner; ///< the connection that signals come from
        QString name;
        QString icon;
        QString title;
        bool isPlaying = false;
    };

    void add(const QString &service);
    void remove(const QString &service);
    void update(const QString &owner, const QVariantMap &properties);
    /** Chooses that row unless there is a holder of the role, which comes before all others. */
    void setActive(qsizetype row);
    void whenAnswered(const QDBusPendingCall &call, const std::function<void(const QVariant &)> &use);

    QDBusConnection m_bus;
    QList<Player> m_players;
    qsizetype m_active = 0;
};
