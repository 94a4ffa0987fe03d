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
    void unusableArguments_areRefusedByName_data();
    void unusableArguments_areRefusedByName();
    void help_isPrinted_data();
    void help_isPrinted();
    void nothing_showsTheUsage();
    void completion_knowsCommandsOptionsAndValues();
    void info_tellsWhatAMediumIsMadeOf();
    void remote_fails_whenNobodyPlays();
    void commands_fail_withoutDaemon_data();
    void commands_fail_withoutDaemon();
    void commands_endOrGoOn_whenDaemonGoes_data();
    void commands_endOrGoOn_whenDaemonGoes();

    void record_keepsFileThatExists();
    void record_plainOutput_endsWithTheWholeLength_data();
    void record_plainOutput_endsWithTheWholeLength();

    void pps_write_isSeenByCatAndList();
    void pps_write_deletesAttribute_namedWithDash();
    void pps_badText_isRefused();
    void pps_watch_printsEveryChange_untilInterrupted();
    void pps_serve_receivesAndAnswers();

    void keys_watch_tellsOfPresses_data();
    void keys_watch_tellsOfPresses();
    void keys_press_isRefused_byTheService();
    void sound_isListed_andRequested();
    void doctor_findsWhatIsThere_andWhatIsMissing();

    void publish_andRemote_understandEachOther();
    void publish_losesTheRole_andTakesItAgain();

    void doctor_tellsWhichDaemonRuns_andReplacesIt();
};

