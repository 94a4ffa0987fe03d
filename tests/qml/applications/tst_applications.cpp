#include "Daemon.h"
#include "Home.h"
#include "PulseServer.h"
#include "Screen.h"

#include <multimedia/MetaData.h>
#include <multimedia/NowPlayingConnection.h>
#include <multimedia/NowPlayingController.h>

#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

using namespace voro::multimedia;

namespace {

bool isLike(QRgb colour, QRgb other)
{
    return qAbs(qRed(colour) - qRed(other)) < 40 && qAbs(qGreen(colour) - qGreen(other)) < 40
           && qAbs(qBlue(colour) - qBlue(other)) < 40;
}

/** How many pixels of a part of the window are of about that colour. */
int count(const Screen &screen, const QRect &part, QRgb colour)
{
    const QImage picture = screen.picture().copy(part);
    int number = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            number += isLike(picture.pixel(x, y), colour);
        }
    }
    return number;
}

constexpr QRgb DarkBackground = 0xff101418;
constexpr QRgb LightBackground = 0xfff5f7f9;
constexpr QRgb LightAccent = 0xff0a7563;
constexpr QRgb CoverAbove = 0xff142c66;
constexpr QRgb CoverBelow = 0xff101830;

} // namespace

/** The applications in windows of an X server, with a daemon, workers and a home folder of the test's own. */
class tst_Applications : public QObject {
    Q_OBJECT
public:
    explicit tst_Applications(const Home &home) : m_home(home) {}

private Q_SLOTS:
    void initTestCase()
    {
        m_home.drawCover();
        QVERIFY(
            m_daemon.start({"VORO_AUDIO_SINK=fakesink sync=true",
                            QStringLiteral("VORO_AUDIO_SOURCE=audiotestsrc is-live=true wave=ticks freq=300 volume=0.4 "
                                           "sine-periods-per-tick=75 tick-interval=600000000")}));
    }

    void init() { m_home.forgetSettings(); }

