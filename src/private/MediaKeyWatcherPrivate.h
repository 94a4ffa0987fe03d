#pragma once

#include <multimedia/MediaKeyWatcher.h>

#include <QtCore/QVariantMap>

namespace voro {
class PpsObject;
}

namespace voro::multimedia {

/** A connection to the media key service that follows the listeners of the public object. */
class MediaKeyWatcherPrivate : public QObject {
    Q_OBJECT
public:
    explicit MediaKeyWatcherPrivate(MediaKeyWatcher *watcher, MediaKey::Type key = MediaKey::None);
    ~MediaKeyWatcherPrivate() override;

    MediaKey::Type key() const;
    MediaKeyNotification::Type notification() const;
    void setKey(MediaKey::Type key);
    void setNotification(MediaKeyNotification::Type notification);

    /** Updates the registrations to the present listeners. */
    void listenersChanged();
    /** The same after a disconnection from one signal, or from several when it is invalid. */
    void listenerWent(const QMetaMethod &signal);

    /**
     * Closes the object and registers again. Without `force`, sufficient registrations stay. Returns the object's
     * error(), 0 on success.
     */
    int updateButtonRegistration(voro::PpsObject *object, MediaKey::Type key, MediaKeyNotification::Type notification,
                                 bool force);
    /** Writes one registration. Returns the object's error(), 0 on success. */
    int send(voro::PpsObject *object, MediaKey::Type key, const QString &kind);
    void handleKeyMessage(const QVariantMap &control);
    /** The service's name of a key; empty for an unknown number. */
    static const char *toString(MediaKey::Type key);

private Q_SLOTS:
    void onReadyRead();

private:
    /** The numbers of listeners of the press signals. */
    struct Listeners {
        int shortPress = 0;
        int mediumPress = 0;
        int longPress = 0;
        bool operator==(const Listeners &) const = default;
    };
    Listeners countListeners() const;
    /**
     * The count after a disconnection of one listener. Does not ask Qt, which may hold the lock that counting needs.
     */
    Listeners listenersWithout(const QMetaMethod &signal) const;

    MediaKey::Type m_key;
    MediaKeyNotification::Type m_notification = MediaKeyNotification::Clicked;
    voro::PpsObject *m_control;
    MediaKeyWatcher *m_watcher;
    Listeners m_listeners;
    /** The listeners at the last registration. */
    Listeners m_registered;
    bool m_isLookPosted = false;
};

} // namespace voro::multimedia