void tst_voro::unusableArguments_areRefusedByName_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const QString &line, const char *message) {
        const QStringList arguments = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        QTest::newRow(qPrintable(line.isEmpty() ? "(nothing)" : line)) << arguments << QByteArray(message);
    };
    row("paly", "voro: unknown command 'paly'; did you mean 'play'? (see voro --help)");
    row("dance", "voro: unknown command 'dance' (see voro --help)");
    row("help paly", "voro: unknown command 'paly'; did you mean 'play'? (see voro --help)");
    row("--jsn play", "voro: unknown option '--jsn' (see voro --help)");
    row("--version play", "voro: --version stands alone (see voro --help)");
    row("play --loud", "voro: play: unknown option '--loud' (see voro play --help)");
    row("play --volume", "voro: play: --volume: F is missing (see voro play --help)");
    row("play --vlume 1", "voro: play: unknown option '--vlume'; did you mean '--volume'? (see voro play --help)");
    row("play --volume 150%",
        "voro: play: --volume: '150%' is not a number from 0 to 1 or a percentage (see voro play --help)");
    row("play --volume +5%",
        "voro: play: --volume: '+5%' is not a number from 0 to 1 or a percentage (see voro play --help)");
    row("play --start=1:70",
        "voro: play: --start: '1:70' is not a time as 1:30, or a whole number of milliseconds (see voro play --help)");
    row("play --speed -1", "voro: play: --speed: nothing comes before the beginning; --start says where to begin (see "
                           "voro play --help)");
    row("play --speed 0.2", "voro: play: --speed: nothing plays slower than at 0.25 (see voro play --help)");
    row("play --window w", "voro: play: --window: 'w' is not the number of a window (see voro play --help)");
    row("play --captions a.srt", "voro: play: --captions: they are shown in a window, which --window has to name (see "
                                 "voro play --help)");
    row("play /dev/pts", "voro: play: '/dev/pts': nothing in this folder can be played (see voro play "
                         "--help)");
    row("play --repeat unsupported",
        "voro: play: --repeat: 'unsupported' is not one of None, Track, All (see voro play --help)");
    row("play --json=1", "voro: play: --json takes no value (see voro play --help)");
    row("play http://[", nullptr);
    row("record", "voro: record: FILE is missing (see voro record --help)");
    row("record a.wav b.wav", "voro: record: 'b.wav' is too much (see voro record --help)");
    row("record / --force", "voro: record: '/' is a folder (see voro record --help)");
    row("record --loud a.wav", "voro: record: unknown option '--loud' (see voro record --help)");
    row("record --seconds 0 a.wav",
        "voro: record: --seconds: '0' is not a number from 0.001 to 604800 (see voro record --help)");
    row("record --channels surround a.wav",
        "voro: record: --channels: 'surround' is not one of Default, Mono, Stereo (see voro record --help)");
    row("pps", "voro: pps: ls, cat, watch, write or serve is missing (see voro pps --help)");
    row("pps dog /pps/a", "voro: pps: unknown action 'dog' (see voro pps --help)");
    row("pps cat", "voro: pps: cat: OBJECT is missing (see voro pps --help)");
    row("pps cat /pps/a /pps/b", "voro: pps: cat: '/pps/b' is too much (see voro pps --help)");
    row("pps write /pps/a", "voro: pps: write: ATTRIBUTE is missing (see voro pps --help)");
    row("publish demo", "voro: publish: 'demo' is too much (see voro publish --help)");
    row("publish --priority middle",
        "voro: publish: --priority: 'middle' is not one of Low, High (see voro publish --help)");
    row("publish --duration 1s",
        "voro: publish: --duration: '1s' is not a whole number of milliseconds (see voro publish --help)");
    row("remote", "voro: remote: a command is missing (see voro remote --help)");
    row("remote fly", "voro: remote: unknown command 'fly' (see voro remote --help)");
    row("remote play now", "voro: remote: play: 'now' is too much (see voro remote --help)");
    row("remote watch now", "voro: remote: watch: 'now' is too much (see voro remote --help)");
    row("remote volume", "voro: remote: volume: F is missing (see voro remote --help)");
    row("remote volume 2",
        "voro: remote: volume: '2' is not a number from 0 to 1 or a percentage (see voro remote --help)");
    row("remote volume -3",
        "voro: remote: volume: '-3' is not a change by up to 100%, as +10% (see voro remote --help)");
    row("remote pley", "voro: remote: unknown command 'pley'; did you mean 'play'? (see voro remote --help)");
    row("completion tcsh", "voro: completion: unknown shell 'tcsh' (see voro completion --help)");
    row("remote mute maybe", "voro: remote: mute: 'maybe' is not on or off (see voro remote --help)");
    row("remote shuffle Unsupported",
        "voro: remote: shuffle: 'Unsupported' is not one of Off, All (see voro remote --help)");
    row("keys", "voro: keys: watch or press is missing (see voro keys --help)");
    row("keys hold Play", "voro: keys: unknown action 'hold' (see voro keys --help)");
    row("keys watch", "voro: keys: watch: KEY is missing (see voro keys --help)");
    row("keys press Play Stop", "voro: keys: press: 'Stop' is too much (see voro keys --help)");
    row("keys press None", "voro: keys: press: 'None' is not one of FastForward, Pause, Play, "
                           "PlayPause, Rewind, Stop, VolumeDown, VolumeUp, "
                           "Previous, Next (see voro keys --help)");
    row("keys watch Play --ms 3", "voro: keys: watch has no --ms (see voro keys --help)");
    row("keys press Play --json", "voro: keys: press has no --json (see voro keys --help)");
    row("keys press Play --ms long",
        "voro: keys: --ms: 'long' is not a whole number of milliseconds (see voro keys --help)");
    row("keys watch Play --notification held",
        "voro: keys: --notification: 'held' is not one of Clicked, Threshold (see voro keys --help)");
    row("doctor liver", "voro: doctor: unknown check 'liver' (see voro doctor --help)");
    row("sound", "voro: sound: NAME or list is missing (see voro sound --help)");
    row("sound list all", "voro: sound: 'all' is too much (see voro sound --help)");
}

void tst_voro::unusableArguments_areRefusedByName()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, message);
    const Result result = voro(arguments);
    QCOMPARE(result.status, 2);
    QCOMPARE(result.out, QByteArray());
    if (message.isEmpty()) {
        QVERIFY2(result.err.startsWith("voro: play: 'http://[' is no URL: "), result.err.constData());
    } else {
        QCOMPARE(result.err, message + '\n');
    }
}

