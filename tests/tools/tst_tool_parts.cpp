// The parts of the program voro that take arguments and media.

#include "Arguments.h"
#include "InputServer.h"
#include "MediaFolder.h"
#include "StandardInput.h"

#include <multimedia/EqualizerPreset.h>
#include <multimedia/RepeatMode.h>

#include <QtTest/QtTest>

#include <doctor/CodecsCheck.h>
#include <Files.h>
#include <netinet/in.h>
#include <Rows.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>
#include <words/ErrorWords.h>

#include <array>
#include <thread>

using namespace voro;

namespace {

const CommandHelp Help{
    .name = "test",
    .synopsis = "",
    .summary = "",
    .details = "",
    .options = {{"--flag", nullptr, ""}, {"--value", "V", ""}},
};

/** Why the arguments are refused; empty when they are not. */
template<typename Function>
QString refusal(Function function)
{
    try {
        function();
    } catch (const UsageError &error) {
        return error.reason;
    }
    return {};
}

/** What a server of this machine answers to a request for the URL, to its end. */
QByteArray answerOf(const QUrl &url)
{
    const pps::Fd socket(::socket(AF_INET, SOCK_STREAM, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(url.port()));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const QByteArray request = "GET " + url.path().toLatin1() + " HTTP/1.1\r\n\r\n";
    if (connect(socket.get(), reinterpret_cast<sockaddr *>(&address), sizeof address) != 0
        || send(socket.get(), request.constData(), static_cast<size_t>(request.size()), 0) != request.size()) {
        return "no answer";
    }
    QByteArray answer;
    std::array<char, 4096> bytes{};
    for (ssize_t count = 0; (count = recv(socket.get(), bytes.data(), bytes.size(), 0)) > 0;) {
        answer.append(bytes.data(), count);
    }
    return answer;
}

} // namespace

class tst_tool_parts : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void arguments_data()
    {
        const Rows<QByteArrayList, QString, QByteArrayList, QByteArray> row("raw", "reason", "operands", "value");
        using List = QByteArrayList;
        row("none", List{}, {}, List{}, {});
        row("operands between options", List{"a", "--value", "1", "b", "--flag"}, {}, List{"a", "b"}, "1");
        row("value after equals sign", List{"--value=x=y"}, {}, List{}, "x=y");
        row("negative value", List{"--value", "-1"}, {}, List{}, "-1");
        row("last value counts", List{"--value=1", "--value=2"}, {}, List{}, "2");
        row("end of options", List{"--", "--flag", "--"}, {}, List{"--flag", "--"}, {});
        row("one dash is an operand", List{"-"}, {}, List{"-"}, {});
        row("unknown", List{"--flog"}, "unknown option '--flog'; did you mean '--flag'?", List{}, {});
        row("unknown with value", List{"--flog=1"}, "unknown option '--flog'; did you mean '--flag'?", List{}, {});
        row("short", List{"-v"}, "unknown option '-v'", List{}, {});
        row("no abbreviations", List{"--val", "1"}, "unknown option '--val'; did you mean '--value'?", List{}, {});
        row("value missing", List{"--value"}, "--value: V is missing", List{}, {});
        row("value too much", List{"--flag=1"}, "--flag takes no value", List{}, {});
    }

    void arguments()
    {
        QFETCH(QByteArrayList, raw);
        QFETCH(QString, reason);
        QCOMPARE(refusal([&] { Arguments(Help, raw); }), reason);
        if (!reason.isEmpty()) {
            return;
        }
        const Arguments parsed(Help, raw);
        QTEST(parsed.operands(), "operands");
        QTEST(parsed.value("--value").value_or(QByteArray()), "value");
    }

    void numbers_areRefused_outsideTheirRange_data()
    {
        const Rows<QByteArray, bool, bool> row("text", "isNumber", "isMilliseconds");
        row("0", "0", true, true);
        row("1", "1", true, true);
        row("fraction", "0.25", true, false);
        row("above", "1.01", false, false);
        row("below", "-0.1", false, false);
        row("large", "4294967295", false, true);
        row("too large", "4294967296", false, false);
        row("not a number", "nan", false, false);
        row("infinite", "inf", false, false);
        row("empty", "", false, false);
    }

