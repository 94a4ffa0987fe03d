#include "FakeEngines.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <BrokerThread.h>
#include <Files.h>
#include <renderer/service/Context.h>
#include <Rows.h>

#include <optional>

using namespace voro::renderer;
using voro::pps::Broker;
using voro::pps::BrokerThread;
using voro::pps::Connection;
using voro::pps::readNow;

namespace {

constexpr const char *Folder = "/pps/services/multimedia/renderer/context/c";
constexpr const char *Attach = "input_attach url::/a.ogg type::autolist";

std::string path(const std::string &object)
{
    return std::string(Folder) + '/' + object;
}

/** One context in the broker's thread, with engines that the test plays, and the test as its application. */
class Stage {
public:
    explicit Stage(int parkingDelay = Context::ParkingDelay)
    {
        run([&](Broker &broker) {
            m_context.emplace(broker, engines, Folder, voro::pps::Accounts::Services, parkingDelay);
        });
        m_control = m_thread.open(path("control"), voro::pps::PublishSubscribe);
    }
    ~Stage()
    {
        run([this](Broker &) { m_context.reset(); });
    }

    void run(const std::function<void(Broker &)> &function) { m_thread.run(function); }

    /** Writes a command: "NAME ATTRIBUTE…". */
    void write(const std::string &command)
    {
        std::string text = "msg::" + command + '\n';
        std::replace(text.begin(), text.end(), ' ', '\n');
        if (!m_control->write(text + "id:n:" + std::to_string(++m_lastId))) {
            qFatal("cannot write");
        }
    }
    /** Waits for the next answer. */
    voro::pps::Message answer()
    {
        voro::pps::Message message;
        std::string text;
        if (!m_control->read(text, true) || !message.parse(text)) {
            qFatal("no answer");
        }
        return message;
    }
    /** Does one step and returns how it went: a command and its error code; "!EVENT" of the engine; "!die". */
    int step(const std::string &text)
    {
        if (text == "!die") {
            run([this](Broker &) { engines.die(); });
        } else if (text.starts_with('!')) {
            run([&](Broker &) { engines.tell(text.substr(1)); });
        } else {
            write(text);
            return static_cast<int>(answer().number("err", -1));
        }
        return 0;
    }
    void park()
    {
        run([this](Broker &) { m_context->park(); });
    }
    std::string content(const std::string &object)
    {
        std::string text;
        run([&](Broker &broker) { text = broker.content(path(object)); });
        return text;
    }
    std::vector<std::string> takeLog()
    {
        std::vector<std::string> log;
        run([&](Broker &) { log = engines.takeLog(); });
        return log;
    }
    std::unique_ptr<Connection> watch(const std::string &object)
    {
        return m_thread.open(path(object), voro::pps::Subscribe);
    }

    FakeEngines engines;

private:
    BrokerThread m_thread;
    std::optional<Context> m_context;
    std::unique_ptr<Connection> m_control;
    int m_lastId = 0;
};

/** "a:n:1 b::x" for the attributes of an object's text. */
QByteArray attributes(const std::string &text)
{
    QByteArrayList lines = QByteArray::fromStdString(text).split('\n');
    lines.removeIf([](const QByteArray &line) { return line.isEmpty() || line.contains('@'); });
    return lines.join(' ');
}

QByteArrayList toList(const std::vector<std::string> &log)
{
    QByteArrayList list;
    for (const std::string &entry : log) {
        list << QByteArray::fromStdString(entry);
    }
    return list;
}

} // namespace