void tst_voro::help_isPrinted_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArrayList>("texts");
    QTest::newRow("general") << QStringList{"--help"}
                             << QByteArrayList{"\n  play ", "\n  record ", "\n  pps ", "--version", "exit status"};
    QTest::newRow("play") << QStringList{"play", "--help"}
                          << QByteArrayList{"\n  --start TIME ",   "\n  --speed F ", "\n  --volume F ",
                                            "\n  --repeat MODE ",  "\n  --eq NAME ", "\n  --window ID ",
                                            "\n  --captions URL ", "\n  --json ",    "\nKeys:\n  space "};
    QTest::newRow("help play") << QStringList{"help", "play"} << QByteArrayList{"\n  --start TIME "};
    QTest::newRow("-h") << QStringList{"-h"} << QByteArrayList{"\n  play "};
    QTest::newRow("record") << QStringList{"record", "--help"}
                            << QByteArrayList{"\n  --seconds N ", "\n  --channels NAME ", "\n  --force ",
                                              "\n  --json "};
    QTest::newRow("pps") << QStringList{"pps", "--help"}
                         << QByteArrayList{"\n  ls ", "\n  cat ", "\n  watch ", "\n  write ", "\n  serve "};
    QTest::newRow("publish") << QStringList{"publish", "--help"}
                             << QByteArrayList{"\n  --name N ", "\n  --title T ", "\n  state NAME ", "\n  revoke"};
    QTest::newRow("remote") << QStringList{"remote", "--help"}
                            << QByteArrayList{" playpause ", "\n  volume F ", "\n  status ", "\n  watch "};
}

void tst_voro::help_isPrinted()
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

void tst_voro::nothing_showsTheUsage()
{
    const Result result = voro({});
    QCOMPARE(result.status, 2);
    QVERIFY(result.err.startsWith("usage: voro COMMAND"));
}

void tst_voro::completion_knowsCommandsOptionsAndValues()
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

void tst_voro::info_tellsWhatAMediumIsMadeOf()
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
    QFile junk(none.folder() + "/junk.ogg");
    QVERIFY(junk.open(QFile::WriteOnly) && junk.write("no music") > 0);
    junk.close();
    const Result bad = voro({"info", junk.fileName(), none.folder()});
    QCOMPARE(bad.status, 1);
    QVERIFY2(bad.err.startsWith("voro: info: junk.ogg: this kind of media cannot be played\n"), bad.err.constData());
    QVERIFY2(bad.err.endsWith(": this is a folder, not a medium\n"), bad.err.constData());
}

void tst_voro::remote_fails_whenNobodyPlays()
{
    const SilentDaemon daemon;
    const Result result = voro({"remote", "play"});
    QCOMPARE(result.status, 1);
    QCOMPARE(result.err, QByteArray("voro: remote: nothing plays that could be commanded\n"));
}

void tst_voro::commands_fail_withoutDaemon_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("pps") << QStringList{"pps", "cat", "/pps/a"} << QByteArray("voro: pps: /pps/a: ");
    QTest::newRow("play") << QStringList{"play"} << QByteArray("voro: play: the daemon cannot be reached: ");
    QTest::newRow("record") << QStringList{"record", "/no-such-folder/a.wav"}
                            << QByteArray("voro: record: a.wav: the daemon cannot be reached: ");
    QTest::newRow("publish") << QStringList{"publish"} << QByteArray("voro: publish: the daemon cannot be reached: ");
    for (const char *action : {"watch", "press"}) {
        QTest::newRow(action) << QStringList{"keys", QLatin1String(action), "Play"} << QByteArray("voro: keys: ");
    }
    QTest::newRow("sound") << QStringList{"sound", "InputKeypress"}
                           << QByteArray("voro: sound: the daemon cannot be reached: ");
    for (const char *command : {"next", "volume-up", "repeat"}) {
        QTest::newRow(command) << QStringList{"remote", QLatin1String(command)}
                               << QByteArray("voro: remote: the daemon cannot be reached: ");
    }
    for (const char *command : {"status", "watch"}) {
        QTest::newRow(command) << QStringList{"remote", QLatin1String(command)}
                               << QByteArray("voro: remote: the daemon cannot be reached: ");
    }
}

void tst_voro::commands_fail_withoutDaemon()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, message);
    const Daemon daemon(Daemon::Later);
    const Result result = voro(arguments);
    QCOMPARE(result.status, 1);
    QCOMPARE(result.out, QByteArray());
    QVERIFY2(lastLine(result.err).startsWith(message), result.err.constData());
}

