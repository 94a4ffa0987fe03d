// The commands of the program voro.

#include "Program.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>
#include <QtCore/QtEndian>

#include <cmath>

class tst_voro : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void unusableArguments_areRefusedByName_data()
    {
        const Rows<QStringList, QByteArray> add("arguments", "message");
        const auto general = [&](const QString &line, const QByteArray &reason) {
            add(qPrintable(line), line.split(' '), "voro: " + reason + " (see voro --help)\n");
        };
        const auto row = [&](const QString &line, const QByteArray &reason) {
            const QByteArray command = line.section(' ', 0, 0).toUtf8();
            add(qPrintable(line), line.split(' '),
                "voro: " + command + ": " + reason + " (see voro " + command + " --help)\n");
        };
        general("paly", "unknown command 'paly'; did you mean 'play'?");
        general("dance", "unknown command 'dance'");
        general("help paly", "unknown command 'paly'; did you mean 'play'?");
        general("--jsn play", "unknown option '--jsn'");
        general("--version play", "--version stands alone");
        row("play --volume 150%", "--volume: '150%' is not a number from 0 to 1 or a percentage");
        row("play --volume +5%", "--volume: '+5%' is not a number from 0 to 1 or a percentage");
        row("play --start=1:70", "--start: '1:70' is not a time as 1:30, or a whole number of milliseconds");
        row("play --speed -1", "--speed: nothing comes before the beginning; --start says where to begin");
        row("play --speed 0.2", "--speed: nothing plays slower than at 0.25");
        row("play --window w", "--window: 'w' is not the number of a window");
        row("play --captions no.srt", "--captions: this machine has no file 'no.srt'");
        row("play --captions /proc/version", "--captions: they are shown in a window, which --window has to name");
        row("play /dev/pts", "'/dev/pts': nothing in this folder can be played");
        row("play --repeat unsupported", "--repeat: 'unsupported' is not one of None, Track, All");
        row("record", "FILE is missing");
        row("record a.wav b.wav", "'b.wav' is too much");
        row("record / --force", "'/' is a folder");
        row("record --seconds 0 a.wav", "--seconds: '0' is not a number from 0.001 to 604800");
        row("record --channels surround a.wav", "--channels: 'surround' is not one of Default, Mono, Stereo");
        row("pps", "ls, cat, watch, write or serve is missing");
        row("pps dog /pps/a", "unknown action 'dog'");
        row("pps cat", "cat: OBJECT is missing");
        row("pps cat /pps/a /pps/b", "cat: '/pps/b' is too much");
        row("pps write /pps/a", "write: ATTRIBUTE is missing");
        row("publish demo", "'demo' is too much");
        row("publish --duration 1s", "--duration: '1s' is not a whole number of milliseconds");
        row("remote", "a command is missing");
        row("remote watch now", "watch: 'now' is too much");
        row("remote volume", "volume: F is missing");
        row("remote volume 2", "volume: '2' is not a number from 0 to 1 or a percentage");
        row("remote volume -3", "volume: '-3' is not a change by up to 100%, as +10%");
        row("remote pley", "unknown command 'pley'; did you mean 'play'?");
        row("completion tcsh", "unknown shell 'tcsh'");
        row("remote mute maybe", "mute: 'maybe' is not on or off");
        row("remote shuffle Unsupported", "shuffle: 'Unsupported' is not one of Off, All");
        row("keys", "watch or press is missing");
        row("keys hold Play", "unknown action 'hold'");
        row("keys watch", "watch: KEY is missing");
        row("keys press Play Stop", "press: 'Stop' is too much");
        row("keys press None",
            "press: 'None' is not one of FastForward, Pause, Play, PlayPause, Rewind, Stop, VolumeDown, "
            "VolumeUp, Previous, Next");
        row("keys watch Play --ms 3", "watch has no --ms");
        row("keys press Play --json", "press has no --json");
        row("keys press Play --ms long", "--ms: 'long' is not a whole number of milliseconds");
        row("doctor liver", "unknown check 'liver'");
        row("sound", "NAME or list is missing");
        row("sound list all", "'all' is too much");
    }

    void unusableArguments_areRefusedByName()
    {
        QFETCH(QStringList, arguments);
        const Result result = voro(arguments);
        QCOMPARE(result.status, 2);
        QCOMPARE(result.out, QByteArray());
        QTEST(result.err, "message");
    }

    void noUrl_isRefused()
    {
        const Result result = voro({"play", "http://["});
        QCOMPARE(result.status, 2);
        QVERIFY2(result.err.startsWith("voro: play: 'http://[' is no URL: "), result.err.constData());
    }

    void help_isPrinted_data()
    {
        const Rows<QStringList, QByteArrayList> row("arguments", "texts");
        row("general", {"--help"}, {"\n  play ", "\n  record ", "\n  pps ", "--version", "exit status"});
        row("of a command", {"play", "--help"}, {"\n  --start TIME ", "\n  --json ", "\nKeys:\n  space "});
        row("help play", {"help", "play"}, {"\n  --start TIME "});
        row("-h", {"-h"}, {"\n  play "});
    }

    void help_isPrinted()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArrayList, texts);
        const Result result = voro(arguments);
        QCOMPARE(result.status, 0);
        QCOMPARE(result.err, QByteArray());
        QVERIFY(result.out.startsWith("usage: voro "));
        for (const QByteArray &text : std::as_const(texts)) {
            QVERIFY2(result.out.contains(text), text.constData());
        }
    }

    void nothing_showsTheUsage()
    {
        const Result result = voro({});
        QCOMPARE(result.status, 2);
        QVERIFY(result.err.startsWith("usage: voro COMMAND"));
    }

    void completion_knowsCommandsOptionsAndValues()
    {
        QProcess bash;
        const QString script = QStringLiteral("source <('%1' completion bash); try() { COMP_WORDS=(voro \"$@\"); "
                                              "COMP_CWORD=$#; COMPREPLY=(); _voro; echo \"${COMPREPLY[*]}\"; }; "
                                              "try re; try remote vol; try play --sh; try play --repeat T; try play x")
                                   .arg(QStringLiteral(VORO_PROGRAM));
        bash.start("bash", {"-c", script});
        QVERIFY(bash.waitForFinished(PatienceMs));
        QCOMPARE(bash.readAllStandardOutput(),
                 QByteArray("record remote\nvolume volume-up volume-down\n--shuffle\nTrack\n\n"));
        for (const char *shell : {"zsh", "fish"}) {
            const QByteArray lines = voro({"completion", shell}).out;
            for (const char *word : {"doctor", "shuffle", "BassBoost", "volume-up"}) {
                QVERIFY2(lines.contains(word), shell);
            }
        }
    }

    void info_tellsWhatAMediumIsMadeOf()
    {
        const Daemon none(Daemon::Later);
        const Result plain = voro({"info", VORO_SAMPLE_FILE});
        QCOMPARE(plain.status, 0);
        for (const char *line : {"sample.ogg\n  container     Ogg\n", "\n  title         First Light\n",
                                 "\n  stream 1      audio, vorbis, 44100 Hz, 2 channels"}) {
            QVERIFY2(plain.out.contains(line), plain.out.constData());
        }
        const QJsonObject line = QJsonDocument::fromJson(voro({"info", "--json", VORO_SAMPLE_FILE}).out).object();
        QVERIFY(line["medium"]["duration"].toDouble() > 19'000);
        QCOMPARE(line["medium"]["streams"][0]["codec"].toString(), "vorbis");
        const Result bad = voro({"info", writeFile(none.folder() + "/junk.ogg", "no music"), none.folder()});
        QCOMPARE(bad.status, 1);
        QVERIFY2(bad.err.startsWith("voro: info: junk.ogg: this kind of media cannot be played\n"),
                 bad.err.constData());
        QVERIFY2(bad.err.endsWith(": this is a folder, not a medium\n"), bad.err.constData());
    }

    void remote_fails_whenNobodyPlays()
    {
        const SilentDaemon daemon;
        const Result result = voro({"remote", "play"});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.err, QByteArray("voro: remote: nothing plays that could be commanded\n"));
    }

    void commands_fail_withoutDaemon_data()
    {
        const Rows<QStringList, QByteArray> row("arguments", "message");
        row("pps", {"pps", "cat", "/pps/a"}, "voro: pps: /pps/a: ");
        row("play", {"play"}, "voro: play: the daemon cannot be reached: ");
        row("record", {"record", "/no-such-folder/a.wav"}, "voro: record: a.wav: the daemon cannot be reached: ");
        row("publish", {"publish"}, "voro: publish: the daemon cannot be reached: ");
        for (const char *action : {"watch", "press"}) {
            row(action, {"keys", QLatin1String(action), "Play"}, "voro: keys: ");
        }
        row("sound", {"sound", "InputKeypress"}, "voro: sound: the daemon cannot be reached: ");
        for (const char *command : {"next", "volume-up", "repeat", "status", "watch"}) {
            row(command, {"remote", QLatin1String(command)}, "voro: remote: the daemon cannot be reached: ");
        }
    }

    void commands_fail_withoutDaemon()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, message);
        const Daemon daemon(Daemon::Later);
        const Result result = voro(arguments);
        QCOMPARE(result.status, 1);
        QCOMPARE(result.out, QByteArray());
        QVERIFY2(lastLine(result.err).startsWith(message), result.err.constData());
    }

    void commands_endOrGoOn_whenDaemonGoes_data()
    {
        // Without one the command goes on.
        const Rows<QStringList, QStringList, QByteArray> row("arguments", "prod", "message");
        row("record", {"record", "a.ogg"}, {"--version"}, "voro: record: a.ogg: the daemon cannot be reached: ");
        row("pps", {"pps", "watch", "/pps/a"}, {"pps", "write", "/pps/a", "b::c"}, {});
        row("keys", {"keys", "watch", "Play", "--json"}, {"keys", "press", "Play"}, {});
    }

    void commands_endOrGoOn_whenDaemonGoes()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QStringList, prod);
        QFETCH(QByteArray, message);
        SilentDaemon daemon;
        QVERIFY(QDir::setCurrent(daemon.folder()));
        QCOMPARE(voro(prod).status, 0);
        RunningVoro running(arguments);
        while (running.bytesAvailable() == 0) {
            QCOMPARE(voro(prod).status, 0);
            running.waitForReadyRead(100);
        }
        daemon.kill();
        if (message.isEmpty()) {
            QVERIFY(daemon.start());
            running.readAllStandardOutput();
            while (running.bytesAvailable() == 0) {
                QCOMPARE(voro(prod).status, 0);
                running.waitForReadyRead(100);
            }
            QCOMPARE(running.interrupt(), 0);
            return;
        }
        QVERIFY(running.waitFor(message));
        QVERIFY(running.state() == QProcess::NotRunning || running.waitForFinished(PatienceMs));
        QCOMPARE(running.exitCode(), 1);
    }

    void record_keepsFileThatExists()
    {
        const Daemon daemon(Daemon::Later);
        const QString file = writeFile(daemon.folder() + "/100% a.wav", "precious");
        const Result refused = voro({"record", file});
        QCOMPARE(refused.status, 2);
        QCOMPARE(refused.err,
                 "voro: record: '" + file.toUtf8() + "' exists; --force replaces it (see voro record --help)\n");
        // A recording that never begins replaces nothing.
        QCOMPARE(voro({"record", "--force", file}).status, 1);
        QCOMPARE(readFile(file), QByteArray("precious"));
        const QString link = daemon.folder() + "/link.wav";
        QVERIFY(QFile::link(daemon.folder() + "/nowhere", link));
        QCOMPARE(voro({"record", link}).status, 2);
    }

    void record_plainOutput_endsWithTheWholeLength_data()
    {
        const Rows<int, QString, QByteArray> row("samplesAtOnce", "seconds", "summary");
        row("a steady source", 441, "0.777", "a.wav: 0:00, ");
        row("a source that gives a second at once", 44'100, "1.5", "a.wav: 0:01, ");
    }

    void record_plainOutput_endsWithTheWholeLength()
    {
        QFETCH(int, samplesAtOnce);
        QFETCH(QString, seconds);
        QFETCH(QByteArray, summary);
        const SilentDaemon daemon(samplesAtOnce);
        const QString file = daemon.folder() + "/a.wav";
        const Result result = voro({"record", "--seconds", seconds, file});
        QCOMPARE(result.status, 0);
        QVERIFY2(lastLine(result.out).startsWith(summary), result.out.constData());
        QVERIFY2(!result.out.contains("paused"), result.out.constData());
        // To the sample.
        const QByteArray head = readFile(file).left(80);
        QCOMPARE(head.size(), 80);
        const auto rate = qFromLittleEndian<quint32>(head.constData() + 60);
        const auto frameSize = qFromLittleEndian<quint16>(head.constData() + 68);
        const auto size = qFromLittleEndian<quint32>(head.constData() + 76);
        QCOMPARE(size / frameSize, static_cast<quint32>(std::ceil(seconds.toDouble() * rate)));
    }

    void pps_write_isSeenByCatAndList()
    {
        const Daemon daemon;
        const QString object = "/pps/test/object";
        QCOMPARE(voro({"pps", "cat", object}).status, 1);
        QCOMPARE(voro({"pps", "write", object, "a::one", "b:n:2", "c:json:{\"d\":[true]}"}).status, 0);
        const Result cat = voro({"pps", "cat", object});
        QCOMPARE(cat.status, 0);
        QCOMPARE(cat.out, QByteArray("@object\na::one\nb:n:2\nc:json:{\"d\":[true]}\n"));
        QCOMPARE(voro({"pps", "cat", object + "?f=b"}).out, QByteArray("@object\nb:n:2\n"));
        QCOMPARE(voro({"pps", "write", object, "-a", "-c"}).status, 0);
        QCOMPARE(voro({"pps", "cat", object}).out, QByteArray("@object\nb:n:2\n"));
        const Result bad = voro({"pps", "write", "/pps/test/bad", "no attribute"});
        QCOMPARE(bad.status, 1);
        QVERIFY2(bad.err.startsWith("voro: pps: /pps/test/bad: "), bad.err.constData());

        QCOMPARE(voro({"pps", "write", "/pps/hostile/a\u009bm", "a::\x1b[2J\u009b31m"}).status, 0);
        QCOMPARE(voro({"pps", "cat", "/pps/hostile/a\u009bm"}).out, "@a\ufffdm\na::\ufffd[2J\ufffd31m\n");
        QCOMPARE(voro({"pps", "ls", "/pps/hostile"}).out, "a\ufffdm\n");

        QCOMPARE(voro({"pps", "ls", "/pps/test/"}).out, QByteArray("object\n"));
        QVERIFY(voro({"pps", "ls"}).out.split('\n').contains("test/"));
        QCOMPARE(voro({"pps", "ls", "/nope/"}).err, QByteArray("voro: pps: /nope: no such folder\n"));
        const Result nowhere = voro({"pps", "ls", "/pps/nope"});
        QCOMPARE(nowhere.status, 1);
        QCOMPARE(nowhere.err, QByteArray("voro: pps: /pps/nope: no such folder\n"));
    }

    void pps_serve_receivesAndAnswers()
    {
        const Daemon daemon;
        const QString object = "/pps/test/control";
        QCOMPARE(voro({"pps", "watch", object}).status, 1);
        RunningVoro serve({"pps", "serve", object});
        // A client can open the object as soon as it is listed.
        QTRY_COMPARE_WITH_TIMEOUT(voro({"pps", "ls", "/pps/test"}).out, QByteArray("control\n"), PatienceMs);
        RunningVoro client({"pps", "watch", object});
        QVERIFY(serve.waitFor("+@control."));
        serve.write("@control\nmsg::first\n\n\n@control\nmsg::second\nid::2\n\n");
        QVERIFY(serve.waitForBytesWritten(PatienceMs));
        QVERIFY(client.waitFor("@control\nmsg::first\n\n@control\nmsg::second\nid::2\n\n"));
        QCOMPARE(voro({"pps", "write", object, "msg::hello"}).status, 0);
        QVERIFY(serve.waitFor("msg::hello\n"));
        QVERIFY(serve.waitFor("-@control."));
        QCOMPARE(serve.interrupt(), 0);
        QVERIFY(client.waitFor("voro: pps: /pps/test/control: "));
    }

    void keys_watch_tellsOfPresses_data()
    {
        const Rows<QStringList, QByteArrayList> row("options", "expected");
        row("clicked", {}, {"long press\nshort press\nshort press\n"});
        row("threshold", {"--notification", "threshold"}, {"long press\nshort press\n"});
        const QByteArray end(",\"key\":\"VolumeUp\"}\n");
        row("json", {"--json"},
            {"\"longPress\"" + end, "\"mediumPress\"" + end, "\"shortPress\"" + end, "\"shortPress\"" + end});
    }

    void keys_watch_tellsOfPresses()
    {
        QFETCH(QStringList, options);
        QFETCH(QByteArrayList, expected);
        const Daemon daemon;
        const auto press = [](const char *ms) {
            return voro({"keys", "press", "volumeup", "--ms", QLatin1String(ms)}).status;
        };
        RunningVoro watch(QStringList{"keys", "watch", "VolumeUp"} + options);
        // It does not say when it has begun to watch.
        while (watch.bytesAvailable() == 0) {
            QCOMPARE(press("0"), 0);
            watch.waitForReadyRead(100);
        }
        QCOMPARE(press("801"), 0);
        QCOMPARE(press("0"), 0);
        for (const QByteArray &text : std::as_const(expected)) {
            QVERIFY(watch.waitFor(text));
        }
        QCOMPARE(watch.interrupt(), 0);
        QCOMPARE(watch.rest(), QByteArray());
    }

    void keys_press_isRefused_byTheService()
    {
        const Daemon daemon;
        const Result result = voro({"keys", "press", "Play", "--ms", "60001"});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.err, QByteArray("voro: keys: bad length\n"));
    }

    void sound_isListed_andRequested()
    {
        const Daemon daemon(QStringList{"PULSE_SERVER=unix:/nonexistent"});
        const Result list = voro({"sound", "list"});
        QCOMPARE(list.status, 0);
        const QByteArrayList names = list.out.trimmed().split('\n');
        QCOMPARE(names.size(), 16);
        // Without a sound server a sound is silent, and that is no error.
        const Result played = voro({"sound", QString::fromLatin1(names.last())});
        QCOMPARE(played.status, 0);
        QCOMPARE(played.err, QByteArray("voro: sound: no sound server answers; playing without sound\n"));
    }

    void doctor_findsWhatIsThere_andWhatIsMissing()
    {
        {
            const SilentDaemon daemon;
            const Result well = voro({"doctor", "daemon", "sound"});
            QCOMPARE(well.status, 0);
            QVERIFY2(well.out.contains(
                         "; players and recorders: 0\n"
                         "good     sound        the sample plays; if you hear nothing, check volume and output in the "
                         "sound settings\n"
                         "good     sound        there is an input to record from\n"),
                     well.out.constData());
            qputenv("DISPLAY", ":nowhere");
            const Result windowless = voro({"doctor", "window", "confinement"});
            QCOMPARE(windowless.status, 1);
            QVERIFY2(windowless.out.startsWith("missing  window       the X server :nowhere does not answer\n"),
                     windowless.out.constData());
            QVERIFY(windowless.out.contains("\n                      try: run it in a desktop session"));
            QVERIFY(windowless.out.contains(" confinement  "));
        }
        const Daemon none(Daemon::Later);
        const Result ill = voro({"doctor", "--json", "sound", "daemon"});
        QCOMPARE(ill.status, 1);
        QCOMPARE(ill.out.count("\"signal\":\"finding\""), 3);
        QCOMPARE(ill.out.count("\"health\":\"missing\",\"text\":\"the daemon cannot be reached: "), 1);
        QVERIFY2(!ill.out.contains("good"), ill.out.constData());
    }

    void publish_andRemote_understandEachOther()
    {
        const Daemon daemon;
        RunningVoro publish({"publish", "--name=demo", "--title=A song", "--duration=60000", "--state=started"});
        QVERIFY(publish.waitFor("acquired\n"));
        RunningVoro watch({"remote", "--json", "watch"});
        QVERIFY(publish.waitFor("watched\n"));
        QVERIFY(watch.waitFor("\"title\":\"A song\""));
        for (const char *command :
             {"play", "pause", "stop", "next", "previous", "forward", "rewind", "repeat", "shuffle"}) {
            QCOMPARE(voro({"remote", QLatin1String(command)}).status, 0);
            QVERIFY2(publish.waitFor(QByteArray(command) + '\n'), command);
        }
        QCOMPARE(voro({"remote", "repeat", "all"}).status, 0);
        QVERIFY(publish.waitFor("repeat All\n"));
        publish.write("bogus\nstate odd\nposition 7000\nrepeat track\nstate Paused\n");
        QVERIFY(publish.waitFor("voro: publish: unknown line 'bogus'\nvoro: publish: state: 'odd' is not one of "));
        QVERIFY(watch.waitFor("\"mediaState\":\"Paused\""));
        QVERIFY(watch.waitFor("\"repeatMode\":\"Track\""));
        QCOMPARE(voro({"remote", "status"}).out,
                 QByteArray("state: Paused\ntitle: A song\nduration: 1:00\nposition: 0:07\nnext: true\nprevious: true\n"
                            "repeat: Track\nshuffle: Off\n"));
        publish.write("track\n");
        QVERIFY(publish.waitForBytesWritten(PatienceMs));
        QVERIFY(watch.waitFor("\"signal\":\"trackChanged\"}"));
        publish.write("revoke\n");
        QVERIFY(publish.waitFor("revoked\n"));
        QVERIFY(watch.waitFor("\"mediaState\":\"Stopped\""));
        QCOMPARE(watch.interrupt(), 0);
        // A line was refused.
        QCOMPARE(publish.interrupt(), 1);
    }

    void publish_losesTheRole_andTakesItAgain()
    {
        const Daemon daemon;
        RunningVoro publish({"publish"});
        QVERIFY(publish.waitFor("acquired\n"));
        RunningVoro other({"publish", "--name=other", "--priority=high", "--json"});
        QVERIFY(other.waitFor("\"signal\":\"acquired\"}\n"));
        QVERIFY(publish.waitFor("revoked by other (process " + QByteArray::number(other.processId()) + ")\n"));
        publish.write("acquire\n");
        QVERIFY(
            publish.waitFor("voro: publish: something that is needed is missing or in use (ResourceUnavailable)\n"));
        other.write("revoke\nquit\n");
        QVERIFY(other.waitForFinished(PatienceMs));
        QCOMPARE(other.exitCode(), 0);
        publish.write("acquire\n");
        QVERIFY(publish.waitFor("acquired\n"));
    }

    void doctor_tellsWhichDaemonRuns_andReplacesIt()
    {
        QTemporaryDir folder;
        qputenv("VORO_RUNTIME_DIR", folder.path().toLocal8Bit());
        qunsetenv("VORO_AUTOSPAWN");
        const QRegularExpression running(QStringLiteral(
            "^good     daemon       the daemon answers: version 1\\.0\\.0, protocol \\d+, process (\\d+), in /"));
        pid_t before = 0;
        for (int i = 0; i < 2; ++i) {
            const Result restarted = voro({"doctor", "--restart", "daemon"});
            QCOMPARE(restarted.status, 0);
            const pid_t process = running.match(QString::fromLocal8Bit(restarted.out)).captured(1).toInt();
            QVERIFY2(process > 0 && process != before, restarted.out.constData());
            QVERIFY(before == 0 || ::kill(before, 0) != 0);
            before = process;
        }
        ::kill(before, SIGTERM);
    }
};

QTEST_GUILESS_MAIN(tst_voro)
#include "tst_voro.moc"
