#include "Application.h"
#include "RealMedia.h"

#include <QtTest/QtTest>

#include <ChildProcess.h>
#include <Daemon.h>
#include <renderer/common/Error.h>
#include <Rows.h>
#include <Workers.h>

#include <array>
#include <cmath>
#include <complex>
#include <map>

using voro::renderer::ErrorCode;

namespace {

/** The middles of octaves. */
constexpr std::array Frequencies{29, 59, 119, 237, 474, 947, 1889, 3770, 7523, 15011};
using Levels = std::array<double, Frequencies.size()>;

/** How loud each frequency is, in dB. The beginning, where filters settle, does not count. */
Levels levelsOf(const QList<float> &samples)
{
    Levels levels{};
    for (size_t i = 0; i < Frequencies.size(); ++i) {
        std::complex<double> sum;
        for (qsizetype sample = 44100; sample < samples.size(); ++sample) {
            sum += static_cast<double>(samples[sample])
                   * std::polar(1.0, 2 * M_PI * Frequencies[i] * static_cast<double>(sample) / 44100);
        }
        levels[i] = 20 * std::log10(std::abs(sum) / static_cast<double>(samples.size() - 44100));
    }
    return levels;
}

/** By how many dB they differ where they differ most. */
double difference(const Levels &one, const Levels &other)
{
    double most = 0;
    for (size_t i = 0; i < one.size(); ++i) {
        most = std::max(most, std::abs(one[i] - other[i]));
    }
    return most;
}

} // namespace

