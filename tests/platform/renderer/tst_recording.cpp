#include "Application.h"

#include <QtTest/QtTest>

#include <Daemon.h>
#include <Files.h>
#include <Programs.h>
#include <renderer/common/Error.h>
#include <Rows.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <Tone.h>
#include <Workers.h>

#include <cmath>
#include <csignal>
#include <numbers>

using voro::pps::Connection;
using voro::renderer::ErrorCode;

namespace {

constexpr double Frequency = 443;

/** A source of the daemon, as VORO_AUDIO_SOURCE: a tone of half the full scale in real time. */
QString toneSource(int channels, const char *more = "")
{
    return QStringLiteral("VORO_AUDIO_SOURCE=audiotestsrc is-live=true samplesperbuffer=441 volume=0.5 freq=%1 %2 ! "
                          "capsfilter caps=audio/x-raw,rate=44100,channels=%3")
        .arg(Frequency)
        .arg(QLatin1String(more))
        .arg(channels);
}

/** One sample of a sweep that runs from 300 to 3000 Hz four times a second. */
double sweep(double seconds)
{
    constexpr double Period = 0.25;
    const double time = std::fmod(seconds, Period);
    return std::sin(2 * std::numbers::pi * (300 * time + 2700 / Period * time * time / 2));
}

/** A source of the daemon: a file of ten seconds of the sweep, in real time but for its large buffers. */
QString sweepSource(const QString &path, int channels)
{
    constexpr int Rate = 44'100;
    QByteArray samples;
    for (int i = 0; i < 10 * Rate; ++i) {
        const auto sample = static_cast<qint16>(16'000 * sweep(static_cast<double>(i) / Rate));
        samples += QByteArray(reinterpret_cast<const char *>(&sample), sizeof sample).repeated(channels);
    }
    writeFile(path, samples);
    return QStringLiteral(
               "VORO_AUDIO_SOURCE=filesrc location=%1 ! rawaudioparse format=pcm pcm-format=s16le num-channels=%2 "
               "sample-rate=44100 ! identity sync=true")
        .arg(path)
        .arg(channels);
}

/** Codec, rate and channels, as a player sees them. */
QByteArray probed(const QString &file)
{
    return runToEnd("ffprobe",
                    {"-v", "error", "-show_entries", "stream=codec_name,sample_rate,channels", "-of", "csv=p=0", file})
        .value_or(QByteArray())
        .trimmed();
}

/** By how many milliseconds the sweep in a file is late where it should be so many milliseconds from the beginning. */
double lateness(const QByteArray &bytes, int rate, double position)
{
    constexpr double Window = 0.04;
    constexpr double Most = 0.08;
    const auto *samples = reinterpret_cast<const qint16 *>(bytes.constData());
    const auto first = static_cast<qsizetype>(position / 1000 * rate);
    const auto length = static_cast<qsizetype>(Window * rate);
    const auto most = static_cast<qsizetype>(Most * rate);
    double best = 0;
    qsizetype shift = most;
    for (qsizetype candidate = -most; candidate < most; ++candidate) {
        double product = 0;
        double power = 1;
        for (qsizetype i = first; i < first + length; ++i) {
            const qsizetype place = i + candidate;
            const double sample = place >= 0 && place < bytes.size() / 2 ? samples[place] : 0;
            product += sample * sweep(static_cast<double>(i) / rate);
            power += sample * sample;
        }
        // Among equal ones the loudest: a part that reaches into nothing is less than all of it.
        if (product > 0 && product * product / power > best) {
            best = product * product / power;
            shift = candidate;
        }
    }
    return static_cast<double>(shift) * 1000 / rate;
}

int64_t milliseconds(const QByteArray &samples, int rate = 48'000)
{
    return samples.size() / 2 * 1000 / rate;
}

/** A recorder with its file and the input attached, as an application has it. */
class Recorder : public Application {
public:
    explicit Recorder(const QString &file, const char *source = "audio:default") : Application("recorder")
    {
        const bool isReady = mmr_output_attach(context(), file.toUtf8().constData(), "file") >= 0
                             && setContext("updateinterval", "20") == 0;
        result = isReady ? attach(source, "track") : -1;
        status = watch("status?wait");
        state = watch("state?wait");
    }

    int play() const { return code(mmr_play(context())); }
    /** Waits until so much is recorded. */
    void waitFor(int64_t position) const
    {
        while (readMessage(*status).number("position") < position) {
            if (content("state").text("state") != "playing") {
                qFatal("the recording has ended");
            }
        }
    }

    /** Of the last attach. */
    int result = -1;
    std::unique_ptr<Connection> status;
    std::unique_ptr<Connection> state;
};

} // namespace

/** Recordings: the daemon, its workers, and files that other programs read. */
class tst_Recording : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // What others may do with the user's files is the user's choice.
    void initTestCase() { umask(027); }

    void file_holdsWhatWasRecorded_whenStopReturns_data()
    {
        const Rows<QString, int, QByteArray, QByteArray, int> row("name", "channels", "url", "content", "excess");
        const QByteArray plain = "audio:default";
        row("wav", "a.wav", 2, plain, "pcm_s16le,44100,2", 1);
        row("mono of stereo", "b.wav", 2, plain + "?nchan=1", "pcm_s16le,44100,1", 1);
        row("stereo of mono", "c.wav", 1, plain + "?nchan=2", "pcm_s16le,44100,2", 1);
        row("ogg", "a.ogg", 2, plain, "vorbis,44100,2", 1);
        row("opus", "a.opus", 2, plain, "opus,48000,2", 1);
        row("flac", "a.flac", 2, plain, "flac,44100,2", 1);
        row("mp3", "a.mp3", 2, plain, "mp3,44100,2", 1);
        // This reader drops whole blocks behind the end.
        row("m4a", "a.m4a", 2, plain, "aac,44100,2", 24);
        // The format cannot tell what is not sound: the codec's 5 ms and whole blocks.
        row("amr", "a.amr", 2, plain, "amr_nb,8000,1", 26);
        row("upper case, blanks", "\xc3\xa4 %41.FLAC", 2, plain, "flac,44100,2", 1);
    }

    void file_holdsWhatWasRecorded_whenStopReturns()
    {
        QFETCH(const QString, name);
        QFETCH(const int, channels);
        QFETCH(const QByteArray, url);
        QFETCH(const QByteArray, content);
        QFETCH(const int, excess);
        const Daemon daemon(QStringList{sweepSource(file("sweep.raw"), channels)});
        const Recorder recorder(file(name), url.constData());
        QCOMPARE(recorder.result, 0);
        QCOMPARE(recorder.play(), 0);
        recorder.waitFor(700);
        QCOMPARE(mmr_stop(recorder.context()), 0);
        constexpr int Rate = 16'000;
        const QByteArray samples = decoded(file(name), Rate);
        QCOMPARE(probed(file(name)), content);
        struct stat status {};
        QCOMPARE(stat(file(name).toLocal8Bit().constData(), &status), 0);
        QCOMPARE(static_cast<int>(status.st_mode & 0777), 0640);
        QCOMPARE(recorder.content("state").number("error", -1), 0);
        const int64_t position = recorder.content("status").number("position");
        const int64_t more = milliseconds(samples, Rate) - position;
        QVERIFY2(more >= -1 && more <= excess, qPrintable(QString::number(more)));
        for (const double place : {0.0, static_cast<double>(position) - 40}) {
            // A step of the measure more than the 5 ms.
            const double late = lateness(samples, Rate, place);
            QVERIFY2(std::abs(late) < 5.1, qPrintable(QString::number(late)));
        }
        // It is finished for good.
        QCOMPARE(recorder.play(), static_cast<int>(ErrorCode::InvalidState));
        QCOMPARE(decoded(file(name), Rate), samples);
    }

    void pause_leavesNoTrace()
    {
        const Daemon daemon(QStringList{toneSource(1)});
        const Recorder recorder(file("p.wav"));
        QCOMPARE(recorder.play(), 0);
        for (int i = 1; i <= 8; ++i) {
            recorder.waitFor(i * 50);
            QCOMPARE(mmr_speed_set(recorder.context(), 0), 0);
            // The level is told on, and nothing moves.
            const int64_t position = recorder.content("status").number("position");
            for (int report = 0; report < 4; ++report) {
                QCOMPARE(readMessage(*recorder.status).number("position"), position);
            }
            QCOMPARE(recorder.content("state").text("state"), std::string("playing"));
            QCOMPARE(mmr_speed_set(recorder.context(), 1000), 0);
        }
        QCOMPARE(mmr_stop(recorder.context()), 0);

        const QByteArray bytes = decoded(file("p.wav"), 44'100);
        QCOMPARE(milliseconds(bytes, 44'100), recorder.content("status").number("position"));
        const auto *samples = reinterpret_cast<const qint16 *>(bytes.constData());
        int largestStep = 0;
        for (qsizetype i = 1; i < bytes.size() / 2; ++i) {
            largestStep = std::max(largestStep, std::abs(samples[i] - samples[i - 1]));
        }
        // The tone's own steps, and what the blending of two sides of full height adds.
        QVERIFY2(largestStep < 1034 + 150 + 5, qPrintable(QString::number(largestStep)));
    }

    void level_isThePeakInDecibels_data()
    {
        const Rows<QString, QString> row("source", "level");
        row("full scale", toneSource(1, "volume=1"), "100/100");
        row("-6 dB", toneSource(2), "90/100");
        row("-40 dB", toneSource(1, "volume=0.01"), "33/100");
        row("more reports than buffers", toneSource(1, "samplesperbuffer=4410"), "90/100");
        row("silence", toneSource(1, "wave=silence"), "0/100");
    }

    void level_isThePeakInDecibels()
    {
        QFETCH(const QString, source);
        QFETCH(const QString, level);
        const Daemon daemon(QStringList{source});
        const Recorder recorder(file("l.wav"));
        QCOMPARE(recorder.content("status").text("volume"), std::string("0/100"));
        QCOMPARE(recorder.play(), 0);
        recorder.waitFor(50);
        for (int report = 0; report < 12; ++report) {
            QCOMPARE(QString::fromStdString(readMessage(*recorder.status).text("volume")), level);
        }
        QCOMPARE(mmr_input_detach(recorder.context()), 0);
        QCOMPARE(recorder.content("status").text("volume"), std::string("0/100"));
        QCOMPARE(recorder.content("state").text("state"), std::string("idle"));
    }

    void sourceFails_oldFileStays_data()
    {
        const Rows<QStringList, bool> row("environment", "isAttached");
        row("no sound server", {"VORO_AUDIO_SOURCE=", "PULSE_SERVER=unix:/nowhere"}, false);
        row("cannot be opened", {"VORO_AUDIO_SOURCE=filesrc location=/nowhere ! wavparse"}, true);
        row("gives nothing", {"VORO_AUDIO_SOURCE=appsrc ! identity"}, true);
        row("ends at once", {toneSource(1, "num-buffers=0")}, true);
    }

    void sourceFails_oldFileStays()
    {
        QFETCH(const QStringList, environment);
        QFETCH(const bool, isAttached);
        writeFile(file("old.wav"), "old");
        const Daemon daemon(environment);
        for (const char *name : {"old.wav", "new.wav"}) {
            const Recorder recorder(file(name));
            QCOMPARE(recorder.result, isAttached ? 0 : static_cast<int>(ErrorCode::SourceUnavailable));
            if (isAttached) {
                QCOMPARE(recorder.play(), static_cast<int>(ErrorCode::SourceUnavailable));
            }
        }
        QCOMPARE(readFile(file("old.wav")), QByteArray("old"));
        QVERIFY(!QFile::exists(file("new.wav")));
    }

    void sourceEnds_fileIsComplete()
    {
        const Daemon daemon(QStringList{toneSource(1, "num-buffers=30")});
        const Recorder recorder(file("e.m4a"));
        QCOMPARE(recorder.play(), 0);
        const auto end = waitForEnd(*recorder.state);
        QCOMPARE(end.number("error"), static_cast<int>(ErrorCode::SourceUnavailable));
        QCOMPARE(end.text("error_pos"), std::string("1:300"));
        QVERIFY(std::abs(milliseconds(decoded(file("e.m4a"))) - 312) <= 12);
        QCOMPARE(recorder.play(), static_cast<int>(ErrorCode::InvalidState));
        QCOMPARE(mmr_stop(recorder.context()), 0);
        QCOMPARE(recorder.content("state").number("error", -1), 0);
    }

    void diskFull_whatIsThereCanBeRead_data()
    {
        Rows<QString>("format").each({"wav", "ogg", "opus", "flac", "mp3", "m4a", "amr"});
    }

    // A limit of the files' size stands for the disk.
    void diskFull_whatIsThereCanBeRead()
    {
        QFETCH(const QString, format);
        const Daemon daemon(QStringList{toneSource(2, "wave=white-noise")});
        const rlim_t most = format == QLatin1String("amr") ? 1000 : 20'000;
        const rlimit limit{most, most};
        QCOMPARE(prlimit(static_cast<pid_t>(daemon.processId()), RLIMIT_FSIZE, &limit, nullptr), 0);
        const QString path = file("full." + format);
        const Recorder recorder(path);
        QCOMPARE(recorder.play(), 0);
        QCOMPARE(waitForEnd(*recorder.state).number("error"), static_cast<int>(ErrorCode::Write));
        QVERIFY(QFileInfo(path).size() <= static_cast<qint64>(most));
        QVERIFY2(milliseconds(decoded(path)) > 80, qPrintable(QString::number(milliseconds(decoded(path)))));
    }

    void workerKilled_fileStaysAndPlays_data()
    {
        Rows<QString>("format").each({"wav", "ogg", "opus", "flac", "mp3", "m4a", "amr"});
    }

    void workerKilled_fileStaysAndPlays()
    {
        QFETCH(const QString, format);
        const Daemon daemon(QStringList{toneSource(1)});
        const QString path = file("killed." + format);
        Recorder recorder(path);
        QCOMPARE(recorder.play(), 0);
        recorder.waitFor(1500);
        const QList<pid_t> workers = workersWith(path.toUtf8(), daemon.processId());
        QCOMPARE(workers.size(), 1);
        ::kill(workers.first(), SIGKILL);
        const auto end = waitForEnd(*recorder.state);
        QCOMPARE(end.number("error"), static_cast<int>(ErrorCode::Internal));
        const QByteArray samples = decoded(path);
        QVERIFY2(milliseconds(samples) > 400, qPrintable(QString::number(milliseconds(samples))));
        QVERIFY(tone::share(samples.mid(9600), Frequency) > 0.9);
        QCOMPARE(recorder.play(), static_cast<int>(ErrorCode::InvalidState));
        QCOMPARE(decoded(path), samples);

        // The application prepares it again, and only then the file is a new one.
        QCOMPARE(mmr_input_detach(recorder.context()), 0);
        QVERIFY(mmr_output_attach(recorder.context(), path.toUtf8().constData(), "file") >= 0);
        QCOMPARE(recorder.attach("audio:default", "track"), 0);
        QCOMPARE(decoded(path), samples);
        QCOMPARE(recorder.play(), 0);
        recorder.waitFor(100);
        QCOMPARE(mmr_stop(recorder.context()), 0);
        QVERIFY(decoded(path).size() < samples.size() && !decoded(path).isEmpty());
    }

    void applicationGone_fileIsCompleted_data()
    {
        const Rows<QString, bool> row("format", "isCommanded");
        row("wav", "wav", false);
        row("m4a", "m4a", false);
        row("flac", "flac", false);
        row("with a command under way", "m4a", true);
    }

    void applicationGone_fileIsCompleted()
    {
        QFETCH(const QString, format);
        QFETCH(const bool, isCommanded);
        const Daemon daemon(QStringList{toneSource(1)});
        const QString path = file("gone." + format);
        QList<pid_t> halted;
        {
            const Recorder recorder(path);
            QCOMPARE(recorder.play(), 0);
            recorder.waitFor(500);
            if (isCommanded) {
                // The worker answers when the application is gone.
                halted = workersWith(path.toUtf8(), daemon.processId());
                QCOMPARE(halted.size(), 1);
                ::kill(halted.first(), SIGSTOP);
                const auto control = recorder.watch("control", voro::pps::Publish);
                QVERIFY(control->write("msg::speed_set\nid:n:1\nspeed:n:0"));
            }
        }
        for (const pid_t worker : halted) {
            ::kill(worker, SIGCONT);
        }
        QTRY_VERIFY(workersWith(path.toUtf8(), daemon.processId()).isEmpty());
        // A head or an index that was not completed would tell of less.
        QVERIFY(milliseconds(decoded(path)) > 480);
    }

private:
    QString file(const QString &name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_Recording)
#include "tst_recording.moc"
