#include "Application.h"
#include "RealMedia.h"

#include <QtTest/QtTest>

#include <Daemon.h>
#include <renderer/common/Error.h>
#include <Rows.h>

using voro::renderer::ErrorCode;

/** Playlists and the way from track to track: the daemon, its workers and real media. */
class tst_Queue : public QObject,
                  media::Folder {
    Q_OBJECT
private Q_SLOTS:
    // Each file has a length of its own, so that the number of samples tells which ones were played.
    void initTestCase()
    {
        QDir(QString::fromUtf8(path())).mkdir(QStringLiteral("sub"));
        const auto encodeTone = [this](const char *name, const char *seconds) {
            encode(name,
                   QStringLiteral("sine=frequency=500:sample_rate=44100:duration=%1").arg(QLatin1String(seconds)));
        };
        encodeTone("a.wav", "0.1");
        encodeTone("b b.wav", "0.2");
        encodeTone("c.flac", "0.4");
        encodeTone("sub/d.wav", "0.8");
        encodeTone("\xc3\xa4.wav", "1.6");
        for (const char *name : {"e.ogg", "e.mp3", "e.m4a", "e.mka"}) {
            encodeTone(name, "0.5");
        }
        encode("pictures.mkv", QStringLiteral("color=c=red:s=64x48:r=25:d=0.3[out0];sine=duration=0.3[out1]"),
               {"-c:v", "mpeg4", "-c:a", "flac"});
        encodeTone("g.ogg", "0.3");
        write("two.ogg", content("e.ogg") + content("g.ogg"));
        encodeTone("f.mp3", "0.7");
        // The encoder that GStreamer knows by its name.
        write("f.mp3", content("f.mp3").replace("Lavc", "LAME"));
        encodeTone("percent%41.wav", "6.4");
        write("broken.wav", QByteArray(5000, 'x'));
        write("sub/list.m3u", "d.wav\n../a.wav\n");
        write("back.m3u", "l.m3u\nc.flac\n");
        write("circle1.m3u", "circle2.pls\na.wav\n");
        write("circle2.pls", "[playlist]\nFile1=circle1.m3u\nFile2=c.flac\nNumberOfEntries=2\nVersion=2\n");
    }

    void playlist_isPlayedWithoutGaps_data()
    {
        const Rows<QByteArray, QByteArray, double, int> row("name", "content", "seconds", "total");
        const QByteArray folder = path();

        row("m3u", "l.m3u", "#EXTM3U\n#EXTINF:1,One\na.wav\nb b.wav\nc.flac\n", 0.7, 3);
        row("carriage returns", "l.m3u", "#EXTM3U\r\n a.wav\t\r\nc.flac \r\n", 0.5, 2);
        row("no head", "l.m3u", "\xef\xbb\277a.wav\nsub/d.wav\n", 0.9, 2);
        row("byte order mark", "l.m3u8", "\xef\xbb\xbf#EXTM3U\n\xc3\xa4.wav\n", 1.6, 1);
        row("Latin-1", "l.m3u", "\xe4.wav\na.wav\n", 1.7, 2);
        row("percent sign", "l.m3u", "percent%41.wav\nb%20b.wav\n", 6.6, 2);
        row("absolute", "l.m3u", QByteArray(folder + "/a.wav\nfile://" + folder + "/b%20b.wav\n"), 0.3, 2);
        row("what the encoder added", "l.m3u", "e.mp3\nf.mp3\ne.mp3\n", 1.7, 3);
        // The first one has a sample too many.
        row("two in one file", "l.m3u", "two.ogg\n", 0.8 + 1 / 44100.0, 1);
        const QByteArray bad = "no.wav\nbroken.wav\n";
        row("missing and broken", "l.m3u", bad + "a.wav\n" + bad + "c.flac\n" + bad, 0.5, 8);
        row("nested", "l.m3u", "sub\\list.m3u\nb b.wav\n", 1.1, 3);
        row("circle", "l.m3u", "circle1.m3u\n", 0.5, 2);
        row("pls", "l.pls",
            "[playlist]\nFile1=a.wav\nTitle1=One\nLength1=1\nFile2=sub/list.m3u\nNumberOfEntries=2\nVersion=2\n", 1.0,
            3);
        const auto numbered = [&](const char *title, const QByteArray &lines, double seconds, int total) {
            row(title, "l.pls", "[playlist]\n" + lines, seconds, total);
        };
        numbered("pls, two joined",
                 "File1=a.wav\nFile2=b b.wav\nNumberOfEntries=2\n[playlist]\nFile1=c.flac\nNumberOfEntries=1\n", 0.7,
                 3);
        numbered("pls, two joined without a head", "File1=a.wav\nFile2=b b.wav\nFile1=c.flac\n", 0.7, 3);
        numbered("pls, no numbers", "File=a.wav\nfilename=c.flac\nNumberOfEntries=2\n", 0.5, 2);
        numbered("pls, numbers far apart",
                 "NumberOfEntries=2000000000\nFile2000000000=sub/d.wav\nFile01=b b.wav\nFile0=a.wav\n", 1.1, 3);
        row("names itself through another", "l.m3u", "a.wav\nback.m3u\n", 0.5, 2);
        row("of 2.5 GB", "huge.m3u", "#EXTM3U\na.wav\n", 0.1, 1);
        row("pls, Latin-1", "l.pls", "[playlist]\r\nFile1=\xe4.wav\r\nNumberOfEntries=1\r\n", 1.6, 1);
        row("xspf", "l.xspf",
            QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<playlist version=\"1\" "
                       "xmlns=\"http://xspf.org/ns/0/\"><trackList>"
                       "<track><location>\n <![CDATA[b%20b.wav]]>\n</location></track><track><location>file://"
                       + folder + "/a.wav</location></track></trackList></playlist>"),
            0.3, 2);
        row("asx", "l.asx",
            "<asx version=\"3.0\"><entry><title>T</title><ref "
            "href=\"a.wav\"/></entry><entry><ref href=\"c.flac\"/></entry></asx>",
            0.5, 2);
    }

    void playlist_isPlayedWithoutGaps()
    {
        QFETCH(const QByteArray, name);
        QFETCH(const QByteArray, content);
        QFETCH(const double, seconds);
        QFETCH(const int, total);
        write(name, content);
        QVERIFY(name != "huge.m3u" || QFile::resize(QString::fromUtf8(file(name)), 2'500'000'000));
        const Application application;
        QVERIFY(application.attachAudio() >= 0);
        QCOMPARE(application.attach("file://" + file(name)), int(ErrorCode::Internal));
        QCOMPARE(application.attach("file://" + file(name), "playlist"), 0);
        QCOMPARE(application.content("play-queue").number("total"), total);
        QCOMPARE(application.playToEnd(), 0);
        QCOMPARE(samplesOf(file("heard.raw")).size(), static_cast<qsizetype>(seconds * 44100 + 0.5));
    }

    void slowPlaylist_isPlayedAsFarAsItWasRead()
    {
        write("long.m3u", QByteArray("#\n").repeated(2'000'000));
        write("slow.m3u", "a.wav\n" + QByteArray("long.m3u\n").repeated(400));
        const Application application;
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(application.attach(file("slow.m3u"), "playlist"), 0);
        QVERIFY2(timer.elapsed() < 20'000, QByteArray::number(timer.elapsed()).constData());
        QCOMPARE(application.content("play-queue").number("total"), 1);
    }

    void repeatAll_endsWhenSwitchedOff_data()
    {
        const Rows<QByteArray> row("content");
        row("another container", "e.mka\ne.mka\n");
        row("sound and pictures", "pictures.mkv\npictures.mkv\n");
    }

    void repeatAll_endsWhenSwitchedOff()
    {
        QFETCH(const QByteArray, content);
        write("two.m3u", content);
        const Application application;
        QCOMPARE(application.setInput("repeat", "all"), 0);
        QCOMPARE(application.attach(file("two.m3u"), "playlist"), 0);
        const auto state = application.watch("state?wait");
        const auto queue = application.watch("play-queue?wait");
        QCOMPARE(mmr_play(application.context()), 0);
        for (const int track : {1, 2, 1, 2}) {
            while (readMessage(*queue).number("current") != track) {
            }
        }
        QCOMPARE(application.setInput("repeat", "none"), 0);
        QCOMPARE(waitForEnd(*state).number("error", -1), 0);
        QCOMPARE(application.content("play-queue").number("current"), 2);
    }

    void backward_holdsAtTheBeginning()
    {
        const Application application;
        QVERIFY(application.attachAudio() >= 0);
        for (const char *name : {"c.flac", "e.ogg", "e.mp3", "e.m4a", "e.mka"}) {
            QCOMPARE(application.attach(file(name)), 0);
            QCOMPARE(mmr_seek(application.context(), "1:300"), 0);
            QCOMPARE(mmr_speed_set(application.context(), -1000), 0);
            const auto state = application.watch("state?wait");
            QCOMPARE(mmr_play(application.context()), 0);
            while (readMessage(*state).number("speed", -1) != 0) {
            }
            QCOMPARE(application.content("status").number("position"), 0);
            QCOMPARE(application.content("state").text("state"), std::string("playing"));
            // From there it goes on, also backward, which is to stay.
            QCOMPARE(mmr_speed_set(application.context(), -2000), 0);
            QCOMPARE(application.content("state").number("speed", -1), 0);
            QCOMPARE(mmr_speed_set(application.context(), 1000), 0);
            QCOMPARE(waitForEnd(*state).number("error", -1), 0);
            const int64_t length = application.content("q1").number("md_title_duration");
            QVERIFY2(std::abs(application.content("status").number("position") - length) <= 1, name);
        }
    }

private:
    const int m_sink = qputenv("VORO_AUDIO_SINK", fileSink(file("heard.raw")));
    Daemon m_daemon;
};

QTEST_GUILESS_MAIN(tst_Queue)
#include "tst_queue.moc"
