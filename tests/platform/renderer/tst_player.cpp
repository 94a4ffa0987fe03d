#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <Files.h>
#include <pps/Text.h>
#include <renderer/worker/player/Player.h>
#include <Rows.h>

#include <map>

using namespace voro::renderer;

namespace {

std::string nameOf(const std::string &uri)
{
    return uri.substr(uri.rfind('/') + 1);
}

/** A playback that plays nothing: it writes down what it is asked for, and reports what the test says. */
class FakePlayback : public Playback {
public:
    explicit FakePlayback(std::string &log) : m_log(log) {}

    /** What it knows of its medium. */
    int64_t time = 0;
    int64_t length = 5000;
    bool allowsSeeks = true;
    bool isFar = false;

    const Events &events() const { return m_events; }

    void connectSound() override {}
    void setVolume(long) override {}
    void setPreset(Preset) override {}
    bool isFarAhead() const override { return isFar; }
    void setSource(const Rectangle &) override {}
    bool load(const Piece &piece) override
    {
        m_log += " load:" + nameOf(piece.medium.uri()) + (piece.outputs.isAudible ? "" : ":silent")
                 + (piece.isChanging ? ":soon" : "");
        time = 0;
        m_speed = NormalSpeed;
        m_hasBegun = false;
        m_succession.setUnknown();
        return true;
    }
    void loadAhead(const Piece &piece) override { m_log += " ahead:" + nameOf(piece.medium.uri()); }
    void run() override
    {
        m_log += " run";
        m_hasBegun = true;
    }
    void hold() override { m_log += " hold"; }
    void unload() override { m_succession.release(); }
    bool hasBegun() const override { return m_hasBegun; }
    void selectCaptions(const CaptionChoice &) override {}
    Succession &succession() override { return m_succession; }
    bool seek(int64_t target, Speed speed) override
    {
        if (allowsSeeks) {
            m_log += " seek:" + std::to_string(target)
                     + (speed == NormalSpeed ? "" : "x" + std::to_string(speed.thousandths));
            time = target;
            m_speed = speed;
            m_succession.release();
        }
        return allowsSeeks;
    }
    Speed speed() const override { return m_speed; }
    int64_t position() const override { return time; }
    int64_t duration() const override { return length; }
    bool isCommonFile() const override { return true; }
    bool isSeekable() const override { return true; }
    int sampleRate() const override { return 44100; }
    Dimensions dimensions() const override { return {}; }
    CaptionInfo captions() const override { return {}; }
    std::string device() const override { return {}; }
    bool isSilent() const override { return false; }

private:
    std::string &m_log;
    Succession m_succession;
    bool m_hasBegun = false;
    Speed m_speed;
};

/** A probe that finds out what the test says. */
class FakeProbe : public Probe {
public:
    explicit FakeProbe(std::string &log) : m_log(log) {}

    void start(const Medium &medium, Probed found) override
    {
        m_log += " probe:" + nameOf(medium.uri());
        done = std::move(found);
    }
    void cancel() override { done = nullptr; }

    Probed done;

private:
    std::string &m_log;
};

/** A player with a list of media, of which those with a dash are missing. */
class Stage {
public:
    explicit Stage(const QByteArray &media)
    {
        for (const QByteArray &medium : media.split(' ')) {
            if (!medium.startsWith('-') && !QFile::exists(m_folder.filePath(QString::fromUtf8(medium)))) {
                write(medium, "x");
            }
        }
        write("list.m3u", QByteArray(media).replace(' ', '\n'));
        change([](Settings &settings) { settings.interval = 1'000'000; });
    }