void tst_voro::commands_endOrGoOn_whenDaemonGoes_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("prod");
    // Without one the command goes on.
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("record") << QStringList{"record", "a.ogg"} << QStringList{"--version"}
                            << QByteArray("voro: record: a.ogg: the daemon cannot be reached: ");
    QTest::newRow("pps") << QStringList{"pps", "watch", "/pps/a"} << QStringList{"pps", "write", "/pps/a", "b::c"}
                         << QByteArray();
    QTest::newRow("keys") << QStringList{"keys", "watch", "Play", "--json"} << QStringList{"keys", "press", "Play"}
                          << QByteArray();
}

void tst_voro::commands_endOrGoOn_whenDaemonGoes()
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

void tst_voro::record_keepsFileThatExists()
{
    const Daemon daemon(Daemon::Later);
    QFile file(daemon.folder() + "/100% a.wav");
    QVERIFY(file.open(QIODevice::ReadWrite));
    file.write("precious");
    file.flush();
    const Result refused = voro({"record", file.fileName()});
    QCOMPARE(refused.status, 2);
    QCOMPARE(refused.err,
             "voro: record: '" + file.fileName().toUtf8() + "' exists; --force replaces it (see voro record --help)\n");
    // A recording that never begins replaces nothing.
    QCOMPARE(voro({"record", "--force", file.fileName()}).status, 1);
    file.seek(0);
    QCOMPARE(file.readAll(), QByteArray("precious"));
    const QString link = daemon.folder() + "/link.wav";
    QVERIFY(QFile::link(daemon.folder() + "/nowhere", link));
    QCOMPARE(voro({"record", link}).status, 2);
}

void tst_voro::record_plainOutput_endsWithTheWholeLength_data()
{
    QTest::addColumn<int>("samplesAtOnce");
    QTest::addColumn<QString>("seconds");
    QTest::addColumn<QByteArray>("summary");
    QTest::newRow("a steady source") << 441 << "0.777" << QByteArray("a.wav: 0:00, ");
    QTest::newRow("a source that gives a second at once") << 44'100 << "1.5" << QByteArray("a.wav: 0:01, ");
}

void tst_voro::record_plainOutput_endsWithTheWholeLength()
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
    QFile recording(file);
    QVERIFY(recording.open(QFile::ReadOnly));
    const QByteArray head = recording.read(80);
    const auto rate = qFromLittleEndian<quint32>(head.constData() + 60);
    const auto frameSize = qFromLittleEndian<quint16>(head.constData() + 68);
    const auto size = qFromLittleEndian<quint32>(head.constData() + 76);
    QCOMPARE(size / frameSize, static_cast<quint32>(std::ceil(seconds.toDouble() * rate)));
}

void tst_voro::pps_write_isSeenByCatAndList()
{
    const Daemon daemon;
    const QString object = "/pps/test/object";
    QCOMPARE(voro({"pps", "cat", object}).status, 1);
    QCOMPARE(voro({"pps", "write", object, "a::one", "b:n:2", "c:json:{\"d\":[true]}"}).status, 0);
    const Result cat = voro({"pps", "cat", object});
    QCOMPARE(cat.status, 0);
    QCOMPARE(cat.out, QByteArray("@object\na::one\nb:n:2\nc:json:{\"d\":[true]}\n"));
    QCOMPARE(voro({"pps", "cat", object + "?f=b"}).out, QByteArray("@object\nb:n:2\n"));

    QCOMPARE(voro({"pps", "ls", "/pps/test/"}).out, QByteArray("object\n"));
    QVERIFY(voro({"pps", "ls"}).out.split('\n').contains("test/"));
    QCOMPARE(voro({"pps", "ls", "/nope/"}).err, QByteArray("voro: pps: /nope: no such folder\n"));
    const Result nowhere = voro({"pps", "ls", "/pps/nope"});
    QCOMPARE(nowhere.status, 1);
    QCOMPARE(nowhere.err, QByteArray("voro: pps: /pps/nope: no such folder\n"));
}

void tst_voro::pps_write_deletesAttribute_namedWithDash()
{
    const Daemon daemon;
    const QString object = "/pps/object";
    const auto write = [&](const QStringList &lines) {
        return voro(QStringList{"pps", "write", object} + lines).status;
    };
    QCOMPARE(write({"a::1", "b::2"}), 0);
    QCOMPARE(write({"-a"}), 0);
    QCOMPARE(voro({"pps", "cat", object}).out, QByteArray("@object\nb::2\n"));
}

