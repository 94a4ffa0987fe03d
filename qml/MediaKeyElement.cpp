#include "MediaKeyElement.h"

#include <QtCore/QMetaMethod>

#include <array>

namespace voro::qml {

using voro::multimedia::MediaKey;
using voro::multimedia::MediaKeyNotification;
using voro::multimedia::MediaKeyWatcher;

MediaKeyElement::MediaKeyElement(QObject *parent) : QObject(parent)
{
    connect(&m_watcher, &MediaKeyWatcher::notificationChanged, this, &MediaKeyElement::notificationChanged);
}

void MediaKeyElement::setKey(MediaKey::Type key)
{
    if (key == m_watcher.key())
        return;
    m_watcher.setKey(key);
    Q_EMIT keyChanged();
}

void MediaKeyElement::setNotification(MediaKeyNotification::Type notification)
{
    if (notification != m_watcher.notification())
        m_watcher.setNotification(notification);
}

void MediaKeyElement::followListeners()
{
    using Press = void (MediaKeyElement::*)(MediaKey::Type);
    using WatchedPress = void (MediaKeyWatcher::*)(MediaKey::Type);
    static constexpr std::array<std::pair<Press, WatchedPress>, 3> Presses{{
        {&MediaKeyElement::shortPress, &MediaKeyWatcher::shortPress},
        {&MediaKeyElement::mediumPress, &MediaKeyWatcher::mediumPress},
        {&MediaKeyElement::longPress, &MediaKeyWatcher::longPress},
    }};
    for (const auto &[press, watched] : Presses) {
        const bool isListenedTo = isSignalConnected(QMetaMethod::fromSignal(press));
        if (isListenedTo)
            connect(&m_watcher, watched, this, press, Qt::UniqueConnection);
        else
            disconnect(&m_watcher, watched, this, press);
    }
}

void MediaKeyElement::connectNotify(const QMetaMethod &)
{
    followListeners();
}

void MediaKeyElement::disconnectNotify(const QMetaMethod &)
{
    // A listener that is being destroyed still counts now.
    QMetaObject::invokeMethod(this, &MediaKeyElement::followListeners, Qt::QueuedConnection);
}

} // namespace voro::qml