    void numbers_areRefused_outsideTheirRange()
    {
        QFETCH(QByteArray, text);
        const Arguments parsed(Help, {"--value", text});
        const QString asNumber = refusal([&] { QCOMPARE(*parsed.number("--value", 0, 1), text.toDouble()); });
        QTEST(asNumber.isEmpty(), "isNumber");
        const QString asMilliseconds = refusal([&] { QCOMPARE(*parsed.milliseconds("--value"), text.toUInt()); });
        QTEST(asMilliseconds.isEmpty(), "isMilliseconds");
        for (const QString &reason : {asNumber, asMilliseconds}) {
            QVERIFY(reason.isEmpty()
                    || reason.startsWith(QStringLiteral("--value: '%1' is not ").arg(QString::fromUtf8(text))));
        }
    }

    void enumerators_areFound_byNameInAnyCase()
    {
        using multimedia::EqualizerPreset;
        using multimedia::RepeatMode;
        const auto preset = [](const char *name) {
            return Arguments(Help, {"--value", name}).enumerator<EqualizerPreset>("--value");
        };
        QCOMPARE(preset("BassBoost"), std::optional(EqualizerPreset::BassBoost));
        QCOMPARE(preset("rhythmandblues"), std::optional(EqualizerPreset::RhythmAndBlues));
        QVERIFY(!Arguments(Help, {}).enumerator<EqualizerPreset>("--value"));
        for (const char *name : {"Unsupported", "always", "1", ""}) {
            QCOMPARE(refusal([&] {
                         (void)Arguments(Help, {"--value", name}).enumerator<RepeatMode>("--value", {"Unsupported"});
                     }),
                     QStringLiteral("--value: '%1' is not one of None, Track, All").arg(QLatin1String(name)));
        }
    }

    void operandsMayBeginWithDash_afterTheFirst()
    {
        CommandHelp help = Help;
        help.operandsMayBeginWithDash = true;
        const Arguments parsed(help, {"--flag", "write", "-name", "--flag=1"});
        QVERIFY(parsed.has("--flag"));
        QCOMPARE(parsed.operands(), (QByteArrayList{"write", "-name", "--flag=1"}));
    }

    void medium_data()
    {
        // The path that the library will open, or the URL as text; %1 is the working folder.
        const Rows<QByteArray, bool, QString, QString> row("argument", "isCreated", "path", "url");
        for (const char *name : {"plain.ogg", "with blank.ogg", "100%25.ogg", "50%.ogg", "a#b.ogg", "what?.ogg",
                                 "a+b&c;d.ogg", "http:tune.ogg", "\xc3\xa4.ogg", "-", "line\nfeed.ogg"}) {
            row(name, name, true, QStringLiteral("%1/") + QString::fromUtf8(name), {});
        }
        row("missing", "no such.ogg", false, "%1/no such.ogg", {});
        row("absolute", "/no%41such/b.ogg", false, "/no%41such/b.ogg", {});
        row("drive-like", "c:tune.ogg", false, "%1/c:tune.ogg", {});
        row("http", "http://host:80/a%20b.ogg?x=1#y", false, {}, "http://host:80/a%20b.ogg?x=1#y");
        row("file", "file:///tmp/a%2525.ogg", false, "/tmp/a%25.ogg", {});
    }

