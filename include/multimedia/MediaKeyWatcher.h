#pragma once

#include <multimedia/Export.h>
#include <multimedia/MediaKey.h>
#include <multimedia/MediaKeyNotification.h>

#include <QtCore/QObject>

namespace voro::multimedia {

class MediaKeyWatcherPrivate;

/**
 * Tells when one hardware media key is pressed.
 *
 * The watcher asks the media key service for its key as long as somebody is connected to one of its press signals;
 * without listeners it holds no connection. A key that an application watches is not acted upon by the system.
 * Problems with the service are lines in the log; nothing else tells of them.
 */
class VOROMULTIMEDIA_EXPORT MediaKeyWatcher : public QObject {
    Q_OBJECT
    Q_PROPERTY(voro::multimedia::MediaKey::Type key READ key FINAL)
    Q_PROPERTY(voro::multimedia::MediaKeyNotification::Type notification READ notification WRITE setNotification FINAL)
public:
    /** Watches the given key from the first connection to a press signal on. */
    explicit MediaKeyWatcher(MediaKey::Type key, QObject *parent = nullptr);
    /** Watches nothing until setKey() names a key. */
    explicit MediaKeyWatcher(QObject *parent = nullptr);
    ~MediaKeyWatcher() override;

    /** The watched key, as given. */
    MediaKey::Type key() const;
    /** Watches another key, or with `None` no key. The key that is watched already is refused with a warning. */
    void setKey(MediaKey::Type key);

    /** When shortPress() comes, as given; `Clicked` at first. Matters only while longer presses have listeners too. */
    MediaKeyNotification::Type notification() const;

public Q_SLOTS:
    /** Chooses when shortPress() comes; notificationChanged() follows. The present choice is refused with a warning. */
    void setNotification(voro::multimedia::MediaKeyNotification::Type notification);

Q_SIGNALS:
    /**
     * The key was released. With `Threshold`, and a listener for longer presses, only when it was held for less than
     * 800 ms; otherwise however long it was held.
     */
    void shortPress(voro::multimedia::MediaKey::Type key);
    /** The key has been held for 800 ms; comes while it is down, right after longPress(). */
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