void tst_voro::pps_badText_isRefused()
{
    const Daemon daemon;
    const Result result = voro({"pps", "write", "/pps/a", "no attribute"});
    QCOMPARE(result.status, 1);
    QVERIFY2(result.err.startsWith("voro: pps: /pps/a: "), result.err.constData());
    QCOMPARE(voro({"pps", "cat", "/pps/a"}).status, 1);
}

void tst_voro::pps_watch_printsEveryChange_untilInterrupted()
{
    const Daemon daemon;
    const QString object = "/pps/object";
    const auto write = [&](const QString &line) { return voro({"pps", "write", object, line}).status; };
    QCOMPARE(write("a::1"), 0);
    RunningVoro watch({"pps", "watch", object + "?delta"});
    QVERIFY(watch.waitFor("@object\na::1\n\n"));
    QCOMPARE(write("b::2"), 0);
    QVERIFY(watch.waitFor("@object\nb::2\n\n"));
    QCOMPARE(watch.interrupt(), 0);
}

void tst_voro::pps_serve_receivesAndAnswers()
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

void tst_voro::keys_watch_tellsOfPresses_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArrayList>("expected");
    QTest::newRow("clicked") << QStringList() << QByteArrayList{"long press\nshort press\nshort press\n"};
    QTest::newRow("threshold") << QStringList{"--notification", "threshold"}
                               << QByteArrayList{"long press\nshort press\n"};
    const QByteArray end(",\"key\":\"VolumeUp\"}\n");
    QTest::newRow("json") << QStringList{"--json"}
                          << QByteArrayList{"\"longPress\"" + end, "\"mediumPress\"" + end, "\"shortPress\"" + end,
                                            "\"shortPress\"" + end};
}

void tst_voro::keys_watch_tellsOfPresses()
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

void tst_voro::keys_press_isRefused_byTheService()
{
    const Daemon daemon;
    const Result result = voro({"keys", "press", "Play", "--ms", "60001"});
    QCOMPARE(result.status, 1);
    QCOMPARE(result.err, QByteArray("voro: keys: bad length\n"));
}

void tst_voro::sound_isListed_andRequested()
{
    Daemon daemon(Daemon::Later);
    QVERIFY(daemon.start({"PULSE_SERVER=unix:/nonexistent"}));
    const Result list = voro({"sound", "list"});
    QCOMPARE(list.status, 0);
    const QByteArrayList names = list.out.trimmed().split('\n');
    QCOMPARE(names.size(), 16);
    // Without a sound server a sound is silent, and that is no error.
    const Result played = voro({"sound", QString::fromLatin1(names.last())});
    QCOMPARE(played.status, 0);
    QCOMPARE(played.err, QByteArray("voro: sound: no sound server answers; playing without sound\n"));
}

void tst_voro::doctor_findsWhatIsThere_andWhatIsMissing()
{
    {
        const SilentDaemon daemon;
        const Result well = voro({"doctor", "daemon", "sound"});
        QCOMPARE(well.status, 0);
        QVERIFY2(well.out.contains("; players and recorders: 0\n"
                                   "good     sound        the sample plays\n"
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

void tst_voro::publish_andRemote_understandEachOther()
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

void tst_voro::publish_losesTheRole_andTakesItAgain()
{
    const Daemon daemon;
    RunningVoro publish({"publish"});
    QVERIFY(publish.waitFor("acquired\n"));
    RunningVoro other({"publish", "--name=other", "--priority=high", "--json"});
    QVERIFY(other.waitFor("\"signal\":\"acquired\"}\n"));
    QVERIFY(publish.waitFor("revoked by other (process " + QByteArray::number(other.processId()) + ")\n"));
    publish.write("acquire\n");
    QVERIFY(publish.waitFor("voro: publish: something that is needed is missing or in use (ResourceUnavailable)\n"));
    other.write("revoke\nquit\n");
    QVERIFY(other.waitForFinished(PatienceMs));
    QCOMPARE(other.exitCode(), 0);
    publish.write("acquire\n");
    QVERIFY(publish.waitFor("acquired\n"));
}

void tst_voro::doctor_tellsWhichDaemonRuns_andReplacesIt()
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

QTEST_GUILESS_MAIN(tst_voro)
#include "tst_voro.moc"
