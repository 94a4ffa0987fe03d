#include "MediaKeyElement.h"

#include <QtCore/QMetaMethod>

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
    if (key == m_watcher.key()) {
        return;
    }
    m_watcher.setKey(key);
    Q_EMIT keyChanged();
}

void MediaKeyElement::setNotification(MediaKeyNotification::Type notification)
{
    if (notification != m_watcher.notification()) {
        m_watcher.setNotification(notification);
    }
}

void MediaKeyElement::followListeners()
{
    using Press = void (MediaKeyElement::*)(MediaKey::Type);
    using WatchedPress = void (MediaKeyWatcher::*)(MediaKey::Type);
    // Counted, because isSignalConnected() stays true after a QML connection ends.
    const auto follow = [this](const char *signal, WatchedPress watched, Press press) {
        if (receivers(signal) > 0) {
            connect(&m_watcher, watched, this, press, Qt::UniqueConnection);
        } else {
            disconnect(&m_watcher, watched, this, press);
        }
    };
    follow(SIGNAL(shortPress(voro::multimedia::MediaKey::Type)), &MediaKeyWatcher::shortPress,
           &MediaKeyElement::shortPress);
    follow(SIGNAL(mediumPress(voro::multimedia::MediaKey::Type)), &MediaKeyWatcher::mediumPress,
           &MediaKeyElement::mediumPress);
    follow(SIGNAL(longPress(voro::multimedia::MediaKey::Type)), &MediaKeyWatcher::longPress,
           &MediaKeyElement::longPress);
}

void MediaKeyElement::connectNotify(const QMetaMethod &)
{
    followListeners();
}

void MediaKeyElement::disconnectNotify(const QMetaMethod &)
{
    // Qt still counts a listener during its destruction.
    QMetaObject::invokeMethod(this, &MediaKeyElement::followListeners, Qt::QueuedConnection);
}

} // namespace voro::qml