    /** Does one step. Returns what it asked of the playback and the probe, what it reported, and its answer. */
    QByteArray step(const QByteArray &text)
    {
        const QByteArrayList words = text.trimmed().split(' ');
        const int first = words.value(1).toInt();
        const int second = words.value(2).toInt();
        const Playback::Events &events = m_playback.events();
        const std::map<QByteArray, std::function<void()>> actions{
            {"list", [&] { open("list.m3u", true); }},
            {"medium", [&] { open("a", false); }},
            {"asList", [&] { open("a", true); }},
            {"onlyAsList", [&] { open("a", true, false); }},
            {"play", [&] { answer(m_player.play()); }},
            {"stop", [&] { m_player.stop(); }},
            {"speed", [&] { answer(m_player.setSpeed({first})); }},
            {"seek", [&] { answer(m_player.seek(static_cast<unsigned>(first), second)); }},
            {"silent", [&] { change([](Settings &settings) { settings.isAudible = false; }); }},
            {"audible", [&] { change([](Settings &settings) { settings.isAudible = true; }); }},
            {"autopause", [&] { change([](Settings &settings) { settings.pausesWithDevice = true; }); }},
            {"repeat", [&] { change([&](Settings &settings) { settings.repeat = repeatMode(words.value(1)); }); }},
            {"volume", [&] { change([&](Settings &settings) { settings.volume = first; }); }},
            {"far", [&] { m_playback.isFar = true; }},
            {"at", [&] { m_playback.time = first; }},
            {"noSeeks", [&] { m_playback.allowsSeeks = false; }},
            {"decoded", [&] { events.decoded(); }},
            {"ended", [&] { m_playback.time = m_playback.length, events.ended(); }},
            {"failed",
             [&] {
                 events.failed({.result = {ErrorCode(first), "bad"}});
             }},
            {"buffering", [&] { events.buffering(first); }},
            {"probed", [&] { probed(ErrorCode(first)); }},
            {"take", [&] { m_log += " next:" + nameOf(m_playback.succession().take()); }},
            {"advanced", [&] { m_playback.succession().advance(), events.advanced(); }},
        };
        m_log.clear();
        actions.at(words.first())();
        return QByteArray::fromStdString(m_log).trimmed();
    }

private:
    void write(const QByteArray &name, const QByteArray &content) const
    {
        writeFile(m_folder.filePath(QString::fromUtf8(name)), content);
    }
    static RepeatMode repeatMode(const QByteArray &name) { return parseName<RepeatMode>(name.toStdString()).value(); }
    void change(const std::function<void(Settings &)> &set)
    {
        set(m_settings);
        Outputs outputs;
        outputs.isAudible = m_settings.isAudible;
        m_player.apply(m_settings, outputs);
    }
    /** Until it is answered, or loads something. */
    void open(const char *name, bool isPlaylist, bool isTrackNext = true)
    {
        requests::Open request;
        request.medium = Medium(m_folder.filePath(QString::fromLatin1(name)).toStdString());
        request.type = isPlaylist ? InputType::Playlist : InputType::AutoList;
        request.isTrackNext = isTrackNext;
        m_player.open(request, [this](const Result &result) { answer(result); });
        while (m_log.empty()) {
            g_main_context_iteration(nullptr, TRUE);
        }
    }
    void probed(ErrorCode code)
    {
        TrackInfo info;
        info.sampleRate = 44100;
        std::exchange(m_probe.done, nullptr)({code, {}}, std::move(info));
    }
    void answer(const Result &result)
    {
        m_log += result ? " ok" : " error:" + std::to_string(static_cast<int>(result.code));
    }
    void report(const std::string &text)
    {
        voro::pps::Message event;
        event.parse(text);
        m_log += " " + event.text("msg");
        for (const char *value : {"current", "total", "track", "position", "bufferstatus", "speed", "err"}) {
            m_log += event.has(value) ? ":" + event.text(value) : std::string();
        }
    }

    QTemporaryDir m_folder;
    std::string m_log;
    FakePlayback m_playback{m_log};
    FakeProbe m_probe{m_log};
    Settings m_settings;
    Player m_player{m_playback, m_probe, [this](const Event &event) { report(toText(event)); }};
};

} // namespace