/** A context's commands, what it asks of its engine, and what it shows. */
class tst_Context : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void steps_data();
    void steps();
    void recordingSteps_data();
    void recordingSteps() { steps(); }
    void recordingFile_isLeftAlone_untilItStarts();
    void recordingFile_isOneRecorders();
    void engineIsAsked_data();
    void engineIsAsked();
    void engineReaches_whatItNeeds_data();
    void engineReaches_whatItNeeds();
    void listThatLeadsToTheNetwork_isOpenedByAnotherEngine();
    void windowThatIsRefused_leavesThePlaybackAlone();
    void rest_isNoticed();
    void contextThatRests_givesItsEngineBack_data();
    void contextThatRests_givesItsEngineBack();
    void journal_isToldToEveryEngine();
    void parameters_areEchoed_exactly();
    void nothingIsShown_beforeTheFirstChange();
    void reset_isReadBeforeTheNextMedium();
    void currentTrack_isAlwaysShown();
    void films_areExpected_whereTheyAreSeen();
    void window_needsTheApplicationsSession();
    void speedChange_doesNotWriteTheErrorAgain();
    void commands_areAnsweredInTheirOrder();
    void whatIsTooMuch_isRefused_andTheRestGoesOn();
    void deathDuringCommand_failsIt_data();
    void deathDuringCommand_failsIt();
    void tenDeaths_giveTheMediumUp();
    void hostileMessages_areRefused_data();
    void hostileMessages_areRefused();
    void destruction_duringCommand_isSafe();

private:
    /** The command that makes a file of the test's folder the output. */
    QString output(const char *name) const
    {
        return QLatin1String("output_attach type::file url::") + m_folder.filePath(QString::fromUtf8(name));
    }

    QTemporaryDir m_folder;
};

void tst_Context::initTestCase()
{
    QVERIFY(QDir(m_folder.path()).mkdir(QStringLiteral("folder.wav")));
    QVERIFY(QFile::link(QStringLiteral("/dev/null"), m_folder.filePath(QStringLiteral("null.wav"))));
}

