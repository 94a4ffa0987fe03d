#include "LogCatcher.h"
#include "private/Logger.h"
#include "ScriptedService.h"

#include <multimedia/SystemSound.h>

#include <QtTest/QtTest>

#include <Rows.h>

#include <memory>

using namespace voro::multimedia;

namespace {

const QString ControlPath = QStringLiteral("/pps/services/multimedia/sound/control");

QString request(const char *command, const char *sound)
{
    return QStringLiteral(R"(dat:json:{"sound":"%1"}|id::0|msg::%2|)")
        .arg(QLatin1String(sound), QLatin1String(command));
}

} // namespace

class SystemSoundTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sound_hasItsName_whenPreparedAndPlayed_data()
    {
        const Rows<int> row("number");
        int number = 0;
        for (const char *name : {"alarm_battery", "event_browser_start", "event_camera_shutter", "event_device_lock",
                                 "event_device_unlock", "event_device_tether", "event_device_untether",
                                 "notification_general", "input_keypress", "event_recording_start",
                                 "event_recording_stop", "notification_sapphire", "system_master_volume_reference",
                                 "event_video_call", "event_video_call_outgoing", "event_camera_burst_sound"}) {
            row(name, ++number);
        }
    }

    void sound_hasItsName_whenPreparedAndPlayed()
    {
        QFETCH(int, number);
        RuntimeBroker broker;
        ScriptedService service(broker, ControlPath);
        SystemSound sound(static_cast<SystemSound::Type>(number));
        QCOMPARE(sound.property("sound").toInt(), number);
        QCOMPARE(service.next(), QStringLiteral("opened"));
        QCOMPARE(service.next(), request("prepare_sound", QTest::currentDataTag()));
        sound.play();
        QCOMPARE(service.next(), request("play_sound", QTest::currentDataTag()));
    }

    void setSound_isTrue_onlyForAnotherSound()
    {
        voro::test::LogCatcher log;
        RuntimeBroker broker;
        ScriptedService service(broker, ControlPath);
        auto sound = std::make_unique<SystemSound>();
        QCOMPARE(sound->sound(), SystemSound::None);
        sound->play();
        QVERIFY(sound->setSound(SystemSound::BatteryAlarm));
        QVERIFY(!sound->setSound(SystemSound::BatteryAlarm));
        QCOMPARE(log.takeLines(), QStringList());
        for (const int invalid : {0, 17, -1}) {
            QVERIFY(!sound->setSound(static_cast<SystemSound::Type>(invalid)));
            const auto line =
                QStringLiteral("W SystemSoundPrivate::setSound: Invalid system sound. sound=%1").arg(invalid);
            QCOMPARE(log.takeLines(), QStringList(line));
            QCOMPARE(sound->sound(), SystemSound::BatteryAlarm);
        }
        sound.reset();
        // Nothing was written besides the one valid choice.
        QCOMPARE(service.next(), QStringLiteral("opened"));
        QCOMPARE(service.next(), request("prepare_sound", "alarm_battery"));
        QCOMPARE(service.next(), QStringLiteral("closed"));
    }

    void playStatic_opensWritesAndCloses()
    {
        RuntimeBroker broker;
        ScriptedService service(broker, ControlPath);
        SystemSound::play(SystemSound::CameraBurstEvent);
        QCOMPARE(service.next(), QStringLiteral("opened"));
        QCOMPARE(service.next(), request("play_sound", "event_camera_burst_sound"));
        QCOMPARE(service.next(), QStringLiteral("closed"));
    }

    void everything_isRefusedQuietly_withoutAService()
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
};

QTEST_GUILESS_MAIN(SystemSoundTest)
#include "tst_systemsound.moc"
