#pragma once

#include <multimedia/Export.h>
#include <multimedia/MediaKey.h>
#include <multimedia/MediaKeyNotification.h>

#include <QtCore/QObject>

namespace voro::multimedia {

class MediaKeyWatcherPrivate;

/**
 * Reports presses of one hardware media key.
 *
 * The watcher registers its key with the media key service while one of its press signals has a listener. Without
 * listeners it holds no connection. The system does not act on a key that an application watches. Problems with the
 * service are only logged.
 */
class VOROMULTIMEDIA_EXPORT MediaKeyWatcher : public QObject {
    Q_OBJECT
    Q_PROPERTY(voro::multimedia::MediaKey::Type key READ key FINAL)
    Q_PROPERTY(voro::multimedia::MediaKeyNotification::Type notification READ notification WRITE setNotification FINAL)
public:
    /** Watches the given key while a press signal has a listener. */
    explicit MediaKeyWatcher(MediaKey::Type key, QObject *parent = nullptr);
    /** Watches no key until setKey(). */
    explicit MediaKeyWatcher(QObject *parent = nullptr);
    ~MediaKeyWatcher() override;

    /** The watched key, as given. */
    MediaKey::Type key() const;
    /** Watches another key, or with `None` no key. The present key is refused with a warning. */
    void setKey(MediaKey::Type key);

    /**
     * When shortPress() is emitted; `Clicked` at first. Matters only while longer presses have listeners too. As set.
     */
    MediaKeyNotification::Type notification() const;

public Q_SLOTS:
    /**
     * Chooses when shortPress() is emitted. The present choice is refused with a warning. Followed by
     * notificationChanged().
     */
    void setNotification(voro::multimedia::MediaKeyNotification::Type notification);

Q_SIGNALS:
    /**
     * The key was released. With `Threshold` and a listener for longer presses, only after less than 800 ms; else after
     * any time.
     */
    void shortPress(voro::multimedia::MediaKey::Type key);
    /** The key has been down for 800 ms. Emitted while it is still down, right after longPress(). */
    void mediumPress(voro::multimedia::MediaKey::Type key);
    /** The same as mediumPress(). */
    void longPress(voro::multimedia::MediaKey::Type key);
    /** setNotification() made another choice. */
    void notificationChanged(voro::multimedia::MediaKeyNotification::Type notification);

protected:
    void connectNotify(const QMetaMethod &signal) override;
    void disconnectNotify(const QMetaMethod &signal) override;

private:
    friend class MediaKeyWatcherPrivate;
    MediaKeyWatcherPrivate *d;
};

} // namespace voro::multimedia
