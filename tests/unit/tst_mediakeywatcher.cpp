#include "LogCatcher.h"
#include "private/MediaKeyWatcherPrivate.h"
#include "ScriptedService.h"
#include "SignalLog.h"

#include <multimedia/MediaKeyWatcher.h>
#include <voro/PpsObject.h>

#include <QtTest/QtTest>

#include <Rows.h>

#include <memory>

using namespace voro::multimedia;

namespace {

const QString ControlPath = QStringLiteral("/pps/services/multimedia/mediaplayer/control");

/** A broker with a service, and a watcher of the key. */
struct Fixture {
    explicit Fixture(MediaKey::Type key = MediaKey::Play) : owned(std::make_unique<MediaKeyWatcher>(key)) {}

    /** What the watchers did since the last call: "opened", "closed" or what they registered for. */
    QStringList takeTrace()
    {
        const QString before = QStringLiteral(R"(dat:json:{"action":"forward","key":")");
        const QString behind = QStringLiteral(R"("}|msg::button|)");
        QStringList trace = service.take();
        for (QString &event : trace) {
            if (event.startsWith(before) && event.endsWith(behind)) {
                event = event.mid(before.size()).chopped(behind.size());
            }
        }
        return trace;
    }

    voro::test::LogCatcher log;
    RuntimeBroker broker;
    ScriptedService service{broker, ControlPath};
    std::unique_ptr<MediaKeyWatcher> owned;
    MediaKeyWatcher &watcher = *owned;
};

} // namespace

class MediaKeyWatcherTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void listeners_decideWhatIsRegistered_data()
    {
        const Rows<MediaKeyNotification::Type, int, int, int, QString> row("notification", "shortListeners",
                                                                           "mediumListeners", "longListeners", "last");
        const auto clicked = MediaKeyNotification::Clicked;
        const auto threshold = MediaKeyNotification::Threshold;
        row("none", clicked, 0, 0, 0, "");
        row("short", clicked, 1, 0, 0, "opened bn_play_short");
        row("short, threshold", threshold, 1, 0, 0, "opened bn_play_short");
        row("medium", clicked, 0, 1, 0, "opened bn_play_med");
        row("long, threshold", threshold, 0, 0, 1, "opened bn_play_med");
        row("short and medium", clicked, 1, 1, 0, "opened bn_play_short bn_play_med");
        row("short and long, threshold", threshold, 1, 0, 1, "opened bn_play_short_nothresh bn_play_med");
        row("two of each", clicked, 2, 1, 1, "opened bn_play_short bn_play_med");
    }

    void listeners_decideWhatIsRegistered()
    {
        QFETCH(MediaKeyNotification::Type, notification);
        QFETCH(int, shortListeners);
        QFETCH(int, mediumListeners);
        QFETCH(int, longListeners);
        QFETCH(QString, last);
        Fixture f;
        QCOMPARE(f.takeTrace(), QStringList());
        if (notification != f.watcher.notification()) {
            f.watcher.setNotification(notification);
            // Without listeners the connection is there and nothing is registered.
            QCOMPARE(f.takeTrace(), QStringList("opened"));
        }
        for (int i = 0; i < shortListeners; ++i) {
            connect(&f.watcher, &MediaKeyWatcher::shortPress, this, [] {});
        }
        for (int i = 0; i < mediumListeners; ++i) {
            connect(&f.watcher, &MediaKeyWatcher::mediumPress, this, [] {});
        }
        for (int i = 0; i < longListeners; ++i) {
            connect(&f.watcher, &MediaKeyWatcher::longPress, this, [] {});
        }
        const QStringList trace = f.takeTrace();
        QCOMPARE(trace.mid(trace.lastIndexOf("opened")).join(' '), last);
    }

    void key_hasItsName_whenRegistered_data()
    {
        const Rows<int> row("number");
        int number = 0;
        for (const char *name :
             {"forward", "pause", "play", "playpause", "rewind", "stop", "vdown", "vup", "prev", "next"}) {
            row(name, ++number);
        }
        row("", 11);
    }

    void key_hasItsName_whenRegistered()
    {
        QFETCH(int, number);
        Fixture f(static_cast<MediaKey::Type>(number));
        QCOMPARE(static_cast<int>(f.watcher.key()), number);
        connect(&f.watcher, &MediaKeyWatcher::shortPress, this, [] {});
        QCOMPARE(f.takeTrace(), QStringList({"opened", QStringLiteral("bn_%1_short").arg(QTest::currentDataTag())}));
    }

    void registration_staysAsItIs_fromTwoListenersOfEachOn()
    {
        Fixture f;
        connect(&f.watcher, &MediaKeyWatcher::shortPress, this, [] {});
        connect(&f.watcher, &MediaKeyWatcher::longPress, this, [] {});
        connect(&f.watcher, &MediaKeyWatcher::shortPress, this, [] {});
        f.takeTrace();
        const auto last = connect(&f.watcher, &MediaKeyWatcher::longPress, this, [] {});
        // The second of both kinds is there now, and nothing has to be done any more.
        QCOMPARE(f.takeTrace(), QStringList());
        connect(&f.watcher, &MediaKeyWatcher::notificationChanged, this, [] {});
        QCOMPARE(f.takeTrace(), QStringList());
        disconnect(last);
        QCOMPARE(f.takeTrace(), QStringList({"closed", "opened", "bn_play_short", "bn_play_med"}));
        QCoreApplication::processEvents();
        QCOMPARE(f.takeTrace(), QStringList());
    }

    void goneListeners_countNoLonger_data()
    {
        const Rows<bool> row("isDestroyed");
        row("a listener with two connections is destroyed", true);
        row("both connections end in one call", false);
    }

    void goneListeners_countNoLonger()
    {
        Fixture f;
        connect(&f.watcher, &MediaKeyWatcher::shortPress, this, [] {});
        QFETCH(bool, isDestroyed);
        auto listener = std::make_unique<QObject>();
        connect(&f.watcher, &MediaKeyWatcher::longPress, listener.get(), [] {});
        connect(&f.watcher, &MediaKeyWatcher::longPress, listener.get(), [] {});
        if (isDestroyed) {
            listener.reset();
        } else {
            disconnect(&f.watcher, &MediaKeyWatcher::longPress, listener.get(), nullptr);
        }
        QCoreApplication::processEvents();
        const QStringList trace = f.takeTrace();
        QCOMPARE(trace.mid(trace.lastIndexOf("opened")), QStringList({"opened", "bn_play_short"}));
        QCoreApplication::processEvents();
        QCOMPARE(f.takeTrace(), QStringList());
    }

    void disconnecting_neverDeadlocks()
    {
        Fixture f;
        // Disconnecting by handle, Qt holds a lock out of a small pool, which an object's address chooses.
        std::vector<std::unique_ptr<MediaKeyWatcher>> watchers;
        for (int i = 0; i < 300; ++i) {
            auto &watcher = watchers.emplace_back(std::make_unique<MediaKeyWatcher>(MediaKey::Play));
            const auto first = connect(watcher.get(), &MediaKeyWatcher::shortPress, this, [] {});
            connect(watcher.get(), &MediaKeyWatcher::shortPress, this, [] {});
            QCoreApplication::processEvents();
            f.takeTrace();
            disconnect(first);
            QCOMPARE(f.takeTrace(), QStringList({"closed", "opened", "bn_play_short"}));
        }
    }

    void setNotification_registersAnew_andTells()
    {
        Fixture f;
        connect(&f.watcher, &MediaKeyWatcher::shortPress, this, [] {});
        connect(&f.watcher, &MediaKeyWatcher::longPress, this, [] {});
        f.takeTrace();
        QStringList trace;
        connect(&f.watcher, &MediaKeyWatcher::notificationChanged, this, [&](MediaKeyNotification::Type notification) {
            trace = f.takeTrace();
            QCOMPARE(notification, MediaKeyNotification::Threshold);
        });
        f.takeTrace();
        f.watcher.setNotification(MediaKeyNotification::Threshold);
        QCOMPARE(trace, QStringList({"closed", "opened", "bn_play_short_nothresh", "bn_play_med"}));
        QCOMPARE(f.watcher.property("notification"), QVariant::fromValue(MediaKeyNotification::Threshold));
        QCOMPARE(f.log.takeLines(), QStringList());
        f.watcher.setNotification(MediaKeyNotification::Threshold);
        QCOMPARE(f.log.takeLines(), QStringList("W MediaKeyWatcherPrivate::setNotification: "
                                                "Ignoring attempt to set same notification. notification=1"));
        QCOMPARE(f.takeTrace(), QStringList());
    }

    void setKey_registersAnew_orCloses()
    {
        Fixture f(MediaKey::None);
        connect(&f.watcher, &MediaKeyWatcher::shortPress, this, [] {});
        QCOMPARE(f.takeTrace(), QStringList());
        f.watcher.setKey(MediaKey::Next);
        QCOMPARE(f.takeTrace(), QStringList({"opened", "bn_next_short"}));
        f.watcher.setKey(MediaKey::None);
        QCOMPARE(f.takeTrace(), QStringList("closed"));
        f.watcher.setKey(MediaKey::Stop);
        QCOMPARE(f.takeTrace(), QStringList({"opened", "bn_stop_short"}));
        QCOMPARE(f.log.takeLines(), QStringList());
        f.watcher.setKey(MediaKey::Stop);
        QCOMPARE(f.log.takeLines(),
                 QStringList("W MediaKeyWatcherPrivate::setKey: Ignoring attempt to set same key. key=6"));
        f.owned.reset();
        QCOMPARE(f.takeTrace(), QStringList("closed"));
    }

    void message_isReportedOrIgnored_data()
    {
        const Rows<QByteArray, QStringList> row("lines", "expected");
        const QString log = QStringLiteral("W MediaKeyWatcherPrivate::onReadyRead: ");
        row("short", "msg::key\ndat::bn_play_short\n", {"shortPress(Play)"});
        row("medium", "msg::key\ndat::bn_play_med\n", {"longPress(Play)", "mediumPress(Play)"});
        row("a name that begins alike", "msg::key\ndat::bn_playpause_short\n", {"shortPress(Play)"});
        row("another key", "msg::key\ndat::bn_next_short\n", {});
        row("another case", "msg::key\ndat::BN_play_short\n", {});
        row("another length", "msg::key\ndat::bn_play_short_nothresh\n", {});
        row("no name", "msg::key\n", {});
        row("error", "res::button\nerr::EINVAL\n",
            QStringList(log + "Control error received. err=\"EINVAL\", res=\"button\""));
        row("error, whatever else", "msg::key\ndat::bn_play_short\nerr:n:5\n",
            QStringList(log + "Control error received. err=\"5\", res=\"\""));
        row("unknown", "msg::hello\n",
            QStringList(log
                        + "Unhandled control message. map="
                          "QMap((\"msg\", QVariant(QString, \"hello\")))"));
    }

    void message_isReportedOrIgnored()
    {
        QFETCH(QByteArray, lines);
        QFETCH(QStringList, expected);
        Fixture f;
        QStringList trace;
        const SignalLog signalLog(&f.watcher, trace);
        f.takeTrace();
        f.service.send(lines);
        // Messages are not reordered: this one comes after what the tested one caused.
        f.service.send("msg::key\ndat::bn_play_short\n");
        const QString end = QStringLiteral("shortPress(Play)");
        QTRY_COMPARE(trace.count(end), expected.count(end) + 1);
        QCOMPARE(trace.takeLast(), end);
        QCOMPARE(trace + f.log.takeLines(), expected);
    }

    void listener_mayDestroyTheWatcher()
    {
        Fixture f;
        bool isGone = false;
        connect(&f.watcher, &QObject::destroyed, this, [&] { isGone = true; });
        connect(&f.watcher, &MediaKeyWatcher::longPress, this, [&] { f.owned.reset(); });
        connect(&f.watcher, &MediaKeyWatcher::mediumPress, this, [] { QFAIL("A destroyed watcher reports"); });
        f.takeTrace();
        f.service.send("msg::key\ndat::bn_play_med\n");
        QTRY_VERIFY(isGone);
        QCOMPARE(f.takeTrace(), QStringList("closed"));
    }

    void failure_isALogLine_withoutAService()
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

    void mistakes_areLogLines()
    {
        voro::test::LogCatcher log;
        RuntimeBroker broker;
        MediaKeyWatcher watcher;
        MediaKeyWatcherPrivate own(&watcher);
        const auto clicked = MediaKeyNotification::Clicked;
        QCOMPARE(own.updateButtonRegistration(nullptr, MediaKey::Play, clicked, true), 0);
        QVERIFY(own.send(nullptr, MediaKey::Play, "short") != 0);
        voro::PpsObject closed(ControlPath, nullptr);
        QVERIFY(own.send(&closed, MediaKey::Play, "short") != 0);
        QVERIFY(QMetaObject::invokeMethod(&own, "onReadyRead"));
        const QString prefix = QStringLiteral("W MediaKeyWatcherPrivate::");
        QCOMPARE(log.takeLines(),
                 QStringList({prefix + "updateButtonRegistration: The PPS object is null.",
                              prefix + "send: PPS object is null.",
                              prefix + "send: Error writing message to PPS. error=" + QString::number(closed.error()),
                              prefix + "onReadyRead: Signal sender is not a PPS object."}));
    }
};

QTEST_GUILESS_MAIN(MediaKeyWatcherTest)
#include "tst_mediakeywatcher.moc"
