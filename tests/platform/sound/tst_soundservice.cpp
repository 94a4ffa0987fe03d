#include "Daemon.h"
#include "Files.h"
#include "Programs.h"
#include "PulseServer.h"
#include "Tone.h"

#include <multimedia/SystemSound.h>
#include <voro/PpsObject.h>

#include <QtTest/QtTest>

#include <Rows.h>

#include <array>
#include <cmath>
#include <complex>
#include <numbers>
#include <numeric>
#include <optional>
#include <span>

using namespace voro::multimedia;

namespace {

constexpr char ThemeFolder[] = "/usr/share/sounds/freedesktop/stereo/";

QByteArray run(const QString &program, const QStringList &arguments)
{
    return runToEnd(program, arguments).value();
}

/** What a sound is made of, moment by moment: the strengths of some frequencies, moments apart by `Hop` samples. */
using Image = std::vector<std::array<double, 20>>;
constexpr size_t Hop = 240;
constexpr size_t Moments = 50;
/** By how many moments a recording may begin early or late. */
constexpr int MaximumShift = 6;

/** The image of the beginning of the sound that the samples hold. */
Image imageOf(const QByteArray &bytes)
{
    const std::span samples(reinterpret_cast<const qint16 *>(bytes.constData()), static_cast<size_t>(bytes.size()) / 2);
    const auto loudest =
        std::max_element(samples.begin(), samples.end(), [](qint16 a, qint16 b) { return std::abs(a) < std::abs(b); });
    const auto first = std::find_if(samples.begin(), loudest,
                                    [&](qint16 sample) { return std::abs(sample) * 10 > std::abs(*loudest); });
    std::vector<qint16> sound(MaximumShift * Hop);
    sound.insert(sound.end(), first, samples.end());
    Image image(Moments);
    for (size_t moment = 0; moment < Moments; ++moment) {
        double frequency = 250;
        for (double &strength : image[moment]) {
            const double step = 2 * std::numbers::pi * frequency / 48'000;
            std::complex<double> sum;
            for (size_t i = moment * Hop; i < std::min(moment * Hop + 2 * Hop, sound.size()); ++i) {
                sum += std::polar(static_cast<double>(sound[i]), step * static_cast<double>(i));
            }
            // Soft parts tell as much as loud ones.
            strength = std::sqrt(std::abs(sum));
            frequency *= 1.19;
        }
    }
    return image;
}

/** How alike two sounds are, 0 to 1, where one of them may have begun a little earlier. */
double likeness(const Image &a, const Image &b)
{
    double best = 0;
    for (int shift = -MaximumShift; shift <= MaximumShift; ++shift) {
        double product = 0;
        double powerA = 0;
        double powerB = 0;
        for (int moment = MaximumShift; moment < static_cast<int>(Moments) - MaximumShift; ++moment) {
            const auto &partA = a[static_cast<size_t>(moment)];
            const auto &partB = b[static_cast<size_t>(moment + shift)];
            product += std::inner_product(partA.begin(), partA.end(), partB.begin(), 0.0);
            powerA += std::inner_product(partA.begin(), partA.end(), partA.begin(), 0.0);
            powerB += std::inner_product(partB.begin(), partB.end(), partB.begin(), 0.0);
        }
        best = std::max(best, product / std::sqrt(powerA * powerB + 1));
    }
    return best;
}

struct Expected {
    const char *name;
    QString file;
};

QString ours(const char *name)
{
    return QStringLiteral(VORO_SOUNDS "/%1.wav").arg(QLatin1String(name));
}

QString themes(const char *event)
{
    return QLatin1String(ThemeFolder) + QLatin1String(event) + QLatin1String(".oga");
}

/** A client of the sound service that reads what it answers. */
class Client {
public:
    Client() : m_control(QStringLiteral("/pps/services/multimedia/sound/control"))
    {
        if (!m_control.open(voro::PpsOpenMode::PublishSubscribe)) {
            qFatal("The service cannot be reached");
        }
        m_control.setBlocking(true);
    }

    void write(const QByteArray &message)
    {
        if (!m_control.write(message)) {
            qFatal("The service cannot be reached");
        }
    }
    void request(const QByteArray &command, const QByteArray &sound)
    {
        write("msg::" + command + "\nid::0\ndat:json:{\"sound\":\"" + sound + "\"}\n");
    }
    QByteArray answer() { return m_control.read().remove(0, static_cast<int>(strlen("@control\n"))).trimmed(); }
    /** Returns when the service has read everything before. */
    void settle()
    {
        request("settle", {});
        while (!answer().startsWith("res::settle")) {
        }
    }

private:
    voro::PpsObject m_control;
};

/** The memory of a process that is its own, in KiB. */
qint64 memoryOf(qint64 process)
{
    const QByteArrayList pages = readFile(QStringLiteral("/proc/%1/statm").arg(process)).split(' ');
    return (pages.at(1).toLongLong() - pages.at(2).toLongLong()) * 4;
}

qsizetype soundsThatPlay()
{
    return run("pactl", {"list", "short", "sink-inputs"}).count('\n');
}

} // namespace