/** The renderer as applications reach it: the daemon, its workers and real media. */
class tst_Renderer : public QObject,
                     media::Folder {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        const auto encodeLong = [this](const char *name, const QStringList &arguments = {}) {
            encode(name, media::silenceThenNoise(20), arguments);
        };
        encodeLong("a.wav");
        encodeLong("a.ogg", {"-c:a", "libvorbis"});
        encodeLong("a.flac");
        encodeLong("a.aiff");
        encodeLong("variable.mp3", {"-q:a", "4"});
        encodeLong("uncounted.mp3", {"-q:a", "4", "-write_xing", "0"});
        encode("tone.wav", QStringLiteral("sine=frequency=1000:duration=4:sample_rate=44100"));
        QStringList tones;
        for (const int frequency : Frequencies) {
            tones << QStringLiteral("0.02*sin(2*PI*%1*t)").arg(frequency);
        }
        encode("tones.wav", QLatin1String("aevalsrc=") + tones.join('+') + ":s=44100:d=2");
        write("words.mp3", QByteArray("These are only words.\n").repeated(200));
        write("cut.ogg", content("a.ogg").left(40));
        write("zeros.mp3", QByteArray(20'000, '\0'));
        write("list.m3u", "#EXTM3U\na.wav\n");
    }

    void durationThatNothingTells_isCounted()
    {
        const Application application;
        QCOMPARE(application.attach(file("uncounted.mp3")), 0);
        QTRY_VERIFY(std::abs(application.content("q1").number("md_title_duration") - 20'000) <= 200);
        QVERIFY(!application.content("q1").has("md_video_pixel_width"));
    }

    void cover_isTold_data()
    {
        const Rows<QString, QString, QByteArray> row("name", "picture", "type");
        const QByteArray png = "data:image/png;base64,\x89PNG\r\n";
        const QByteArray jpeg = "data:image/jpeg;base64,\xff\xd8\xff";
        const QString red = QStringLiteral("color=red:size=16x16:duration=1:rate=1");
        const auto noise = [](const char *size) {
            return QStringLiteral("nullsrc=size=%1:duration=1:rate=1,geq=random(1)*255:128:128")
                .arg(QLatin1String(size));
        };
        row("mp3", "mp3", red, png);
        row("flac", "flac", red, png);
        row("m4a", "m4a", red, png);
        row("larger", "mp3", noise("120x120"), png);
        row("too large", "mp3", noise("300x300"), jpeg);
        row("too large and of another shape", "m4a", noise("900x600"), jpeg);
    }

    void cover_isTold()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, picture);
        QFETCH(const QByteArray, type);
        const QByteArray medium = QTest::currentDataTag() + ('.' + name.toUtf8());
        encode(medium, QStringLiteral("sine=duration=2[out0];%1[out1]").arg(picture),
               {"-map", "0", "-c:v", "png", "-disposition:v", "attached_pic", "-metadata", "title=Höhe", "-metadata",
                "artist=Cover", "-metadata", "album=Hills", "-metadata", "genre=Test", "-metadata", "track=3/9"});
        const Application application;
        QVERIFY(application.attachAudio() >= 0);
        QCOMPARE(application.attach(file(medium)), 0);
        const auto track = application.content("q1");
        QCOMPARE(track.text("md_title_name"), std::string("Höhe"));
        QCOMPARE(track.text("md_title_artist"), std::string("Cover"));
        QCOMPARE(track.text("md_title_album"), std::string("Hills"));
        QCOMPARE(track.text("md_title_genre"), std::string("Test"));
        QCOMPARE(track.number("md_title_track"), 3);
        QCOMPARE(track.number("md_title_samplerate"), 44100);
        QTRY_VERIFY(application.content("q1").has("image"));
        const QByteArray url = QByteArray::fromStdString(application.content("q1").text("image"));
        const auto comma = url.indexOf(',') + 1;
        QVERIFY2((url.first(comma) + QByteArray::fromBase64(url.mid(comma))).startsWith(type),
                 url.first(30).constData());
        QVERIFY(std::abs(play(application).size() - 2 * 44100) < 1200);
    }

    /** A picture that fills the memory is left out, however small its file is. */
    void hugeCover_isLeftOut()
    {
        encode("huge.flac", QStringLiteral("sine=duration=2[out0];color=red:size=16000x16000:duration=1:rate=1[out1]"),
               {"-map", "0", "-c:v", "png", "-disposition:v", "attached_pic"});
        const Application application;
        QCOMPARE(application.attach(file("huge.flac")), 0);
        // In real time, so that there is time for the picture.
        QCOMPARE(application.playToEnd(), 0);
        for (const pid_t worker : workersOf(m_daemon.processId())) {
            QVERIFY2(peakMemory(worker) < 200 * 1024, QByteArray::number(peakMemory(worker)).constData());
        }
        QVERIFY(!application.content("q1").has("image"));
    }

    void attachError_tellsTheCause_data()
    {
        const Rows<QByteArray, QByteArray, ErrorCode> row("url", "type", "code");
        row("missing", file("none.wav"), "autolist", ErrorCode::SourceUnavailable);
        row("words", file("words.mp3"), "autolist", ErrorCode::UnsupportedMediaType);
        row("cut off in its head", file("cut.ogg"), "autolist", ErrorCode::ResourceCorrupted);
        row("zeros", file("zeros.mp3"), "autolist", ErrorCode::UnsupportedMediaType);
        row("medium as a playlist", "file://" + file("a.wav"), "playlist", ErrorCode::Internal);
        row("playlist as a medium", file("list.m3u"), "autolist", ErrorCode::Internal);
        row("nobody listens", "http://127.0.0.1:1/a.ogg", "autolist", ErrorCode::SourceUnavailable);
        row("unknown scheme", "smell://rose", "autolist", ErrorCode::UnsupportedMediaType);
    }

    void attachError_tellsTheCause()
    {
        QFETCH(QByteArray, url);
        QFETCH(QByteArray, type);
        QFETCH(ErrorCode, code);
        const Application application;
        QCOMPARE(application.attach(url, type.constData()), static_cast<int>(code));
        QVERIFY(mmr_error_info(application.context())->extra_text[0] != 0);
        QVERIFY(!application.content("state").has("state"));
        QCOMPARE(application.attach("file://" + file("tone.wav")), 0);
        QCOMPARE(mmr_play(application.context()), 0);
    }

    void seek_isAccurate_alsoBeforePlay()
    {
        const Application application;
        QVERIFY(application.attachAudio() >= 0);
        for (const char *name : {"a.wav", "a.ogg", "a.flac", "a.aiff", "variable.mp3"}) {
            QCOMPARE(application.attach(file(name)), 0);
            QCOMPARE(mmr_seek(application.context(), "1:9000"), 0);
            QCOMPARE(application.content("status").number("position"), 9000);
            const QList<float> heard = play(application);
            QVERIFY2(std::abs(heard.size() - 11 * 44100) < 4410, name);
            // A second of silence is left, then the noise begins.
            const auto noise =
                std::find_if(heard.begin(), heard.end(), [](float sample) { return std::abs(sample) > 0.1f; });
            QVERIFY2(std::abs(noise - heard.begin() - 44100) < 4410, name);
        }
    }

    void volume_scalesTheSound()
    {
        const Application application;
        const int output = application.attachAudio();
        const auto loudest = [&](const char *volume) {
            if (application.setOutput(output, "volume", volume) != 0 || application.attach(file("tone.wav")) != 0) {
                qFatal("cannot attach");
            }
            const QList<float> heard = play(application);
            return *std::max_element(heard.begin(), heard.end());
        };
        const float full = loudest("100");
        QVERIFY(full > 0.05f);
        QVERIFY(std::abs(loudest("50") / full - 0.5f) < 0.02f);
        QCOMPARE(loudest("0"), 0.0f);
    }

    void presets_soundDifferent()
    {
        std::map<std::string, Levels> heard;
        for (const char *preset :
             {"off", "airplane", "bassboost", "trebleboost", "voiceboost", "basslower", "treblelower", "voicelower",
              "acoustic", "dance", "electronic", "hiphop", "jazz", "lounge", "piano", "randb", "rock", "spokenword"}) {
            const Application application;
            QCOMPARE(application.setOutput(application.attachAudio(), "eq_preset", preset), 0);
            QCOMPARE(application.attach(file("tones.wav")), 0);
            const Levels levels = levelsOf(play(application));
            for (const auto &[other, theirs] : heard) {
                QVERIFY2(difference(levels, theirs) > (other == "off" ? 3 : 1.5), (preset + (" is " + other)).c_str());
            }
            heard[preset] = levels;
        }
        QVERIFY(heard["bassboost"][1] - heard["off"][1] > 4);
        QVERIFY(std::abs(heard["bassboost"][8] - heard["off"][8]) < 1);
        QVERIFY(heard["treblelower"][9] - heard["off"][9] < -6);
    }

    void speed_shortensTheSound_andKeepsThePitch()
    {
        const Application application;
        QVERIFY(application.attachAudio() >= 0);
        QCOMPARE(application.attach(file("tone.wav")), 0);
        QCOMPARE(mmr_speed_set(application.context(), 2000), 0);
        // The second time with what the first one left.
        for (int i = 0; i < 2; ++i) {
            const QList<float> heard = play(application);
            QVERIFY2(std::abs(heard.size() - 2 * 44100) < 8820, QByteArray::number(heard.size()).constData());
            QVERIFY(std::ranges::all_of(heard, [](float sample) { return std::abs(sample) < 0.2F; }));
            // The middle second: as many upward crossings as the tone has periods.
            int crossings = 0;
            for (qsizetype k = 22050; k < 66150; ++k) {
                crossings += heard[k] < 0 && heard[k + 1] >= 0;
            }
            QVERIFY2(std::abs(crossings - 1000) < 30, QByteArray::number(crossings).constData());
            QCOMPARE(application.content("state").number("speed"), 2000);
            QCOMPARE(mmr_stop(application.context()), 0);
        }
    }

    void seek_isNeverFollowedByAnOlderPosition()
    {
        const Application application;
        QCOMPARE(application.setContext("updateinterval", "20"), 0);
        QCOMPARE(application.attach(file("a.ogg")), 0);
        QCOMPARE(mmr_play(application.context()), 0);
        const auto status = application.watch("status?wait");
        while (readMessage(*status).number("position") < 100) {
        }
        // A burst, whose last one is for a place behind which the medium goes on.
        for (int i = 0; i < 200; ++i) {
            const int target = 16'000 - i * 70;
            QCOMPARE(mmr_seek(application.context(), QByteArray::number(target).constData()), 0);
            const auto position = application.content("status").number("position");
            QVERIFY2(position >= target && position < target + 1000,
                     QByteArray::number(static_cast<qint64>(position)).constData());
        }
        for (const int target : {15'000, 5'000, 12'000, 2'000}) {
            QCOMPARE(mmr_seek(application.context(), QByteArray::number(target).constData()), 0);
            for (int64_t position = -1; position <= target;) {
                position = readMessage(*status).number("position");
                QVERIFY2(position >= target && position < target + 3000,
                         QByteArray::number(static_cast<qint64>(position)).constData());
            }
        }
    }

    void withoutOutput_playsInRealTime()
    {
        const Application application;
        QCOMPARE(application.setContext("updateinterval", "100"), 0);
        QCOMPARE(application.attach(file("tone.wav")), 0);
        const auto status = application.watch("status?wait");
        const auto state = application.watch("state?wait");
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(mmr_play(application.context()), 0);
        // No position runs ahead of the sound, nor back.
        int reports = 0;
        for (int64_t last = 0; last < 3'950; ++reports) {
            const int64_t position = readMessage(*status).number("position");
            QVERIFY2(position >= last && position <= timer.elapsed() + 200, std::to_string(position).c_str());
            last = position;
        }
        QVERIFY2(reports >= 20, QByteArray::number(reports).constData());
        QCOMPARE(waitForEnd(*state).number("error", -1), 0);
        QVERIFY2(timer.elapsed() >= 3'900, QByteArray::number(timer.elapsed()).constData());
    }

    void applicationKilled_endsItsContexts()
    {
        const QByteArray medium = file("a.ogg");
        ChildProcess child([&medium](ChildProcess &self) {
            const Application application("doomed");
            const bool isPlaying = application.attach(medium) == 0 && mmr_play(application.context()) == 0;
            if (isPlaying) {
                self.say();
                self.sleep();
            }
            return 1;
        });
        QVERIFY(child.hear());
        mmr_connection_t *connection = mmr_connect(nullptr);
        QVERIFY(!mmr_context_create(connection, "doomed", 0, 0700));
        child.kill();
        mmr_context_t *context = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT(context || (context = mmr_context_create(connection, "doomed", 0, 0700)), 30'000);
        mmr_context_destroy(context);
        mmr_disconnect(connection);
    }

    void contextNames_areUniqueAndSafe()
    {
        const Application first("voro.multimedia.MediaPlayer::1");
        mmr_connection_t *connection = mmr_connect(nullptr);
        QVERIFY(!mmr_context_create(connection, "voro.multimedia.MediaPlayer::1", 0, 0700));
        QVERIFY(!mmr_context_create(connection, "", 0, 0700));
        QVERIFY(!mmr_context_create(connection, QByteArray(300, 'x').constData(), 0, 0700));
        for (const char *name : {".", "..", "../../control", "a/b", "c,d?e", "caf\xc3\xa9 \xff\n@x"}) {
            mmr_context_t *context = mmr_context_create(connection, name, 0, 0700);
            QVERIFY2(context, name);
            char path[1024];
            QVERIFY(mmr_context_path(context, path, sizeof path) > 0);
            const QByteArray folder =
                QByteArray(path).mid(static_cast<qsizetype>(strlen("/pps/services/multimedia/renderer/context/")));
            QVERIFY2(!folder.startsWith('.') && !folder.contains('/') && !folder.contains('?')
                         && !folder.contains('\n'),
                     path);
            QCOMPARE(mmr_context_destroy(context), 0);
        }
        // Only who made a context ends it.
        mmr_disconnect(connection);
        QCOMPARE(first.attach(file("tone.wav")), 0);
    }

    void parametersBeyondAMessage_areRefused()
    {
        const Application application;
        const std::string longest(40'000, 'x');
        for (const unsigned track : {8U, 9U}) {
            strm_dict_t *const parameters = strm_dict_set(strm_dict_new(), "subpicture_url", longest.c_str());
            QCOMPARE(mmr_track_parameters(application.context(), track, parameters), 0);
        }
        QCOMPARE(application.attach(file("a.ogg")), static_cast<int>(ErrorCode::InvalidParameter));
        QCOMPARE(mmr_track_parameters(application.context(), 9, strm_dict_new()), 0);
        QCOMPARE(application.attach(file("a.ogg")), 0);
    }

private:
    /** Plays to the end; the samples that came out, 44100 of them each second. */
    QList<float> play(const Application &application)
    {
        if (const int error = application.playToEnd(); error != 0) {
            qFatal("it ended with %d", error);
        }
        return samplesOf(file("heard.raw"));
    }

    const int m_sink = qputenv("VORO_AUDIO_SINK", fileSink(file("heard.raw")));
    // Memory that nobody filled holds samples that cannot be overheard.
    const int m_memory = qputenv("MALLOC_PERTURB_", "129");
    Daemon m_daemon;
};

QTEST_GUILESS_MAIN(tst_Renderer)
#include "tst_renderer.moc"
