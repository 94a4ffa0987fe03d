#pragma once

#include "Children.h"

#include <multimedia/NowPlayingConnection.h>

#include <QtQml/qqmlregistration.h>

namespace voro::qml {

/**
 * The now-playing connection with its constructor arguments as properties. Values without a change signal in the
 * library are properties that can be bound to.
 */
class NowPlayingElement : public voro::multimedia::NowPlayingConnection {
    Q_OBJECT
    Q_PROPERTY(bool acquired READ isAcquired NOTIFY roleChanged)
    Q_PROPERTY(bool preempted READ isPreempted NOTIFY roleChanged)
    Q_PROPERTY(QString connectionName READ connectionName WRITE changeConnectionName NOTIFY connectionNameChanged)
    Q_PROPERTY(voro::multimedia::PriorityLevel::Type priorityLevel READ priorityLevel WRITE changePriorityLevel NOTIFY
                   priorityLevelChanged)
    Q_PROPERTY(
        voro::multimedia::DeviceMode::Type deviceMode READ deviceMode WRITE changeDeviceMode NOTIFY deviceModeChanged)
    Q_PROPERTY(QVariantMap metaData READ metaData WRITE setMetaData NOTIFY metaDataReplaced)
    QML_NAMED_ELEMENT(NowPlayingConnection)
    QML_EXTENDED(voro::qml::Children)
    QML_ADDED_IN_VERSION(1, 0)
public:
    explicit NowPlayingElement(QObject *parent = nullptr);

    /** These take effect at the next acquire(). */
    void changeConnectionName(const QString &name);
    void changePriorityLevel(voro::multimedia::PriorityLevel::Type level);
    void changeDeviceMode(voro::multimedia::DeviceMode::Type mode);

Q_SIGNALS:
    /** The service granted the role, another connection took it, or revoke() gave it up. */
    void roleChanged();
    void connectionNameChanged();
    void priorityLevelChanged();
    void deviceModeChanged();
    /** Emitted after metaDataChanged(): the property needs a signal of this class. */
    void metaDataReplaced();
};

} // namespace voro::qml