    void player_playsFromTheLibrary_andTellsTheDevice()
    {
        Watcher device;
        Screen player("voro.player");
        QVERIFY(player.click("Northern Lights"));
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("First Frost, *") && player.shows("The Long Way Home*")
                                     && player.shows("Harbour, *"),
                                 PatienceMs);
        QVERIFY(player.keepPicture("player-1.png"));
        QVERIFY(player.click("The Long Way Home*"));
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "The Long Way Home under a Green Sky", PatienceMs);
        QTRY_COMPARE(device.mediaState(), MediaState::Started);
        QTRY_COMPARE(device.iconUrl(), QUrl::fromLocalFile(m_home.album("cover.png")));
        QCOMPARE(device.metaData().value(QLatin1String(MetaData::Artist)).toString(), "The Example Band");

        QVERIFY(player.click("Now playing: The Long Way*"));
        QTRY_VERIFY(player.place("Cover").width() >= 200);
        QVERIFY(player.picture().rect().contains(player.place("Cover")));
        QTRY_VERIFY(isLike(player.colourAt("Cover", {20, 4}), CoverAbove));
        QVERIFY(isLike(player.colourAt("Cover", {4, -4}), CoverBelow));
        QVERIFY(player.shows("1:30"));

        QVERIFY(player.drag("Position", 0.5));
        QTRY_VERIFY_WITH_TIMEOUT(device.position() >= 40'000 && device.position() < 60'000, PatienceMs);
        QVERIFY(player.keepPicture("player-2.png"));
        QVERIFY(player.click("Next track"));
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "Harbour", PatienceMs);
        QTRY_VERIFY(!device.isNextEnabled());
        QVERIFY(player.click("Queue"));
        QTRY_VERIFY(!player.place("First Frost").isEmpty());
        QVERIFY(player.keepPicture("player-3.png"));
        QVERIFY(player.click("First Frost"));
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "First Frost", PatienceMs);

        QVERIFY(player.click("Equalizer"));
        QVERIFY(player.click("More bass"));
        QTRY_VERIFY(player.isChecked("Equalizer"));
        QVERIFY(player.click("Speed: 1×"));
        QVERIFY(player.click("2 ×"));
        QTRY_VERIFY(player.shows("Speed: 2×"));
        QVERIFY(player.click("Repeats nothing"));
        QTRY_COMPARE(device.repeatMode(), RepeatMode::All);
        QVERIFY(player.click("Pause"));
        QTRY_COMPARE(device.mediaState(), MediaState::Paused);
        QVERIFY(player.click("Library"));
        QTRY_VERIFY(player.shows("Library") && !player.shows("Queue"));
    }

    void player_obeysTheKeys()
    {
        Watcher device;
        Screen player("voro.player");
        QTRY_VERIFY(player.shows("Northern Lights"));
        player.press(Qt::Key_Return);
        QTRY_VERIFY(player.shows("Harbour, The Example Band · 1:30"));
        player.press(Qt::Key_Down);
        player.press(Qt::Key_Return);
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "The Long Way Home under a Green Sky", PatienceMs);
        QTRY_COMPARE(device.mediaState(), MediaState::Started);
        player.press(Qt::Key_Space);
        QTRY_COMPARE(device.mediaState(), MediaState::Paused);
        player.press(Qt::Key_Right);
        QTRY_VERIFY_WITH_TIMEOUT(device.position() >= 10'000, PatienceMs);
        player.press(Qt::Key_N);
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "Harbour", PatienceMs);
        player.press(Qt::Key_P);
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "The Long Way Home under a Green Sky", PatienceMs);
        player.press(Qt::Key_Escape);
        QTRY_VERIFY(player.shows("broken, OGG*"));
    }

    void player_obeysTheRemote()
    {
        Watcher device;
        Screen player("voro.player", {{"operands", QVariantList{QUrl::fromLocalFile(m_home.album("1.ogg")),
                                                                QUrl::fromLocalFile(m_home.album("3.ogg"))}}});
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "First Frost", PatienceMs);
        QTRY_VERIFY(player.shows("Pause"));
        QCOMPARE(device.pause(), MediaError::None);
        QTRY_VERIFY(player.shows("Play"));
        QCOMPARE(device.next(), MediaError::None);
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("Harbour"), PatienceMs);
        QVERIFY(player.shows("Pause"));

        // The last one becomes the first, and what was before it comes next.
        QVERIFY(player.click("Plays in order"));
        QTRY_COMPARE(device.shuffleMode(), ShuffleMode::All);
        QTRY_VERIFY(player.shows("Pause"));
        QCOMPARE(device.title(), "Harbour");
        QTRY_VERIFY(device.isNextEnabled());
        QCOMPARE(device.next(), MediaError::None);
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "First Frost", PatienceMs);
        QCOMPARE(device.shuffle(), MediaError::None);
        QTRY_VERIFY(player.shows("Plays in order") && device.isNextEnabled());
        QCOMPARE(device.next(), MediaError::None);
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "Harbour", PatienceMs);
    }

    void player_showsTheCoverInAFile()
    {
        const QString song = m_home.path("song.mp3");
        const QString picture = "[1]scale=1200:1200,noise=alls=8:allf=u[picture]";
        QCOMPARE(
            QProcess::execute("ffmpeg", {"-nostdin", "-loglevel", "error", "-i", m_home.album("1.ogg"), "-i",
                                         m_home.album("cover.png"), "-filter_complex", picture, "-map", "0:a", "-map",
                                         "[picture]", "-c:v", "png", "-disposition:v", "attached_pic", song}),
            0);
        Watcher device;
        Screen player("voro.player", {{"operands", QVariantList{QUrl::fromLocalFile(song)}}});
        QTRY_VERIFY(!device.iconUrl().isEmpty());
        QImage cover(device.iconUrl().toLocalFile());
        QCOMPARE(cover.size(), QSize(320, 320));
        QVERIFY(isLike(cover.pixel(20, 4), CoverAbove));
        QVERIFY(isLike(cover.pixel(4, 316), CoverBelow));
        QTRY_VERIFY(isLike(player.colourAt("Cover", {20, 4}), CoverAbove));
    }

    void player_keepsPlaylists()
    {
        Watcher device;
        Screen player("voro.player");
        QVERIFY(player.click("Northern Lights"));
        QVERIFY(player.click("Add “Harbour”"));
        QVERIFY(player.click("New playlist…"));
        QTRY_VERIFY(player.shows("New playlist"));
        player.type("Evening");
        player.press(Qt::Key_Return);
        const QString file = m_home.path("Music/Evening.m3u8");
        QTRY_VERIFY(QFile::exists(file));

        QVERIFY(player.click("Folder above"));
        QVERIFY(player.click("Evening, Playlist"));
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "Harbour", PatienceMs);
        QVERIFY(player.click("Delete “Evening”"));
        QVERIFY(player.click("Keep"));
        QTRY_VERIFY(!player.shows("Keep"));
        QVERIFY(QFile::exists(file));
        QVERIFY(player.click("Delete “Evening”"));
        QVERIFY(player.click("Delete"));
        QTRY_VERIFY(!QFile::exists(file));
    }

    void player_fillsAWideWindow()
    {
        Screen player("voro.player");
        QTRY_VERIFY(player.shows("Northern Lights"));
        QVERIFY(!player.shows("Nothing is played"));
        player.resize(1000, 640);
        QTRY_VERIFY(player.shows("Nothing is played"));
        QTRY_VERIFY(player.place("Library").right() <= player.place("Nothing is played").left());
        player.resize(360, 640);
        QTRY_VERIFY(!player.shows("Nothing is played"));
    }

    void player_showsFilms()
    {
        const QString film = media::makeTone(m_home.path("film.mkv"), {.seconds = 30, .hasPicture = true});
        Screen player("voro.player", {{"operands", QVariantList{QUrl::fromLocalFile(film)}}});
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("Film"), PatienceMs);
        QVERIFY(!player.shows("Cover"));
        // The test picture has every colour but the window's.
        const auto emptiness = [&player] {
            QRect middle(QPoint(), player.place("Film").size() / 4);
            middle.moveCenter(player.place("Film").center());
            const int pixels = middle.width() * middle.height();
            return pixels == 0 ? 1.0 : static_cast<double>(count(player, middle, LightBackground)) / pixels;
        };
        QTRY_VERIFY_WITH_TIMEOUT(emptiness() < 0.1, PatienceMs);
        QVERIFY(player.click("Full screen"));
        QTRY_COMPARE(player.place("Film").size(), player.window()->size());
        QTRY_COMPARE(player.window()->visibility(), QWindow::FullScreen);
        QTRY_VERIFY_WITH_TIMEOUT(emptiness() < 0.1, PatienceMs);
        // Nobody moves.
        QTRY_VERIFY_WITH_TIMEOUT(!player.shows("Leave full screen"), PatienceMs);
        player.press(Qt::Key_R);
        QTRY_VERIFY(player.shows("Leave full screen"));
        player.press(Qt::Key_Escape);
        QTRY_VERIFY(player.shows("Full screen"));
        QCOMPARE(player.window()->visibility(), QWindow::Windowed);
    }

    void recorder_records_plays_renames_deletes()
    {
        const QDir folder(m_home.path("Music/Recordings"));
        const auto files = [&] { return folder.entryList(QDir::Files); };
        Screen recorder("voro.recorder");
        QTRY_VERIFY(recorder.shows("No recordings yet"));
        QVERIFY(recorder.keepPicture("recorder-1.png"));
        for (int i = 1; i <= 2; ++i) {
            // At first the red button has the focus.
            if (i == 1) {
                recorder.press(Qt::Key_Space);
            } else {
                QVERIFY(recorder.click("Record"));
            }
            // No QTRY_ macro: it looks again when it has seen what it waits for, which passes.
            QVERIFY(QTest::qWaitFor([&] { return recorder.shows("Recorded: 0:02"); }, PatienceMs));
            if (i == 2) {
                break;
            }
            QVERIFY(recorder.click("Finish"));
            QTRY_VERIFY(recorder.shows("Recorded: 0:00"));
            QCOMPARE(files().size(), i);
            QVERIFY(recorder.click("Rename “*"));
            QTRY_VERIFY(recorder.shows("Rename the recording"));
            recorder.type("Rain/roof");
            recorder.press(Qt::Key_Return);
            // What was typed stays, to be mended.
            QTRY_VERIFY(recorder.shows("A name has no slash*"));
            QVERIFY(recorder.keepPicture("recorder-2.png"));
            for (int letter = 0; letter < 5; ++letter) {
                recorder.press(Qt::Key_Backspace);
            }
            recorder.type(" on the roof");
            recorder.press(Qt::Key_Return);
            QTRY_COMPARE(files(), QStringList{"Rain on the roof.ogg"});
            QTRY_VERIFY(recorder.shows("Rain on the roof, *"));
        }
        const QRect level = recorder.place("Level");
        QTRY_VERIFY(count(recorder, level, LightAccent) > level.width());
        QVERIFY(recorder.keepPicture("recorder-3.png"));
        recorder.press(Qt::Key_Space);
        QTRY_VERIFY(recorder.shows("Resume"));
        QVERIFY(recorder.click("Resume"));
        QVERIFY(recorder.click("Finish"));
        QTRY_COMPARE(files().size(), 2);

        QVERIFY(recorder.click("Rain on the roof, *"));
        QVERIFY(QTest::qWaitFor([&] { return recorder.shows("Rain on the roof, 0:01 / 0:02"); }, PatienceMs));
        QVERIFY(recorder.click("Delete “Rain on the roof”"));
        QTRY_VERIFY(recorder.shows("Keep"));
        recorder.press(Qt::Key_Escape);
        QTRY_VERIFY(!recorder.shows("Keep"));
        QCOMPARE(files().size(), 2);
        QVERIFY(recorder.click("Delete “Rain on the roof”"));
        QTRY_VERIFY(recorder.shows("Keep"));
        recorder.press(Qt::Key_Return);
        QTRY_COMPARE(files().size(), 1);
        QTRY_VERIFY(!recorder.shows("Rain on the roof, *"));
    }

    void remote_showsTheHolder_andCommandsIt()
    {
        Screen remote("voro.remote", {{"colours", "dark"}});
        QTRY_VERIFY(remote.shows("Nothing is playing"));
        QVERIFY(remote.keepPicture("remote-1.png"));
        {
            NowPlayingConnection holder("tst_applications");
            holder.setMetaData({{QLatin1String(MetaData::Title), "Harbour"},
                                {QLatin1String(MetaData::Artist), "The Example Band"},
                                {QLatin1String(MetaData::Album), "Northern Lights"}});
            holder.setIconUrl(QUrl::fromLocalFile(m_home.album("cover.png")));
            holder.setDuration(200'000);
            holder.setPosition(65'000);
            holder.setNextEnabled(true);
            holder.setMediaState(MediaState::Started);
            QCOMPARE(holder.acquire(), MediaError::None);
            QTRY_VERIFY(remote.shows("Harbour"));
            QTRY_VERIFY(remote.shows("The Example Band · Northern Lights"));
            QTRY_VERIFY(remote.shows("1:05") && remote.shows("3:20"));
            QTRY_VERIFY(isLike(remote.colourAt("Cover", {20, 4}), CoverAbove));
            QVERIFY(remote.keepPicture("remote-2.png"));
            // The holder reports no position any more.
            QVERIFY(QTest::qWaitFor([&] { return remote.shows("1:07"); }, PatienceMs));

            QSignalSpy next(&holder, &NowPlayingConnection::next);
            QSignalSpy pause(&holder, &NowPlayingConnection::pause);
            QSignalSpy forward(&holder, &NowPlayingConnection::forward);
            QVERIFY(remote.click("Next track"));
            QTRY_COMPARE(next.count(), 1);
            QVERIFY(remote.click("Pause"));
            QTRY_COMPARE(pause.count(), 1);
            remote.press(Qt::Key_Right);
            QTRY_COMPARE(forward.count(), 1);
            holder.setMediaState(MediaState::Paused);
            QTRY_VERIFY(remote.shows("Play"));
            QVERIFY(remote.keepPicture("remote-3.png"));
        }
        QTRY_VERIFY(remote.shows("Nothing is playing"));

        // What one holder has reached without a report is not where the next one is.
        for (const MediaState::Type state : {MediaState::Started, MediaState::Paused}) {
            NowPlayingConnection holder("tst_applications");
            holder.setMetaData({{QLatin1String(MetaData::Title), "Harbour"}});
            holder.setMediaState(state);
            QCOMPARE(holder.acquire(), MediaError::None);
            const QString position = state == MediaState::Started ? "0:02" : "0:00";
            QVERIFY(QTest::qWaitFor([&] { return remote.shows("Harbour") && remote.shows(position); }, PatienceMs));
        }
    }

    void remote_changesTheVolume()
    {
        const auto sink = [](const QString &what) { return PulseServer::control({what, "null"}); };
        PulseServer::control({"set-sink-volume", "null", "40%"});
        Screen remote("voro.remote");
        QVERIFY(remote.click("Louder"));
        QTRY_VERIFY(sink("get-sink-volume").contains(" 45% "));
        QVERIFY(remote.click("Softer"));
        remote.press(Qt::Key_Minus);
        QTRY_VERIFY(sink("get-sink-volume").contains(" 35% "));
        QVERIFY(remote.click("Sound off"));
        QTRY_VERIFY(sink("get-sink-mute").contains("yes"));
        QProcess doctor;
        doctor.start(QStringLiteral(BIN "voro"), {"doctor", "sound"}, QIODevice::ReadOnly);
        QVERIFY(doctor.waitForFinished(PatienceMs));
        const QByteArray findings = doctor.readAllStandardOutput();
        QVERIFY2(findings.contains(" is muted\n                      try: voro remote mute off\n"),
                 findings.constData());
        QVERIFY(remote.click("Sound on"));
        QTRY_VERIFY(sink("get-sink-mute").contains("no"));
    }

    void colours_data()
    {
        const Rows<QString, QString, QRgb> row("uri", "colours", "background");
        for (const QByteArray uri : {"voro.player", "voro.recorder", "voro.remote"}) {
            row(uri + " dark", uri, "dark", DarkBackground);
            row(uri + " light", uri, "light", LightBackground);
        }
    }

    void colours()
    {
        QFETCH(QString, uri);
        QFETCH(QString, colours);
        QFETCH(QRgb, background);
        Screen screen(qPrintable(uri), {{"colours", colours}});
        const QRect all = screen.picture().rect();
        QTRY_VERIFY(count(screen, all, background) > all.width() * all.height() / 3);
    }

    void commandLine_data()
    {
        const Rows<QString, QStringList, int, QByteArray> row("program", "arguments", "status", "complaint");
        row("help", "voro-player", {"--help"}, 0, {});
        row("version", "voro-player", {"--version"}, 0, {});
        row("unknown option", "voro-player", {"--loud"}, 2, "voro-player: Unknown option 'loud'.");
        row("dark and light", "voro-player", {"--dark", "--light"}, 2, "voro-player: It is either --dark or --light.");
        row("operand", "voro-remote", {"song.ogg"}, 2, "voro-remote: 'song.ogg' is too much.");
        row("no display", "voro", {"demo"}, 1,
            "voro: demo: there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set");
    }

    void commandLine()
    {
        QFETCH(QString, program);
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        if (status == 1) {
            for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
                environment.remove(variable);
            }
        }
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(BIN) + program, arguments, QIODevice::ReadOnly);
        QVERIFY(process.waitForFinished(PatienceMs) && process.exitStatus() == QProcess::NormalExit);
        QTEST(process.readAllStandardError().trimmed(), "complaint");
        QCOMPARE(process.exitCode(), status);
    }

    void demo_playsTheSample()
    {
        Watcher device;
        QProcess demo;
        demo.start(QStringLiteral(BIN "voro"), {"demo"});
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "First Light", PatienceMs);
        demo.terminate();
        QVERIFY(demo.waitForFinished(PatienceMs));
        QTRY_COMPARE(device.title(), QString());
    }

private:
    const Home &m_home;
    PulseServer m_soundServer;
    Daemon m_daemon{Daemon::Later};
};

int main(int argc, char *argv[])
{
    return runInHome<tst_Applications>(argc, argv);
}

#include "tst_applications.moc"
