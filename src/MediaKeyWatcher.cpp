#include <multimedia/MediaKeyWatcher.h>
#include <voro/PpsObject.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QPointer>

#include <private/Announcement.h>
#include <private/Delivery.h>
#include <private/MediaKeyWatcherPrivate.h>
#include <private/MediaPlayerService.h>

#include <array>
#include <cerrno>

namespace voro::multimedia {

MediaKeyWatcherPrivate::MediaKeyWatcherPrivate(MediaKeyWatcher *watcher, MediaKey::Type key)
    : QObject(watcher),
      m_key(key),
      m_control(new voro::PpsObject(MediaPlayerControl, this)),
      m_watcher(watcher)
{
    TRACE_FUNCTION();
    connect(m_control, &voro::PpsObject::readyRead, this, &MediaKeyWatcherPrivate::onReadyRead);
}

MediaKeyWatcherPrivate::~MediaKeyWatcherPrivate()
{
    TRACE_FUNCTION();
    if (m_control->isOpen()) {
        m_control->close();
    }
}

MediaKey::Type MediaKeyWatcherPrivate::key() const
{
    TRACE_FUNCTION();
    return m_key;
}

MediaKeyNotification::Type MediaKeyWatcherPrivate::notification() const
{
    TRACE_FUNCTION();
    return m_notification;
}

void MediaKeyWatcherPrivate::setKey(MediaKey::Type key)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "key=" << static_cast<int>(key);
    if (key == m_key) {
        WARNING_LINE << "Ignoring attempt to set same key. key=" << static_cast<int>(key);
        return;
    }
    m_key = key;
    m_listeners = countListeners();
    updateButtonRegistration(m_control, key, m_notification, true);
}

void MediaKeyWatcherPrivate::setNotification(MediaKeyNotification::Type notification)
{
    TRACE_FUNCTION();
    if (notification == m_notification) {
        WARNING_LINE << "Ignoring attempt to set same notification. notification=" << static_cast<int>(notification);
        return;
    }
    m_notification = notification;
    m_listeners = countListeners();
    updateButtonRegistration(m_control, m_key, notification, true);
    // The value line's single blank is required.
    logSignal(tracer, "notificationChanged");
    DEBUG_LINE << " notification=" << keyName(notification);
    Q_EMIT m_watcher->notificationChanged(notification);
}

void MediaKeyWatcherPrivate::listenersChanged()
{
    TRACE_FUNCTION();
    m_listeners = countListeners();
    updateButtonRegistration(m_control, m_key, m_notification, false);
}

void MediaKeyWatcherPrivate::listenerWent(const QMetaMethod &signal)
{
    TRACE_FUNCTION();
    m_listeners = listenersWithout(signal);
    updateButtonRegistration(m_control, m_key, m_notification, false);
    if (m_isLookPosted) {
        return;
    }
    // Qt still counts a listener during its destruction, and several may go at once: count again from the event loop.
    m_isLookPosted = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isLookPosted = false;
            if (countListeners() != m_registered) {
                listenersChanged();
            }
        },
        Qt::QueuedConnection);
}

MediaKeyWatcherPrivate::Listeners MediaKeyWatcherPrivate::countListeners() const
{
    TRACE_FUNCTION();
    return {m_watcher->receivers(SIGNAL(shortPress(voro::multimedia::MediaKey::Type))),
            m_watcher->receivers(SIGNAL(mediumPress(voro::multimedia::MediaKey::Type))),
            m_watcher->receivers(SIGNAL(longPress(voro::multimedia::MediaKey::Type)))};
}

MediaKeyWatcherPrivate::Listeners MediaKeyWatcherPrivate::listenersWithout(const QMetaMethod &signal) const
{
    TRACE_FUNCTION();
    if (!signal.isValid()) {
        return countListeners();
    }
    Listeners left = m_listeners;
    if (signal == QMetaMethod::fromSignal(&MediaKeyWatcher::shortPress)) {
        --left.shortPress;
    } else if (signal == QMetaMethod::fromSignal(&MediaKeyWatcher::mediumPress)) {
        --left.mediumPress;
    } else if (signal == QMetaMethod::fromSignal(&MediaKeyWatcher::longPress)) {
        --left.longPress;
    }
    return left;
}

int MediaKeyWatcherPrivate::updateButtonRegistration(voro::PpsObject *object, MediaKey::Type key,
                                                     MediaKeyNotification::Type notification, bool force)
{
    TRACE_FUNCTION();
    if (!object) {
        WARNING_LINE << "The PPS object is null.";
        return 0;
    }
    const int shortListeners = m_listeners.shortPress;
    const int longerListeners = m_listeners.mediumPress + m_listeners.longPress;
    if (!force && longerListeners >= 2 && shortListeners >= 2) {
        return 0;
    }
    m_registered = m_listeners;
    if (object->isOpen() && !object->close()) {
        WARNING_LINE << "Error trying to close the PPS connection. error=" << object->errorString();
        return object->error();
    }
    if (key == MediaKey::None) {
        DEBUG_LINE << "Leaving the pps connection closed since the key is not set.";
        return 0;
    }
    if (!object->open(voro::PpsOpenMode::PublishSubscribe)) {
        WARNING_LINE << "Error trying to open the PPS connection. error=" << object->errorString();
        return object->error();
    }
    int result = 0;
    if (shortListeners >= 1 && (longerListeners == 0 || notification == MediaKeyNotification::Clicked)) {
        result = send(object, key, QStringLiteral("short"));
        if (result != 0) {
            WARNING_LINE << "Unable to register for button short length notification. key=" << toString(key);
            return result;
        }
    }
    if (shortListeners >= 1 && longerListeners >= 1 && notification == MediaKeyNotification::Threshold) {
        result = send(object, key, QStringLiteral("short_nothresh"));
        if (result != 0) {
            WARNING_LINE << "Unable to register for button short non threshold length notification. key="
                         << toString(key);
            return result;
        }
    }
    if (longerListeners >= 1) {
        result = send(object, key, QStringLiteral("med"));
        if (result != 0) {
            WARNING_LINE << "Unable to register for button medium length notification. key=" << toString(key);
        }
    }
    return result;
}

