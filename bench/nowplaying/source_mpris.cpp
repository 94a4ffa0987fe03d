/* The peer: a player on the session bus, made with QtDBus. */

#include "Source.h"

#include <QtCore/QCoreApplication>
#include <QtDBus/QDBusAbstractAdaptor>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusObjectPath>

namespace {

const QString Path = QStringLiteral("/org/mpris/MediaPlayer2");
const QString PlayerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");

class Root : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(QString Identity READ identity)
public:
    explicit Root(QObject *parent) : QDBusAbstractAdaptor(parent) {}
    QString identity() const { return QStringLiteral("peer"); }
};

class Player : public QDBusAbstractAdaptor,
               public bench::Source {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ status)
    Q_PROPERTY(QVariantMap Metadata READ metaData)
    Q_PROPERTY(bool CanGoNext READ can)
    Q_PROPERTY(bool CanControl READ can)
public:
    explicit Player(QObject *parent) : QDBusAbstractAdaptor(parent) {}
    QString status() const { return m_isPlaying ? QStringLiteral("Playing") : QStringLiteral("Paused"); }
    QVariantMap metaData() const { return m_metaData; }
    bool can() const { return true; }

    void publish(const QString &title) override
    {
        setTitle(title);
        tell({{QStringLiteral("Metadata"), m_metaData}});
    }
    void turn(const QString &title) override
    {
        setTitle(title);
        m_isPlaying = !m_isPlaying;
        tell({{QStringLiteral("PlaybackStatus"), status()}, {QStringLiteral("Metadata"), m_metaData}});
    }

public Q_SLOTS:
    // The bus's name of the method.
    void Next() { bench::tellNext(); }

private:
    void setTitle(const QString &title)
    {
        const QString id = QStringLiteral("/peer/track/%1").arg(++m_track);
        m_metaData = {{QStringLiteral("mpris:trackid"), QVariant::fromValue(QDBusObjectPath(id))},
                      {QStringLiteral("xesam:title"), title},
                      {QStringLiteral("xesam:artist"), QStringList(bench::Artist)},
                      {QStringLiteral("xesam:album"), bench::Album},
                      {QStringLiteral("xesam:trackNumber"), bench::Track},
                      {QStringLiteral("mpris:artUrl"), bench::Artwork},
                      {QStringLiteral("mpris:length"), static_cast<qint64>(bench::DurationMs) * 1000}};
    }
    void tell(const QVariantMap &changes)
    {
        QDBusMessage signal = QDBusMessage::createSignal(Path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                         QStringLiteral("PropertiesChanged"));
        signal << PlayerInterface << changes << QStringList();
        QDBusConnection::sessionBus().send(signal);
    }

    int m_track = 0;
    bool m_isPlaying = false;
    QVariantMap m_metaData;
};

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QObject object;
    new Root(&object);
    auto *const player = new Player(&object);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.registerObject(Path, &object) || !bus.registerService(QStringLiteral("org.mpris.MediaPlayer2.peer"))) {
        return 1;
    }
    return bench::obeyInput(*player);
}

#include "source_mpris.moc"
