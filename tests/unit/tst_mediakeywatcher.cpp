#include "LogCatcher.h"
#include "private/MediaKeyWatcherPrivate.h"
#include "RuntimeBroker.h"
#include "SignalLog.h"

#include <multimedia/MediaKeyWatcher.h>
#include <voro/PpsObject.h>

#include <QtTest/QtTest>

#include <memory>

using namespace voro::multimedia;

namespace {

constexpr char ControlPath[] = "/pps/services/multimedia/mediaplayer/control";

/** The media key service, as far as it is asked. */
class Service {
public:
    explicit Service(RuntimeBroker &broker)
        : m_control(broker.thread().open(std::string(ControlPath) + "?server", 3)),
          m_marker(QLatin1String(ControlPath))
    {
        if (!m_marker.open(voro::PpsOpenMode::Publish)) {
            qFatal("The service cannot be reached");
        }
        read();
    }

    /** What the watchers did since the last call: "+" (opened), "-" (closed) or what they registered for. */
    QStringList takeTrace()
    {
        // What the process wrote before is read before the marker.
        if (!m_marker.write("msg::marker\n")) {
            qFatal("The service cannot be reached");
        }
        QStringList trace;
        for (QString entry = read(); entry != QLatin1String("marker"); entry = read()) {
            trace.append(entry);
        }
        return trace;
    }

    /** Sends lines to every client. */
    void send(const QByteArray &lines)
    {
        if (!m_control->write("@control\n" + lines.toStdString())) {
            qFatal("The clients cannot be reached");
        }
    }

private:
    QString read()
    {
        const auto objects = voro::PpsObject::decodeWithFlags(QByteArray::fromStdString(readNext(*m_control)));
        const voro::PpsAttribute client = objects.first();
        if (client.flags()) {
            return client.flags() & voro::PpsAttributeFlag::Created ? QStringLiteral("+") : QStringLiteral("-");
        }
        const QVariantMap message = client.toVariant().toMap();
        if (message["msg"] == QLatin1String("marker")) {
            return QStringLiteral("marker");
        }
        const QVariantMap data = message["dat"].toMap();
        const bool isRegistration = message.size() == 2 && message["msg"] == QLatin1String("button") && data.size() == 2
                                    && data["action"] == QLatin1String("forward");
        return isRegistration ? data["key"].toString() : QStringLiteral("no registration");
    }

    std::unique_ptr<voro::pps::Connection> m_control;
    voro::PpsObject m_marker;
};

} // namespace

class MediaKeyWatcherTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void listeners_decideWhatIsRegistered_data();
    void listeners_decideWhatIsRegistered();
    void key_hasItsName_whenRegistered_data();
    void key_hasItsName_whenRegistered();
    void registration_staysAsItIs_fromTwoListenersOfEachOn();
    void goneListeners_countNoLonger_data();
    void goneListeners_countNoLonger();
    void disconnecting_neverDeadlocks();
    void setNotification_registersAnew_andTells();
    void setKey_registersAnew_orCloses();
    void message_isReportedOrIgnored_data();
    void message_isReportedOrIgnored();
    void listener_mayDestroyTheWatcher();
    void failure_isALogLine_withoutAService();
    void mistakes_areLogLines();
};

void MediaKeyWatcherTest::listeners_decideWhatIsRegistered_data()
{
    QTest::addColumn<MediaKeyNotification::Type>("notification");
    QTest::addColumn<int>("shortListeners");
    QTest::addColumn<int>("mediumListeners");
    QTest::addColumn<int>("longListeners");
    QTest::addColumn<QString>("last");
    const auto clicked = MediaKeyNotification::Clicked;
    const auto threshold = MediaKeyNotification::Threshold;
    QTest::newRow("none") << clicked << 0 << 0 << 0 << "";
    QTest::newRow("short") << clicked << 1 << 0 << 0 << "+ bn_play_short";
    QTest::newRow("short, threshold") << threshold << 1 << 0 << 0 << "+ bn_play_short";
    QTest::newRow("medium") << clicked << 0 << 1 << 0 << "+ bn_play_med";
    QTest::newRow("long, threshold") << threshold << 0 << 0 << 1 << "+ bn_play_med";
    QTest::newRow("short and medium") << clicked << 1 << 1 << 0 << "+ bn_play_short bn_play_med";
    QTest::newRow("short and long, threshold") << threshold << 1 << 0 << 1 << "+ bn_play_short_nothresh bn_play_med";
    QTest::newRow("two of each") << clicked << 2 << 1 << 1 << "+ bn_play_short bn_play_med";
}