void tst_Context::steps_data()
{
    const Rows<QStringList, QList<int>, QByteArray> row("commands", "codes", "state");
    const QString attach = QLatin1String(Attach);
    row("without an input", {"play", "seek position::5", "speed_set speed:n:500", "stop", "input_detach"},
        {3, 3, 3, 0, 0}, "");
    row("attach", {attach}, {0}, "state::stopped speed:n:1000");
    row("attach, detach", {attach, "input_detach"}, {0, 0}, "state::idle speed:n:1000");
    row("attach twice", {attach, attach}, {0, 0}, "state::stopped speed:n:1000");
    row("play", {attach, "play"}, {0, 0}, "state::playing speed:n:1000");
    row("play twice", {attach, "play", "play"}, {0, 0, 0}, "state::playing speed:n:1000");
    row("stop twice", {attach, "play", "stop", "stop"}, {0, 0, 0, 0}, "state::stopped speed:n:1000");
    row("hold", {attach, "play", "speed_set speed:n:0"}, {0, 0, 0}, "state::playing speed:n:0");
    row("play held", {attach, "speed_set speed:n:0", "play"}, {0, 0, 0}, "state::playing speed:n:0");
    row("speed while stopped", {attach, "speed_set speed:n:-2000"}, {0, 0}, "state::stopped speed:n:-2000");
    row("speeds out of range",
        {attach, "speed_set speed:n:249", "speed_set speed:n:-4001", "speed_set speed:n:4000", "speed_set"},
        {0, 4, 4, 0, 4}, "state::stopped speed:n:4000");
    row("the end", {attach, "play", "!status position:n:5000 bufferlevel::100/100 bufferstatus::playing", "!ended"},
        {0, 0, 0, 0}, "state::stopped speed:n:1000 error:n:0 error_pos::1:5000");
    row("a failure", {attach, "play", "!failed err:n:11 position:n:700 track:n:1"}, {0, 0, 0},
        "state::stopped speed:n:1000 error:n:11 error_pos::1:700");
    row("a crash", {attach, "play", "!status position:n:1200", "!die"}, {0, 0, 0, 0},
        "state::stopped speed:n:1000 error:n:1 error_pos::1:1200");
    row("play after the end", {attach, "play", "!ended", "play"}, {0, 0, 0, 0}, "state::playing speed:n:1000");
    row("stop after the end", {attach, "play", "!ended", "stop"}, {0, 0, 0, 0}, "state::stopped speed:n:1000");
    row("detach after the end", {attach, "play", "!ended", "input_detach"}, {0, 0, 0, 0}, "state::idle speed:n:1000");
    row("a late end", {attach, "play", "stop", "!ended"}, {0, 0, 0, 0}, "state::stopped speed:n:1000");
    row("seeks", {attach, "seek position::1:5", "seek position::7", "seek position::0:5", "seek position::2:5", "seek"},
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

void tst_Context::steps()
{
    QFETCH(QStringList, commands);
    QFETCH(QList<int>, codes);
    QFETCH(QByteArray, state);
    Stage stage;
    QList<int> results;
    for (const QString &command : commands) {
        results << stage.step(command.toStdString());
    }
    QCOMPARE(results, codes);
    QCOMPARE(attributes(stage.content("state")), state);
}

void tst_Context::recordingSteps_data()
{
    const Rows<QStringList, QList<int>, QByteArray> row("commands", "codes", "state");
    const QString file = output("a.wav");
    const QString source = QStringLiteral("input_attach url::audio:default type::track");
    const char *const ready = "state::stopped speed:n:1000 error:n:0 error_pos::1:0";
    row("prepared", {file, source}, {0, 0}, ready);
    row("prepared, stopped", {file, source, "stop"}, {0, 0, 0}, ready);
    row("reset", {file, source, "stop", "input_detach", "output_detach output:n:0"}, {0, 0, 0, 0, 0},
        "state::idle speed:n:1000");
    row("reset and prepared", {file, source, "input_detach", "output_detach output:n:0", file, source},
        {0, 0, 0, 0, 0, 0}, ready);
    row("recording", {file, source, "play", "play"}, {0, 0, 0, 0}, "state::playing speed:n:1000");
    row("paused", {file, source, "play", "speed_set speed:n:0"}, {0, 0, 0, 0}, "state::playing speed:n:0");
    row("speeds", {file, source, "speed_set speed:n:2000", "speed_set speed:n:-1000", "speed_set speed:n:0"},
        {0, 0, 4, 4, 0}, "state::stopped speed:n:0 error:n:0 error_pos::1:0");
    row("complete", {file, source, "play", "!status position:n:900", "stop"}, {0, 0, 0, 0, 0},
        "state::stopped speed:n:1000 error:n:0 error_pos::1:900");
    row("complete, play", {file, source, "play", "stop", "play"}, {0, 0, 0, 0, 3}, ready);
    row("complete, another file, play", {file, source, "play", "stop", output("b.wav"), "play"}, {0, 0, 0, 0, 0, 0},
        "state::playing speed:n:1000");
    row("another file while recording", {file, source, "play", output("b.wav")}, {0, 0, 0, 0}, ready);
    row("the file goes while recording", {file, source, "play", "output_detach output:n:0", "play"}, {0, 0, 0, 0, 3},
        ready);
    row("a failure", {file, source, "play", "!failed err:n:9 position:n:700 track:n:1"}, {0, 0, 0, 0},
        "state::stopped speed:n:1000 error:n:9 error_pos::1:700");
    row("a crash, play", {file, source, "play", "!status position:n:700", "!die", "play"}, {0, 0, 0, 0, 0, 3},
        "state::stopped speed:n:1000 error:n:1 error_pos::1:700");
    row("a crash while prepared, play", {file, source, "!die", "play"}, {0, 0, 0, 0}, "state::playing speed:n:1000");
    row("a crash, prepared again", {file, source, "play", "!die", "input_detach", output("a.wav"), source, "play"},
        {0, 0, 0, 0, 0, 0, 0, 0}, "state::playing speed:n:1000");
    row("inputs",
        {file, "input_attach url::audio:other type::track", "input_attach url::audio:default?nchan=3 type::track",
         "input_attach url::audio:default?x=1 type::track", "input_attach url::/a.ogg type::autolist",
         "input_attach url::audio:default?nchan=2 type::track"},
        {0, 10, 4, 2, 7, 0}, ready);
    row("files",
        {output("a.txt"), output("a"), output(".wav"), output("no/a.wav"), output("folder.wav"), output("null.wav"),
         output("a.wav/b.wav"), "output_attach url::a.wav type::file", "output_attach url::http://x/a.wav type::file",
         output("A.OPUS"), "output_parameters output:n:0 dat::volume::50"},
        {5, 5, 5, 12, 12, 12, 12, 12, 12, 0, 2}, "");
}

// What can be seen of a file that a recorder has: an existing one stays, and a new one does not appear, until the
// engine records.
void tst_Context::recordingFile_isLeftAlone_untilItStarts()
{
    const QString path = writeFile(m_folder.filePath(QStringLiteral("kept.wav")), "kept");
    Stage stage;
    for (const char *name : {"kept.wav", "new.wav"}) {
        QCOMPARE(stage.step(output(name).toStdString()), 0);
        QCOMPARE(stage.step("input_attach url::audio:default?nchan=1 type::track"), 0);
        stage.run([&](Broker &) { stage.engines.answers["play"] = {ErrorCode::SourceUnavailable, "no source"}; });
        QCOMPARE(stage.step("play"), static_cast<int>(ErrorCode::SourceUnavailable));
        stage.run([&](Broker &) { stage.engines.answers.clear(); });
    }
    QVERIFY(!QFile::exists(m_folder.filePath(QStringLiteral("new.wav"))));
    QCOMPARE(readFile(path), QByteArray("kept"));
    const QByteArrayList log = toList(stage.takeLog());
    QVERIFY2(log.first().contains("type::track speed:n:1000 channels:n:1 format::wav recording_role::"), log.first());
    QCOMPARE(log.mid(1, 2), (QByteArrayList{"file", "play"}));

    QVERIFY(!stage.engines.isCompleting());
    QCOMPARE(stage.step("play"), 0);
    QVERIFY(stage.engines.isCompleting());
    QVERIFY(QFile::exists(m_folder.filePath(QStringLiteral("new.wav"))));
    QCOMPARE(stage.step("stop"), 0);
    QVERIFY(!stage.engines.isCompleting());
}

void tst_Context::recordingFile_isOneRecorders()
{
    const QString path = writeFile(m_folder.filePath(QStringLiteral("one.wav")), {});
    QVERIFY(QFile::link(path, m_folder.filePath(QStringLiteral("link.wav"))));
    Stage first;
    QCOMPARE(first.step(output("one.wav").toStdString()), 0);
    // The same file again is the same recorder's.
    QCOMPARE(first.step(output("one.wav").toStdString()), 0);
    {
        Stage second;
        for (const char *name : {"one.wav", "folder.wav/../one.wav", "link.wav"}) {
            QCOMPARE(second.step(output(name).toStdString()), static_cast<int>(ErrorCode::ResourceUnavailable));
        }
    }
    // Who gets no input keeps the file from nobody, and gets it again with an input when nobody else has it.
    const char *const attach = "input_attach url::audio:default type::track";
    first.run([&](Broker &) { first.engines.answers["open"] = {ErrorCode::SourceUnavailable, "no source"}; });
    QCOMPARE(first.step(attach), static_cast<int>(ErrorCode::SourceUnavailable));
    first.run([&](Broker &) { first.engines.answers.clear(); });
    {
        Stage second;
        QCOMPARE(second.step(output("one.wav").toStdString()), 0);
        QCOMPARE(first.step(attach), static_cast<int>(ErrorCode::ResourceUnavailable));
    }
    QCOMPARE(first.step(attach), 0);
    Stage second;
    QCOMPARE(second.step(output("one.wav").toStdString()), static_cast<int>(ErrorCode::ResourceUnavailable));
    QCOMPARE(first.step("output_detach output:n:1"), 0);
    QCOMPARE(second.step(output("one.wav").toStdString()), 0);
}

void tst_Context::engineIsAsked_data()
{
    const Rows<QStringList, QByteArrayList> add("commands", "asked");
    const QString attach = QLatin1String(Attach);
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
         "open url::/b.ogg type::playlist speed:n:1000 interval:n:1000 maxduration:n:0 audio:b:false volume:n:100 "
         "eq_preset:: autopause:: role:: repeat::"});
    row("crash, seek, play", {"play", "!status position:n:900", "!die", "seek position::1:2500", "play"},
        {"play", "end",
         "open url::/a.ogg type::autolist speed:n:1000 track:n:1 position:n:2500 "
         "interval:n:1000 maxduration:n:0 audio:b:false volume:n:100 eq_preset:: autopause:: role:: repeat::",
         "play"});
    row("crash, detach", {"!die", "input_detach"}, {"end"});
}