/** Whether system sounds sound, heard at the sound server. */
class SoundServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void sound_isHeard_andIsNoOther_data();
    void sound_isHeard_andIsNoOther();
    void prepare_givesTheServerTheSound();
    void sounds_overlap();
    void cameraIsHeard_whileEventSoundsAreMuted();
    void badMessage_isRefused_data();
    void badMessage_isRefused();
    void manySounds_leaveNothing();
    void serverThatGoes_isAnError_andComesBack();
    void serverThatHangs_holdsNobodyUp();

private:
    /** What the sink plays of what is played after a silence; nothing when there is no sound. */
    Image hear(const std::function<void()> &play);
    /** Whether what the sink plays is the sound and no other. */
    bool isHeard(SystemSound::Type sound, const std::function<void()> &play);

    PulseServer m_server;
    Daemon m_daemon;
    std::optional<MonitorRecorder> m_recorder;
    std::vector<Expected> m_expected;
    std::vector<Image> m_references;
};

void SoundServiceTest::initTestCase()
{
    m_expected = {
        {"BatteryAlarm", ours("alarm_battery")},
        {"BrowserStartEvent", ours("event_browser_start")},
        {"CameraShutterEvent", themes("camera-shutter")},
        {"DeviceLockEvent", ours("event_device_lock")},
        {"DeviceUnlockEvent", ours("event_device_unlock")},
        {"DeviceTetherEvent", themes("network-connectivity-established")},
        {"DeviceUntetherEvent", themes("network-connectivity-lost")},
        {"GeneralNotification", themes("message-new-instant")},
        {"InputKeypress", ours("input_keypress")},
        {"RecordingStartEvent", ours("event_recording_start")},
        {"RecordingStopEvent", ours("event_recording_stop")},
        {"SapphireNotification", ours("notification_sapphire")},
        {"SystemMasterVolumeReference", themes("audio-volume-change")},
        {"VideoCallEvent", themes("phone-incoming-call")},
        {"VideoCallOutgoingEvent", themes("phone-outgoing-calling")},
        {"CameraBurstEvent", ours("event_camera_burst_sound")},
    };
    for (const Expected &expected : m_expected) {
        m_references.push_back(imageOf(decoded(expected.file)));
    }
}

