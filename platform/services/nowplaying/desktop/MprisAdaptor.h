#pragma once

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVirtualObject>

#include <services/nowplaying/Desktop.h>

#include <optional>

namespace voro::nowplaying {

class HolderModel;

/** Publishes the holder as a player on the session bus, while there is one, and takes the calls for it. */
class MprisAdaptor : public QDBusVirtualObject {
    Q_OBJECT
public:
    /** The model must outlive the adaptor. */
    explicit MprisAdaptor(const HolderModel &model);
    ~MprisAdaptor() override;

    void attach(const QDBusConnection &bus);
    void detach();
    bool isShown() const { return !m_busName.isEmpty(); }

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

Q_SIGNALS:
    /** Comes from the event loop only. */
    void shownChanged();
    void commanded(const voro::nowplaying::TrackCommand &command);
    /** A bus client sets the volume; `done` takes the result. */
    void volumeCommanded(const voro::nowplaying::VolumeCommand &command,
                         const voro::nowplaying::Desktop::Answered &done);

private:
    void show();
    void hide();
    void claim(const QString &busName);
    void claimed(uint result);
    void findApplication();

    void emitChanges();
    void emitDesktopEntry(const QString &entry);
    void emitSeeked();
    void signal(const QString &interface, const QString &name, const QVariantList &arguments) const;

    QVariantMap properties(const QString &interface) const;
    QString introspection() const;
    QDBusMessage call(const QDBusMessage &message);
    QDBusMessage answer(const QDBusMessage &message);
    QDBusMessage callProperties(const QDBusMessage &message);
    QDBusMessage setProperty(const QDBusMessage &message, const QString &name, const QVariant &value);
    QDBusMessage setLoopStatus(const QDBusMessage &message, const QString &status);
    QDBusMessage changeVolume(const QDBusMessage &message, double volume);
    void command(const QString &method);
    /** Raises or ends it. */
    void commandApplication(const QString &method);

    const HolderModel &m_model;
    std::optional<QDBusConnection> m_bus;
    /** The name that was requested last; empty while the object is hidden. */
    QString m_busName;
    /** Counts the requests of names: only the reply to the last one matters. */
    quint64 m_claim = 0;
    /** The holder's own name on the bus, if it is that of its desktop file; empty else. */
    QString m_application;
    /** The player's properties as the bus clients know them. */
    QVariantMap m_published;
};

} // namespace voro::nowplaying