int MediaKeyWatcherPrivate::send(voro::PpsObject *object, MediaKey::Type key, const QString &kind)
{
    TRACE_FUNCTION();
    if (!object) {
        WARNING_LINE << "PPS object is null.";
        return EINVAL;
    }
    const QString name = QStringLiteral("bn_%1_%2").arg(QLatin1String(toString(key)), kind);
    const QVariantMap message{
        {QStringLiteral("msg"), QStringLiteral("button")},
        {QStringLiteral("dat"),
         QVariantMap{{QStringLiteral("key"), name}, {QStringLiteral("action"), QStringLiteral("forward")}}},
    };
    DEBUG_LINE << message;
    const Delivery delivery = deliver(
        tracer, *object, message, {"Error encoding message for PPS. error=", "Error writing message to PPS. error="});
    return delivery == Delivery::Written ? 0 : object->error();
}

void MediaKeyWatcherPrivate::onReadyRead()
{
    TRACE_FUNCTION();
    auto *object = qobject_cast<voro::PpsObject *>(sender());
    if (!object) {
        WARNING_LINE << "Signal sender is not a PPS object.";
        return;
    }
    const QVariantMap control = voro::PpsObject::decode(object->read()).value(QStringLiteral("@control")).toMap();
    DEBUG_LINE << control;
    if (control.contains(QStringLiteral("err"))) {
        WARNING_LINE << "Control error received."
                     << " err=" << control.value(QStringLiteral("err")).toString()
                     << ", res=" << control.value(QStringLiteral("res")).toString();
    } else if (control.value(QStringLiteral("msg")) == QLatin1String("key")) {
        handleKeyMessage(control);
    } else {
        WARNING_LINE << "Unhandled control message. map=" << control;
    }
}

void MediaKeyWatcherPrivate::handleKeyMessage(const QVariantMap &control)
{
    TRACE_FUNCTION();
    const QString name = control.value(QStringLiteral("dat")).toString();
    if (!name.startsWith(QStringLiteral("bn_%1").arg(QLatin1String(toString(m_key))))) {
        return;
    }
    const MediaKey::Type key = m_key;
    if (name.endsWith(QLatin1String("_short"))) {
        logSignal(tracer, "shortPress", "key", key);
        Q_EMIT m_watcher->shortPress(key);
    } else if (name.endsWith(QLatin1String("_med"))) {
        logSignal(tracer, "longPress", "key", key);
        const QPointer<MediaKeyWatcher> watcher(m_watcher);
        Q_EMIT watcher->longPress(key);
        // A listener may have destroyed the watcher.
        if (watcher) {
            Q_EMIT watcher->mediumPress(key);
        }
    }
}

const char *MediaKeyWatcherPrivate::toString(MediaKey::Type key)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "key=" << static_cast<int>(key);
    static constexpr std::array names{
        "", "forward", "pause", "play", "playpause", "rewind", "stop", "vdown", "vup", "prev", "next",
    };
    const auto index = static_cast<size_t>(key);
    return index < names.size() ? names[index] : "";
}

MediaKeyWatcher::MediaKeyWatcher(MediaKey::Type key, QObject *parent)
    : QObject(parent),
      d(new MediaKeyWatcherPrivate(this, key))
{
    TRACE_FUNCTION();
}

MediaKeyWatcher::MediaKeyWatcher(QObject *parent) : QObject(parent), d(new MediaKeyWatcherPrivate(this))
{
    TRACE_FUNCTION();
}

MediaKeyWatcher::~MediaKeyWatcher()
{
    TRACE_FUNCTION();
}

MediaKey::Type MediaKeyWatcher::key() const
{
    TRACE_FUNCTION();
    return d->key();
}

void MediaKeyWatcher::setKey(MediaKey::Type key)
{
    TRACE_FUNCTION();
    d->setKey(key);
}

MediaKeyNotification::Type MediaKeyWatcher::notification() const
{
    TRACE_FUNCTION();
    return d->notification();
}

void MediaKeyWatcher::setNotification(MediaKeyNotification::Type notification)
{
    TRACE_FUNCTION();
    d->setNotification(notification);
}

void MediaKeyWatcher::connectNotify(const QMetaMethod &)
{
    TRACE_FUNCTION();
    d->listenersChanged();
}

void MediaKeyWatcher::disconnectNotify(const QMetaMethod &signal)
{
    TRACE_FUNCTION();
    d->listenerWent(signal);
}

} // namespace voro::multimedia
