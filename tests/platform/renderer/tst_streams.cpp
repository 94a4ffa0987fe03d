#include "Application.h"
#include "HttpServer.h"
#include "RealMedia.h"

#include <QtTest/QtTest>

#include <Daemon.h>
#include <renderer/common/Error.h>
#include <Rows.h>

using voro::renderer::ErrorCode;

namespace {

constexpr int TitleInterval = 4096;
/** Enough to begin with, too little for all. */
constexpr qsizetype Begun = 2'500'000;

/** A title as it stands between the sound of an internet radio. */
QByteArray titleBlock(const QByteArray &title)
{
    const QByteArray text = "StreamTitle='" + title + "';";
    const qsizetype units = (text.size() + 15) / 16;
    return QByteArray(1, static_cast<char>(units)) + text.leftJustified(units * 16, '\0');
}

} // namespace

/** Media that come by HTTP from servers of every kind. */
class tst_Streams : public QObject,
                    media::Folder {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        const auto encodeTone = [this](const char *name, const char *seconds, const QStringList &arguments = {}) {
            encode(name, QStringLiteral("sine=frequency=500:sample_rate=44100:duration=%1").arg(QLatin1String(seconds)),
                   arguments);
        };
        for (const char *name : {"a.wav", "a.ogg", "a.opus", "a.mp3", "a.flac", "a.mka", "a.m4a"}) {
            encodeTone(name, "4");
        }
        encodeTone("early.m4a", "4", {"-movflags", "faststart"});
        for (const char *name : {"long.wav", "long.mp3", "long.flac", "long.mka"}) {
            encodeTone(name, "40");
        }
        // Too large to be received whole before it plays.
        encodeTone("long.ogg", "40", {"-q:a", "10"});
        encodeTone("long.m4a", "40", {"-movflags", "faststart"});
        encodeTone("one.wav", "0.1");
        encodeTone("two.wav", "0.2");
        encodeTone("index.m3u8", "8", {"-c:a", "aac", "-f", "hls", "-hls_time", "2", "-hls_list_size", "0"});
    }

    void stream_isPlayedWhole_data()
    {
        const Rows<QByteArray, QByteArray> row("kind", "name");
        for (const char *kind : {"ranges", "whole", "endless"}) {
            for (const char *name : {"a.wav", "a.ogg", "a.mp3", "a.flac", "a.mka", "a.m4a", "early.m4a"}) {
                QTest::addRow("%s, %s", kind, name) << QByteArray(kind) << QByteArray(name);
            }
        }
        row("moved", "moved", "a.ogg");
    }

    void stream_isPlayedWhole()
    {
        QFETCH(const QByteArray, kind);
        QFETCH(const QByteArray, name);
        // A decoder that cannot look ahead plays the last packet as a whole.
        constexpr qsizetype Packet = 1200;
        // What the encoder put before and behind the sound is known of files only.
        const qsizetype added = name.endsWith(".mp3") ? 1105 + 1152 : 0;
        const qsizetype heard = play(m_server.url('/' + kind + '/' + name));
        QVERIFY2(std::abs(heard - play(file(name))) < Packet + added, QByteArray::number(heard).constData());
    }

    void stream_isSoughtInLikeAFile_data()
    {
        // What a server sends only once is received whole before, if it is small.
        Rows<QByteArray>("path").each(
            {"/ranges/a.wav", "/ranges/a.ogg", "/ranges/a.opus", "/whole/a.ogg", "/whole/a.opus"});
    }

    void stream_isSoughtInLikeAFile()
    {
        QFETCH(const QByteArray, path);
        const Application application;
        QCOMPARE(application.attach(m_server.url(path)), 0);
        const auto duration = application.content("q1").number("md_title_duration");
        QVERIFY2(std::abs(duration - 4000) < 120, std::to_string(duration).c_str());
        QCOMPARE(application.content("q1").text("md_title_seekable"), std::string("true"));
        const qsizetype heard = play(m_server.url(path), "autolist", "1:2000");
        QVERIFY2(std::abs(heard - 2 * 44'100) < 100, QByteArray::number(heard).constData());
    }

    void seekInWhatTheServerSendsOnce_isDoneOrRefused_data()
    {
        // The rows have the files' names as titles.
        const Rows<ErrorCode, ErrorCode> row("back", "onward");
        row("long.wav", ErrorCode::None, ErrorCode::UnsupportedOperation);
        // Their times are found by reading on.
        row("long.mp3", ErrorCode::None, ErrorCode::None);
        row("long.flac", ErrorCode::None, ErrorCode::None);
        for (const char *name : {"long.ogg", "long.mka", "long.m4a"}) {
            row(name, ErrorCode::UnsupportedOperation, ErrorCode::UnsupportedOperation);
        }
    }

    /** What was received can be sought in, where the format allows it; where not, it plays on. */
    void seekInWhatTheServerSendsOnce_isDoneOrRefused()
    {
        QFETCH(const ErrorCode, back);
        QFETCH(const ErrorCode, onward);
        constexpr qint64 BytesPerSecond = 44'100 * sizeof(float);
        const QString heard = QString::fromUtf8(file("heard.raw"));
        QFile::remove(heard);
        const Application application;
        QVERIFY(application.attachAudio() >= 0);
        QCOMPARE(application.setContext("updateinterval", "20"), 0);
        QCOMPARE(application.attach(m_server.url(QByteArray("/half/") + QTest::currentDataTag())), 0);
        const auto status = application.watch("status?wait");
        const auto state = application.watch("state?wait");
        QCOMPARE(mmr_play(application.context()), 0);
        // The sink takes all that has come at once, so the position would wait for the rest before it gets anywhere.
        while (QFileInfo(heard).size() < 2 * BytesPerSecond) {
            readMessage(*status);
        }
        QCOMPARE(application.code(mmr_seek(application.context(), "1:39000")), static_cast<int>(onward));
        QCOMPARE(application.code(mmr_seek(application.context(), "1:1000")), static_cast<int>(back));
        m_gate.release();
        QCOMPARE(waitForEnd(*state).number("error", -1), 0);
    }

    void segments_arePlayedAndSoughtIn()
    {
        const QByteArray url = m_server.url("/whole/index.m3u8");
        const Application application;
        QCOMPARE(application.attach(url), 0);
        QVERIFY(std::abs(application.content("q1").number("md_title_duration") - 8000) < 200);
        QCOMPARE(application.content("q1").text("md_title_seekable"), std::string("true"));
        QVERIFY(std::abs(play(url) - 8 * 44'100) < 4'096);
        // A seek goes to a segment, not to a sample.
        const qsizetype heard = play(url, "autolist", "1:5000");
        QVERIFY2(heard >= 3 * 44'100 && heard < 5 * 44'100, QByteArray::number(heard).constData());
    }

    void playlist_isPlayedWhole_data()
    {
        const Rows<QByteArray, double> row("path", "seconds");
        row("m3u", "/lists/list.m3u", 0.3);
        row("pls", "/lists/pls/list.pls", 0.3);
        row("query", "/lists/list.m3u?station=5", 0.3);
        row("without an extension", "/lists/listen", 0.3);
        row("pls without an extension", "/lists/pls", 0.3);
    }

    void playlist_isPlayedWhole()
    {
        QFETCH(const QByteArray, path);
        QFETCH(const double, seconds);
        const Application application;
        QCOMPARE(application.attach(m_server.url(path)), static_cast<int>(ErrorCode::Internal));
        QCOMPARE(play(m_server.url(path), "playlist"), static_cast<qsizetype>(seconds * 44100 + 0.5));
    }

    void listFromNet_opensNothingLocal_data()
    {
        const Rows<QByteArray, QByteArray, ErrorCode> row("name", "type", "code");
        row("list of lines", "list.m3u", "playlist", ErrorCode::Permission);
        row("list of elements", "list.xspf", "playlist", ErrorCode::Permission);
        row("segment", "hls-segment.m3u8", "autolist", ErrorCode::UnsupportedMediaType);
        row("index", "hls-index.m3u8", "autolist", ErrorCode::SourceUnavailable);
    }

    void listFromNet_opensNothingLocal()
    {
        QFETCH(const QByteArray, name);
        QFETCH(const QByteArray, type);
        QFETCH(const ErrorCode, code);
        const Application application;
        QCOMPARE(application.attach(m_server.url("/local/" + name), type.constData()), static_cast<int>(code));
        const QByteArray cause = mmr_error_info(application.context())->extra_text;
        QVERIFY2(code != ErrorCode::Permission || cause.contains("from the net"), cause.constData());
    }

    void failingServer_isTold_data()
    {
        const Rows<QByteArray, ErrorCode> row("path", "code");
        row("nothing there", "/404/a.ogg", ErrorCode::SourceUnavailable);
        row("forbidden", "/403/a.ogg", ErrorCode::Permission);
        row("secret", "/401/a.ogg", ErrorCode::Permission);
        row("server fails", "/500/a.ogg", ErrorCode::SourceUnavailable);
        row("page", "/page/a.ogg", ErrorCode::UnsupportedMediaType);
        row("connection is reset", "/rude/a.ogg", ErrorCode::SourceUnavailable);
        row("no answer", "/silent/a.ogg", ErrorCode::SourceUnavailable);
        row("begins and stalls", "/mute/a.ogg", ErrorCode::SourceUnavailable);
        row("stalls before its known end", "/stuck/a.ogg", ErrorCode::SourceUnavailable);
        row("nobody listens, rtsp", "rtsp://127.0.0.1:1/a", ErrorCode::SourceUnavailable);
        row("playlist, nothing there", "/404/a.m3u", ErrorCode::SourceUnavailable);
    }

    void failingServer_isTold()
    {
        QFETCH(const QByteArray, path);
        QFETCH(const ErrorCode, code);
        const Application application;
        QElapsedTimer timer;
        timer.start();
        const QByteArray url = path.startsWith('/') ? m_server.url(path) : path;
        QCOMPARE(application.attach(url, path.endsWith(".m3u") ? "playlist" : "autolist"), static_cast<int>(code));
        QVERIFY2(timer.elapsed() < 20'000, QByteArray::number(timer.elapsed()).constData());
        QVERIFY(!application.content("state").has("state"));
    }

    void radio_tellsItsTitles()
    {
        const Application application;
        QVERIFY(application.attachAudio() >= 0);
        QCOMPARE(application.attach(m_server.url("/radio/")), 0);
        const auto track = application.watch("q1?wait");
        const auto state = application.watch("state?wait");
        QCOMPARE(mmr_play(application.context()), 0);
        for (const char *title : {"Title 1", "Title 2", "Title 3"}) {
            while (readMessage(*track).text("md_title_name") != title) {
            }
        }
        QCOMPARE(application.content("q1").text("md_title_seekable"), std::string("false"));
    }

    void stalledServer_showsBuffering()
    {
        const Application application;
        QVERIFY(application.attachAudio() >= 0);
        QCOMPARE(application.attach(m_server.url("/parts/long.wav")), 0);
        const auto status = application.watch("status?wait");
        const auto waitFor = [&status](const char *bufferStatus) {
            while (readMessage(*status).text("bufferstatus") != bufferStatus) {
            }
        };
        const auto state = application.watch("state?wait");
        QCOMPARE(mmr_play(application.context()), 0);
        waitFor("playing");
        waitFor("buffering");
        QVERIFY(!application.content("state").has("error"));
        m_gate.release();
        waitFor("playing");
        QCOMPARE(waitForEnd(*state).number("error", -1), 0);
        QCOMPARE(samplesOf(file("heard.raw")).size(), 40 * 44100);
    }

    void brokenConnection_isTaken_data()
    {
        const Rows<QByteArray, ErrorCode> row("kind", "code");
        row("reset, goes on elsewhere", "parts-ranges-reset", ErrorCode::None);
        row("closed, goes on elsewhere", "parts-ranges-close", ErrorCode::None);
        row("reset", "parts-reset", ErrorCode::Read);
        row("closed", "parts-close", ErrorCode::Read);
        row("stalls", "parts-stall", ErrorCode::Read);
        row("stalls, goes on elsewhere", "parts-ranges-stall", ErrorCode::None);
    }

    void brokenConnection_isTaken()
    {
        QFETCH(const QByteArray, kind);
        QFETCH(const ErrorCode, code);
        const Application application;
        QVERIFY(application.attachAudio() >= 0);
        QCOMPARE(application.attach(m_server.url('/' + kind + "/long.wav")), 0);
        const auto state = application.watch("state?wait");
        QCOMPARE(mmr_play(application.context()), 0);
        m_gate.release(kind.contains("stall") ? 0 : 1);
        QCOMPARE(waitForEnd(*state).number("error", -1), static_cast<int>(code));
        if (code == ErrorCode::None) {
            QCOMPARE(samplesOf(file("heard.raw")).size(), 40 * 44100);
        }
    }

private:
    /** Plays a medium to the end, from a position on; how many samples came out, 44100 of them a second. */
    qsizetype play(const QByteArray &url, const char *type = "autolist", const char *position = "0")
    {
        const Application application("another");
        const bool isReady = application.attachAudio() >= 0 && application.attach(url, type) == 0
                             && mmr_seek(application.context(), position) == 0;
        return isReady && application.playToEnd() == 0 ? samplesOf(file("heard.raw")).size() : -1;
    }

    /** The first part of the path says how the second one is served. */
    void serve(HttpExchange &exchange)
    {
        const QByteArray kind = exchange.path().split('/').value(1);
        const QByteArray name = exchange.path().mid(kind.size() + 2);
        const QByteArray medium = content(name);
        if (kind == "ranges" && !medium.isEmpty()) {
            exchange.sendRange(medium);
        } else if (kind == "whole" && !medium.isEmpty()) {
            exchange.sendHead("200 OK", "Content-Length: " + QByteArray::number(medium.size()) + "\r\n")
                && exchange.send(medium);
        } else if (kind == "endless" && !medium.isEmpty()) {
            exchange.sendHead("200 OK") && exchange.send(medium);
        } else if (kind == "moved") {
            exchange.sendHead("302 Found", "Location: /ranges/" + name + "\r\nContent-Length: 0\r\n");
        } else if (kind == "lists") {
            exchange.sendHead("200 OK", "Content-Type: audio/x-mpegurl\r\n")
                && exchange.send(name.startsWith("pls") ? "[playlist]\nFile1=/ranges/one.wav\nFile2="
                                                              + m_server.url("/whole/two.wav") + "\nNumberOfEntries=2\n"
                                                        : QByteArray("#EXTM3U\n../ranges/one.wav\n/whole/two.wav\n"));
        } else if (kind == "local") {
            exchange.sendHead("200 OK") && exchange.send(localList(name));
        } else if (kind == "page") {
            exchange.sendHead("200 OK", "Content-Type: text/html\r\n")
                && exchange.send("<!DOCTYPE html><html><body>" + QByteArray("<p>Not here.</p>").repeated(500)
                                 + "</body>");
        } else if (kind == "half") {
            // The rest comes when the test wants it.
            exchange.sendHead("200 OK", "Content-Length: " + QByteArray::number(medium.size()) + "\r\n");
            exchange.send(medium.first(medium.size() / 2));
            m_gate.acquire();
            exchange.send(medium.mid(medium.size() / 2));
        } else if (kind == "silent") {
            exchange.stall();
        } else if (kind == "mute") {
            exchange.sendHead("200 OK", "Content-Type: audio/ogg\r\n") && exchange.send(content("a.ogg").left(100));
            exchange.stall();
        } else if (kind == "stuck") {
            exchange.sendHead("200 OK", "Content-Length: " + QByteArray::number(medium.size()) + "\r\n");
            exchange.send(medium.first(medium.size() / 2));
            exchange.stall();
        } else if (kind == "rude") {
            exchange.reset();
        } else if (kind == "radio") {
            serveRadio(exchange);
        } else if (kind.startsWith("parts")) {
            serveInParts(exchange, medium);
        } else if (kind.toInt() > 0) {
            exchange.sendHead(kind + " No", "Content-Length: 0\r\n");
        } else {
            exchange.sendHead("404 Not Found", "Content-Length: 0\r\n");
        }
    }

    /** A list of the format that the name says, with a file of this machine in it. */
    QByteArray localList(const QByteArray &name) const
    {
        const QByteArray url = "file://" + file(name.startsWith("hls") ? "index0.ts" : "a.wav");
        if (name == "list.m3u") {
            return "#EXTM3U\n" + url + '\n';
        }
        if (name == "list.xspf") {
            return "<?xml version=\"1.0\"?><playlist version=\"1\" "
                   "xmlns=\"http://xspf.org/ns/0/\"><trackList><track><location>"
                   + url + "</location></track></trackList></playlist>";
        }
        if (name == "hls-index.m3u8") {
            return "#EXTM3U\n#EXT-X-STREAM-INF:BANDWIDTH=100000\nfile://" + file("index.m3u8") + '\n';
        }
        return "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:3\n#EXTINF:2.0,\n" + url + "\n#EXT-X-ENDLIST\n";
    }

    void serveRadio(HttpExchange &exchange)
    {
        const bool wantsTitles = exchange.field("icy-metadata") == "1";
        const QByteArray sound = content("a.mp3").repeated(20);
        exchange.sendHead("200 OK", "Content-Type: audio/mpeg\r\nicy-name: Radio Test\r\n"
                                        + (wantsTitles ? "icy-metaint: " + QByteArray::number(TitleInterval) + "\r\n"
                                                       : QByteArray()));
        int title = 0;
        for (qsizetype start = 0; start < sound.size(); start += TitleInterval) {
            exchange.send(sound.mid(start, TitleInterval));
            if (wantsTitles && start + TitleInterval <= sound.size()) {
                // A new title every fifty parts; an empty one says that nothing changed.
                const bool isNew = start / TitleInterval % 50 == 0;
                exchange.send(isNew ? titleBlock("Title " + QByteArray::number(++title)) : QByteArray(1, '\0'));
            }
        }
    }

    /** Sends the beginning; what happens then is in the name. */
    void serveInParts(HttpExchange &exchange, const QByteArray &medium)
    {
        const QByteArray kind = exchange.path().split('/').value(1);
        const bool sendsParts = kind.contains("ranges");
        if (!exchange.field("range").isEmpty()) {
            // The second try.
            if (sendsParts) {
                exchange.sendRange(medium);
            } else {
                exchange.sendHead("200 OK") && exchange.send(medium);
            }
            return;
        }
        const QByteArray ranges = sendsParts ? "Accept-Ranges: bytes\r\n" : "";
        exchange.sendHead("200 OK", ranges + "Content-Length: " + QByteArray::number(medium.size()) + "\r\n");
        exchange.send(medium.left(Begun));
        if (kind.contains("stall")) {
            exchange.stall();
        } else if (kind.contains("reset")) {
            m_gate.acquire();
            exchange.reset();
        } else if (kind.contains("close")) {
            m_gate.acquire();
        } else {
            m_gate.acquire();
            exchange.send(medium.mid(Begun));
        }
    }

    const int m_sink = qputenv("VORO_AUDIO_SINK", fileSink(file("heard.raw")));
    /** What a server waits for before it goes on. */
    QSemaphore m_gate;
    Daemon m_daemon;
    HttpServer m_server{[this](HttpExchange &exchange) { serve(exchange); }};
};

QTEST_GUILESS_MAIN(tst_Streams)
#include "tst_streams.moc"
