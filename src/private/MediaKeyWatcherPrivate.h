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

    /** Registers for what there are listeners to. */
    void listenersChanged();
    /** The same after a disconnection from the signal, or from several when it is invalid. */
    void listenerWent(const QMetaMethod &signal);

    /**
     * Closes the object and registers anew, unless the registrations that are there do (and `force` is false). The
     * result is the object's error(), 0 on success.
     */
    int updateButtonRegistration(voro::PpsObject *object, MediaKey::Type key, MediaKeyNotification::Type notification,
                                 bool force);
    /** Writes one registration; the result is the object's error(), 0 on success. */
    int send(voro::PpsObject *object, MediaKey::Type key, const QString &kind);
    void handleKeyMessage(const QVariantMap &control);
    /** The service's name of a key, empty for a number that is none. */
    static const char *toString(MediaKey::Type key);

private Q_SLOTS:
    void onReadyRead();

private:
    /** How many listeners the press signals have. */
    struct Listeners {
        int shortPress = 0;
        int mediumPress = 0;
        int longPress = 0;
        bool operator==(const Listeners &) const = default;
    };
    Listeners countListeners() const;
    /** The count after a disconnection, taken to be of one listener where Qt may hold the lock that counting wants. */
    Listeners listenersWithout(const QMetaMethod &signal) const;

    MediaKey::Type m_key;
    MediaKeyNotification::Type m_notification = MediaKeyNotification::Clicked;
    voro::PpsObject *m_control;
    MediaKeyWatcher *m_watcher;
    Listeners m_listeners;
    /** Those of the last registration. */
    Listeners m_registered;
    bool m_isLookPosted = false;
};

} // namespace voro::multimedia