    void medium()
    {
        QFETCH(QByteArray, argument);
        QFETCH(bool, isCreated);
        QFETCH(QString, path);
        QFETCH(QString, url);
        const QTemporaryDir folder;
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder.path()));
        if (isCreated) {
            QVERIFY(QFile(QString::fromUtf8(argument)).open(QIODevice::WriteOnly));
        }
        const Medium medium = mediumFromArgument(argument);
        QDir::setCurrent(before);
        QVERIFY(medium.url.isValid());
        if (url.isEmpty()) {
            QCOMPARE(medium.name, QFileInfo(path).fileName());
            QCOMPARE(medium.url.toLocalFile(),
                     path.startsWith(QLatin1String("%1")) ? folder.path() + path.mid(2) : path);
        } else {
            QCOMPARE(medium.url.toString(QUrl::FullyEncoded), url);
        }
    }

    void medium_hasUsableUrl_forNameThatIsNoUtf8()
    {
        const QTemporaryDir folder;
        const QByteArray path = QFile::encodeName(folder.path()) + "/\xff.ogg";
        FILE *file = std::fopen(path.constData(), "w");
        QVERIFY(file);
        std::fputs("content", file);
        std::fclose(file);
        QCOMPARE(readFile(mediumFromArgument(path).url.toLocalFile()), QByteArray("content"));
        std::remove(path.constData());
    }

    void folder_givesItsMedia_inTheOrderOfNames()
    {
        const QTemporaryDir folder;
        const QDir dir(folder.path());
        QVERIFY(dir.mkpath("Disc 10") && dir.mkpath("disc 9") && dir.mkpath(".hidden"));
        for (const char *name : {"10.ogg", "9.MKV", "b.ts", "notes.txt", "list.m3u", "Disc 10/a.mp3", "disc 9/a.flac",
                                 ".hidden/a.ogg", ".a.ogg"}) {
            QVERIFY(QFile(dir.filePath(name)).open(QFile::WriteOnly));
        }
        // It would go round in circles.
        QVERIFY(QFile::link(folder.path(), dir.filePath("again")));
        QStringList found;
        for (const QByteArray &path : mediaBelow(QFile::encodeName(folder.path()))) {
            found += dir.relativeFilePath(QFile::decodeName(path));
        }
        QCOMPARE(found, (QStringList{"9.MKV", "10.ogg", "b.ts", "disc 9/a.flac", "Disc 10/a.mp3"}));
    }

    void input_isRefused_whenItHasTooMuch()
    {
        int ends[2];
        QVERIFY(pipe(ends) == 0 && dup2(ends[0], STDIN_FILENO) >= 0 && write(ends[1], "1234", 4) == 4);
        close(ends[1]);
        QCOMPARE(refusal([] { inputMedium(InputUse::FromAnywhere, 3); }),
                 "standard input has more than 3 bytes; play it from a file");
    }

    void input_playsBeforeItsEnd_unlessItsContentsComeLater_data()
    {
        const Rows<QByteArray, bool> row("beginning", "plays");
        const auto box = [](const char *type) { return QByteArray("\0\0\0\x10", 4) + type + QByteArray(8, 'x'); };
        row("other format", QByteArray("OggS") + QByteArray(12, 'x'), true);
        row("too little to know", "OggS", false);
        row("contents first", box("ftyp") + box("free") + box("moov"), true);
        row("contents behind", box("ftyp") + box("mdat") + box("moov"), false);
        row("contents to come", box("ftyp"), false);
        row("broken length", box("ftyp") + QByteArray(4, '\0') + "free" + QByteArray(8, 'x'), false);
    }

    void input_playsBeforeItsEnd_unlessItsContentsComeLater()
    {
        QFETCH(const QByteArray, beginning);
        QTemporaryFile file;
        QVERIFY(file.open() && file.write(beginning) == beginning.size() && file.flush());
        QTEST(playsBeforeItsEnd(file.handle()), "plays");
    }

    void inputServer_passesEverythingOn_andKeepsLittle()
    {
        constexpr qint64 Most = 256 * 1024;
        QByteArray input;
        for (int i = 0; input.size() < 16 * Most; ++i) {
            input += QByteArray::number(i);
        }
        int ends[2];
        QVERIFY(pipe(ends) == 0);
        std::thread writer([&] {
            for (qsizetype at = 0, count = 1; at < input.size() && count > 0; at += count) {
                count = write(ends[1], input.constData() + at, static_cast<size_t>(input.size() - at));
            }
            close(ends[1]);
        });
        QTemporaryFile file;
        QVERIFY(file.open());
        {
            const InputServer server(ends[0], pps::Fd(dup(file.handle())), 0, Most);
            const QByteArray answer = answerOf(server.url());
            QVERIFY(answer.startsWith("HTTP/1.1 200 OK\r\n"));
            QVERIFY(answer.mid(answer.indexOf("\r\n\r\n") + 4) == input);
            struct stat information {};
            QCOMPARE(fstat(file.handle(), &information), 0);
            QVERIFY2(information.st_blocks * 512 <= Most + 64 * 1024,
                     QByteArray::number(qint64(information.st_blocks) * 512));
            QVERIFY(answerOf(server.url()).startsWith("HTTP/1.1 410 "));
            QVERIFY(answerOf(server.url().resolved(QUrl("/guess"))).startsWith("HTTP/1.1 404 "));
        }
        writer.join();
        close(ends[0]);
    }

    void codecs_areMissing_byPackagesOfTheList()
    {
        const QTemporaryDir empty;
        const QByteArrayList packages = readFile(QStringLiteral(VORO_PACKAGES)).split('\n');
        QString texts;
        for (const doctor::Finding &finding : doctor::CodecsCheck(empty.path()).examine()) {
            texts += finding.text + '\n';
            const QByteArray remedy = finding.remedy.toLatin1();
            QVERIFY2(remedy.isEmpty() || packages.contains(remedy.mid(remedy.lastIndexOf(' ') + 1)),
                     remedy.constData());
        }
        for (const char *text : {"nothing plays: there is no plugin playback\n",
                                 "MP3 plays from files only, if at all: there "
                                 "is no plugin mpg123\n",
                                 "amr cannot be recorded: there is no plugin amrnb\n"}) {
            QVERIFY2(texts.contains(QLatin1String(text)), qPrintable(texts));
        }
        const auto present = doctor::CodecsCheck().examine();
        QVERIFY(std::all_of(present.begin(), present.end(),
                            [](const doctor::Finding &finding) { return finding.health == doctor::Health::Good; }));
    }

    void recordings_sayWhatIsWrongWithTheirPlace_data()
    {
        const Rows<multimedia::MediaError::Type, QString, QString> row("error", "file", "words");
        row("no such folder", multimedia::MediaError::OutputUnavailable, "/no-such/a.ogg", "There is no such folder.");
        row("folder that is forbidden", multimedia::MediaError::Permission, "/proc/a.ogg",
            "You may not write in this folder.");
        row("file that is forbidden", multimedia::MediaError::Permission, "/proc/version", "This is not permitted.");
        // There is no space in it.
        row("full", multimedia::MediaError::Write, "/proc/a.ogg", "The disk is full.");
        row("broken", multimedia::MediaError::Write, "/tmp/a.ogg", "The recording could not be written.");
    }

    void recordings_sayWhatIsWrongWithTheirPlace()
    {
        QFETCH(multimedia::MediaError::Type, error);
        QFETCH(QString, file);
        QTEST(recordingSentence(error, QUrl::fromLocalFile(file)), "words");
    }

    void newFile_isNamedAsItStands_data()
    {
        const Rows<QByteArray, QString> row("argument", "reason");
        row("absolute", "/folder/100%25 #1?.wav", {});
        row("no URL", "/http://host/a.wav", {});
        row("two bytes", "/\xc3\xa4.wav", {});
        row("empty", {}, "an empty name names no file");
        row("not UTF-8", "/\xff.wav", "'/\ufffd.wav' is not UTF-8");
    }

    void newFile_isNamedAsItStands()
    {
        QFETCH(QByteArray, argument);
        QFETCH(QString, reason);
        QCOMPARE(
            refusal([&] { QCOMPARE(newFileFromArgument(argument).url.toLocalFile(), QString::fromUtf8(argument)); }),
            reason);
        QCOMPARE(newFileFromArgument("http:a.wav").url.toLocalFile(), QDir::currentPath() + "/http:a.wav");
    }
};

QTEST_GUILESS_MAIN(tst_tool_parts)
#include "tst_tool_parts.moc"