void MediaKeyWatcherTest::listeners_decideWhatIsRegistered()
{
    QFETCH(MediaKeyNotification::Type, notification);
    QFETCH(int, shortListeners);
    QFETCH(int, mediumListeners);
    QFETCH(int, longListeners);
    QFETCH(QString, last);
    RuntimeBroker broker;
    Service service(broker);
    MediaKeyWatcher watcher(MediaKey::Play);
    QCOMPARE(service.takeTrace(), QStringList());
    if (notification != watcher.notification()) {
        watcher.setNotification(notification);
        // Without listeners the connection is there and nothing is registered.
        QCOMPARE(service.takeTrace(), QStringList("+"));
    }
    for (int i = 0; i < shortListeners; ++i) {
        connect(&watcher, &MediaKeyWatcher::shortPress, this, [] {});
    }
    for (int i = 0; i < mediumListeners; ++i) {
        connect(&watcher, &MediaKeyWatcher::mediumPress, this, [] {});
    }
    for (int i = 0; i < longListeners; ++i) {
        connect(&watcher, &MediaKeyWatcher::longPress, this, [] {});
    }
    const QStringList trace = service.takeTrace();
    QCOMPARE(trace.mid(trace.lastIndexOf("+")).join(' '), last);
}

void MediaKeyWatcherTest::key_hasItsName_whenRegistered_data()
{
    QTest::addColumn<int>("number");
    int number = 0;
    for (const char *name :
         {"forward", "pause", "play", "playpause", "rewind", "stop", "vdown", "vup", "prev", "next"}) {
        QTest::newRow(name) << ++number;
    }
    QTest::newRow("") << 11;
}

void MediaKeyWatcherTest::key_hasItsName_whenRegistered()
{
    QFETCH(int, number);
    RuntimeBroker broker;
    Service service(broker);
    const MediaKeyWatcher watcher(static_cast<MediaKey::Type>(number));
    QCOMPARE(static_cast<int>(watcher.key()), number);
    connect(&watcher, &MediaKeyWatcher::shortPress, this, [] {});
    QCOMPARE(service.takeTrace(), QStringList({"+", QStringLiteral("bn_%1_short").arg(QTest::currentDataTag())}));
}

void MediaKeyWatcherTest::registration_staysAsItIs_fromTwoListenersOfEachOn()
{
    RuntimeBroker broker;
    Service service(broker);
    MediaKeyWatcher watcher(MediaKey::Play);
    connect(&watcher, &MediaKeyWatcher::shortPress, this, [] {});
    connect(&watcher, &MediaKeyWatcher::longPress, this, [] {});
    connect(&watcher, &MediaKeyWatcher::shortPress, this, [] {});
    service.takeTrace();
    const auto last = connect(&watcher, &MediaKeyWatcher::longPress, this, [] {});
    // The second of both kinds is there now, and nothing has to be done any more.
    QCOMPARE(service.takeTrace(), QStringList());
    connect(&watcher, &MediaKeyWatcher::notificationChanged, this, [] {});
    QCOMPARE(service.takeTrace(), QStringList());
    disconnect(last);
    QCOMPARE(service.takeTrace(), QStringList({"-", "+", "bn_play_short", "bn_play_med"}));
    QCoreApplication::processEvents();
    QCOMPARE(service.takeTrace(), QStringList());
}

void MediaKeyWatcherTest::goneListeners_countNoLonger_data()
{
    QTest::addColumn<bool>("isDestroyed");
    QTest::newRow("a listener with two connections is destroyed") << true;
    QTest::newRow("both connections end in one call") << false;
}

void MediaKeyWatcherTest::goneListeners_countNoLonger()
{
    RuntimeBroker broker;
    Service service(broker);
    MediaKeyWatcher watcher(MediaKey::Play);
    connect(&watcher, &MediaKeyWatcher::shortPress, this, [] {});
    QFETCH(bool, isDestroyed);
    auto listener = std::make_unique<QObject>();
    connect(&watcher, &MediaKeyWatcher::longPress, listener.get(), [] {});
    connect(&watcher, &MediaKeyWatcher::longPress, listener.get(), [] {});
    if (isDestroyed) {
        listener.reset();
    } else {
        disconnect(&watcher, &MediaKeyWatcher::longPress, listener.get(), nullptr);
    }
    QCoreApplication::processEvents();
    const QStringList trace = service.takeTrace();
    QCOMPARE(trace.mid(trace.lastIndexOf("+")), QStringList({"+", "bn_play_short"}));
    QCoreApplication::processEvents();
    QCOMPARE(service.takeTrace(), QStringList());
}

