#include "ContextStage.h"

#include <QtCore/QTemporaryDir>

#include <renderer/service/Parking.h>
#include <Rows.h>

#include <array>
#include <atomic>

using namespace context;
using voro::renderer::Parking;

/** What a context asks of its engine, and when it has one. */
class tst_ContextEngine : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void engineIsAsked_data()
    {
        const Rows<QStringList, QByteArrayList> add("commands", "asked");
        const QString attach = QLatin1String(Attach);
        const QByteArray settings =
            "interval:n:1000 maxduration:n:0 audio:b:false volume:n:100 eq_preset::off autopause:b:false role:: "
            "repeat::none display:: xauthority::";
        const auto row = [&](const char *title, const QStringList &commands, const QByteArrayList &asked) {
            add(title, QStringList(attach) + commands, asked);
        };
        row("play", {"play", "play"}, {"play"});
        row("stop", {"stop", "play", "stop", "stop"}, {"play", "stop"});
        row("speed", {"speed_set speed:n:2000", "speed_set speed:n:9999"}, {"speed speed:n:2000"});
        row("seek", {"seek position::700", "seek position::1:800", "seek position::3:0"},
            {"seek track:n:1 position:n:700", "seek track:n:1 position:n:800"});
        row("detach", {"input_detach", "input_detach"}, {"close"});
        row("attach again", {"input_attach url::/b.ogg type::playlist"},
            {"close",
             "open url::/b.ogg type::playlist track_next:b:true speed:n:1000 track:n:1 position:n:0 " + settings});
        row("crash, seek, play", {"play", "!status position:n:900", "!die", "seek position::1:2500", "play"},
            {"play", "end", "open url::/a.ogg type::autolist speed:n:1000 track:n:1 position:n:2500 " + settings,
             "play"});
        row("crash, seek beyond the end, play", {"play", "!die", "seek position::1:9000", "play"},
            {"play", "end", "open url::/a.ogg type::autolist speed:n:1000 track:n:1 position:n:5000 " + settings,
             "play"});
        row("crash, seek in what has no known length, play",
            {"play", "!track track:n:1 md_title_duration:n:0 md_title_seekable:b:true", "!die", "seek position::1:9000",
             "play"},
            {"play", "end", "open url::/a.ogg type::autolist speed:n:1000 track:n:1 position:n:9000 " + settings,
             "play"});
        row("crash, detach", {"!die", "input_detach"}, {"end"});
    }

    void engineIsAsked()
    {
        QFETCH(QStringList, commands);
        QFETCH(QByteArrayList, asked);
        Stage stage;
        stage.step(commands.takeFirst().toStdString());
        stage.takeLog();
        for (const QString &command : commands) {
            stage.step(command.toStdString());
        }
        QCOMPARE(toList(stage.takeLog()), asked);
    }

    void engineReaches_whatItNeeds_data()
    {
        const Rows<QStringList, bool, bool> row("commands", "network", "windows");
        const QString attach = QLatin1String(Attach);
        const QString window = QStringLiteral("output_attach url::screen:?winid=5 type::video display:::0");
        const QString screenFarAway = QStringLiteral("output_attach url::screen:?winid=5 type::video display::far:0");
        row("a file", {attach}, false, false);
        row("a stream", {"input_attach url::http://x/a.ogg type::autolist"}, true, false);
        row("a recording",
            {outputCommand(m_folder.filePath("reach.wav")), "input_attach url::audio:default type::track"}, false,
            false);
        row("a window", {window, attach}, false, true);
        row("a window on another machine", {screenFarAway, attach}, true, true);
        row("a frame queue", {"output_attach url::screen:?winid=item type::video", attach}, false, false);
        row("captions from the net", {"track_parameters track:n:0 dat::subpicture_url::http://x/a.srt", attach}, true,
            false);
        row("a window that comes later", {attach, "play", window}, false, true);
        row("captions from the net that come later",
            {attach, "play", "track_parameters track:n:1 dat::subpicture_url::http://x/a.srt"}, true, false);
        row("a file after a stream", {"input_attach url::http://x/a.ogg type::autolist", attach}, false, false);
    }

    void engineReaches_whatItNeeds()
    {
        QFETCH(const QStringList, commands);
        Stage stage;
        for (const QString &command : commands) {
            QCOMPARE(stage.step(command.toStdString()), 0);
        }
        QTEST(stage.engines.reach().network, "network");
        QTEST(stage.engines.reach().windows, "windows");
        if (commands.contains(QStringLiteral("play"))) {
            QCOMPARE(stage.takeLog().back(), "play");
            QCOMPARE(attributes(stage.content("state")), "state::playing speed:n:1000");
        }
    }

    void listThatLeadsToTheNetwork_isOpenedByAnotherEngine()
    {
        Stage stage;
        stage.engines.held = "open";
        stage.write("input_attach url::/a.m3u type::playlist");
        QTRY_VERIFY(stage.engines.isHolding());
        QVERIFY(!stage.engines.reach().network);
        stage.run([&](Broker &) {
            stage.engines.held.clear();
            stage.engines.needNetwork();
        });
        QCOMPARE(stage.answer().number("err", -1), 0);
        QVERIFY(stage.engines.reach().network);
        QCOMPARE(stage.engines.started(), 2);
    }

    void windowThatIsRefused_leavesThePlaybackAlone()
    {
        Stage stage;
        for (const char *command :
             {Attach, "!track track:n:1 md_title_seekable:b:true", "play", "!status position:n:1200"}) {
            QCOMPARE(stage.step(command), 0);
        }
        stage.takeLog();
        stage.engines.held = "open";
        stage.write("output_attach url::screen:?winid=5 type::video display:::0");
        QTRY_VERIFY(stage.engines.isHolding());
        stage.run([&](Broker &) {
            stage.engines.held.clear();
            stage.engines.release({ErrorCode::OutputUnavailable, "refused"});
        });
        QCOMPARE(stage.answer().number("err", -1), static_cast<int>(ErrorCode::OutputUnavailable));
        QVERIFY(!stage.engines.reach().windows);
        QCOMPARE(stage.takeLog().back(), "play");
        QCOMPARE(attributes(stage.content("state")), "state::playing speed:n:1000");
    }

    void rest_isNoticed()
    {
        Stage stage({.usual = 1});
        QCOMPARE(stage.step(Attach), 0);
        std::vector<std::string> log;
        const auto isGivenBack = [&] {
            const std::vector<std::string> more = stage.takeLog();
            log.insert(log.end(), more.begin(), more.end());
            return !log.empty() && log.back() == "end";
        };
        QTRY_VERIFY(isGivenBack());
    }

    void ofMoreThanEightOfAProcess_thoseThatRestedLongestGiveTheirEnginesBack()
    {
        struct Guest final : Parking::Guest {
            void park() override { isParked = true; }
            std::atomic<bool> isParked = false;
        };
        std::array<Guest, 12> guests;
        const auto areParked = [&] {
            QByteArray text;
            for (const Guest &guest : guests) {
                text += guest.isParked ? 'p' : '-';
            }
            return text;
        };
        std::optional<Parking> parking;
        BrokerThread thread;
        thread.run([&](Broker &broker) {
            parking.emplace(broker, Parking::Delays{.beyondMost = 1});
            for (size_t i = 0; i < 10; ++i) {
                parking->add(guests[i], 1);
            }
            parking->add(guests[0], 1);
            parking->remove(guests[2]);
            parking->add(guests[10], 2);
            parking->add(guests[11], 2);
        });
        QTRY_COMPARE(areParked(), "-p----------");
        thread.run([&](Broker &) {
            parking->remove(guests[3]);
            parking->add(guests[2], 1);
            parking->add(guests[1], 1);
        });
        QTRY_COMPARE(areParked(), "-p--p-------");
        thread.run([&](Broker &) { parking.reset(); });
    }

    void contextThatRests_givesItsEngineBack_data()
    {
        const Rows<QStringList, bool, QByteArray, QByteArrayList> add("commands", "isParked", "command", "asked");
        const QString attach = QLatin1String(Attach);
        const QString film = QStringLiteral("!track track:n:1 md_title_seekable:b:true md_video_width:n:8");
        const QString radio = QStringLiteral("!track track:n:1 md_title_seekable:b:false");
        const QString picture = QStringLiteral("output_attach url::screen:?winid=item type::video");
        const QString pause = QStringLiteral("speed_set speed:n:0");
        const QStringList paused{attach, "play", "!status position:n:1200", pause};
        const auto row = [&](const char *title, const QStringList &commands, bool isParked, const char *command = "",
                             const QByteArrayList &asked = {}) { add(title, commands, isParked, command, asked); };
        row("prepared", {attach}, true, "play", {"open", "play"});
        row("stopped", {attach, "play", "stop"}, true, "play", {"open", "play"});
        row("stopped on the fifth track",
            {attach, "!track track:n:5 md_title_seekable:b:true", "!queue current:n:5 total:n:9", "play", "stop"}, true,
            "play", {"open on 5", "play"});
        row("ended", {attach, "play", "!ended"}, true, "play", {"open", "play"});
        row("ended, then stopped on the first track",
            {attach, "!queue current:n:2 total:n:2", "!track track:n:2 md_title_seekable:b:true", "play", "!ended",
             "stop"},
            true, "play", {"open", "play"});
        row("stopped, to be sought in another track", {attach, "!queue current:n:1 total:n:2", "play", "stop"}, true,
            "seek position::2:1200", {"open at 1200 on 2"});
        row("paused with captions that are shown",
            {"output_attach url::screen:?winid=item type::subpicture", attach, "play", pause}, false);
        row("failed", {attach, "play", "!failed err:n:11 position:n:700 track:n:1"}, false);
        row("prepared, to be sought", {attach, "!status position:n:0 bufferlevel:n:100 bufferstatus::idle"}, true,
            "seek position::1:3", {});
        row("paused, to go on", paused, true, "speed_set speed:n:1000", {"open at 1200", "play", "speed"});
        row("paused, to be sought", paused, true, "seek position::1:3", {"open at 1200", "play", "seek"});
        row("paused, to be stopped", paused, true, "stop", {"open at 1200", "play", "stop"});
        row("detached", {attach, "play", "input_detach"}, true);
        row("playing", {attach, "play"}, false);
        row("a paused film", {picture, attach, film, "play", pause}, false);
        row("a paused film that nobody sees", {attach, film, "play", pause}, true);
        row("a stopped film", {picture, attach, film, "play", "stop"}, true);
        row("radio", {attach, radio, "play", pause}, false);
        row("a recorder",
            {outputCommand(m_folder.filePath("parked.wav")), "input_attach url::audio:default type::track"}, false);
    }

    void contextThatRests_givesItsEngineBack()
    {
        QFETCH(const QStringList, commands);
        QFETCH(const QByteArray, command);
        QFETCH(const QByteArrayList, asked);
        Stage stage;
        for (const QString &earlier : commands) {
            QCOMPARE(stage.step(earlier.toStdString()), 0);
        }
        const auto shown = [&] { return stage.content("state") + stage.content("status") + stage.content("q1"); };
        const std::string before = shown();
        stage.park();
        QTEST(stage.takeLog().back() == "end", "isParked");
        QCOMPARE(shown(), before);
        if (command.isEmpty()) {
            return;
        }
        QCOMPARE(stage.step(command.toStdString()), 0);
        QByteArrayList log;
        for (const QByteArray &entry : toList(stage.takeLog())) {
            log << entry.split(' ').first() + (entry.contains("position:n:1200") ? " at 1200" : "")
                       + (entry.contains("track:n:2") ? " on 2" : "") + (entry.contains("track:n:5") ? " on 5" : "");
        }
        QCOMPARE(log.first(asked.size()), asked);
        const std::string full = "bufferlevel::100/100";
        QVERIFY(before.find(full) == before.npos || stage.content("status").find(full) != before.npos);
    }

    void contextWhoseMediumOpensNoMore_givesItsEngineBack()
    {
        Stage stage;
        QCOMPARE(stage.step(Attach), 0);
        stage.step("!die");
        stage.run([&](Broker &) { stage.engines.answers["open"] = {ErrorCode::SourceUnavailable, "gone"}; });
        QCOMPARE(stage.step("play"), static_cast<int>(ErrorCode::SourceUnavailable));
        QVERIFY(stage.takeLog().back() != "end");
        stage.park();
        QCOMPARE(stage.takeLog(), std::vector<std::string>{"end"});
    }

    void journal_isToldToEveryEngine()
    {
        Stage stage;
        for (const char *command :
             {"output_attach url::audio:default type::audio", "output_parameters output:n:0 dat::volume::50",
              "output_parameters output:n:0 dat::eq_preset::jazz", "context_parameters dat::updateinterval::250",
              "input_parameters dat::repeat::all"}) {
            QCOMPARE(stage.step(command), 0);
        }
        QVERIFY(stage.takeLog().empty());
        QCOMPARE(stage.step(Attach), 0);
        QCOMPARE(stage.step("speed_set speed:n:500"), 0);
        QCOMPARE(stage.step("output_parameters output:n:0 dat::volume::70"), 0);
        QCOMPARE(stage.step("play"), 0);
        const QByteArray settings = "eq_preset::jazz autopause:b:false role:: repeat::all display:: xauthority::";
        const QByteArray open = "open url::/a.ogg type::autolist ";
        QCOMPARE(
            toList(stage.takeLog()),
            (QByteArrayList{
                open + "speed:n:1000 track:n:1 position:n:0 interval:n:250 maxduration:n:0 audio:b:true volume:n:50 "
                    + settings,
                "speed speed:n:500", "set interval:n:250 maxduration:n:0 audio:b:true volume:n:70 " + settings,
                "play"}));

        stage.step("!status position:n:3333");
        stage.step("!die");
        QCOMPARE(stage.engines.started(), 1);
        QCOMPARE(stage.step("play"), 0);
        QCOMPARE(
            toList(stage.takeLog()),
            (QByteArrayList{
                "end",
                open + "speed:n:500 track:n:1 position:n:3333 interval:n:250 maxduration:n:0 audio:b:true volume:n:70 "
                    + settings,
                "play"}));
        QCOMPARE(stage.engines.started(), 2);
        QVERIFY(stage.engines.isWatched());
        QCOMPARE(stage.step("speed_set speed:n:0"), 0);
        QVERIFY(!stage.engines.isWatched());
        QCOMPARE(stage.step("speed_set speed:n:1000"), 0);
        QVERIFY(stage.engines.isWatched());
    }

    void films_areExpected_whereTheyAreSeen()
    {
        Stage stage;
        stage.step(Attach);
        stage.step("!track track:n:1 md_video_width:n:320");
        QVERIFY(!stage.engines.areFilmsExpected());
        QCOMPARE(stage.step("output_attach url::screen:?winid=frames type::video"), 0);
        stage.step("!track track:n:1 md_video_width:n:0");
        QVERIFY(!stage.engines.areFilmsExpected());
        stage.step("!track track:n:1 md_video_width:n:320");
        QVERIFY(stage.engines.areFilmsExpected());
    }

    void deathDuringCommand_failsIt_data()
    {
        const Rows<QStringList, QString, QString, int, QByteArray> row("before", "command", "held", "code", "state");
        const QString attach = QLatin1String(Attach);
        row("attach", {}, attach, "open", 1, {});
        row("seek", {attach, "play"}, "seek position::9", "seek", 1,
            "state::stopped speed:n:1000 error:n:1 error_pos::1:0");
        row("detach", {attach, "play"}, "input_detach", "close", 0, "state::idle speed:n:1000");
    }

    void deathDuringCommand_failsIt()
    {
        QFETCH(QStringList, before);
        QFETCH(QString, command);
        QFETCH(QString, held);
        QFETCH(int, code);
        QFETCH(QByteArray, state);
        Stage stage;
        for (const QString &step : before) {
            QCOMPARE(stage.step(step.toStdString()), 0);
        }
        stage.engines.held = held.toStdString();
        stage.write(command.toStdString());
        stage.step("!die");
        QCOMPARE(static_cast<int>(stage.answer().number("err", -1)), code);
        QCOMPARE(attributes(stage.content("state")), state);
        // The context goes on.
        stage.engines.held.clear();
        QCOMPARE(stage.step(Attach), 0);
        QCOMPARE(stage.step("play"), 0);
    }

    void tenDeaths_giveTheMediumUp()
    {
        Stage stage;
        stage.step(Attach);
        for (int i = 0; i < 10; ++i) {
            QCOMPARE(stage.step("play"), 0);
            stage.step("!die");
        }
        QCOMPARE(stage.engines.started(), 10);
        QCOMPARE(stage.step("play"), 11);
        QCOMPARE(stage.step(Attach), 11);
        QCOMPARE(stage.engines.started(), 10);
        QCOMPARE(stage.step("input_attach url::/b.ogg type::autolist"), 0);
        QCOMPARE(stage.step("play"), 0);
    }

private:
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_ContextEngine)
#include "tst_context_engine.moc"
