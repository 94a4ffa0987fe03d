#include "Daemon.h"
#include "Home.h"
#include "Programs.h"
#include "PulseServer.h"
#include "Rows.h"
#include "Screen.h"

#include <QtCore/QMimeData>
#include <QtCore/QProcess>
#include <QtQuick/QQuickWindow>

using namespace voro::multimedia;

/** What the application Player does with queues, captions, long media and other starts of itself. */
class tst_PlayerApplication : public QObject {
    Q_OBJECT
public:
    explicit tst_PlayerApplication(const Home &home) : m_home(home) {}

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_daemon.start({"VORO_AUDIO_SINK=fakesink sync=true"})); }

    void init() { m_home.forgetSettings(); }

    void captions_areFound_forEveryMediumOfAQueue()
    {
        for (const char *name : {"one", "two", "three"}) {
            media::makeTone(m_home.path(QStringLiteral("%1.mkv").arg(name)), {.seconds = 20, .hasPicture = true});
        }
        const QByteArray captions = "1\n00:00:00,000 --> 00:00:19,000\nWords\n";
        m_home.write("one.srt", captions);
        m_home.write("two.fr.srt", captions);
        m_home.write("two.de.srt", captions);
        m_home.write("two.en.forced.srt", captions);
        m_home.write("three.srt", "no captions");
        const QString twoTracks =
            "-nostdin -loglevel error -i one.mkv -i one.srt -i one.srt -map 0 -map 1 -map 2 -c copy "
            "-metadata:s:s:0 language=fre -metadata:s:s:1 language=eng -metadata:s:s:1";
        QVERIFY(
            runToEnd("ffmpeg", twoTracks.split(' ') + QStringList{"title=For the deaf", "four.mkv"}, m_home.path(".")));
        Screen player("voro.player", operands({"one.mkv", "two.mkv"}));
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("Film"), PatienceMs);
        QVERIFY(player.click("Captions"));
        QTRY_VERIFY(player.isChecked("one.srt"));
        player.press(Qt::Key_Escape);
        QVERIFY(player.click("Next track"));
        QTRY_VERIFY_WITH_TIMEOUT(player.window()->title() == "two", PatienceMs);
        QVERIFY(player.click("Captions"));
        QTRY_VERIFY(player.isChecked("Deutsch"));
        QVERIFY(player.shows("English (forced)"));
        QVERIFY(player.click("Français"));
        QTRY_VERIFY(player.isChecked("Français") && !player.isChecked("Deutsch"));
        QVERIFY(!player.shows("“two”*"));
        player.press(Qt::Key_Escape);
        // Captions that cannot be read do not keep their film from being played.
        receive(player, "three.mkv");
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("The captions “three” cannot be read."), PatienceMs);
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("Pause") && player.shows("Film"), PatienceMs);
        // Those in a film have names, too.
        receive(player, "four.mkv");
        QTRY_VERIFY_WITH_TIMEOUT(player.window()->title() == "four", PatienceMs);
        QVERIFY(player.click("Captions"));
        QTRY_VERIFY(player.isChecked("Français"));
        QVERIFY(player.click("English (For the deaf)"));
        QTRY_VERIFY(player.isChecked("English (For the deaf)") && !player.isChecked("Français"));
        player.press(Qt::Key_Escape);
        // The last picture goes with its film.
        receive(player, "Music/broken.ogg");
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("“broken”: *") && !player.shows("Film"), PatienceMs);
    }

    void brokenFile_isNamed_andNotFollowedByAnother()
    {
        const QString album = "Music/Northern Lights/";
        Screen player("voro.player", operands({album + "1.ogg", "Music/broken.ogg", album + "3.ogg"}));
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("First Frost") && player.shows("Pause"), PatienceMs);
        QVERIFY(player.click("Queue"));
        QVERIFY(player.click("broken"));
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("“broken”*"), PatienceMs);
        QTRY_VERIFY(player.shows("Play"));
        QVERIFY(player.click("Close the message"));
        QTRY_VERIFY(!player.shows("“broken”*"));
    }

    void queue_isRearranged_whileItPlays()
    {
        Watcher device;
        const QString album = "Music/Northern Lights/";
        Screen player("voro.player", operands({album + "1.ogg", album + "2.ogg", album + "3.ogg", "Music/broken.ogg"}));
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "First Frost", PatienceMs);
        player.press(Qt::Key_N);
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "The Long Way Home under a Green Sky", PatienceMs);
        player.press(Qt::Key_Right);
        QTRY_VERIFY_WITH_TIMEOUT(device.position() >= 10'000, PatienceMs);
        player.press(Qt::Key_Q);
        // Their titles are read although another folder is shown.
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("Take “First Frost” out") && player.shows("Take “The Long Way*")
                                     && player.shows("Take “Harbour” out"),
                                 PatienceMs);
        const auto top = [&](const char *name) { return player.place(name).top(); };
        // The third one goes before the second, then the first one behind both.
        player.press(Qt::Key_Down);
        QTest::keyClick(player.window(), Qt::Key_Up, Qt::ControlModifier);
        QTRY_VERIFY(top("Harbour") < top("The Long Way*"));
        QVERIFY(player.carry("Move “First Frost”", "Move “The Long Way*"));
        QTRY_VERIFY(top("The Long Way*") < top("First Frost"));
        // The last one is taken out, and the keys go on at the one before it.
        player.press(Qt::Key_End);
        player.press(Qt::Key_Delete);
        QTRY_VERIFY(!player.shows("broken"));
        QTest::keyClick(player.window(), Qt::Key_Up, Qt::ControlModifier);
        QTRY_VERIFY(top("First Frost") < top("The Long Way*"));
        player.press(Qt::Key_Escape);
        QCOMPARE(device.title(), "The Long Way Home under a Green Sky");
        QTRY_VERIFY_WITH_TIMEOUT(device.position() >= 10'000, PatienceMs);
        QTRY_COMPARE(device.mediaState(), MediaState::Started);
        // As before, there is a length to seek in.
        QVERIFY(player.drag("Position", 0.5));
        QTRY_VERIFY_WITH_TIMEOUT(device.position() >= 40'000, PatienceMs);
        QTRY_VERIFY(!device.isNextEnabled());
    }

    void longMedium_goesOnWhereItStopped()
    {
        // 700 seconds of silence, one byte for each of 8000 samples a second.
        m_home.write("book.wav", QByteArray::fromHex("524946462473550057415645666d7420100000000100"
                                                     "0100401f0000401f0000010008006461746100735500")
                                     + QByteArray(5'600'000, '\x80'));
        {
            Screen player("voro.player", operands({"book.wav"}));
            QTRY_VERIFY_WITH_TIMEOUT(player.shows("11:40") && player.shows("Pause"), PatienceMs);
            QVERIFY(player.drag("Position", 0.5));
            QTRY_VERIFY_WITH_TIMEOUT(player.shows("5:5*"), PatienceMs);
            // Whatever plays next begins at its beginning, also the next time.
            receive(player, "Music/Northern Lights/3.ogg");
            QTRY_VERIFY_WITH_TIMEOUT(player.shows("Harbour") && player.shows("Pause"), PatienceMs);
        }
        QVERIFY(!QSettings().value("resume/places").toString().contains("3.ogg"));
        {
            Screen player("voro.player", operands({"book.wav"}));
            QVERIFY(player.click("Go on at 5:5*"));
            QTRY_VERIFY_WITH_TIMEOUT(player.shows("5:5*"), PatienceMs);
        }
        QDir(m_home.path("Empty")).mkpath(".");
        Screen player("voro.player", operands({"Empty"}));
        QVERIFY(player.click("Go on with “book”"));
        QTRY_VERIFY_WITH_TIMEOUT(player.window()->title() == "book", PatienceMs);
    }

    void library_isSortedAndSearched_byTags()
    {
        Screen player("voro.player", operands({"Music"}));
        QVERIFY(player.click("Order"));
        QVERIFY(player.click("By title"));
        const auto top = [&](const char *name) { return player.place(name).top(); };
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("First Frost, *") && player.shows("The Long Way*"), PatienceMs);
        QTRY_VERIFY(top("First Frost, *") < top("Harbour, *") && top("Harbour, *") < top("The Long Way*"));
        QTest::keyClick(player.window(), Qt::Key_F, Qt::ControlModifier);
        player.type("green");
        QTRY_VERIFY(!player.shows("Harbour, *"));
        QVERIFY(player.shows("The Long Way*"));
        player.type("er");
        QTRY_VERIFY(player.shows("Nothing found"));
        player.press(Qt::Key_Escape);
        QTRY_VERIFY(player.shows("Harbour, *"));
    }

    void sleepTimer_pausesAtTheEndOfTheTrack()
    {
        const QString album = "Music/Northern Lights/";
        Screen player("voro.player", operands({album + "1.ogg", album + "2.ogg"}));
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("Pause"), PatienceMs);
        QVERIFY(player.click("More"));
        QVERIFY(player.click("Sleep timer"));
        QVERIFY(player.click("At the end of the track"));
        QTRY_VERIFY(!player.shows("In 15 minutes"));
        player.press(Qt::Key_N);
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("The Long Way*") && player.shows("Play"), PatienceMs);
    }

    void windowAndVolume_areRemembered()
    {
        {
            Screen player("voro.player", operands({"Music/Northern Lights"}));
            player.resize(500, 700);
            QTRY_COMPARE(player.window()->size(), QSize(500, 700));
            player.press(Qt::Key_Minus);
            QVERIFY(player.click("Harbour, *"));
            QTRY_VERIFY(player.shows("Now playing: Harbour"));
        }
        Screen player("voro.player");
        QCOMPARE(player.window()->size(), QSize(500, 700));
        QTRY_VERIFY(player.shows("Northern Lights") && player.shows("Harbour, *"));
        QCOMPARE(QSettings().value("volume").toDouble(), 0.95);
    }

    void wideWindow_givesEveryButtonItsPlace()
    {
        media::makeTone(m_home.path("wide.mkv"), {.seconds = 20, .hasPicture = true});
        QSettings().setValue("window/width", 1000);
        Screen player("voro.player", operands({"wide.mkv"}));
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("Film"), PatienceMs);
        QTRY_VERIFY(player.place("Full screen").right() < player.place("Captions").left());
        QVERIFY(player.place("Equalizer").right() > 1000 - 8);
    }

    void address_isAskedFor()
    {
        Screen player("voro.player");
        QTest::keyClick(player.window(), Qt::Key_L, Qt::ControlModifier);
        QTRY_VERIFY(player.shows("Open an address"));
        player.type("no address");
        player.press(Qt::Key_Return);
        QTRY_VERIFY(player.shows("This is no address*"));
        QTest::keyClick(player.window(), Qt::Key_A, Qt::ControlModifier);
        player.type(QUrl::fromLocalFile(m_home.album("3.ogg")).toString());
        player.press(Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("Harbour") && !player.shows("Open an address"), PatienceMs);
        // What cannot be played is called by its own name, not by that of what played before.
        receive(player, "Music/broken.ogg");
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("“broken”: *"), PatienceMs);
        receive(player, "Music");
        QTRY_VERIFY_WITH_TIMEOUT(player.shows("Northern Lights"), PatienceMs);
    }

    void whatIsDropped_plays_data()
    {
        QDir().mkpath(m_home.path("Nothing"));
        const QString song = QUrl::fromLocalFile(m_home.album("3.ogg")).toString();
        const Rows<QString, QString, QString> row("format", "content", "shown");
        row("file", "text/uri-list", song, "Harbour");
        row("folder", "text/uri-list", QUrl::fromLocalFile(m_home.path("Music/Northern Lights")).toString(),
            "First Frost");
        row("address as text", "text/plain", song, "Harbour");
        row("folder without media", "text/uri-list", QUrl::fromLocalFile(m_home.path("Nothing")).toString(),
            "There is nothing in it*");
    }

    void whatIsDropped_plays()
    {
        QFETCH(QString, format);
        QFETCH(QString, content);
        QFETCH(QString, shown);
        Screen player("voro.player", operands({"Music"}));
        QMimeData dragged;
        dragged.setData(format, content.toUtf8());
        const QPoint place(100, 300);
        QDragEnterEvent enter(place, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(player.window(), &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(place, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(player.window(), &drop);
        QTRY_VERIFY_WITH_TIMEOUT(player.shows(shown), PatienceMs);
    }

    void secondStart_handsItsFilesToTheFirst()
    {
        QProcess bus;
        bus.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        QVERIFY(bus.waitForReadyRead(PatienceMs));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DBUS_SESSION_BUS_ADDRESS", QString::fromLatin1(bus.readLine()).trimmed());

        Watcher device;
        QProcess first;
        first.setProcessEnvironment(environment);
        first.start(QStringLiteral(BIN "voro-player"), {m_home.album("1.ogg")});
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "First Frost", PatienceMs);
        QProcess second;
        second.setProcessEnvironment(environment);
        second.start(QStringLiteral(BIN "voro-player"), {m_home.album("3.ogg"), m_home.path("Music/Northern Lights")});
        QVERIFY(second.waitForFinished(PatienceMs));
        QCOMPARE(second.exitCode(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(device.title(), "Harbour", PatienceMs);
        // What is in the folder comes next.
        QTRY_VERIFY_WITH_TIMEOUT(device.isNextEnabled(), PatienceMs);
        for (QProcess *process : {&first, &bus}) {
            process->terminate();
            QVERIFY(process->waitForFinished(PatienceMs));
        }
        // A session that ends it lets it write what it keeps.
        QCOMPARE(first.exitStatus(), QProcess::NormalExit);
    }

private:
    QVariantMap operands(const QStringList &files) const
    {
        QVariantList urls;
        for (const QString &file : files) {
            urls += QUrl::fromLocalFile(m_home.path(file));
        }
        return {{"operands", urls}};
    }

    /** As another start of the program hands it over. */
    void receive(const Screen &player, const QString &file) const
    {
        QMetaObject::invokeMethod(player.window(), "received", Q_ARG(QVariant, operands({file}).value("operands")));
    }

    const Home &m_home;
    PulseServer m_soundServer;
    Daemon m_daemon{Daemon::Later};
};

int main(int argc, char *argv[])
{
    return runInHome<tst_PlayerApplication>(argc, argv);
}

#include "tst_player_application.moc"
