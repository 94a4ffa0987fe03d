#include "ContextStage.h"

#include <Rows.h>

using namespace context;

/** A context's commands and what it shows. */
class tst_Context : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void steps_data()
    {
        const Rows<QStringList, QList<int>, QByteArray> row("commands", "codes", "state");
        const QString attach = QLatin1String(Attach);
        row("without an input", {"play", "seek position::5", "speed_set speed:n:500", "stop", "input_detach"},
            {3, 3, 3, 0, 0}, "");
        row("attach, detach", {attach, "input_detach"}, {0, 0}, "state::idle speed:n:1000");
        row("play held", {attach, "speed_set speed:n:0", "play"}, {0, 0, 0}, "state::playing speed:n:0");
        row("speed while stopped", {attach, "speed_set speed:n:-2000"}, {0, 0}, "state::stopped speed:n:-2000");
        row("speeds out of range",
            {attach, "speed_set speed:n:249", "speed_set speed:n:-4001", "speed_set speed:n:4000", "speed_set"},
            {0, 4, 4, 0, 4}, "state::stopped speed:n:4000");
        row("the end", {attach, "play", "!status position:n:5000 bufferlevel:n:100 bufferstatus::playing", "!ended"},
            {0, 0, 0, 0}, "state::stopped speed:n:1000 error:n:0 error_pos::1:5000");
        row("stop after the end", {attach, "play", "!ended", "stop"}, {0, 0, 0, 0}, "state::stopped speed:n:1000");
        row("detach after the end", {attach, "play", "!ended", "input_detach"}, {0, 0, 0, 0},
            "state::idle speed:n:1000");
        row("a late end", {attach, "play", "stop", "!ended"}, {0, 0, 0, 0}, "state::stopped speed:n:1000");
        row("seeks",
            {attach, "seek position::1:5", "seek position::7", "seek position::0:5", "seek position::2:5", "seek"},
            {0, 0, 0, 2, 2, 2}, "state::stopped speed:n:1000");
        row("inputs that are none",
            {"input_attach url::/a type::film", "input_attach url::/a", "input_attach url::audio:default type::track"},
            {2, 2, 3}, "");
        row("outputs",
            {"output_attach url::audio:default type::audio", "output_attach url::audio:default type::audio",
             "output_attach url::x type::smell", "output_detach output:n:0", "output_detach output:n:1",
             "output_detach output:n:1", "output_detach output:n:2", "output_detach"},
            {0, 0, 2, 0, 0, 0, 2, 2}, "");
        row("output parameters",
            {"output_attach url::audio:default type::audio", "output_parameters output:n:0 dat::volume::50",
             "output_parameters output:n:0 dat::volume::101", "output_parameters output:n:0 dat::loud::1",
             "output_parameters output:n:-1 dat::volume::50", "output_parameters output:n:9 dat::volume::50"},
            {0, 0, 2, 2, 2, 2}, "");
        row("context parameters",
            {"context_parameters dat::updateinterval::20", "context_parameters dat::updateinterval::19"}, {0, 2}, "");
        row("track parameters",
            {"track_parameters track:n:1", "track_parameters track:n:9", attach,
             "track_parameters track:n:1 dat::subpicture_index::1", "track_parameters track:n:2",
             "track_parameters track:n:0", "track_parameters track:n:-1", "track_parameters"},
            {0, 0, 0, 0, 2, 0, 2, 2}, "state::stopped speed:n:1000");
    }

    void steps() { trySteps(); }

    void parameters_areEchoed_exactly()
    {
        Stage stage;
        const auto input = stage.watch("input");
        const auto track = stage.watch("p1");
        QCOMPARE(stage.step("input_parameters"), 0);
        COMPARE_TEXT(readNow(*input), "");
        QCOMPARE(stage.step("input_parameters dat:c:repeat::all\\naudio_type::007\\n"), 0);
        QCOMPARE(attributes(readNow(*input)), QByteArray("audio_type::007 repeat::all"));
        QCOMPARE(stage.step("input_parameters dat:c:audio_type::007\\nrepeat::all\\n"), 0);
        COMPARE_TEXT(readNow(*input), "");
        QCOMPARE(stage.step("input_parameters dat::repeat::loudly"), 2);
        QCOMPARE(stage.step("input_parameters dat::repeat::track"), 0);
        QCOMPARE(attributes(readNow(*input)), QByteArray("repeat::track -audio_type"));

        QCOMPARE(stage.step("track_parameters track:n:0 dat::subpicture_index::2"), 0);
        COMPARE_TEXT(readNow(*track), "");
        QCOMPARE(stage.step(Attach), 0);
        QCOMPARE(stage.step("input_detach"), 0);
        QCOMPARE(attributes(stage.content("input")), QByteArray("repeat::track"));
    }

    void nothingIsShown_beforeTheFirstChange()
    {
        Stage stage;
        const auto all = stage.watch(".all");
        for (const char *command :
             {"stop", "input_detach", "output_attach url::audio:default type::audio",
              "context_parameters dat::updateinterval::50", "track_parameters track:n:0", "play"}) {
            stage.step(command);
        }
        COMPARE_TEXT(readNow(*all), "");
    }

    void reset_isReadBeforeTheNextMedium()
    {
        Stage stage;
        stage.step(Attach);
        stage.step("play");
        stage.step("!status position:n:4000 bufferlevel:n:100 bufferstatus::playing");
        const auto all = stage.watch(".all");
        readNow(*all);

        stage.step("input_detach");
        stage.step("input_attach url::/b.ogg type::autolist");
        stage.step("play");
        stage.step("!status position:n:4000 bufferlevel:n:100 bufferstatus::playing");
        const std::string first = readNow(*all);
        for (const char *line : {"md_title_duration:n:0", "md_title_seekable:b:false", "total:n:0", "position:n:0",
                                 "volume::0/100", "bufferstatus::idle", "state::playing"}) {
            QVERIFY2(first.find(line) != std::string::npos, first.c_str());
        }
        const std::string second = readNow(*all);
        for (const char *line :
             {"md_title_duration:n:5000", "md_title_seekable:b:true", "current:n:1", "total:n:1", "position:n:4000"}) {
            QVERIFY2(second.find(line) != std::string::npos, second.c_str());
        }
        QVERIFY2(second.find("@state") == std::string::npos, second.c_str());
        COMPARE_TEXT(readNow(*all), "");
    }

    void currentTrack_isAlwaysShown()
    {
        const QByteArray unknown =
            "md_title_duration:n:0 md_title_seekable:b:false md_video_width:n:0 md_video_height:n:0";
        Stage stage;
        stage.engines.total = 9;
        QCOMPARE(stage.step(Attach), 0);
        stage.step("!queue current:n:7 total:n:9");
        QCOMPARE(attributes(stage.content("q7")), unknown);
        // Without an engine nobody can tell of the other track.
        stage.step("!die");
        QCOMPARE(stage.step("seek position::2:5"), 0);
        QCOMPARE(attributes(stage.content("q2")), unknown);
        QCOMPARE(attributes(stage.content("q7")), QByteArray());
    }

    void mediumThatNobodyHears_isShown()
    {
        Stage stage;
        QCOMPARE(stage.step(Attach), 0);
        stage.step("!silent");
        QCOMPARE(attributes(stage.content("audio")), QByteArray("silent:b:true"));
        QCOMPARE(stage.step(Attach), 0);
        QCOMPARE(attributes(stage.content("audio")), QByteArray("silent:b:false"));
    }

    void window_needsTheApplicationsSession()
    {
        constexpr int Unavailable = 12;
        const std::string window = "output_attach url::screen:?winid=7 type::video";
        const std::string session = window + " display:::1 xauthority::/a";
        Stage stage;
        QCOMPARE(stage.step(window), Unavailable);
        QCOMPARE(stage.step(session), 0);
        stage.engines.takeLog();
        QCOMPARE(stage.step(Attach), 0);
        const std::string open = stage.engines.takeLog().front();
        QVERIFY2(open.find(" video::7 ") != std::string::npos && open.ends_with(" display:::1 xauthority::/a"),
                 open.c_str());
        // One that plays already finds out itself; the output is as if it had never been.
        stage.engines.answers["set"] = {ErrorCode::OutputUnavailable, "no"};
        QCOMPARE(stage.step(session), Unavailable);
        QCOMPARE(stage.step("output_parameters output:n:1 dat::video_src_x::1"), 2);
        stage.engines.answers["set"] = {ErrorCode::Internal, "the worker died"};
        QCOMPARE(stage.step(session), 0);
    }

    void speedChange_doesNotWriteTheErrorAgain()
    {
        Stage stage;
        stage.step(Attach);
        stage.step("play");
        const auto errors = stage.watch("state?delta,f=error");
        readNow(*errors);
        stage.step("!ended");
        QCOMPARE(attributes(readNow(*errors)), QByteArray("state::stopped speed:n:1000 error:n:0 error_pos::1:0"));
        stage.step("speed_set speed:n:2000");
        QCOMPARE(attributes(stage.content("state")),
                 QByteArray("state::stopped speed:n:2000 error:n:0 error_pos::1:0"));
        COMPARE_TEXT(readNow(*errors), "");
        stage.step("play");
        COMPARE_TEXT(readNow(*errors), "");
    }

    void commands_areAnsweredInTheirOrder()
    {
        Stage stage;
        stage.engines.held = "open";
        stage.write(Attach);
        stage.write("play");
        stage.write("seek position::5");
        stage.run([&](Broker &) { QVERIFY(stage.engines.isHolding()); });
        QCOMPARE(toList(stage.takeLog()).size(), 1);
        stage.run([&](Broker &) {
            stage.engines.tell("queue current:n:1 total:n:1");
            stage.engines.release();
        });
        for (const char *command : {"input_attach", "play", "seek"}) {
            const auto answer = stage.answer();
            QCOMPARE(QByteArray::fromStdString(answer.text("res")), QByteArray(command));
            QCOMPARE(answer.number("err", -1), 0);
        }
    }

    void hostileMessages_areRefused_data()
    {
        const Rows<QByteArray> row("command");
        row("unknown command", "explode");
        row("empty command", "");
        row("long URL", QByteArray("input_attach type::autolist url::/") + QByteArray(9000, 'x'));
        row("parameters that are no lines", "input_parameters dat::nonsense");
        row("parameters with an object line", "input_parameters dat:c:@x\\nrepeat::all");
        row("huge output", "output_detach output:n:4294967296");
        row("huge track", "track_parameters track:n:4294967297 dat::subpicture_index::1");
        row("huge speed", "speed_set speed:n:-9223372036854775808");
        row("no number", "speed_set speed::fast");
    }

    void hostileMessages_areRefused()
    {
        QFETCH(QByteArray, command);
        Stage stage;
        QCOMPARE(stage.step(Attach), 0);
        const std::string state = stage.content("state");
        QVERIFY(stage.step(command.toStdString()) > 0);
        QCOMPARE(stage.content("state"), state);
        QCOMPARE(stage.step("play"), 0);
    }

    void destruction_duringCommand_isSafe()
    {
        Stage stage;
        stage.engines.held = "open";
        stage.write(Attach);
        stage.run([&](Broker &) { QVERIFY(stage.engines.isHolding()); });
    }

    void whatIsTooMuch_isRefused_andTheRestGoesOn()
    {
        Stage stage;
        const std::string url(40'000, 'x');
        int track = 0;
        int result = 0;
        while (result == 0 && track < 100) {
            result = stage.step("track_parameters track:n:" + std::to_string(++track) + " dat:c:subpicture_url::" + url
                                + "\\n");
        }
        QCOMPARE(result, static_cast<int>(ErrorCode::InvalidParameter));
        QVERIFY(track > 4 && track < 8);
        QVERIFY(stage.content('p' + std::to_string(track)).empty());
        stage.run([&](Broker &) { stage.engines.areTaken = true; });
        QCOMPARE(stage.step(Attach), static_cast<int>(ErrorCode::ResourceUnavailable));
        stage.run([&](Broker &) { stage.engines.areTaken = false; });
        while (--track > 0) {
            QCOMPARE(stage.step("track_parameters track:n:" + std::to_string(track) + " dat::"), 0);
        }
        QCOMPARE(stage.step(Attach), 0);
    }
};

QTEST_GUILESS_MAIN(tst_Context)
#include "tst_context.moc"