void tst_Context::engineIsAsked()
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

void tst_Context::engineReaches_whatItNeeds_data()
{
    const Rows<QStringList, bool, bool> row("commands", "network", "windows");
    const QString attach = QLatin1String(Attach);
    const QString window = QStringLiteral("output_attach url::screen:?winid=5 type::video display:::0");
    const QString screenFarAway = QStringLiteral("output_attach url::screen:?winid=5 type::video display::far:0");
    row("a file", {attach}, false, false);
    row("a stream", {"input_attach url::http://x/a.ogg type::autolist"}, true, false);
    row("a recording", {output("reach.wav"), "input_attach url::audio:default type::track"}, false, false);
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

void tst_Context::engineReaches_whatItNeeds()
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

void tst_Context::listThatLeadsToTheNetwork_isOpenedByAnotherEngine()
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

void tst_Context::rest_isNoticed()
{
    Stage stage(1);
    QCOMPARE(stage.step(Attach), 0);
    std::vector<std::string> log;
    const auto isGivenBack = [&] {
        const std::vector<std::string> more = stage.takeLog();
        log.insert(log.end(), more.begin(), more.end());
        return !log.empty() && log.back() == "end";
    };
    QTRY_VERIFY(isGivenBack());
}

void tst_Context::windowThatIsRefused_leavesThePlaybackAlone()
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

void tst_Context::contextThatRests_givesItsEngineBack_data()
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
    row("stopped on the second track",
        {attach, "!queue current:n:2 total:n:2", "!track track:n:2 md_title_seekable:b:true", "play", "stop"}, true,
        "play", {"open on 2", "play"});
    row("ended", {attach, "play", "!ended"}, true, "play", {"open", "play"});
    row("ended, then stopped on the first track",
        {attach, "!queue current:n:2 total:n:2", "!track track:n:2 md_title_seekable:b:true", "play", "!ended", "stop"},
        true, "play", {"open", "play"});
    row("stopped, to be sought in another track", {attach, "!queue current:n:1 total:n:2", "play", "stop"}, true,
        "seek position::2:1200", {"open at 1200 on 2"});
    row("paused with captions that are shown",
        {"output_attach url::screen:?winid=item type::subpicture", attach, "play", pause}, false);
    row("failed", {attach, "play", "!failed err:n:11 position:n:700 track:n:1"}, false);
    row("prepared, to be sought", {attach, "!status position:n:0 bufferlevel::100/100 bufferstatus::idle"}, true,
        "seek position::1:3", {});
    row("paused, to go on", paused, true, "speed_set speed:n:1000", {"open at 1200", "play", "speed"});
    row("paused, to be sought", paused, true, "seek position::1:3", {"open at 1200", "play", "seek"});
    row("paused, to be stopped", paused, true, "stop", {"open at 1200", "play", "stop"});
    row("playing", {attach, "play"}, false);
    row("a paused film", {picture, attach, film, "play", pause}, false);
    row("a paused film that nobody sees", {attach, film, "play", pause}, true);
    row("a stopped film", {picture, attach, film, "play", "stop"}, true);
    row("radio", {attach, radio, "play", pause}, false);
    row("a recorder", {output("parked.wav"), "input_attach url::audio:default type::track"}, false);
}

