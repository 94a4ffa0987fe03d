#include "Daemon.h"
#include "Talk.h"
#include "TestBus.h"

#include <QtTest/QtTest>

#include <Rows.h>

#include <memory>

namespace {

/** What players do, and what a controller is told then. */
using Steps = QList<std::pair<QByteArray, QByteArrayList>>;

/** Whoever waits for the bus or a player that hangs, waits longer than this. In milliseconds. */
constexpr qint64 Blocked = 4000;
/** The first controller waits so long for the players that run already. In milliseconds. */
constexpr qint64 SearchLimit = 200;

} // namespace

/** Players of other programs, as the controllers see and command them. */
class TestMprisPlayers : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        bus = std::make_unique<TestBus>();
        daemon = std::make_unique<Daemon>();
        players = std::make_unique<TestPlayers>();
    }
    void cleanup()
    {
        players.reset();
        daemon.reset();
        bus.reset();
    }

    void player_isShown_data()
    {
        const Rows<QByteArray, QByteArray, QVariantMap> row("properties", "state", "fields");
        using Fields = QVariantMap;

        row("everything",
            R"(PlaybackStatus="Paused", LoopStatus="Playlist", Shuffle=True, CanGoNext=True, CanGoPrevious=True, Position=Int64(1500000),)"
            R"(Metadata=metadata(title="T", artist=["A", "B"], album="C", trackNumber=3, length=Int64(5000000), artUrl="file:///a.png"))",
            Paused,
            Fields{{"track", "T"},
                   {"artist", "A, B"},
                   {"album", "C"},
                   {"track_number", "3"},
                   {"albumArtwork", "file:///a.png"},
                   {"duration", 5000},
                   {"position", 1500},
                   {"repeat_mode", "all"},
                   {"shuffle_mode", "all"},
                   {"nextEnabled", true},
                   {"prevEnabled", true}});
        row("nothing", {}, Stopped, Fields());
        row("other types",
            R"(PlaybackStatus=7, LoopStatus=True, Shuffle="yes?", CanGoNext=[1], Position="far", Rate="fast", Metadata="none")",
            Stopped, Fields{{"shuffle_mode", "all"}});
        row("other types in the metadata",
            R"(Metadata=metadata(title=["T"], artist="A", album=metadata(a=1), trackNumber=ObjectPath("/a"), length="long", artUrl=[1, 2]))",
            Stopped, Fields{{"track", "T"}, {"artist", "A"}});
        row("huge artwork", R"(Metadata=metadata(title="T", artUrl="file:///" + "a" * 1048576))", Stopped,
            Fields{{"track", "T"}});
        row("huge texts", R"(Metadata=metadata(title="T" * 1048576))", Stopped, Fields{{"track", QString(4096, 'T')}});
    }

    void player_isShown()
    {
        QFETCH(const QByteArray, properties);
        QFETCH(const QByteArray, state);
        QFETCH(const QVariantMap, fields);
        Talk controller;
        controller.subscribe();
        QVERIFY(controller.waitFor(Free));
        players->call("add('p', " + properties + ')');
        QCOMPARE(controller.next(), theirs());
        QCOMPARE(controller.next(), Stopped);
        QCOMPARE(controller.next(), update());
        QCOMPARE(controller.next(), state);
        QCOMPARE(controller.next(), update(fields));
        QCOMPARE(present(), (QByteArrayList{state, update(fields), theirs()}));
        QCOMPARE(roleStatus(), R"({"name":"","pid":0})");
        players->call("remove('p')");
        QCOMPARE(controller.next(), Free);
        QCOMPARE(controller.next(), Stopped);
        QCOMPARE(controller.next(), update());
        QCOMPARE(controller.rest(), QByteArrayList());
    }

    void player_thatRuns_isFoundBeforeTheFirstController()
    {
        players->call("add('p', PlaybackStatus='Playing', Rate=0.0, Metadata=metadata(title='T'))");
        // The first of all: nobody has used the services yet.
        QElapsedTimer timer;
        timer.start();
        const QByteArrayList first = present();
        if (timer.elapsed() < SearchLimit) {
            QCOMPARE(first, (QByteArrayList{Playing, update({{"track", "T"}}), theirs()}));
        }
    }

    void changes_areTold()
    {
        players->call(
            "add('p', PlaybackStatus='Paused', Rate=0.0, Position=Int64(7000000), Metadata=metadata(title='T'))");
        Talk controller;
        controller.subscribe();
        QVERIFY(controller.waitFor(update({{"track", "T"}, {"position", 7000}})));
        controller.rest();
        players->call("change('p', PlaybackStatus='Playing')");
        QCOMPARE(controller.next(), Playing);
        QCOMPARE(controller.next(), update({{"track", "T"}, {"position", 7000}}));
        players->call("change('p', PlaybackStatus='Paused')");
        QCOMPARE(controller.next(), Paused);
        QCOMPARE(controller.next(), update({{"track", "T"}, {"position", 7000}}));
        players->call("signal('p', 'Seeked', 'x', Int64(9000000))");
        QCOMPARE(controller.next(), update({{"track", "T"}, {"position", 9000}}));
        players->call("change('p', Volume=0.5)");
        players->call("change('p', Metadata=metadata(title='U'))");
        QCOMPARE(controller.next(), TrackChange);
        QCOMPARE(controller.next(), update({{"track", "U"}}));
        players->call("invalidate('p', CanGoNext=True)");
        QVERIFY(controller.waitFor(update({{"track", "U"}, {"nextEnabled", true}, {"position", 7000}})));
        // It has less than it had.
        players->call("answer('p', PlaybackStatus='Paused')");
        QVERIFY(controller.waitFor(update()));
        QCOMPARE(controller.rest(), QByteArrayList());
    }

    void newTrack_isTold_andBeginsAtZero_data()
    {
        const Rows<Steps> row("steps");
        const QByteArray begun = update({{"track", "T"}});
        const QByteArray there = update({{"track", "T"}, {"position", 7000}});
        const QByteArray metadata = "change('p', Metadata=metadata(title='T'";
        const QByteArray play = "change('p', PlaybackStatus='Playing')";
        row("another track of the same name", Steps{{metadata + ", trackid=ObjectPath('/2')))", {TrackChange, begun}}});
        row("a name that is a text", Steps{{metadata + ", trackid='2'))", {TrackChange, begun}}});
        row("the same track", Steps{{metadata + ", trackid=ObjectPath('/1'), trackNumber=3))",
                                     {update({{"track", "T"}, {"track_number", "3"}, {"position", 7000}})}}});
        row("anew after a stop",
            Steps{{"change('p', PlaybackStatus='Stopped')", {Stopped, there}}, {play, {TrackChange, Playing, begun}}});
    }

    void newTrack_isTold_andBeginsAtZero()
    {
        QFETCH(const Steps, steps);
        players->call("add('p', PlaybackStatus='Playing', Rate=0.0, Position=Int64(7000000),"
                      "Metadata=metadata(title='T', trackid=ObjectPath('/1')))");
        Talk controller;
        controller.subscribe();
        QVERIFY(controller.waitFor(update({{"track", "T"}, {"position", 7000}})));
        controller.rest();
        for (const auto &[call, messages] : steps) {
            players->call(call);
            for (const QByteArray &message : messages) {
                QCOMPARE(controller.next(), message);
            }
        }
        QCOMPARE(controller.rest(), QByteArrayList());
    }

    void position_isToldOnceASecond_whileSomebodySubscribes()
    {
        players->call("add('p', PlaybackStatus='Playing', Position=Int64(7000000), Metadata=metadata(title='T'))");
        Talk controller;
        controller.subscribe();
        QVERIFY(controller.waitFor(theirs()));
        const auto nextPosition = [&controller] {
            return controller.nextMap().value("dat").toMap().value("position").toLongLong();
        };
        QList<qint64> positions;
        while (positions.size() < 4) {
            if (const qint64 position = nextPosition(); position > 0) {
                positions += position;
            }
        }
        // Three seconds; one that is late makes the time to the next one shorter.
        const qint64 passed = positions.last() - positions.first();
        QVERIFY2(passed > 2000, QByteArray::number(passed));
        players->call("change('p', PlaybackStatus='Paused')");
        QVERIFY(controller.waitFor(Paused));
        const qint64 held = nextPosition();
        QVERIFY2(held >= positions.last(), QByteArray::number(held));
        QVERIFY(present().at(1).contains("\"position\":" + QByteArray::number(held)));
    }

    void player_thatRefusesItsProperties_isUnknown()
    {
        players->call("add('p', PlaybackStatus='Playing', Rate=0.0, CanGoNext=True, Metadata=metadata(title='T'))");
        players->call("add('q', PlaybackStatus='Paused', Metadata=metadata(title='Q'))");
        Talk controller;
        controller.subscribe();
        QVERIFY(controller.waitFor(update({{"track", "T"}, {"nextEnabled", true}})));
        players->call("refuse('p')");
        QVERIFY(controller.waitFor(update({{"track", "Q"}})));
        players->call("remove('q')");
        QVERIFY(controller.waitFor(Free));
        // It has less than it had.
        players->call("answer('p', PlaybackStatus='Paused')");
        QVERIFY(controller.waitFor(theirs()));
        QCOMPARE(present(), (QByteArrayList{Paused, update(), theirs()}));
    }

    void playerctld_isNoPlayer()
    {
        players->call("add('playerctld', PlaybackStatus='Playing', Metadata=metadata(title='T'))");
        players->call("add('p', PlaybackStatus='Paused', Metadata=metadata(title='P'))");
        Talk controller;
        controller.subscribe();
        QVERIFY(controller.waitFor(update({{"track", "P"}})));
        controller.write("msg::m_next");
        QCOMPARE(players->nextCall(), "p Next");
    }

    void playerOfManyNames_isAskedUnderSome()
    {
        Talk controller;
        controller.subscribe();
        QVERIFY(controller.waitFor(Free));
        players->call("add('p', PlaybackStatus='Paused')");
        QVERIFY(controller.waitFor(Paused));
        players->call("name_again('p', 9)");
        players->call("signal('p', 'Seeked', 'x', Int64(9000000))");
        QVERIFY(controller.waitFor(update({{"position", 9000}})));
        controller.write("msg::m_next");
        QCOMPARE(players->nextCall(), "p Next");
        players->call("say(str(players['p'].asked))");
        QCOMPARE(players->nextCall(), "4");
    }

    void commands_areCalls_data()
    {
        const Rows<QByteArray, QByteArray, QByteArray> add("properties", "command", "call");
        const auto row = [](const QByteArray &properties, const QByteArray &command, const QByteArray &call) {
            QTest::addRow("%s %s", command.constData(), properties.constData()) << properties << command << call;
        };
        const auto mode = [](const QByteArray &fields) { return "m_command|dat:json:{" + fields + '}'; };
        row("", "m_play", "p Play");
        row("", "m_pause", "p Pause");
        row("", "m_stop", "p Stop");
        row("", "m_next", "p Next");
        row("", "m_previous", "p Previous");
        row("", "m_playpause", "p Play");
        row("PlaybackStatus='Playing'", "m_playpause", "p Pause");
        row("", "m_fforward", "p Seek 10000000");
        row("", "m_rewind", "p Seek -10000000");
        row("LoopStatus='None'", mode(R"("command":"repeat","value":"track")"), R"(p Set LoopStatus "Track")");
        row("LoopStatus='None'", mode(R"("command":"repeat")"), R"(p Set LoopStatus "Playlist")");
        row("LoopStatus='Track'", mode(R"("command":"repeat")"), R"(p Set LoopStatus "None")");
        row("Shuffle=False", mode(R"("command":"shuffle","value":"all")"), "p Set Shuffle True");
        row("Shuffle=True", mode(R"("command":"shuffle")"), "p Set Shuffle False");
        // What the player cannot do is answered.
        row("CanGoNext=False", "m_next", "!the player cannot do this now");
        row("CanSeek=False", "m_rewind", "!the player cannot do this now");
        row("", mode(R"("command":"shuffle")"), "!the player cannot do this");
    }

    void commands_areCalls()
    {
        QFETCH(const QByteArray, properties);
        QFETCH(const QByteArray, command);
        QFETCH(const QByteArray, call);
        players->call("add('p', " + properties + ')');
        Talk controller;
        controller.subscribe();
        QVERIFY(controller.waitFor(theirs()));
        controller.write("msg::" + command);
        if (call.startsWith('!')) {
            QVERIFY(controller.waitFor(failure(command.split('|').first(), call.mid(1))));
        } else {
            QCOMPARE(players->nextCall(), call);
        }
    }

    void theOnePlaying_isChosen()
    {
        Talk controller;
        controller.subscribe();
        QVERIFY(controller.waitFor(Free));
        const auto shows = [&controller](const QByteArray &title) {
            return controller.waitFor(update({{"track", title}}));
        };
        players->call("add('p', PlaybackStatus='Paused', Metadata=metadata(title='P'))");
        QVERIFY(shows("P"));
        players->call("add('q', PlaybackStatus='Paused', Metadata=metadata(title='Q'))");
        players->call("change('q', PlaybackStatus='Playing')");
        QVERIFY(controller.waitFor(Playing));
        controller.write("msg::m_pause");
        QCOMPARE(players->nextCall(), "q Pause");
        players->call("change('p', PlaybackStatus='Playing')");
        // The one that plays already stays.
        controller.write("msg::m_stop");
        QCOMPARE(players->nextCall(), "q Stop");
        players->call("change('q', PlaybackStatus='Paused')");
        QVERIFY(controller.waitFor(Playing));
        controller.write("msg::m_stop");
        QCOMPARE(players->nextCall(), "p Stop");
        players->call("remove('p')");
        QVERIFY(controller.waitFor(Paused));
        controller.write("msg::m_stop");
        QCOMPARE(players->nextCall(), "q Stop");
    }

    void holder_comesFirst()
    {
        players->call("add('p', PlaybackStatus='Paused', Metadata=metadata(title='P'))");
        Talk controller;
        controller.subscribe();
        QVERIFY(controller.waitFor(theirs()));
        auto holder = std::make_unique<Talk>(PlayerControl);
        holder->acquire("a");
        QVERIFY(controller.waitFor(Ours));
        QCOMPARE(controller.next(), Stopped);
        QCOMPARE(controller.next(), update());
        players->call("change('p', PlaybackStatus='Playing')");
        QVERIFY(holder->waitFor(Send));
        controller.write("msg::m_next");
        QCOMPARE(holder->next(), track(R"("next")"));
        QCOMPARE(controller.rest(), QByteArrayList());
        holder.reset();
        QCOMPARE(controller.next(), theirs());
        QCOMPARE(controller.next(), Stopped);
        QCOMPARE(controller.next(), update());
        QVERIFY(controller.waitFor(Playing));
    }

    void player_thatHangs_holdsNobodyUp()
    {
        TestPlayers hanging;
        hanging.call("add('hung', PlaybackStatus='Playing')");
        hanging.stop();
        Talk controller;
        QElapsedTimer timer;
        timer.start();
        controller.subscribe();
        QVERIFY(controller.waitFor(Free));
        QVERIFY2(timer.elapsed() < Blocked, QByteArray::number(timer.elapsed()));
        players->call("add('p', PlaybackStatus='Paused')");
        QVERIFY(controller.waitFor(theirs()));
        timer.restart();
        QCOMPARE(present(), (QByteArrayList{Paused, update(), theirs()}));
        QVERIFY2(timer.elapsed() < Blocked, QByteArray::number(timer.elapsed()));
        // It answers after all, and plays.
        hanging.goOn();
        QVERIFY(controller.waitFor(Playing));
        controller.write("msg::m_next");
        QCOMPARE(hanging.nextCall(), "hung Next");
    }

    void bus_thatGoes_takesThePlayersAlong()
    {
        players->call("add('p', PlaybackStatus='Playing')");
        Talk controller;
        controller.subscribe();
        QVERIFY(controller.waitFor(theirs()));
        bus->kill();
        QVERIFY(controller.waitFor(Free));
        controller.write("msg::m_play");
        QVERIFY(controller.waitFor(failure("m_play", "nothing is playing")));
        bus->start();
        players = std::make_unique<TestPlayers>();
        players->call("add('p', PlaybackStatus='Playing')");
        QVERIFY(controller.waitFor(theirs()));
    }

private:
    /** The message about the source being the players' process. */
    QByteArray theirs() const
    {
        return R"({"dat":)" + QByteArray::number(players->process()) + R"(,"msg":"m_active_pid"})";
    }
    /** Subscribes and returns the present: state, metadata, source. */
    static QByteArrayList present()
    {
        Talk controller;
        controller.subscribe();
        return {controller.next(), controller.next(), controller.next()};
    }

    std::unique_ptr<TestBus> bus;
    std::unique_ptr<Daemon> daemon;
    std::unique_ptr<TestPlayers> players;
};

QTEST_GUILESS_MAIN(TestMprisPlayers)
#include "tst_mpris_players.moc"