/** The state machine of a queue, with a playback and a probe that the test plays. */
class tst_Player : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        // No element is made; the names of all the plugins would outgrow a table, which GLib then leaves behind.
        qputenv("GST_REGISTRY_DISABLE", "yes");
        gst_init(nullptr, nullptr);
    }

    void steps_data()
    {
        const Rows<QByteArray, QByteArray> row("media", "steps");
        row("a medium to its end, and again", "a", R"(
        medium -> load:a
        decoded -> track:1 queue:1:1 status:0:idle ok
        play -> run status:0:playing ok
        play -> ok
        ended -> status:5000:idle ended:1:5000
        play -> load:a ok
        decoded -> queue:1:1 status:0:playing run status:0:playing
        stop -> status:0:idle
        play -> load:a ok)");
        row("a volume that would be heard late", "a b", R"(
        list, decoded, play
        volume 50 ->
        far
        at 1500
        volume 50 ->
        volume 30 -> load:a:soon
        decoded -> queue:1:2 status:1500:playing seek:1500 probe:b run status:1500:playing
        ended -> load:b:soon)");
        row("a list without a gap", "a b", R"(
        list -> load:a
        decoded -> track:1 track:2 queue:1:2 status:0:idle probe:b ok
        play -> probe:b run status:0:playing ok
        probed -> track:2
        take -> next:b
        advanced -> queue:2:2 status:0:playing
        take -> next:
        ended -> status:5000:idle ended:2:5000
        play -> load:a ok)");
        row("missing tracks are passed over", "-x a -y b -z", R"(
        list -> load:a
        decoded -> track:2 track:1 track:3 track:4 queue:2:5 status:0:idle probe:b ok
        play, probed
        ended -> load:b
        decoded -> track:4 track:5 queue:4:5 status:0:playing run status:0:playing
        ended -> status:5000:idle ended:4:5000)");
        row("a next track that does not play is passed over", "a b c", R"(
        list, decoded, play
        probed 5 -> probe:c
        probed -> track:3
        take -> next:c)");
        row("nothing in a list", "#EXTM3U", "list -> error:11");
        row("a list that leads to itself", "list.m3u", "list -> error:11");
        row("only missing tracks", QByteArray("-x ").repeated(10'000).chopped(1), "list -> error:10");
        row("tracks that do not open", "a b", R"(
        list -> load:a
        failed 5 -> load:b
        failed 11 -> error:11
        play -> error:3)");
        row("a track breaks while it plays", "a b", R"(
        list, decoded, play, at 700
        failed 11 -> load:b
        decoded -> track:2 queue:2:2 status:0:playing run status:0:playing
        failed 11 -> status:0:idle failed:2:0:11)");
        row("the only medium breaks while it plays", "a", R"(
        medium, decoded, play, at 700
        failed 11 -> status:700:idle failed:1:700:11
        play -> load:a ok)");
        row("the output is gone, with automatic pause", "a", R"(
        autopause, medium, decoded, play, at 700
        failed 12 -> load:a speed:0
        decoded -> queue:1:1 status:700:playing seek:700 status:700:playing
        speed 1000 -> run status:700:playing ok)");
        row("a track is repeated", "a", R"(
        repeat track, medium, decoded, play
        take -> next:a
        advanced -> queue:1:1 status:0:playing
        ended -> seek:0 status:0:playing
        repeat none, take
        ended -> status:5000:idle ended:1:5000)");
        row("a list is repeated", "a b", R"(
        repeat all, list, decoded, play, probed, take
        advanced -> queue:2:2 status:0:playing probe:a
        probed -> track:1
        take -> next:a
        repeat none -> load:b
        decoded -> track:2 queue:2:2 status:0:playing run status:0:playing
        ended -> status:5000:idle ended:2:5000)");
        row("another track", "a -x c", R"(
        list -> load:a
        seek 3 3000 -> load:c track:3 track:1 track:2 queue:3:3 status:3000:idle ok
        decoded -> track:3 queue:3:3 status:3000:idle ok
        play -> seek:3000 run status:3000:playing ok
        seek 4 0 -> error:2
        seek 1 100 -> load:a queue:1:3 status:100:idle ok
        decoded -> track:1 queue:1:3 status:100:playing seek:100 probe:c run status:100:playing
        ended -> load:c
        decoded -> queue:3:3 status:0:playing run status:0:playing
        ended -> status:5000:idle ended:3:5000)");
        row("backward over a track that does not play", "a b c", R"(
        list, seek 3 0
        seek 2 0 -> load:b queue:2:3 status:0:idle ok
        failed 5 -> load:a)");
        row("a seek while it is stopped", "a b", R"(
        list, decoded, play, stop
        seek 2 400 -> track:2 queue:2:2 status:400:idle ok
        play -> load:b ok
        decoded -> queue:2:2 status:400:playing seek:400 run status:400:playing)");
        row("a seek beyond the end", "a", R"(
        medium, decoded
        seek 1 9000 -> status:5000:idle ok
        play -> seek:5000 run status:5000:playing ok
        noSeeks
        seek 1 10 -> error:7)");
        row("a seek when the next track is taken", "a b", R"(
        list, decoded, play, probed, take
        seek 1 300 -> load:a status:300:idle ok
        decoded -> queue:1:2 status:300:playing seek:300 probe:b run status:300:playing)");
        row("hold and go on", "a", R"(
        medium, decoded, speed 0
        play -> status:0:playing ok
        speed 1000 -> run status:0:playing ok
        at 300
        speed 0 -> hold status:300:playing ok
        speed 1000 -> run status:300:playing ok
        speed 2000 -> seek:300x2000 run status:300:playing ok)");
        row("another speed when the next track is taken", "a b", R"(
        list, decoded, play, probed, take, at 4900
        speed 2000 -> load:a ok
        decoded -> queue:1:2 status:4900:playing seek:4900x2000 run status:4900:playing)");
        row("a speed that the medium refuses", "a", R"(
        medium, decoded, noSeeks, speed 2000
        play -> error:7
        speed 1000 -> ok
        play -> run status:0:playing ok)");
        row("backward to the beginning", "a", R"(
        medium, decoded, seek 1 300, speed -1000
        play -> seek:300x-1000 run status:300:playing ok
        ended -> hold seek:0 status:0:playing speed:0 hold status:0:playing
        speed -2000 -> status:0:playing speed:0 hold status:0:playing ok
        speed 1000 -> run status:0:playing ok)");
        row("the buffer runs empty", "a", R"(
        medium, decoded, play
        buffering 40 -> hold status:0:buffering
        buffering 60 -> status:0:buffering
        buffering 100 -> run status:0:playing)");
        row("another output", "a", R"(
        medium, decoded
        silent -> load:a:silent
        decoded -> queue:1:1 status:0:idle
        play, at 800
        audible -> load:a
        decoded -> queue:1:1 status:800:playing seek:800 run status:800:playing)");
        row("a list longer than a queue", QByteArray("a ").repeated(12'000).chopped(1), R"(
        list -> load:a
        decoded -> track:1 track:2 track:3 queue:1:10000 status:0:idle probe:a ok
        seek 5000 0 -> load:a track:5000 track:4998 track:4999 track:5001 track:5002 queue:5000:10000 status:0:idle ok
        seek 1 0 -> load:a track:1 track:2 track:3 queue:1:10000 status:0:idle ok)");
        row("asked for as a list first", "a", R"(
        onlyAsList -> error:1
        asList -> error:1 ahead:a
        medium -> load:a)");
    }

    void steps()
    {
        QFETCH(const QByteArray, media);
        QFETCH(const QByteArray, steps);
        Stage stage(media);
        for (const QByteArray &line : steps.trimmed().split('\n')) {
            const qsizetype arrow = line.indexOf(" -> ");
            for (const QByteArray &step : line.first(arrow < 0 ? line.size() : arrow).split(',')) {
                const QByteArray outcome = stage.step(step);
                QVERIFY2(arrow < 0 || outcome == line.mid(arrow + 4), step + " -> " + outcome);
            }
        }
    }
};

QTEST_GUILESS_MAIN(tst_Player)
#include "tst_player.moc"
