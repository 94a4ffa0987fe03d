#include "LogCatcher.h"
#include "private/Logger.h"
#include "RuntimeBroker.h"

#include <multimedia/SystemSound.h>
#include <voro/PpsObject.h>

#include <QtTest/QtTest>

#include <memory>

using namespace voro::multimedia;

/** The sound service, as far as it is asked. */
class Service {
public:
    explicit Service(RuntimeBroker &broker)
        : m_control(broker.thread().open("/pps/services/multimedia/sound/control?server", 3))
    {}

    /** What came next: "opened", "closed", or a request as "MSG ID SOUND". */
    QString next()
    {
        const QVariantMap objects = voro::PpsObject::decode(QByteArray::fromStdString(readNext(*m_control)), nullptr);
        if (objects.isEmpty()) {
            return QStringLiteral("closed");
        }
        const QVariantMap request = objects.first().toMap();
        if (request.isEmpty()) {
            return QStringLiteral("opened");
        }
        const QVariantMap data = request.value(QStringLiteral("dat")).toMap();
        if (request.size() != 3 || data.size() != 1 || request["id"].userType() != QMetaType::QString) {
            return QStringLiteral("not a request");
        }
        return QStringList{request["msg"].toString(), request["id"].toString(), data["sound"].toString()}.join(' ');
    }

private:
    std::unique_ptr<voro::pps::Connection> m_control;
};

class SystemSoundTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sound_hasItsName_whenPreparedAndPlayed_data();
    void sound_hasItsName_whenPreparedAndPlayed();
    void setSound_isTrue_onlyForAnotherSound();
    void playStatic_opensWritesAndCloses();
    void everything_isRefusedQuietly_withoutAService();
};

void SystemSoundTest::sound_hasItsName_whenPreparedAndPlayed_data()
{
    QTest::addColumn<int>("number");
    const char *names[] = {"alarm_battery",
                           "event_browser_start",
                           "event_camera_shutter",
                           "event_device_lock",
                           "event_device_unlock",
                           "event_device_tether",
                           "event_device_untether",
                           "notification_general",
                           "input_keypress",
                           "event_recording_start",
                           "event_recording_stop",
                           "notification_sapphire",
                           "system_master_volume_reference",
                           "event_video_call",
                           "event_video_call_outgoing",
                           "event_camera_burst_sound"};
    int number = 0;
    for (const char *name : names) {
        QTest::newRow(name) << ++number;
    }
}

void SystemSoundTest::sound_hasItsName_whenPreparedAndPlayed()
{
    QFETCH(int, number);
    RuntimeBroker broker;
    Service service(broker);
    SystemSound sound(static_cast<SystemSound::Type>(number));
    QCOMPARE(sound.property("sound").toInt(), number);
    QCOMPARE(service.next(), QStringLiteral("opened"));
    QCOMPARE(service.next(), QStringLiteral("prepare_sound 0 ") + QTest::currentDataTag());
    sound.play();
    QCOMPARE(service.next(), QStringLiteral("play_sound 0 ") + QTest::currentDataTag());
}

void SystemSoundTest::setSound_isTrue_onlyForAnotherSound()
{
    voro::test::LogCatcher log;
    RuntimeBroker broker;
    Service service(broker);
    auto sound = std::make_unique<SystemSound>();
    QCOMPARE(sound->sound(), SystemSound::None);
    sound->play();
    QVERIFY(sound->setSound(SystemSound::BatteryAlarm));
    QVERIFY(!sound->setSound(SystemSound::BatteryAlarm));
    QCOMPARE(log.takeLines(), QStringList());
    for (const int invalid : {0, 17, -1}) {
        QVERIFY(!sound->setSound(static_cast<SystemSound::Type>(invalid)));
        const auto line = QStringLiteral("W SystemSoundPrivate::setSound: Invalid system sound. sound=%1").arg(invalid);
        QCOMPARE(log.takeLines(), QStringList(line));
        QCOMPARE(sound->sound(), SystemSound::BatteryAlarm);
    }
    sound.reset();
    // Nothing was written besides the one valid choice.
    QCOMPARE(service.next(), QStringLiteral("opened"));
    QCOMPARE(service.next(), QStringLiteral("prepare_sound 0 alarm_battery"));
    QCOMPARE(service.next(), QStringLiteral("closed"));
}

void SystemSoundTest::playStatic_opensWritesAndCloses()
{
    RuntimeBroker broker;
    Service service(broker);
    SystemSound::play(SystemSound::CameraBurstEvent);
    QCOMPARE(service.next(), QStringLiteral("opened"));
    QCOMPARE(service.next(), QStringLiteral("play_sound 0 event_camera_burst_sound"));
    QCOMPARE(service.next(), QStringLiteral("closed"));
}

void SystemSoundTest::everything_isRefusedQuietly_withoutAService()
{
    voro::test::LogCatcher log;
    RuntimeBroker broker;
    SystemSound sound;
    const QStringList lines = log.takeLines();
    QCOMPARE(lines.size(), 1);
    const auto line = QStringLiteral("W SystemSoundPrivate::SystemSoundPrivate: Unable open PPS. "
                                     "uri=\"/pps/services/multimedia/sound/control\", error=");
    QVERIFY2(lines.first().startsWith(line), qPrintable(lines.first()));
    QVERIFY(lines.first().mid(line.size()).toInt() > 0);
    QVERIFY(!sound.setSound(SystemSound::InputKeypress));
    QCOMPARE(sound.sound(), SystemSound::InputKeypress);
    sound.play();
    QCOMPARE(log.takeLines(), QStringList());
}

QTEST_GUILESS_MAIN(SystemSoundTest)
#include "tst_systemsound.moc"
