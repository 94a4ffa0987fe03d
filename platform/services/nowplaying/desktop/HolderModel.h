#pragma once

#include "BlockingCall.h"
#include "RunningPosition.h"

#include <QtCore/QObject>
#include <QtCore/QVariant>

#include <services/nowplaying/Metadata.h>

namespace voro::nowplaying {

/** What the daemon knows of the holder, as MPRIS properties. It is kept while there is no session bus. */
class HolderModel : public QObject {
    Q_OBJECT
public:
    /** A holder of which nothing else is known yet, in place of the one before. */
    void setHolder(const QString &name, qint64 process);
    void rename(const QString &name);
    void clear();
    void setState(State state);
    void setMetadata(const Metadata &metadata);
    void setVolume(double volume);
    void changeTrack();

    bool hasHolder() const { return m_hasHolder; }
    const QString &name() const { return m_name; }
    qint64 process() const { return m_process; }
    /** Empty while not known. */
    const QString &desktopEntry() const { return m_desktopEntry; }
    bool canGoNext() const { return m_metadata.nextEnabled; }
    bool canGoPrevious() const { return m_metadata.previousEnabled; }

    QVariantMap rootProperties() const;
    /** Everything but the position, which changes without a signal. */
    QVariantMap playerProperties() const;
    /** In microseconds. */
    qint64 position() const { return m_position.now() * 1000; }

Q_SIGNALS:
    /** Another name is about to come, or none. */
    void leaving();
    void appeared();
    void playerPropertiesChanged();
    void desktopEntryFound(const QString &entry);
    /** The position jumped. */
    void seeked();

private:
    void findDesktopEntry();

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
};

} // namespace voro::nowplaying