void MediaKeyWatcherTest::disconnecting_neverDeadlocks()
{
    RuntimeBroker broker;
    Service service(broker);
    // Disconnecting by handle, Qt holds a lock out of a small pool, which an object's address chooses.
    std::vector<std::unique_ptr<MediaKeyWatcher>> watchers;
    for (int i = 0; i < 300; ++i) {
        auto &watcher = watchers.emplace_back(std::make_unique<MediaKeyWatcher>(MediaKey::Play));
        const auto first = connect(watcher.get(), &MediaKeyWatcher::shortPress, this, [] {});
        connect(watcher.get(), &MediaKeyWatcher::shortPress, this, [] {});
        QCoreApplication::processEvents();
        service.takeTrace();
        disconnect(first);
        QCOMPARE(service.takeTrace(), QStringList({"-", "+", "bn_play_short"}));
    }
}

void MediaKeyWatcherTest::setNotification_registersAnew_andTells()
{
    voro::test::LogCatcher log;
    RuntimeBroker broker;
    Service service(broker);
    MediaKeyWatcher watcher(MediaKey::Play);
    connect(&watcher, &MediaKeyWatcher::shortPress, this, [] {});
    connect(&watcher, &MediaKeyWatcher::longPress, this, [] {});
    service.takeTrace();
    QStringList trace;
    connect(&watcher, &MediaKeyWatcher::notificationChanged, this, [&](MediaKeyNotification::Type notification) {
        trace = service.takeTrace();
        QCOMPARE(notification, MediaKeyNotification::Threshold);
    });
    service.takeTrace();
    watcher.setNotification(MediaKeyNotification::Threshold);
    QCOMPARE(trace, QStringList({"-", "+", "bn_play_short_nothresh", "bn_play_med"}));
    QCOMPARE(watcher.property("notification"), QVariant::fromValue(MediaKeyNotification::Threshold));
    QCOMPARE(log.takeLines(), QStringList());
    watcher.setNotification(MediaKeyNotification::Threshold);
    QCOMPARE(log.takeLines(), QStringList("W MediaKeyWatcherPrivate::setNotification: "
                                          "Ignoring attempt to set same notification. notification=1"));
    QCOMPARE(service.takeTrace(), QStringList());
}

void MediaKeyWatcherTest::setKey_registersAnew_orCloses()
{
    voro::test::LogCatcher log;
    RuntimeBroker broker;
    Service service(broker);
    auto watcher = std::make_unique<MediaKeyWatcher>();
    connect(watcher.get(), &MediaKeyWatcher::shortPress, this, [] {});
    QCOMPARE(service.takeTrace(), QStringList());
    watcher->setKey(MediaKey::Next);
    QCOMPARE(service.takeTrace(), QStringList({"+", "bn_next_short"}));
    watcher->setKey(MediaKey::None);
    QCOMPARE(service.takeTrace(), QStringList("-"));
    watcher->setKey(MediaKey::Stop);
    QCOMPARE(service.takeTrace(), QStringList({"+", "bn_stop_short"}));
    QCOMPARE(log.takeLines(), QStringList());
    watcher->setKey(MediaKey::Stop);
    QCOMPARE(log.takeLines(), QStringList("W MediaKeyWatcherPrivate::setKey: Ignoring attempt to set same key. key=6"));
    watcher.reset();
    QCOMPARE(service.takeTrace(), QStringList("-"));
}

