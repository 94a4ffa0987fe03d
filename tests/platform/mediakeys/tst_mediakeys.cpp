#include "FakeDevice.h"
#include "ServiceClient.h"
#include "ServiceThread.h"

#include <multimedia/MediaKeyWatcher.h>

#include <QtTest/QtTest>

#include <Files.h>
#include <linux/input-event-codes.h>
#include <Rows.h>
#include <unistd.h>

#include <memory>

using namespace std::chrono_literals;
using namespace voro::multimedia;
using voro::mediakeys::Mode;
using voro::mediakeys::Presses;

namespace {

/** The service, running from the beginning. */
struct StartedService : ServiceThread {
    explicit StartedService(Mode mode = Mode::All) : ServiceThread(mode) { start(); }
};

/** A client of the service that presses keys. */
class Finger : public ServiceClient {
public:
    Finger() : ServiceClient("/pps/services/multimedia/mediakeys/control") {}

    void start(const char *key, int milliseconds)
    {
        write(QStringLiteral(R"(msg::press
dat:json:{"key":"%1","ms":%2}
)")
                  .arg(QLatin1String(key))
                  .arg(milliseconds)
                  .toUtf8());
    }
    /** Presses a key and returns when it was released. */
    void press(const char *key, int milliseconds)
    {
        start(key, milliseconds);
        QCOMPARE(answer(), "res::press");
    }
};

/** A watcher that writes down what it reports. */
class Watch {
public:
    enum Signal { Short = 1, Long = 2 };

    explicit Watch(MediaKey::Type key, int listenTo = Short | Long,
                   MediaKeyNotification::Type notification = MediaKeyNotification::Clicked)
        : m_watcher(std::make_unique<MediaKeyWatcher>(key))
    {
        if (listenTo & Short) {
            QObject::connect(m_watcher.get(), &MediaKeyWatcher::shortPress, [this] { m_trace.append("short"); });
        }
        if (listenTo & Long) {
            QObject::connect(m_watcher.get(), &MediaKeyWatcher::longPress, [this] { m_trace.append("long"); });
        }
        if (notification != m_watcher->notification()) {
            m_watcher->setNotification(notification);
        }
    }

    MediaKeyWatcher &watcher() { return *m_watcher; }
    void destroy() { m_watcher.reset(); }
    const QStringList &trace() const { return m_trace; }
    QStringList takeTrace() { return std::exchange(m_trace, {}); }

private:
    QStringList m_trace;
    std::unique_ptr<MediaKeyWatcher> m_watcher;
};

} // namespace

class MediaKeysTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { qunsetenv("XDG_CURRENT_DESKTOP"); }

    void press_isReported_byItsLength_data()
    {
        const Rows<int, int, QString> row("length", "looksAt", "expected");
        row("just before the threshold", 799, -1, "before");
        row("the threshold", 800, -1, "threshold after");
        row("long, and seen in time", 1200, 800, "threshold after");
        row("looked at before the threshold", 1200, 799, "threshold after");
    }

    void press_isReported_byItsLength()
    {
        QFETCH(int, length);
        QFETCH(int, looksAt);
        QFETCH(QString, expected);
        QStringList trace;
        Presses presses([&](Presses::Event event, voro::mediakeys::Key, const voro::mediakeys::Owners &owners) {
            const char *names[] = {"threshold", "before", "after"};
            trace.append(names[static_cast<int>(event)]);
            QCOMPARE(owners, (voro::mediakeys::Owners{7}));
        });
        const auto start = voro::mediakeys::Clock::now();
        const voro::mediakeys::SourceId source{voro::mediakeys::SourceId::Device, 1};
        for (const uint64_t press : {1, 2}) {
            presses.press({voro::mediakeys::SourceId::Client, 1, press}, voro::mediakeys::Key::Play, start - 1ms, {7});
        }
        presses.press(source, voro::mediakeys::Key::Play, start, {7});
        presses.forget({voro::mediakeys::SourceId::Client, 1});
        QCOMPARE(presses.next(), std::optional(start + 800ms));
        if (looksAt >= 0) {
            presses.advance(start + std::chrono::milliseconds(looksAt));
            QCOMPARE(trace.isEmpty(), looksAt < 800);
            QCOMPARE(presses.next().has_value(), looksAt < 800);
        }
        // Neither is anything that happens to what is down.
        presses.press(source, voro::mediakeys::Key::Play, start + 10ms, {7});
        presses.release({voro::mediakeys::SourceId::Device, 2}, voro::mediakeys::Key::Play, start + 10ms);
        presses.release(source, voro::mediakeys::Key::Next, start + 10ms);
        presses.release(source, voro::mediakeys::Key::Play, start + std::chrono::milliseconds(length));
        QCOMPARE(trace.join(' '), expected);
        QCOMPARE(presses.next(), std::nullopt);
    }

    void press_isReported_toEachWatcherAsItAsked()
    {
        StartedService service;
        const auto threshold = MediaKeyNotification::Threshold;
        Watch shortClicked(MediaKey::Play, Watch::Short);
        Watch shortThreshold(MediaKey::Play, Watch::Short, threshold);
        Watch longClicked(MediaKey::Play, Watch::Long);
        Watch bothClicked(MediaKey::Play);
        Watch bothThreshold(MediaKey::Play, Watch::Short | Watch::Long, threshold);
        Watch playPause(MediaKey::PlayPause, Watch::Short);
        Watch end(MediaKey::Stop, Watch::Short);
        Finger finger;
        finger.press("play", 799);
        finger.press("play", 801);
        finger.press("stop", 0);
        QTRY_COMPARE(end.trace(), QStringList("short"));
        QTRY_COMPARE(shortClicked.trace(), QStringList({"short", "short"}));
        QTRY_COMPARE(shortThreshold.trace(), QStringList({"short", "short"}));
        QTRY_COMPARE(longClicked.trace(), QStringList("long"));
        QTRY_COMPARE(bothClicked.trace(), QStringList({"short", "long", "short"}));
        QTRY_COMPARE(bothThreshold.trace(), QStringList({"short", "long"}));
        QCOMPARE(playPause.trace(), QStringList());
        QCOMPARE(service.takeCommands(), QStringList());
    }

    void threshold_isReported_whileTheKeyIsDown()
    {
        StartedService service;
        Watch watch(MediaKey::Next);
        Finger finger;
        QElapsedTimer time;
        time.start();
        finger.start("next", 60'000);
        QTRY_COMPARE_WITH_TIMEOUT(watch.trace(), QStringList("long"), 50'000);
        QVERIFY2(time.elapsed() >= 799, qPrintable(QString::number(time.elapsed())));
    }

    void registrationThatGoes_takesThePressAlong()
    {
        StartedService service;
        Watch watch(MediaKey::Play, Watch::Short);
        Finger finger;
        finger.start("play", 100);
        watch.destroy();
        QCOMPARE(finger.answer(), "res::press");
        // It was somebody's, and so it is nobody else's either.
        QCOMPARE(service.takeCommands(), QStringList());
        QCOMPARE(watch.trace(), QStringList());
        finger.press("play", 0);
        QCOMPARE(service.takeCommands(), QStringList("msg::m_play"));
    }

    void registrationThatChanges_getsTheRestOfThePress()
    {
        StartedService service;
        Watch watch(MediaKey::Play);
        Finger finger;
        finger.start("play", 100);
        watch.watcher().setNotification(MediaKeyNotification::Threshold);
        QCOMPARE(finger.answer(), "res::press");
        QTRY_COMPARE(watch.trace(), QStringList("short"));
        QCOMPARE(service.takeCommands(), QStringList());
    }

    void registrationThatComes_getsNothingOfThePress()
    {
        StartedService service;
        Finger finger;
        finger.start("play", 100);
        Watch watch(MediaKey::Play);
        QCOMPARE(finger.answer(), "res::press");
        QCOMPARE(service.takeCommands(), QStringList("msg::m_play"));
        finger.press("play", 0);
        QTRY_COMPARE(watch.trace(), QStringList("short"));
    }

    void deviceTimes_decide_notWhenTheyAreRead()
    {
        StartedService service;
        Watch watch(MediaKey::Play, Watch::Short | Watch::Long, MediaKeyNotification::Threshold);
        FakeDevice device(service.deviceFolder() + "/event0");
        const auto start = std::chrono::steady_clock::now() - 2s;
        device.sendPress(KEY_PLAY, start, start + 799ms);
        device.sendPress(KEY_PLAY, start + 1000ms, start + 1801ms);
        QTRY_COMPARE(watch.trace(), QStringList({"short", "long"}));
    }

    void deviceThatGoes_releasesWithoutAPress()
    {
        StartedService service;
        Watch watch(MediaKey::Play);
        Watch other(MediaKey::Next);
        auto device = std::make_unique<FakeDevice>(service.deviceFolder() + "/event0");
        device->send(KEY_NEXT, 1);
        device->send(KEY_NEXT, 0);
        device->send(KEY_PLAY, 1);
        device.reset();
        QTRY_COMPARE(other.trace(), QStringList("short"));
        // The same device again: what it pressed before is not down any more.
        device = std::make_unique<FakeDevice>(service.deviceFolder() + "/event0");
        device->send(KEY_PLAY, 0);
        device->send(KEY_NEXT, 1);
        // When events were lost, what is not down any more was released.
        device->sendLoss();
        QTRY_COMPARE(other.trace(), QStringList({"short", "short"}));
        device->send(KEY_PLAY, 1);
        device->send(KEY_PLAY, 0);
        QTRY_COMPARE(watch.trace(), QStringList("short"));
    }

    void devices_pressOneKey_independently()
    {
        StartedService service;
        Watch watch(MediaKey::Play);
        FakeDevice first(service.deviceFolder() + "/event0");
        FakeDevice second(service.deviceFolder() + "/event1");
        first.send(KEY_PLAY, 1);
        second.send(KEY_PLAY, 1);
        second.send(KEY_PLAY, 0);
        QTRY_COMPARE(watch.trace(), QStringList("short"));
        first.send(KEY_PLAY, 0);
        QTRY_COMPARE(watch.trace(), QStringList({"short", "short"}));
    }

    void keyThatNobodyRegistered_isActedUpon_data()
    {
        const Rows<Mode, bool, bool> row("mode", "hasDesktop", "isActedUpon");
        row("auto", Mode::Auto, false, true);
        row("auto, in a desktop session", Mode::Auto, true, false);
        row("all, in a desktop session", Mode::All, true, true);
        row("registered", Mode::Registered, false, false);
    }

    void keyThatNobodyRegistered_isActedUpon()
    {
        QFETCH(Mode, mode);
        QFETCH(bool, hasDesktop);
        QFETCH(bool, isActedUpon);
        if (hasDesktop) {
            qputenv("XDG_CURRENT_DESKTOP", "GNOME");
        }
        StartedService service(mode);
        FakeDevice device(service.deviceFolder() + "/event0");
        auto registered = std::make_unique<Watch>(MediaKey::PlayPause, Watch::Short);
        const std::pair<unsigned, const char *> keys[] = {{KEY_FASTFORWARD, "msg::m_fforward"},
                                                          {KEY_PAUSECD, "msg::m_pause"},
                                                          {KEY_PLAY, "msg::m_play"},
                                                          {KEY_PLAYCD, "msg::m_play"},
                                                          {KEY_REWIND, "msg::m_rewind"},
                                                          {KEY_STOPCD, "msg::m_stop"},
                                                          {KEY_VOLUMEDOWN, "msg::v_down"},
                                                          {KEY_VOLUMEUP, "msg::v_up"},
                                                          {KEY_NEXTSONG, "msg::m_next"},
                                                          {KEY_NEXT, "msg::m_next"},
                                                          {KEY_PREVIOUSSONG, "msg::m_previous"},
                                                          {KEY_PREVIOUS, "msg::m_previous"},
                                                          {KEY_MUTE, nullptr},
                                                          {KEY_PLAYPAUSE, nullptr},
                                                          {KEY_MEDIA, nullptr}};
        QStringList expected;
        for (const auto &[code, command] : keys) {
            const auto start = std::chrono::steady_clock::now();
            device.send(code, 1, start);
            // A held key repeats.
            device.send(code, 2, start + 1ms);
            device.send(code, 0, start + 4ms);
            if (isActedUpon && command) {
                expected.append(command);
            }
        }
        QTRY_COMPARE(registered->trace(), QStringList({"short", "short"}));
        registered.reset();
        // An injected key press always takes effect.
        Finger().press("playpause", 0);
        expected.append("msg::m_playpause");
        QCOMPARE(service.takeCommands(), expected);
    }

    void missingPermission_isOneWarning_untilItIsGiven()
    {
        ServiceThread service;
        service.dropPermissions();
        const QString folderPath = QFileInfo(service.deviceFolder()).path();
        const QString path = service.deviceFolder() + "/event";
        FakeDevice device(path + "0");
        const FakeDevice other(path + "1");
        QVERIFY(QFile::setPermissions(path + "0", {}));
        QVERIFY(QFile::setPermissions(path + "1", {}));
        for (const QString &name : {folderPath, service.deviceFolder()}) {
            QVERIFY(QFile::setPermissions(name, QFile::Permissions(0x7755)));
        }
        QTemporaryFile errors;
        QVERIFY(errors.open());
        const int before = dup(STDERR_FILENO);
        dup2(errors.handle(), STDERR_FILENO);
        const auto restore = qScopeGuard([before] {
            dup2(before, STDERR_FILENO);
            close(before);
        });
        service.start();
        Watch watch(MediaKey::Play, Watch::Short);
        Finger().press("play", 0);
        QTRY_COMPARE(watch.trace(), QStringList("short"));
        QTRY_COMPARE(readFile(errors.fileName()).count('\n'), 1);
        QVERIFY(readFile(errors.fileName()).contains("no permission to read media keys"));
        QVERIFY(QFile::setPermissions(path + "0", QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
        device.send(KEY_PLAY, 1);
        device.send(KEY_PLAY, 0);
        QTRY_COMPARE(watch.trace(), QStringList({"short", "short"}));
        QCOMPARE(readFile(errors.fileName()).count('\n'), 1);
    }

    void folder_mayComeLater()
    {
        ServiceThread service;
        QVERIFY(QDir().rmdir(service.deviceFolder()));
        service.start();
        Watch watch(MediaKey::Play, Watch::Short);
        for (const char *name : {"/event0", "/event7"}) {
            QVERIFY(QDir().mkdir(service.deviceFolder()));
            {
                FakeDevice device(service.deviceFolder() + name);
                device.send(KEY_PLAY, 1);
                device.send(KEY_PLAY, 0);
                QTRY_COMPARE(watch.trace(), QStringList("short"));
                watch.takeTrace();
            }
            QVERIFY(QDir().rmdir(service.deviceFolder()));
        }
    }

    void client_holdsDown_onlySoManyKeys()
    {
        StartedService service;
        Finger finger;
        for (int i = 0; i < 20; ++i) {
            finger.press("stop", 0);
        }
        for (int i = 0; i < 16; ++i) {
            finger.start("play", 60'000);
        }
        finger.start("play", 0);
        QCOMPARE(finger.answer(), "res::press\nerr::too many keys\nerror::too many keys");
        Finger().press("play", 0);
    }

    void badMessage_isRefused_data()
    {
        const Rows<bool, QByteArray, QByteArray> row("isPress", "message", "answer");
        const QByteArray refusal("res::button\nerr::bad registration");
        row("button without data", false, "msg::button", refusal);
        const char *registrations[] = {
            R"({"key":"bn_play_short"})",
            R"({"key":"bn_play_short","action":"steal"})",
            R"({"key":"bn_mute_short","action":"forward"})",
            R"({"key":"bn_play_long","action":"forward"})",
            R"({"key":"bn_play","action":"forward"})",
            R"({"key":"play_short","action":"forward"})",
        };
        for (const char *registration : registrations) {
            row(registration, false, "msg::button\ndat:json:" + QByteArray(registration), refusal);
        }
        const auto failure = [](const QByteArray &command, const QByteArray &problem) {
            return "res::" + command + "\nerr::" + problem + "\nerror::" + problem;
        };
        row("unknown command", true, "msg::hold", failure("hold", "unknown command"));
        row("long command", true, "msg::" + QByteArray(1000, 'x'), failure(QByteArray(255, 'x'), "unknown command"));
        const std::pair<const char *, const char *> presses[] = {
            {R"({"key":"mute","ms":0})", "unknown key"},
            {R"({"key":"play"})", "bad length"},
            {R"({"key":"play","ms":0.5})", "bad length"},
            {R"({"key":"play","ms":60001})", "bad length"},
        };
        for (const auto &[press, problem] : presses) {
            row(press, true, "msg::press\ndat:json:" + QByteArray(press), failure("press", problem));
        }
    }

    void badMessage_isRefused()
    {
        QFETCH(bool, isPress);
        QFETCH(QByteArray, message);
        QFETCH(QByteArray, answer);
        StartedService service;
        ServiceClient control(isPress ? "/pps/services/multimedia/mediakeys/control"
                                      : "/pps/services/multimedia/mediaplayer/control");
        control.write(message);
        QCOMPARE(control.answer(), answer);
        Finger().press("play", 0);
        QCOMPARE(service.takeCommands(), QStringList("msg::m_play"));
    }
};

QTEST_GUILESS_MAIN(MediaKeysTest)
#include "tst_mediakeys.moc"
