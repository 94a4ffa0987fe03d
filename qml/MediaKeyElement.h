#pragma once

#include <multimedia/MediaKeyWatcher.h>

#include <QtQml/qqmlregistration.h>

namespace voro::qml {

/**
 * A watcher whose key can be set and bound. It connects to the library's watcher only for presses that have a listener
 * here, because these connections decide the registrations with the media key service.
 */
class MediaKeyElement : public QObject {
    Q_OBJECT
    Q_PROPERTY(voro::multimedia::MediaKey::Type key READ key WRITE setKey NOTIFY keyChanged FINAL)
    Q_PROPERTY(voro::multimedia::MediaKeyNotification::Type notification READ notification WRITE setNotification NOTIFY
                   notificationChanged FINAL)
    QML_NAMED_ELEMENT(MediaKeyWatcher)
    QML_ADDED_IN_VERSION(1, 0)
public:
    explicit MediaKeyElement(QObject *parent = nullptr);

    /** The watched key; `None` for no key. */
    voro::multimedia::MediaKey::Type key() const { return m_watcher.key(); }
    void setKey(voro::multimedia::MediaKey::Type key);

    /** When shortPress() is emitted; `Clicked` at first. */
    voro::multimedia::MediaKeyNotification::Type notification() const { return m_watcher.notification(); }

public Q_SLOTS:
    void setNotification(voro::multimedia::MediaKeyNotification::Type notification);

Q_SIGNALS:
    void keyChanged();
    void notificationChanged(voro::multimedia::MediaKeyNotification::Type notification);
    /** The key was released. */
    void shortPress(voro::multimedia::MediaKey::Type key);
    /** The key has been down for 800 ms. Emitted while it is still down, right after longPress(). */
    void mediumPress(voro::multimedia::MediaKey::Type key);
    /** The same as mediumPress(). */
    void longPress(voro::multimedia::MediaKey::Type key);

protected:
    void connectNotify(const QMetaMethod &signal) override;
    void disconnectNotify(const QMetaMethod &signal) override;

private:
    void followListeners();

    voro::multimedia::MediaKeyWatcher m_watcher;
};

} // namespace voro::qml