void MediaKeyWatcherTest::message_isReportedOrIgnored_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QStringList>("expected");
    const QString log = QStringLiteral("W MediaKeyWatcherPrivate::onReadyRead: ");
    QTest::newRow("short") << QByteArray("msg::key\ndat::bn_play_short\n") << QStringList("shortPress(Play)");
    QTest::newRow("medium") << QByteArray("msg::key\ndat::bn_play_med\n")
                            << QStringList({"longPress(Play)", "mediumPress(Play)"});
    QTest::newRow("a name that begins alike")
        << QByteArray("msg::key\ndat::bn_playpause_short\n") << QStringList("shortPress(Play)");
    QTest::newRow("another key") << QByteArray("msg::key\ndat::bn_next_short\n") << QStringList();
    QTest::newRow("another case") << QByteArray("msg::key\ndat::BN_play_short\n") << QStringList();
    QTest::newRow("another length") << QByteArray("msg::key\ndat::bn_play_short_nothresh\n") << QStringList();
    QTest::newRow("no name") << QByteArray("msg::key\n") << QStringList();
    QTest::newRow("error") << QByteArray("res::button\nerr::EINVAL\n")
                           << QStringList(log + "Control error received. err=\"EINVAL\", res=\"button\"");
    QTest::newRow("error, whatever else") << QByteArray("msg::key\ndat::bn_play_short\nerr:n:5\n")
                                          << QStringList(log + "Control error received. err=\"5\", res=\"\"");
    QTest::newRow("unknown") << QByteArray("msg::hello\n")
                             << QStringList(log
                                            + "Unhandled control message. map="
                                              "QMap((\"msg\", QVariant(QString, \"hello\")))");
}

void MediaKeyWatcherTest::message_isReportedOrIgnored()
{
    QFETCH(QByteArray, lines);
    QFETCH(QStringList, expected);
    voro::test::LogCatcher log;
    RuntimeBroker broker;
    Service service(broker);
    MediaKeyWatcher watcher(MediaKey::Play);
    QStringList trace;
    const SignalLog signalLog(&watcher, trace);
    service.takeTrace();
    service.send(lines);
    // Messages are not reordered: this one comes after what the tested one caused.
    service.send("msg::key\ndat::bn_play_short\n");
    const QString end = QStringLiteral("shortPress(Play)");
    QTRY_COMPARE(trace.count(end), expected.count(end) + 1);
    QCOMPARE(trace.takeLast(), end);
    QCOMPARE(trace + log.takeLines(), expected);
}

void MediaKeyWatcherTest::listener_mayDestroyTheWatcher()
{
    RuntimeBroker broker;
    Service service(broker);
    auto *watcher = new MediaKeyWatcher(MediaKey::Play);
    bool isGone = false;
    connect(watcher, &QObject::destroyed, this, [&] { isGone = true; });
    connect(watcher, &MediaKeyWatcher::longPress, this, [watcher] { delete watcher; });
    connect(watcher, &MediaKeyWatcher::mediumPress, this, [] { QFAIL("A destroyed watcher reports"); });
    service.takeTrace();
    service.send("msg::key\ndat::bn_play_med\n");
    QTRY_VERIFY(isGone);
    QCOMPARE(service.takeTrace(), QStringList("-"));
}

void MediaKeyWatcherTest::failure_isALogLine_withoutAService()
{
    voro::test::LogCatcher log;
    RuntimeBroker broker;
    const MediaKeyWatcher watcher(MediaKey::Play);
    connect(&watcher, &MediaKeyWatcher::shortPress, this, [] {});
    const QStringList lines = log.takeLines();
    QCOMPARE(lines.size(), 1);
    const auto line = QStringLiteral("W MediaKeyWatcherPrivate::updateButtonRegistration: "
                                     "Error trying to open the PPS connection. error=\"");
    QVERIFY2(lines.first().startsWith(line) && lines.first().size() > line.size() + 1, qPrintable(lines.first()));
}

void MediaKeyWatcherTest::mistakes_areLogLines()
{
    voro::test::LogCatcher log;
    RuntimeBroker broker;
    MediaKeyWatcher watcher;
    MediaKeyWatcherPrivate own(&watcher);
    const auto clicked = MediaKeyNotification::Clicked;
    QCOMPARE(own.updateButtonRegistration(nullptr, MediaKey::Play, clicked, true), 0);
    QVERIFY(own.send(nullptr, MediaKey::Play, "short") != 0);
    voro::PpsObject closed(QLatin1String(ControlPath), nullptr);
    QVERIFY(own.send(&closed, MediaKey::Play, "short") != 0);
    QVERIFY(QMetaObject::invokeMethod(&own, "onReadyRead"));
    const QString prefix = QStringLiteral("W MediaKeyWatcherPrivate::");
    QCOMPARE(
        log.takeLines(),
        QStringList({prefix + "updateButtonRegistration: The PPS object is null.", prefix + "send: PPS object is null.",
                     prefix + "send: Error writing message to PPS. error=" + QString::number(closed.error()),
                     prefix + "onReadyRead: Signal sender is not a PPS object."}));
}

QTEST_GUILESS_MAIN(MediaKeyWatcherTest)
#include "tst_mediakeywatcher.moc"
