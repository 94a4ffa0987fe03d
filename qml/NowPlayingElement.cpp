#include "NowPlayingElement.h"

namespace voro::qml {

using voro::multimedia::DeviceMode;
using voro::multimedia::NowPlayingConnection;
using voro::multimedia::PriorityLevel;

NowPlayingElement::NowPlayingElement(QObject *parent) : NowPlayingConnection(parent)
{
    connect(this, &NowPlayingConnection::acquired, this, &NowPlayingElement::roleChanged);
    connect(this, &NowPlayingConnection::revoked, this, &NowPlayingElement::roleChanged);
    connect(this, &NowPlayingConnection::preemptableChanged, this, &NowPlayingElement::priorityLevelChanged);
    connect(this, &NowPlayingConnection::metaDataChanged, this, &NowPlayingElement::metaDataReplaced);
}

void NowPlayingElement::changeConnectionName(const QString &name)
{
    if (name == connectionName()) {
        return;
    }
    setConnectionName(name);
    Q_EMIT connectionNameChanged();
}

void NowPlayingElement::changePriorityLevel(PriorityLevel::Type level)
{
    if (level == priorityLevel()) {
        return;
    }
    setPriorityLevel(level);
    Q_EMIT preemptableChanged(isPreemptable());
}

void NowPlayingElement::changeDeviceMode(DeviceMode::Type mode)
{
    if (mode == deviceMode()) {
        return;
    }
    setDeviceMode(mode);
    Q_EMIT deviceModeChanged();
}

} // namespace voro::qml
