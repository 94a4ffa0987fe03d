#include "Daemon.h"
#include "PulseServer.h"
#include "ServiceClient.h"
#include "Tone.h"

#include <multimedia/SystemSound.h>

#include <QtTest/QtTest>

#include <Rows.h>

#include <functional>
#include <optional>

using namespace voro::multimedia;

namespace {

/** A client of the sound service. */
class Client : public ServiceClient {
public:
    Client() : ServiceClient("/pps/services/multimedia/sound/control") {}

    void request(const QByteArray &command, const QByteArray &sound)
    {
        write("msg::" + command + "\nid::0\ndat:json:{\"sound\":\"" + sound + "\"}\n");
    }
    /** Returns when the service has read everything before. */
    void settle()
    {
        request("settle", {});
        while (!answer().startsWith("res::settle")) {
        }
    }
};

qsizetype soundsThatPlay()
{
    const QByteArray list = PulseServer::control({"list", "short", "sink-inputs"});
    return list.isEmpty() ? 0 : list.count('\n') + 1;
}

/** Whether the server has been given a sound. */
bool isAtTheServer(const QByteArray &sample)
{
    return PulseServer::control({"list", "samples"}).contains("Name: " + sample + '\n');
}

} // namespace

/** Whether system sounds sound, heard at the sound server. */
class SoundServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sound_isHeard_andIsNoOther_data()
    {
        // Of the theme where it has one, else our own.
        const Rows<SystemSound::Type, QByteArray> row("sound", "sample");
        row("BatteryAlarm", SystemSound::BatteryAlarm, "voro-alarm_battery");
        row("BrowserStartEvent", SystemSound::BrowserStartEvent, "voro-event_browser_start");
        row("CameraShutterEvent", SystemSound::CameraShutterEvent, "camera-shutter");
        row("DeviceLockEvent", SystemSound::DeviceLockEvent, "voro-event_device_lock");
        row("DeviceUnlockEvent", SystemSound::DeviceUnlockEvent, "voro-event_device_unlock");
        row("DeviceTetherEvent", SystemSound::DeviceTetherEvent, "network-connectivity-established");
        row("DeviceUntetherEvent", SystemSound::DeviceUntetherEvent, "network-connectivity-lost");
        row("GeneralNotification", SystemSound::GeneralNotification, "message-new-instant");
        row("InputKeypress", SystemSound::InputKeypress, "voro-input_keypress");
        row("RecordingStartEvent", SystemSound::RecordingStartEvent, "voro-event_recording_start");
        row("RecordingStopEvent", SystemSound::RecordingStopEvent, "voro-event_recording_stop");
        row("SapphireNotification", SystemSound::SapphireNotification, "voro-notification_sapphire");
        row("SystemMasterVolumeReference", SystemSound::SystemMasterVolumeReference, "audio-volume-change");
        row("VideoCallEvent", SystemSound::VideoCallEvent, "phone-incoming-call");
        row("VideoCallOutgoingEvent", SystemSound::VideoCallOutgoingEvent, "phone-outgoing-calling");
        row("CameraBurstEvent", SystemSound::CameraBurstEvent, "voro-event_camera_burst_sound");
    }

    void sound_isHeard_andIsNoOther()
    {
        QFETCH(SystemSound::Type, sound);
        QFETCH(QByteArray, sample);
        QVERIFY(!isAtTheServer(sample));
        QVERIFY(isHeard([&] { SystemSound::play(sound); }));
        QVERIFY(isAtTheServer(sample));
    }

    void prepare_givesTheServerTheSound()
    {
        // Its earlier plays have left it there as well.
        m_recorder.reset();
        m_server.kill();
        m_server.start();
        SystemSound sound(SystemSound::GeneralNotification);
        SystemSound own(SystemSound::InputKeypress);
        QTRY_VERIFY(isAtTheServer("message-new-instant"));
        QTRY_VERIFY(isAtTheServer("voro-input_keypress"));
        QCOMPARE(soundsThatPlay(), 0);
        QVERIFY(isHeard([&] { sound.play(); }));
    }

    void sounds_overlap()
    {
        // The test before ends while its sound still plays.
        QTRY_COMPARE_WITH_TIMEOUT(soundsThatPlay(), 0, 20'000);
        SystemSound::play(SystemSound::VideoCallEvent);
        SystemSound::play(SystemSound::VideoCallOutgoingEvent);
        SystemSound::play(SystemSound::VideoCallEvent);
        // No QTRY_ macro: it looks again when it has seen what it waits for, which passes.
        QVERIFY(QTest::qWaitFor([] { return soundsThatPlay() == 3; }, 20'000));
        QTRY_COMPARE_WITH_TIMEOUT(soundsThatPlay(), 0, 20'000);
    }

    void cameraIsHeard_whileEventSoundsAreMuted()
    {
        PulseServer::control({"load-module", "module-stream-restore"});
        QTRY_COMPARE(soundsThatPlay(), 0);
        // What is set for one stream of a role is kept for all that follow.
        QProcess stream;
        stream.start("pacat", {"--property=media.role=event", "--raw", "/dev/zero"});
        QTRY_COMPARE(soundsThatPlay(), 1);
        const QByteArray number = PulseServer::control({"list", "short", "sink-inputs"}).split('\t').first();
        PulseServer::control({"set-sink-input-mute", QString::fromLatin1(number), "1"});
        for (const auto sound : {SystemSound::CameraShutterEvent, SystemSound::CameraBurstEvent}) {
            QVERIFY(isHeard([&] { SystemSound::play(sound); }));
        }
        stream.kill();
        stream.waitForFinished();
    }

    void badMessage_isRefused_data()
    {
        const Rows<QByteArray, QByteArray> row("message", "answer");
        const auto failure = [](const QByteArray &command, const QByteArray &problem) {
            return "res::" + command + "\nerr::" + problem + "\nerror::" + problem;
        };
        const QByteArray play = failure("play_sound", "unknown sound");
        row("unknown command", "msg::stop_sound", failure("stop_sound", "unknown command"));
        row("no data", "msg::play_sound", play);
        row("unknown sound", "msg::play_sound\ndat:json:{\"sound\":\"moo\"}", play);
        row("no sound", "msg::prepare_sound\ndat:json:{\"sound\":\"\"}", failure("prepare_sound", "unknown sound"));
    }

    void badMessage_isRefused()
    {
        QFETCH(QByteArray, message);
        QFETCH(QByteArray, answer);
        Client client;
        client.write(message);
        QCOMPARE(client.answer(), answer);
    }

    void serverThatGoes_isAnError_andComesBack()
    {
        Client client;
        m_recorder.reset();
        m_server.kill();
        client.request("play_sound", "event_camera_shutter");
        QVERIFY(client.answer().startsWith("res::play_sound\nerr::"));
        client.request("prepare_sound", "event_camera_shutter");
        QVERIFY(client.answer().startsWith("res::prepare_sound\nerr::"));
        m_server.start();
        QVERIFY(isHeard([&] { client.request("play_sound", "event_camera_shutter"); }));
    }

    void serverThatHangs_holdsNobodyUp()
    {
        Client client;
        m_server.suspend();
        for (int i = 0; i < 100; ++i) {
            client.request("play_sound", "input_keypress");
        }
        QCOMPARE(client.answer(), "res::play_sound\nerr::too many sounds wait\nerror::too many sounds wait");
        client.settle();
        // Another program's sound waits with them.
        QCOMPARE(QProcess::execute(QCoreApplication::applicationFilePath(), {"ask"}), 0);
        QVERIFY(m_daemon.stop());
        m_server.kill();
    }

private:
    /** Whether the sink plays something after a silence. */
    bool isHeard(const std::function<void()> &play)
    {
        if (!m_recorder) {
            m_recorder.emplace();
        }
        constexpr qsizetype Pause = 9'600;
        m_recorder->clear();
        // No QTRY_ macro: it would end no test.
        const bool isSilent = QTest::qWaitFor(
            [this] {
                const QByteArray heard = m_recorder->samples();
                return heard.size() >= Pause && tone::firstSound(heard.last(Pause), 100) < 0;
            },
            20'000);
        m_recorder->clear();
        play();
        return isSilent
               && QTest::qWaitFor([this] { return tone::firstSound(m_recorder->samples(), 100) >= 0; }, 20'000);
    }

    PulseServer m_server;
    Daemon m_daemon;
    std::optional<MonitorRecorder> m_recorder;
};

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc == 2 && qstrcmp(argv[1], "ask") == 0) {
        Client client;
        client.request("play_sound", "input_keypress");
        client.request("settle", {});
        return client.answer().startsWith("res::settle") ? 0 : 1;
    }
    SoundServiceTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_soundservice.moc"
