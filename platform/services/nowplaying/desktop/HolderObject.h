#pragma once

#include "BlockingCall.h"
#include "RunningPosition.h"

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVirtualObject>

#include <services/nowplaying/Desktop.h>

#include <optional>

namespace voro::nowplaying {

/** The holder as a player on the session bus. What is known of it is kept while there is no bus. */
class HolderObject : public QDBusVirtualObject {
    Q_OBJECT
public:
    HolderObject() = default;
    ~HolderObject() override;

    /** A holder of which nothing else is known yet, instead of the one before. */
    void setHolder(const QString &name, qint64 process);
    void rename(const QString &name);
    void clear();
    void setState(State state);
    void setMetadata(const Metadata &metadata);
    void setVolume(double volume);
    void changeTrack();

    void attach(const QDBusConnection &bus);
    void detach();
    bool isShown() const { return !m_busName.isEmpty(); }

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

Q_SIGNALS:
    /** Comes from the event loop only. */
    void shownChanged();
    void commanded(const voro::nowplaying::TrackCommand &command);
    /** Somebody sets the volume; `done` takes how it went. */
    void volumeCommanded(const voro::nowplaying::VolumeCommand &command, const voro::nowplaying::Desktop::Done &done);

private:
    void show();
    void hide();
    void claim(const QString &busName);
    void claimed(uint result);

    void askForDesktopEntry();

    QVariantMap rootProperties() const;
    /** Everything but the position, which changes without being told. */
    QVariantMap playerProperties() const;
    QVariantMap properties(const QString &interface) const;
    void tellChanges();
    void tellSeeked();
    QString introspection() const;
    void signal(const QString &interface, const QString &name, const QVariantList &arguments) const;

    QDBusMessage call(const QDBusMessage &message);
    QDBusMessage answer(const QDBusMessage &message);
    QDBusMessage callProperties(const QDBusMessage &message);
    QDBusMessage setProperty(const QDBusMessage &message, const QString &name, const QVariant &value);
    QDBusMessage setLoopStatus(const QDBusMessage &message, const QString &status);
    QDBusMessage changeVolume(const QDBusMessage &message, double volume);
    void command(const QString &method);

    std::optional<QDBusConnection> m_bus;
    /** The name that was asked for last; empty while the object is not there. */
    QString m_busName;
    /** Counts the claims of names: only the answer to the last one matters. */
    quint64 m_claim = 0;

    bool m_hasHolder = false;
    QString m_name;
    qint64 m_process = 0;
    /** Empty while not known. */
    QString m_desktopEntry;
    BlockingCall m_desktopEntryCall;
    State m_state = State::Stopped;
    Metadata m_metadata;
    double m_volume = 1;
    RunningPosition m_position;
    /** Counts the tracks of all holders; no number is used twice. */
    quint64 m_lastTrack = 0;
    /** The present track, 0 while nothing is known of it. */
    quint64 m_track = 0;
    QVariantMap m_told;
};

} // namespace voro::nowplaying