void tst_Context::contextThatRests_givesItsEngineBack()
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
                   + (entry.contains("track:n:2") ? " on 2" : "");
    }
    QCOMPARE(log.first(asked.size()), asked);
    const std::string full = "bufferlevel::100/100";
    QVERIFY(before.find(full) == before.npos || stage.content("status").find(full) != before.npos);
}

void tst_Context::journal_isToldToEveryEngine()
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
    const QByteArray settings = "eq_preset::jazz autopause:: role:: repeat::all";
    const QByteArray open = "open url::/a.ogg type::autolist ";
    QCOMPARE(toList(stage.takeLog()),
             (QByteArrayList{open + "speed:n:1000 interval:n:250 maxduration:n:0 audio:b:true volume:n:50 " + settings,
                             "speed speed:n:500",
                             "set interval:n:250 maxduration:n:0 audio:b:true volume:n:70 " + settings, "play"}));

    stage.step("!status position:n:3333");
    stage.step("!die");
    QCOMPARE(stage.engines.started(), 1);
    QCOMPARE(stage.step("play"), 0);
    QCOMPARE(toList(stage.takeLog()),
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

void tst_Context::parameters_areEchoed_exactly()
{
    Stage stage;
    const auto input = stage.watch("input");
    const auto track = stage.watch("p1");
    QCOMPARE(stage.step("input_parameters"), 0);
    QCOMPARE(QByteArray::fromStdString(readNow(*input)), QByteArray());
    QCOMPARE(stage.step("input_parameters dat:c:repeat::all\\naudio_type::007\\n"), 0);
    QCOMPARE(attributes(readNow(*input)), QByteArray("audio_type::007 repeat::all"));
    QCOMPARE(stage.step("input_parameters dat:c:audio_type::007\\nrepeat::all\\n"), 0);
    QCOMPARE(QByteArray::fromStdString(readNow(*input)), QByteArray());
    QCOMPARE(stage.step("input_parameters dat::repeat::loudly"), 2);
    QCOMPARE(stage.step("input_parameters dat::repeat::track"), 0);
    QCOMPARE(attributes(readNow(*input)), QByteArray("repeat::track -audio_type"));

    QCOMPARE(stage.step("track_parameters track:n:0 dat::subpicture_index::2"), 0);
    QCOMPARE(QByteArray::fromStdString(readNow(*track)), QByteArray());
    QCOMPARE(stage.step(Attach), 0);
    QCOMPARE(stage.step("input_detach"), 0);
    QCOMPARE(attributes(stage.content("input")), QByteArray("repeat::track"));
}

void tst_Context::nothingIsShown_beforeTheFirstChange()
{
    Stage stage;
    const auto all = stage.watch(".all");
    for (const char *command : {"stop", "input_detach", "output_attach url::audio:default type::audio",
                                "context_parameters dat::updateinterval::50", "track_parameters track:n:0", "play"}) {
        stage.step(command);
    }
    QCOMPARE(QByteArray::fromStdString(readNow(*all)), QByteArray());
}

void tst_Context::reset_isReadBeforeTheNextMedium()
{
    Stage stage;
    stage.step(Attach);
    stage.step("play");
    stage.step("!status position:n:4000 bufferlevel::100/100 bufferstatus::playing");
    const auto all = stage.watch(".all");
    readNow(*all);

    stage.step("input_detach");
    stage.step("input_attach url::/b.ogg type::autolist");
    stage.step("play");
    stage.step("!status position:n:4000 bufferlevel::100/100 bufferstatus::playing");
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
    QCOMPARE(QByteArray::fromStdString(readNow(*all)), QByteArray());
}

void tst_Context::currentTrack_isAlwaysShown()
{
    const QByteArray unknown = "md_title_duration:n:0 md_title_seekable:b:false md_video_width:n:0 md_video_height:n:0";
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

void tst_Context::films_areExpected_whereTheyAreSeen()
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

void tst_Context::window_needsTheApplicationsSession()
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
    QVERIFY2(open.find(" video::7 display:::1 xauthority::/a") != std::string::npos, open.c_str());
    // One that plays already finds out itself; the output is as if it had never been.
    stage.engines.answers["set"] = {ErrorCode::OutputUnavailable, "no"};
    QCOMPARE(stage.step(session), Unavailable);
    QCOMPARE(stage.step("output_parameters output:n:1 dat::video_src_x::1"), 2);
    stage.engines.answers["set"] = {ErrorCode::Internal, "the worker died"};
    QCOMPARE(stage.step(session), 0);
}

void tst_Context::speedChange_doesNotWriteTheErrorAgain()
{
    Stage stage;
    stage.step(Attach);
    stage.step("play");
    const auto errors = stage.watch("state?delta,f=error");
    readNow(*errors);
    stage.step("!ended");
    QCOMPARE(attributes(readNow(*errors)), QByteArray("state::stopped speed:n:1000 error:n:0 error_pos::1:0"));
    stage.step("speed_set speed:n:2000");
    QCOMPARE(attributes(stage.content("state")), QByteArray("state::stopped speed:n:2000 error:n:0 error_pos::1:0"));
    QCOMPARE(QByteArray::fromStdString(readNow(*errors)), QByteArray());
    stage.step("play");
    QCOMPARE(QByteArray::fromStdString(readNow(*errors)), QByteArray());
}

void tst_Context::commands_areAnsweredInTheirOrder()
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

void tst_Context::deathDuringCommand_failsIt_data()
{
    const Rows<QStringList, QString, QString, int, QByteArray> row("before", "command", "held", "code", "state");
    const QString attach = QLatin1String(Attach);
    row("attach", {}, attach, "open", 1, {});
    row("seek", {attach, "play"}, "seek position::9", "seek", 1,
        "state::stopped speed:n:1000 error:n:1 error_pos::1:0");
    row("detach", {attach, "play"}, "input_detach", "close", 0, "state::idle speed:n:1000");
}

void tst_Context::deathDuringCommand_failsIt()
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

void tst_Context::tenDeaths_giveTheMediumUp()
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

void tst_Context::hostileMessages_areRefused_data()
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

void tst_Context::hostileMessages_areRefused()
{
    QFETCH(QByteArray, command);
    Stage stage;
    QCOMPARE(stage.step(Attach), 0);
    const std::string state = stage.content("state");
    QVERIFY(stage.step(command.toStdString()) > 0);
    QCOMPARE(stage.content("state"), state);
    QCOMPARE(stage.step("play"), 0);
}

void tst_Context::destruction_duringCommand_isSafe()
{
    Stage stage;
    stage.engines.held = "open";
    stage.write(Attach);
    stage.run([&](Broker &) { QVERIFY(stage.engines.isHolding()); });
}

void tst_Context::whatIsTooMuch_isRefused_andTheRestGoesOn()
{
    Stage stage;
    const std::string url(40'000, 'x');
    int track = 0;
    int result = 0;
    while (result == 0 && track < 100) {
        result =
            stage.step("track_parameters track:n:" + std::to_string(++track) + " dat:c:subpicture_url::" + url + "\\n");
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

QTEST_GUILESS_MAIN(tst_Context)
#include "tst_context.moc"
