// voro play, into pipes and on a terminal.

#include "Program.h"
#include "Programs.h"
#include "PseudoTerminal.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace {

QByteArray state(const char *name)
{
    return QByteArray("\"mediaState\":\"") + name + '"';
}

/** Runs voro remote and returns what it printed. */
QByteArray remote(const QStringList &arguments)
{
    const Result result = voro(QStringList("remote") + arguments);
    return result.status == 0 ? result.out : "failed: " + result.err;
}

} // namespace

class tst_VoroPlay : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void saysWhatIsWrong_andPlaysTheNext()
    {
        const SilentDaemon daemon;
        const QString missing = daemon.folder() + "/100%25 #1?.ogg";
        const Result alone = voro({"play", missing});
        QCOMPARE(alone.status, 1);
        QCOMPARE(lastLine(alone.err),
                 QByteArray("voro: play: 100%25 #1?.ogg: there is no such file (SourceUnavailable)"));

        const QString sample = QStringLiteral(VORO_SAMPLE_FILE);
        const QString copy = daemon.folder() + "/100%25 #2?.ogg";
        QVERIFY(QFile::copy(sample, copy));
        const QString junk = writeFile(daemon.folder() + "/junk.ogg", "no music");
        const Result several = voro({"play", junk, missing, sample, junk, copy, junk, "--speed=4", "--json"});
        QCOMPARE(several.status, 1);
        QCOMPARE(several.out.count("\"signal\":\"playbackCompleted\"}"), 1);
        QCOMPARE(several.out.count("\"signal\":\"trackChanged\",\"track\":4}"), 1);
        for (const char *line : {"100%25 #1?.ogg: there is no such file (SourceUnavailable)\n",
                                 "junk.ogg: this kind of media cannot be played"}) {
            QVERIFY2(several.err.contains(QByteArray("voro: play: ") + line), several.err.constData());
        }
        QCOMPARE(several.err.count("junk.ogg: this kind"), 3);
        const Result bad = voro({"play", junk, junk});
        QCOMPARE(bad.status, 1);
        QVERIFY2(lastLine(bad.err).startsWith("voro: play: none of them can be played: "), bad.err.constData());
    }

    void json_tellsTheWholeStory()
    {
        const SilentDaemon daemon;
        const Result result = voro({"play", "--json", "--start=19000", "--volume=0.5"});
        QCOMPARE(result.err, QByteArray());
        QCOMPARE(result.status, 0);
        double last = 0;
        QStringList states;
        for (const QByteArray &line : result.out.trimmed().split('\n')) {
            const QJsonObject signal = QJsonDocument::fromJson(line).object();
            QVERIFY2(signal["signal"].isString() && signal["t"].toDouble() >= last, line.constData());
            last = signal["t"].toDouble();
            if (signal.contains("mediaState")) {
                states += signal["mediaState"].toString();
            }
        }
        QCOMPARE(states, (QStringList{"Prepared", "Started", "Stopped"}));
        QVERIFY(result.out.contains("\"title\":\"First Light\""));
        QCOMPARE(result.out.count("\"signal\":\"playbackCompleted\""), 1);
    }

    void warns_whenThereIsNoSoundServer()
    {
        const Daemon daemon(QStringList{"PULSE_SERVER=unix:/nonexistent"});
        const QByteArray warning = "no sound server answers; playing without sound";
        const QString sample = QStringLiteral(VORO_SAMPLE_FILE);
        const Result words = voro({"play", "--start=19500", sample, sample, "--speed=4"});
        QCOMPARE(words.status, 0);
        QCOMPARE(words.err, "voro: play: " + warning + '\n');
        const Result json = voro({"play", "--start=19000", "--json"});
        QCOMPARE(json.err, QByteArray());
        QCOMPARE(json.out.count("\"signal\":\"warning\",\"text\":\"" + warning + "\"}\n"), 1);
    }

    void doesWhatTheRemoteAsks_andPausesWithoutTheRole()
    {
        const SilentDaemon daemon;
        RunningVoro playing({"play", "--json"});
        QVERIFY(playing.waitFor(state("Started")));
        QTRY_VERIFY(remote({"status"}).contains("First Light"));
        for (const auto &[command, name] : {std::pair("pause", "Paused"), {"play", "Started"}, {"stop", "Stopped"}}) {
            remote({command});
            QVERIFY2(playing.waitFor(state(name)), command);
            QTRY_VERIFY(remote({"status"}).contains(name));
        }
        remote({"playpause"});
        QVERIFY(playing.waitFor(state("Started")));

        RunningVoro other({"publish", "--name=Other", "--json"});
        QVERIFY(other.waitFor("\"acquired\""));
        QVERIFY(playing.waitFor(state("Paused")));
        QCOMPARE(playing.interrupt(), 0);
    }

    void queue_isRepeatedAndShuffled_asTheRemoteAsks()
    {
        const SilentDaemon daemon;
        for (const char *name : {"a.wav", "b.wav", "c.wav"}) {
            writeFile(daemon.folder() + '/' + name, silentWav(30));
        }
        RunningVoro playing({"play", "--json", daemon.folder()});
        QVERIFY(playing.waitFor(state("Started")));
        RunningVoro watching({"remote", "watch", "--json"});
        // What has no title is called by its file.
        QVERIFY(watching.waitFor("\"title\":\"a.wav\""));
        const auto shows = [](const QByteArrayList &fields) {
            const QByteArray status = remote({"status", "--json"});
            return std::all_of(fields.begin(), fields.end(),
                               [&](const QByteArray &field) { return status.contains(field); });
        };
        const QByteArray b = "\"title\":\"b.wav\"";
        QTRY_VERIFY(shows({"\"repeatMode\":\"None\"", "\"shuffleMode\":\"Off\""}));
        remote({"next"});
        QVERIFY(watching.waitFor("\"trackChanged\""));
        QTRY_VERIFY(shows({b, "\"previousEnabled\":true"}));

        // The present one goes on as the first.
        remote({"shuffle", "all"});
        QTRY_VERIFY(shows({b, "\"shuffleMode\":\"All\"", "\"previousEnabled\":false", state("Started")}));
        remote({"shuffle"});
        QTRY_VERIFY(shows({b, "\"shuffleMode\":\"Off\"", "\"previousEnabled\":true", state("Started")}));
        remote({"next"});
        QVERIFY(watching.waitFor("\"title\":\"c.wav\""));
        QTRY_VERIFY(shows({"\"nextEnabled\":false"}));
        remote({"repeat"});
        QTRY_VERIFY(shows({"\"repeatMode\":\"All\"", "\"nextEnabled\":true"}));
        remote({"next"});
        QVERIFY(watching.waitFor("\"title\":\"a.wav\""));
        remote({"repeat", "track"});
        QTRY_VERIFY(shows({"\"repeatMode\":\"Track\""}));
        QCOMPARE(watching.rest().count("mediaStateChanged"), 0);
        QCOMPARE(playing.interrupt(), 0);
    }

    void interrupt_endsIt_whateverTheDaemonDoes()
    {
        const SilentDaemon daemon;
        RunningVoro playing({"play", "--json"});
        QVERIFY(playing.waitFor(state("Started")));
        // Nobody ends a daemon that is stopped together with its guardian.
        const pid_t processes[] = {static_cast<pid_t>(daemon.guardianId()), static_cast<pid_t>(daemon.processId())};
        for (const pid_t process : processes) {
            ::kill(process, SIGSTOP);
        }
        QElapsedTimer time;
        time.start();
        const int status = playing.interrupt();
        const qint64 elapsed = time.elapsed();
        for (const pid_t process : {processes[1], processes[0]}) {
            ::kill(process, SIGCONT);
        }
        QCOMPARE(status, 0);
        QVERIFY2(elapsed < 10'000, qPrintable(QString::number(elapsed)));
    }

    void plainOutput_isLines()
    {
        const SilentDaemon daemon;
        const Result result = voro({"play", "--start=18000"});
        QCOMPARE(result.status, 0);
        QVERIFY2(result.out.startsWith("First Light - Voro\n"), result.out.constData());
        QVERIFY2(result.out.contains("\n0:18 / 0:19\n"), result.out.constData());
        QVERIFY(!result.out.contains('\r') && !result.out.contains('\x1b'));

        const QString list = writeFile(daemon.folder() + "/list.m3u", QByteArray(VORO_SAMPLE_FILE "\n").repeated(2));
        const Result several = voro({"play", list, "--speed=4", "--start=18000"});
        QCOMPARE(several.status, 0);
        QVERIFY2(several.out.contains("track 1 of 2\n"), several.out.constData());
        QVERIFY2(several.out.contains("speed 4\n"), several.out.constData());
        QVERIFY2(several.out.contains("track 2 of 2\n"), several.out.constData());

        // The first track that plays is told of before their number is.
        writeFile(list, QByteArray("none.ogg\n").repeated(60) + VORO_SAMPLE_FILE "\n");
        const Result last = voro({"play", list, "--speed=4"});
        QCOMPARE(last.status, 1);
        QVERIFY2(last.out.contains("track 61 of 61\n"), last.out.constData());
        QVERIFY2(last.err.contains("track 60: passed over\n"), last.err.constData());
    }

    void keys_workOnTerminal()
    {
        const SilentDaemon daemon;
        PseudoTerminal terminal({VORO_PROGRAM, "play"});
        QVERIFY2(terminal.waitFor("First Light - Voro"), terminal.written().constData());
        QVERIFY(!terminal.isInOwnMode());
        const std::pair<const char *, const char *> answers[] = {
            {" ", "|| "},
            {"-", "volume 95%"},
            {"m", "volume 0%"},
            {"m", "volume 95%"},
            {"+", "volume 100%"},
            {"?", "  ?             shows this list"},
            // Paused, so the position changes by the keys alone.
            {"\x1b[C\x1b[C", "|| 0:1"},
            {"5", "|| 0:09"},
            {"\x1b[B", "|| 0:00"},
            {" ", ">  0:0"},
            {"]", "speed 1.25"},
        };
        for (const auto &[keys, answer] : answers) {
            terminal.type(keys);
            QVERIFY2(terminal.waitFor(answer), keys);
        }
        terminal.type(" 0");
        QVERIFY(terminal.waitFor("|| 0:00 ["));
        // No room for the bar.
        terminal.resize(30);
        QVERIFY(terminal.waitFor("|| 0:00 0:19"));
        terminal.type("q");
        QCOMPARE(terminal.waitForEnd(), std::optional(0));
        QVERIFY(terminal.isInOwnMode());
    }

    void chapters_areShownAndReached()
    {
        const SilentDaemon daemon;
        const QString book = daemon.folder() + "/book.mka";
        QByteArray chapters = ";FFMETADATA1\n";
        for (const char *chapter : {"START=0\nEND=10\ntitle=One", "START=10\nEND=20\ntitle=Two", "START=20\nEND=30"}) {
            chapters += QByteArray("[CHAPTER]\nTIMEBASE=1/1\n") + chapter + '\n';
        }
        const QString list = writeFile(daemon.folder() + "/chapters", chapters);
        QVERIFY(runToEnd("ffmpeg", {"-loglevel", "error", "-f", "lavfi", "-t", "30", "-i", "anullsrc", "-i", list,
                                    "-map_chapters", "1", book}));
        PseudoTerminal terminal({VORO_PROGRAM, "play", QFile::encodeName(book)});
        QVERIFY(terminal.waitFor("chapter 1 of 3: One"));
        const std::pair<const char *, const char *> answers[] = {
            {" ", "|| "},
            {">", "chapter 2 of 3: Two"},
            {">", "chapter 3 of 3\r\n"},
            {"<", "chapter 2 of 3: Two"},
        };
        for (const auto &[keys, answer] : answers) {
            terminal.type(keys);
            QVERIFY2(terminal.waitFor(answer), keys);
        }
        terminal.type("q");
        QCOMPARE(terminal.waitForEnd(), std::optional(0));
    }

    void standardInput_isPlayed()
    {
        const SilentDaemon daemon;
        QProcess process;
        process.start("sh", {"-c", "cat '" VORO_SAMPLE_FILE "' | '" VORO_PROGRAM "' play - --start 0:18"});
        QVERIFY(process.waitForFinished(PatienceMs));
        QCOMPARE(process.readAllStandardError(), QByteArray());
        QCOMPARE(process.exitCode(), 0);
        QVERIFY(process.readAllStandardOutput().startsWith("First Light - Voro\n"));

        // One that does not end is not waited for without a word, and leaves nothing behind.
        qputenv("TMPDIR", daemon.folder().toLocal8Bit());
        RunningVoro waiting({"play", "-"});
        waiting.write("RIFF");
        QVERIFY(waiting.waitFor("read to its end before it plays"));
        QCOMPARE(QDir(daemon.folder()).entryList({"voro-*"}, QDir::Files).size(), 1);
        QCOMPARE(waiting.interrupt(), 0);
        QCOMPARE(QDir(daemon.folder()).entryList({"voro-*"}, QDir::Files), QStringList());
        qunsetenv("TMPDIR");
    }

    void pipe_playsWhileItComes()
    {
        const SilentDaemon daemon;
        qputenv("TMPDIR", daemon.folder().toLocal8Bit());
        const QByteArray sample = readFile(QStringLiteral(VORO_SAMPLE_FILE));
        RunningVoro playing({"play", "-", "--json"});
        playing.write(sample.left(sample.size() / 2));
        QVERIFY(playing.waitFor(R"("title":"First Light")"));
        QVERIFY(playing.waitFor(R"("signal":"positionChanged")"));
        QCOMPARE(QDir(daemon.folder()).entryList({"voro-*"}, QDir::Files), QStringList());
        playing.write(sample.mid(sample.size() / 2));
        playing.closeWriteChannel();
        QVERIFY(playing.waitFor(R"("signal":"playbackCompleted")"));
        QVERIFY(playing.waitForFinished(PatienceMs));
        QCOMPARE(playing.exitCode(), 0);
        qunsetenv("TMPDIR");
    }

    void givesTerminalBack_data()
    {
        const Rows<QByteArray, int> row("keys", "signal");
        row("^C", "\x03", 0);
        row("TERM", {}, SIGTERM);
        row("HUP", {}, SIGHUP);
        row("SEGV", {}, SIGSEGV);
    }

    void givesTerminalBack()
    {
        QFETCH(QByteArray, keys);
        QFETCH(int, signal);
        const SilentDaemon daemon;
        PseudoTerminal terminal({VORO_PROGRAM, "play"});
        QVERIFY(terminal.waitFor("First Light - Voro"));
        QVERIFY(!terminal.isInOwnMode());
        if (signal) {
            kill(terminal.processId(), signal);
        } else {
            terminal.type(keys);
        }
        QCOMPARE(terminal.waitForEnd(), signal == SIGSEGV ? std::nullopt : std::optional(0));
        QVERIFY(terminal.isInOwnMode());
    }

    void givesTerminalBack_whileSuspended()
    {
        const SilentDaemon daemon;
        PseudoTerminal terminal({VORO_PROGRAM, "play"});
        QVERIFY(terminal.waitFor("First Light - Voro"));
        kill(terminal.processId(), SIGTSTP);
        QVERIFY(terminal.waitForStop());
        QVERIFY(terminal.isInOwnMode());
        QVERIFY(terminal.waitFor("|| "));
        kill(terminal.processId(), SIGCONT);
        QVERIFY(terminal.waitFor(">  0:0"));
        QTRY_VERIFY(!terminal.isInOwnMode());
        terminal.type("q");
        QCOMPARE(terminal.waitForEnd(), std::optional(0));
    }
};

QTEST_GUILESS_MAIN(tst_VoroPlay)
#include "tst_voro_play.moc"