Image SoundServiceTest::hear(const std::function<void()> &play)
{
    if (!m_recorder) {
        m_recorder.emplace();
    }
    constexpr qsizetype Pause = 4'800;
    constexpr qsizetype Length = static_cast<qsizetype>((Moments + 2) * Hop);
    const auto isSilent = [&] {
        const QByteArray heard = m_recorder->samples();
        return heard.size() / 2 >= Pause && tone::firstSound(heard.last(2 * Pause), 100) < 0;
    };
    const auto isEnough = [&] {
        const QByteArray heard = m_recorder->samples();
        const qsizetype first = tone::firstSound(heard, 100);
        return first >= 0 && heard.size() / 2 - first > Length;
    };
    m_recorder->clear();
    // No QTRY_ macro: it would end no test.
    if (!QTest::qWaitFor(isSilent, 20'000)) {
        return Image(Moments);
    }
    m_recorder->clear();
    play();
    return QTest::qWaitFor(isEnough, 20'000) ? imageOf(m_recorder->samples()) : Image(Moments);
}

bool SoundServiceTest::isHeard(SystemSound::Type sound, const std::function<void()> &play)
{
    // A busy machine leaves gaps in what is played and recorded; they make no other sound of it.
    for (int attempt = 0; attempt < 5; ++attempt) {
        const Image heard = hear(play);
        std::vector<double> values;
        for (const Image &reference : m_references) {
            values.push_back(likeness(heard, reference));
        }
        const auto best = std::max_element(values.begin(), values.end());
        if (*best > 0.9 && best - values.begin() == sound - 1) {
            return true;
        }
        qWarning("heard sound %d, likeness %f", static_cast<int>(best - values.begin()) + 1, *best);
    }
    return false;
}

void SoundServiceTest::sound_isHeard_andIsNoOther_data()
{
    const Rows<int> row("number");
    for (size_t i = 0; i < m_expected.size(); ++i) {
        row(m_expected[i].name, static_cast<int>(i) + 1);
    }
}

void SoundServiceTest::sound_isHeard_andIsNoOther()
{
    QFETCH(int, number);
    const auto sound = SystemSound::Type(number);
    QVERIFY(isHeard(sound, [&] { SystemSound::play(sound); }));
}

void SoundServiceTest::prepare_givesTheServerTheSound()
{
    // Its earlier plays have left it there as well.
    m_recorder.reset();
    m_server.kill();
    m_server.start();
    SystemSound sound(SystemSound::GeneralNotification);
    SystemSound own(SystemSound::InputKeypress);
    QTRY_VERIFY(run("pactl", {"list", "samples"}).contains("Name: message-new-instant"));
    QTRY_VERIFY(run("pactl", {"list", "samples"}).contains("Name: voro-input_keypress"));
    QCOMPARE(soundsThatPlay(), 0);
    QVERIFY(isHeard(SystemSound::GeneralNotification, [&] { sound.play(); }));
}

void SoundServiceTest::sounds_overlap()
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

void SoundServiceTest::cameraIsHeard_whileEventSoundsAreMuted()
{
    run("pactl", {"load-module", "module-stream-restore"});
    QTRY_COMPARE(soundsThatPlay(), 0);
    // What is set for one stream of a role is kept for all that follow.
    QProcess stream;
    stream.start("pacat", {"--property=media.role=event", "--raw", "/dev/zero"});
    QTRY_COMPARE(soundsThatPlay(), 1);
    run("pactl", {"set-sink-input-mute",
                  QString::fromLatin1(run("pactl", {"list", "short", "sink-inputs"}).split('\t').first()), "1"});
    for (const auto sound : {SystemSound::CameraShutterEvent, SystemSound::CameraBurstEvent}) {
        QVERIFY(isHeard(sound, [&] {
            SystemSound::play(SystemSound::VideoCallOutgoingEvent);
            SystemSound::play(sound);
        }));
    }
    stream.kill();
    stream.waitForFinished();
}

void SoundServiceTest::badMessage_isRefused_data()
{
    const Rows<QByteArray, QByteArray> row("message", "answer");
    const auto failure = [](const QByteArray &command, const QByteArray &problem) {
        return "res::" + command + "\nerr::" + problem + "\nerror::" + problem;
    };
    const QByteArray play = failure("play_sound", "unknown sound");
    row("unknown command", "msg::stop_sound", failure("stop_sound", "unknown command"));
    row("no command", "dat::x", failure("", "unknown command"));
    row("no data", "msg::play_sound", play);
    row("data of another type", "msg::play_sound\ndat::alarm_battery", play);
    row("a list", "msg::play_sound\ndat:json:[\"alarm_battery\"]", play);
    row("a sound of another type", "msg::play_sound\ndat:json:{\"sound\":1}", play);
    row("unknown sound", "msg::play_sound\ndat:json:{\"sound\":\"moo\"}", play);
    row("no sound", "msg::prepare_sound\ndat:json:{\"sound\":\"\"}", failure("prepare_sound", "unknown sound"));
    row("a path", "msg::play_sound\ndat:json:{\"sound\":\"../sounds/alarm_battery\"}", play);
}

void SoundServiceTest::badMessage_isRefused()
{
    QFETCH(QByteArray, message);
    QFETCH(QByteArray, answer);
    Client client;
    client.write(message);
    QCOMPARE(client.answer(), answer);
}

void SoundServiceTest::manySounds_leaveNothing()
{
    Client client;
    const auto playMany = [&] {
        for (int i = 0; i < 100; ++i) {
            client.request("play_sound", i % 2 ? "input_keypress" : "system_master_volume_reference");
        }
        client.settle();
        QTRY_COMPARE_WITH_TIMEOUT(soundsThatPlay(), 0, 20'000);
    };
    // What is needed once at the most is there after the first time.
    playMany();
    const qint64 before = memoryOf(m_daemon.processId());
    for (int i = 0; i < 4; ++i) {
        playMany();
    }
    const qint64 growth = memoryOf(m_daemon.processId()) - before;
#ifdef __SANITIZE_ADDRESS__
    // What was freed is kept for a while.
    constexpr qint64 Allowed = 64 * 1024;
#else
    constexpr qint64 Allowed = 512;
#endif
    QVERIFY2(growth < Allowed, qPrintable(QString::number(growth)));
}

void SoundServiceTest::serverThatGoes_isAnError_andComesBack()
{
    Client client;
    m_recorder.reset();
    m_server.kill();
    client.request("play_sound", "event_camera_shutter");
    QVERIFY(client.answer().startsWith("res::play_sound\nerr::"));
    client.request("prepare_sound", "event_camera_shutter");
    QVERIFY(client.answer().startsWith("res::prepare_sound\nerr::"));
    m_server.start();
    QVERIFY(isHeard(SystemSound::CameraShutterEvent, [&] { client.request("play_sound", "event_camera_shutter"); }));
}

void SoundServiceTest::serverThatHangs_holdsNobodyUp()
{
    Client client;
    m_server.suspend();
    for (int i = 0; i < 100; ++i) {
        client.request("play_sound", "input_keypress");
    }
    QCOMPARE(client.answer(), "res::play_sound\nerr::too many sounds wait\nerror::too many sounds wait");
    client.settle();
    QVERIFY(m_daemon.stop());
    m_server.kill();
}

QTEST_GUILESS_MAIN(SoundServiceTest)
#include "tst_soundservice.moc"
