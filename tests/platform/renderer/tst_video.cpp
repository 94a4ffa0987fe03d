#include "Application.h"
#include "RealMedia.h"

#include <QtTest/QtTest>

#include <Daemon.h>
#include <Rows.h>
#include <XServer.h>

namespace {

constexpr int Width = 320;
constexpr int Height = 240;

bool isRed(quint32 rgb)
{
    return (rgb >> 16 & 255) > 200 && (rgb >> 8 & 255) < 60 && (rgb & 255) < 60;
}

bool isBlue(quint32 rgb)
{
    return (rgb >> 16 & 255) < 60 && (rgb >> 8 & 255) < 60 && (rgb & 255) > 200;
}

bool isWhite(quint32 rgb)
{
    return (rgb >> 16 & 255) > 150 && (rgb >> 8 & 255) > 150 && (rgb & 255) > 150;
}

QByteArray screen(quint32 window)
{
    return "screen:?winid=" + QByteArray::number(window)
           + "&wingrp=&mmf.VideoWriterDisplayIndex=0&nodstviewport=1&initflags=invisible";
}

} // namespace

/** Pictures and captions in windows: the daemon, its workers and an X server. */
class tst_Video : public QObject,
                  media::Folder {
    Q_OBJECT
private Q_SLOTS:
    // Left red, right blue; the captions are white.
    void initTestCase()
    {
        write("c.srt", "1\n00:00:00,200 --> 00:00:20,000\nWIDE WHITE WORDS\n");
        write("c.vtt", "WEBVTT\n\n00:00:00.200 --> 00:00:20.000\nWIDE WHITE WORDS\n");
        write(
            "c.ass",
            "[Script Info]\nScriptType: v4.00+\n\n[V4+ Styles]\nFormat: Name, Fontname, Fontsize, PrimaryColour\n"
            "Style: Default,Sans,24,&H00FFFFFF\n\n[Events]\nFormat: Layer, Start, End, Style, Name, MarginL, MarginR, "
            "MarginV, Effect, Text\nDialogue: 0,0:00:00.20,0:00:20.00,Default,,0,0,0,,{\\b1}WIDE WHITE, "
            "WORDS{\\b0}\\Nmore\n");
        const QString graph = QStringLiteral("color=c=red:s=160x240:r=25:d=20[l];color=c=blue:s=160x240:r=25:d=20[r];"
                                             "[l][r]hstack[out0];sine=frequency=440:duration=20[out1]");
        const QStringList vp8 = {"-map", "0", "-c:v", "libvpx", "-b:v", "300k", "-deadline", "realtime"};
        encode("v.webm", graph, vp8 + QStringList{"-c:a", "libvorbis"});
        encode("captions.mkv", graph,
               QStringList{"-i", QString::fromUtf8(file("c.srt")), "-i", QString::fromUtf8(file("c.ass")), "-map", "1",
                           "-map", "2"}
                   + vp8
                   + QStringList{"-c:a", "libvorbis", "-c:s:0", "srt", "-c:s:1", "ass", "-metadata", "title=The film",
                                 "-metadata:s:a:0", "title=Stereo", "-metadata:s:s:0", "language=ger",
                                 "-metadata:s:s:1", "title=For the deaf"});
        encode("mute.webm", QStringLiteral("color=c=red:s=160x240:r=25:d=1"), {"-c:v", "libvpx"});
        encode("wide.mp4", QStringLiteral("color=c=red:s=160x240:r=25:d=1,setsar=2/1"), {});
    }

    void picture_isDrawn_andCut()
    {
        const quint32 window = m_screen.makeWindow(0, 0, Width, Height);
        const Application application;
        const int video = mmr_output_attach(application.context(), screen(window).constData(), "video");
        QVERIFY(video >= 0);
        QCOMPARE(application.attach(file("v.webm")), 0);
        QCOMPARE(mmr_play(application.context()), 0);
        QTRY_VERIFY(m_screen.count(window, 10, 10, 140, 220, isRed) == 140 * 220);
        QVERIFY(m_screen.count(window, 170, 10, 140, 220, isBlue) == 140 * 220);
        // In files that the daemon made and counts.
        QVERIFY(m_screen.maps().contains("memfd:voro"));

        QCOMPARE(application.setOutput(video, "video_src_x", "160"), 0);
        QCOMPARE(application.setOutput(video, "video_src_w", "160"), 0);
        QCOMPARE(application.setOutput(video, "video_src_h", "120"), 0);
        QTRY_VERIFY(m_screen.count(window, 10, 10, 300, 220, isBlue) == 300 * 220);
        m_screen.destroyWindow(window);
    }

    void windowGone_isNoError()
    {
        const quint32 window = m_screen.makeWindow(0, 0, Width, Height);
        const Application application;
        QCOMPARE(application.setContext("updateinterval", "20"), 0);
        QVERIFY(mmr_output_attach(application.context(), screen(window).constData(), "video") >= 0);
        QCOMPARE(application.attach(file("v.webm")), 0);
        QCOMPARE(mmr_play(application.context()), 0);
        QTRY_VERIFY(count(window, isRed) > 1000);
        const auto status = application.watch("status?wait");
        m_screen.destroyWindow(window);
        const auto before = application.content("status").number("position");
        while (readMessage(*status).number("position") < before + 500) {
        }
        QVERIFY(!application.content("state").has("error"));
    }

    void withoutWindow_playsWhatItCan_data()
    {
        const Rows<QByteArray> row("url");
        row("no output", {});
        row("no window", "screen:?winid=&wingrp=");
        row("no such window", "screen:?winid=4242424242&wingrp=");
    }

    void withoutWindow_playsWhatItCan()
    {
        QFETCH(const QByteArray, url);
        const Application application;
        QVERIFY(url.isEmpty() || mmr_output_attach(application.context(), url.constData(), "video") >= 0);
        QCOMPARE(application.attach(file("mute.webm")), 0);
        QCOMPARE(application.playToEnd(), 0);
        QCOMPARE(application.content("status").number("position"), 1000);
    }

    void withoutXServer_outputIsUnavailable()
    {
        const QByteArray there = qgetenv("DISPLAY");
        const auto restore = qScopeGuard([&there] { qputenv("DISPLAY", there); });
        const Application application;
        const auto attachWindow = [&application] {
            return application.code(mmr_output_attach(application.context(), screen(7).constData(), "video"));
        };
        qunsetenv("DISPLAY");
        QCOMPARE(attachWindow(), 12);
        qputenv("DISPLAY", ":4711");
        QCOMPARE(attachWindow(), 0);
        QCOMPARE(application.attach(file("v.webm")), 12);
        qputenv("DISPLAY", there);
        QCOMPARE(attachWindow(), 0);
        QCOMPARE(application.attach(file("v.webm")), 0);
        qputenv("DISPLAY", ":4711");
        QCOMPARE(attachWindow(), 12);
    }

    void captions_areShown_data()
    {
        const Rows<QByteArray, QByteArray, QByteArray, bool> add("medium", "captions", "index", "hasOwnWindow");
        for (const bool hasOwnWindow : {false, true}) {
            const auto row = [&](const char *name, const char *medium, const char *captions, const char *index) {
                QTest::addRow("%s%s", name, hasOwnWindow ? ", own window" : "")
                    << QByteArray(medium) << QByteArray(captions) << QByteArray(index) << hasOwnWindow;
            };
            row("srt", "v.webm", "c.srt", "0");
            row("vtt", "v.webm", "c.vtt", "0");
            row("ass", "v.webm", "c.ass", "0");
            row("embedded srt", "captions.mkv", "", "0");
            row("embedded ass", "captions.mkv", "", "1");
        }
    }

    void captions_areShown()
    {
        QFETCH(const QByteArray, medium);
        QFETCH(const QByteArray, captions);
        QFETCH(const QByteArray, index);
        QFETCH(const bool, hasOwnWindow);
        const quint32 window = m_screen.makeWindow(0, 0, Width, Height);
        const quint32 other = hasOwnWindow ? m_screen.makeWindow(400, 0, Width, Height) : window;
        const Application application;
        QVERIFY(mmr_output_attach(application.context(), screen(window).constData(), "video") >= 0);
        QVERIFY(mmr_output_attach(application.context(), screen(other).constData(), "subpicture") >= 0);
        QCOMPARE(application.attach(file(medium)), 0);
        const auto choose = [&](const char *isDisabled) {
            strm_dict_t *parameters = strm_dict_set(strm_dict_new(), "subpicture_disable", isDisabled);
            parameters = captions.isEmpty() ? strm_dict_set(parameters, "subpicture_index", index.constData())
                                            : strm_dict_set(parameters, "subpicture_url", file(captions).constData());
            return mmr_track_parameters(application.context(), 1, parameters);
        };
        QCOMPARE(choose("0"), 0);
        QCOMPARE(mmr_play(application.context()), 0);
        QTRY_VERIFY(count(other, isWhite) > 60);
        QVERIFY(count(window, isRed) > 1000);
        QCOMPARE(choose("1"), 0);
        QTRY_VERIFY(count(other, isWhite) == 0);
        QCOMPARE(choose("0"), 0);
        QTRY_VERIFY(count(other, isWhite) > 60);
        m_screen.destroyWindow(window);
    }

    void captionsOfFile_leaveTheMediumAlone_data()
    {
        const Rows<bool, QByteArray, QByteArray, bool> row("hasWindow", "isDisabled", "captions", "areUnreadable");
        const QByteArray head = "1\n00:00:00,200 --> 00:00:20,000\n";
        const QByteArray plain = head + "WIDE WHITE WORDS\n";
        row("no window", false, "0", plain, false);
        row("switched off", true, "1", plain, false);
        row("longer than the medium", true, "0", plain, false);
        row("60 KB of marks", true, "0", head + QByteArray("<b>").repeated(20'000) + "x\n\n", false);
        row("600 KB of marks", true, "0", head + QByteArray("<b>\n").repeated(150'000) + "x\n\n", false);
        row("a line of 6 MB", true, "0", head + QByteArray(6'000'000, 'x') + "\n\n", false);
        row("many behind the end", true, "0", QByteArray("1\n00:01:00,000 --> 00:01:01,000\nlate\n\n").repeated(10'000),
            false);
        row("nothing in them", true, "0", "", true);
        row("another text", true, "0", "These are no captions.\n", true);
        row("no text", true, "0", QByteArray("\0\1\x90\x8f", 4).repeated(1000), true);
        row("9 MB", true, "0", plain.repeated(200'000), true);
    }

    void captionsOfFile_leaveTheMediumAlone()
    {
        QFETCH(const bool, hasWindow);
        QFETCH(const QByteArray, isDisabled);
        QFETCH(const QByteArray, captions);
        QFETCH(const bool, areUnreadable);
        write("other.srt", captions);
        const quint32 window = m_screen.makeWindow(0, 0, Width, Height);
        const Application application;
        QVERIFY(mmr_output_attach(application.context(), screen(window).constData(), "video") >= 0);
        QVERIFY(!hasWindow || mmr_output_attach(application.context(), screen(window).constData(), "subpicture") >= 0);
        QCOMPARE(application.attach(file("mute.webm")), 0);
        strm_dict_t *parameters = strm_dict_set(strm_dict_new(), "subpicture_url", file("other.srt").constData());
        parameters = strm_dict_set(parameters, "subpicture_disable", isDisabled.constData());
        QCOMPARE(mmr_track_parameters(application.context(), 1, parameters), 0);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(application.playToEnd(), 0);
        QVERIFY2(timer.elapsed() < 20'000, QByteArray::number(timer.elapsed()).constData());
        QCOMPARE(application.content("status").number("position"), 1000);
        QCOMPARE(application.content("q1").has("captions_unreadable"), areUnreadable);
        m_screen.destroyWindow(window);
    }

    void captions_areTold_andTheFilmsOwnTitle()
    {
        const Application application;
        QCOMPARE(application.attach(file("captions.mkv")), 0);
        QTRY_COMPARE(QByteArray::fromStdString(application.content("q1").text("captions")),
                     QByteArray(R"([{"language":"de","title":""},{"language":"und","title":"For the deaf"}])"));
        QCOMPARE(application.content("q1").text("md_title_name"), std::string("The film"));
    }

    void dimensions_areTold()
    {
        const Application application;
        QCOMPARE(application.attach(file("wide.mp4")), 0);
        const auto track = application.content("q1");
        QCOMPARE(track.number("md_video_width"), 160);
        QCOMPARE(track.number("md_video_height"), 240);
        QCOMPARE(track.number("md_video_pixel_width"), 2);
        QCOMPARE(track.number("md_video_pixel_height"), 1);
    }

private:
    int count(quint32 window, bool (*isMeant)(quint32)) { return m_screen.count(window, 0, 0, Width, Height, isMeant); }

    XServer m_screen;
    Daemon m_daemon;
};

QTEST_GUILESS_MAIN(tst_Video)
#include "tst_video.moc"
