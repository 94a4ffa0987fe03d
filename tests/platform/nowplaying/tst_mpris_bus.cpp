#include "MprisTest.h"

#include <Programs.h>
#include <Rows.h>

using namespace mpris;

namespace {

/** Whoever waits for the bus or a player that hangs, waits longer than this. In milliseconds. */
constexpr qint64 Blocked = 4000;

} // namespace

/** The player's name on the bus, and a bus that comes, goes and hangs. */
class TestMprisBus : public MprisTest {
    Q_OBJECT
private Q_SLOTS:
    void name_isMadeOfTheHolders()
    {
        const std::pair<QByteArray, QString> names[] = {{"Player_1", "Player_1"},
                                                        {"NPC:17", "NPC_17"},
                                                        {"com.example.Player", "com.example.Player"},
                                                        {".a..b.", "_a._b_"},
                                                        {"1.2.x3", "_._.x3"},
                                                        {"My Plåyer-2", "My_Pl__yer-2"},
                                                        {"/:@[`{\\u0000\\u0001", "________"},
                                                        {QByteArray(300, 'x'), QString(255 - 28, 'x')}};
        acquire();
        for (const auto &[name, busName] : names) {
            holder->write("msg::register|dat:json:{\"prio\":\"low\",\"name\":\"" + name + "\"}");
            QVERIFY2(waitForName("org.mpris.MediaPlayer2.voro." + busName), name.constData());
        }
    }

    void name_thatIsTaken_getsTheProcess()
    {
        QVERIFY(test.registerService(Name));
        acquire();
        QVERIFY(waitForName(Name + ".instance" + QString::number(getpid())));
        QVERIFY(test.registerService("org.mpris.MediaPlayer2.voro.b"));
        QVERIFY(test.registerService("org.mpris.MediaPlayer2.voro.b.instance" + QString::number(getpid())));
        // Without any name it is not there, and nobody watches.
        holder->write(R"(msg::register|dat:json:{"name":"b","prio":"low"})");
        QCOMPARE(holder->next(), Hold);
    }

    void preemptedHolder_goesBeforeTheNewOneAppears()
    {
        Witness witness(test);
        acquire();
        Talk other(PlayerControl);
        other.acquire("b");
        QCOMPARE(other.next(), Granted);
        QCOMPARE(other.next(), Send);
        other.write(R"(msg::register|dat:json:{"name":"c","prio":"low"})");
        QTRY_COMPARE(witness.names, (QStringList{"+voro.a", "-voro.a", "+voro.b", "-voro.b", "+voro.c"}));
    }

    void bus_maybeStartedLater_goAway_andComeBack()
    {
        holder.reset();
        daemon.reset();
        bus.reset();
        bus = std::make_unique<TestBus>(TestBus::Later);
        daemon = std::make_unique<Daemon>();
        holder = std::make_unique<Talk>(PlayerControl);
        holder->acquire("a");
        QCOMPARE(holder->next(), Granted);
        QCOMPARE(holder->next(), Hold);
        for (int i = 0; i < 3; ++i) {
            bus->start();
            QCOMPARE(holder->next(), Send);
            // The name was asked for before, but by another road.
            QByteArray said;
            QVERIFY2(
                QTest::qWaitFor(
                    [&said] { return (said = runToEnd("playerctl", {"-l"}).value_or("")).contains("voro.a"); }, 20'000),
                said.constData());
            bus->kill();
            QCOMPARE(holder->next(), Hold);
        }
    }

    void bus_thatHangs_holdsNobodyUp_data()
    {
        const Rows<bool> row("isConnected");
        row("from the beginning", false);
        row("later", true);
    }

    void bus_thatHangs_holdsNobodyUp()
    {
        QFETCH(const bool, isConnected);
        if (isConnected) {
            acquire("z");
        }
        bus->stop();
        Talk controller;
        QElapsedTimer timer;
        timer.start();
        controller.subscribe();
        QVERIFY(controller.waitFor(isConnected ? Ours : Free));
        QVERIFY2(timer.elapsed() < Blocked, QByteArray::number(timer.elapsed()));
        timer.restart();
        Talk other(PlayerControl);
        other.acquire("a");
        QCOMPARE(other.next(), Granted);
        QCOMPARE(other.next(), Send);
        other.write("msg::state|dat::playing");
        QVERIFY(controller.waitFor(Playing));
        QVERIFY2(timer.elapsed() < Blocked, QByteArray::number(timer.elapsed()));
        bus->goOn();
        QVERIFY(waitForName(Name));
        QCOMPARE(property("PlaybackStatus"), "Playing");
    }

    void bus_thatHangs_letsTheDaemonEnd_data() { bus_thatHangs_holdsNobodyUp_data(); }

    void bus_thatHangs_letsTheDaemonEnd()
    {
        QFETCH(const bool, isConnected);
        if (isConnected) {
            acquire();
        }
        bus->stop();
        Talk controller;
        controller.subscribe();
        QVERIFY(controller.waitFor(isConnected ? Ours : Free));
        QElapsedTimer timer;
        timer.start();
        QVERIFY(daemon->stop());
        QVERIFY2(timer.elapsed() < Blocked, QByteArray::number(timer.elapsed()));
        // Whoever comes next finds everything as it should be.
        QVERIFY(daemon->start());
        Talk next(PlayerControl);
        next.acquire("a");
        QCOMPARE(next.next(), Granted);
        bus->goOn();
    }
};

QTEST_GUILESS_MAIN(TestMprisBus)
#include "tst_mpris_bus.moc"
