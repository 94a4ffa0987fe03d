#include <QtTest/QtTest>

#include <Files.h>
#include <pps/Fd.h>
#include <renderer/common/Medium.h>
#include <renderer/common/Parameters.h>
#include <renderer/common/Protocol.h>
#include <renderer/common/TrackPosition.h>
#include <renderer/common/WorkerMessages.h>
#include <Rows.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace voro::renderer;

namespace {

QByteArray show(const ParsedPosition &position)
{
    const QByteArray milliseconds = QByteArray::number(static_cast<qint64>(position.milliseconds));
    return position.track ? QByteArray::number(*position.track) + ':' + milliseconds : milliseconds;
}

} // namespace

/** The rules that the service and the workers share. */
class tst_RendererCommon : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void position_data()
    {
        const Rows<QByteArray, QByteArray> row("text", "expected");
        // What is no position gives "none".
        for (const char *text : {"0", "1500", "3:1500", "0:7", "4294967295:4294967295"}) {
            row(text, text, text);
        }
        for (const char *text : {"", ":", "1:", ":5", "1:2:3", "-1", "1:-5", "+5", " 5", "5 ", "1.5", "0x10", "abc",
                                 "4294967296", "4294967296:0", "99999999999999999999"}) {
            row(text, text, "none");
        }
    }

    void position()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, expected);
        const auto parsed = parsePosition({text.constData(), static_cast<size_t>(text.size())});
        QCOMPARE(parsed ? show(*parsed) : QByteArray("none"), expected);
    }

    void parameters_data()
    {
        const Rows<Owner, QByteArray, QByteArrayList, QByteArrayList> row("owner", "name", "good", "bad");
        const QByteArrayList noNumbers = {"", "-1", "x", "1x", " 1", "1.0"};
        row("interval", Owner::Context, "updateinterval", {"20", "1000", "4294967295"},
            noNumbers + QByteArrayList{"0", "19", "4294967296"});
        row("volume", Owner::Audio, "volume", {"0", "100"}, noNumbers + QByteArrayList{"101"});
        row("autopause", Owner::Audio, "autopause", {"yes", "no"}, {"", "true", "YES", "1"});
        row("preset", Owner::Audio, "eq_preset", {"off", "airplane", "randb", "spokenword"}, {"", "Rock", "unheard"});
        row("handle", Owner::Audio, "audioman_handle", {"0", "4294967295"}, noNumbers + QByteArrayList{"4294967296"});
        row("repeat", Owner::Input, "repeat", {"none", "track", "all"}, {"", "All", "one"});
        row("captions of an input", Owner::Input, "subpicture_disable", {"0", "1"}, {"", "2", "yes"});
        row("caption index", Owner::Track, "subpicture_index", {"0", "17"}, noNumbers);
        row("caption url", Owner::Track, "subpicture_url", {"", "/a b.srt"}, {});
        row("source rectangle", Owner::Video, "video_src_w", {"0", "1920"}, noNumbers);
        // Known to another owner only.
        row("volume of an input", Owner::Input, "volume", {}, {"50"});
        row("repeat of an output", Owner::Audio, "repeat", {}, {"all"});
        row("interval of a track", Owner::Track, "updateinterval", {}, {"1000"});
        row("unknown", Owner::Context, "colour", {}, {"1"});
        row("caption output", Owner::Caption, "volume", {}, {"50"});
    }

    void parameters()
    {
        QFETCH(Owner, owner);
        QFETCH(QByteArray, name);
        QFETCH(QByteArrayList, good);
        QFETCH(QByteArrayList, bad);
        const auto check = [&](const QByteArray &value) {
            Parameters parameters;
            parameters.set(name.toStdString(), value.toStdString());
            return parameters.check(owner);
        };
        for (const QByteArray &value : good) {
            QVERIFY2(check(value), value.constData());
        }
        for (const QByteArray &value : bad) {
            const Result result = check(value);
            QVERIFY2(result.code == ErrorCode::InvalidParameter, value.constData());
            QVERIFY2(result.text.find(name.toStdString()) != std::string::npos, result.text.c_str());
        }
    }

    void parametersText_survivesEveryValue()
    {
        Parameters parameters;
        parameters.set("plain", "a:b::c");
        parameters.set("empty", "");
        parameters.set("lines", "first\nmsg::stop\r\n\\n");
        parameters.set("bytes", "\xff\xfe\x01\x7f");
        const auto read = Parameters::fromText(parameters.toText());
        QVERIFY(read && *read == parameters);
        QVERIFY(!Parameters::fromText("no attribute line"));
        QVERIFY(!Parameters::fromText("@object\na::b"));
    }

    void check_tellsTheCause_data()
    {
        const Rows<QByteArray, int> add("path", "code");
        const auto row = [&](const char *title, const char *name, ErrorCode code) {
            add(title, m_folder.path().toUtf8() + '/' + name, static_cast<int>(code));
        };
        write("good.ogg", "OggS");
        write("empty.ogg", {});
        QVERIFY(chmod(write("secret.ogg", "OggS").c_str(), 0) == 0);
        const QByteArray base = m_folder.path().toUtf8() + '/';
        QVERIFY(mkdir((base + "folder.ogg").constData(), 0700) == 0);
        QVERIFY(mkfifo((base + "fifo.ogg").constData(), 0600) == 0);
        QVERIFY(symlink("good.ogg", (base + "link.ogg").constData()) == 0);
        QVERIFY(symlink("loop.ogg", (base + "loop.ogg").constData()) == 0);
        const voro::pps::Fd listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, (base + "socket.ogg").constData(), sizeof address.sun_path);
        QVERIFY(bind(listener.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0);

        row("good", "good.ogg", ErrorCode::None);
        row("link", "link.ogg", ErrorCode::None);
        row("missing", "none.ogg", ErrorCode::SourceUnavailable);
        row("in a missing folder", "none/none.ogg", ErrorCode::SourceUnavailable);
        row("below a file", "good.ogg/none.ogg", ErrorCode::SourceUnavailable);
        row("link to itself", "loop.ogg", ErrorCode::SourceUnavailable);
        row("empty", "empty.ogg", ErrorCode::ResourceCorrupted);
        row("unreadable", "secret.ogg", ErrorCode::Permission);
        row("folder", "folder.ogg", ErrorCode::UnsupportedMediaType);
        row("pipe that nobody writes to", "fifo.ogg", ErrorCode::UnsupportedMediaType);
        row("socket", "socket.ogg", ErrorCode::UnsupportedMediaType);
        add("device", "/dev/zero", static_cast<int>(ErrorCode::UnsupportedMediaType));
        add("file of the kernel", "/proc/version", static_cast<int>(ErrorCode::UnsupportedMediaType));
        add("nothing", {}, static_cast<int>(ErrorCode::SourceUnavailable));
        add("long name", base + QByteArray(300, 'x'), static_cast<int>(ErrorCode::SourceUnavailable));
    }

    void check_tellsTheCause()
    {
        QFETCH(QByteArray, path);
        QFETCH(int, code);
        // Nothing is unreadable to the superuser, so somebody else looks.
        constexpr uid_t Nobody = 65534;
        const bool isSuperuser = geteuid() == 0;
        QVERIFY(!isSuperuser || (chmod(qPrintable(m_folder.path()), 0755) == 0 && seteuid(Nobody) == 0));
        const Result result = Medium(path.toStdString()).check();
        const Result resultOfUrl = Medium("file://" + path.toStdString()).check();
        QVERIFY(!isSuperuser || seteuid(0) == 0);
        QCOMPARE(static_cast<int>(result.code), code);
        QCOMPARE(static_cast<int>(resultOfUrl.code), code);
    }

    void uri_data()
    {
        // The rows have their URLs as titles.
        const Rows<QByteArray> row("expected");
        row("/music/a.ogg", "file:///music/a.ogg");
        row("/a b%25#?.ogg", "file:///a%20b%2525%23%3F.ogg");
        row("file:///a%20b.ogg", "file:///a%2520b.ogg");
        row("/\xff.ogg", "file:///%FF.ogg");
        row("/x/http://y", "file:///x/http://y");
        row("http://host/a%20b?c#d", "http://host/a%20b?c#d");
    }

    void uri() { QTEST(QByteArray::fromStdString(Medium(QTest::currentDataTag()).uri()), "expected"); }

    void playlist_data()
    {
        const Rows<QByteArray, QByteArray, bool> row("name", "content", "expected");
        row("m3u", "a.m3u", "#EXTM3U\n#EXTINF:3,T\na.ogg\n", true);
        row("m3u without a head", "a.m3u", "a.ogg\nb.ogg\n", true);
        row("m3u by another name", "a.txt", "#EXTM3U\na.ogg\n", true);
        row("m3u with a byte order mark", "a.m3u8", "\xef\xbb\xbf#EXTM3U\na.ogg\n", true);
        row("name in capitals", "A.M3U", "a.ogg\n", true);
        row("stream index", "a.m3u8", "#EXTM3U\n#EXT-X-TARGETDURATION:10\na.ts\n", false);
        row("pls", "a.pls", "[playlist]\nFile1=a.ogg\n", true);
        row("pls in other letters", "a.x", "\r\n[Playlist]\nFile1=a.ogg\n", true);
        row("xspf", "a.xspf", "<?xml version=\"1.0\"?>\n<playlist version=\"1\" xmlns=\"http://xspf.org/ns/0/\"/>",
            true);
        row("asx", "a.asx", "<ASX version=\"3\"><entry><ref href=\"a\"/></entry></ASX>", true);
        row("other xml", "a.xml", "<?xml version=\"1.0\"?><smil/>", false);
        row("words", "a.txt", "These are only words.\n", false);
        row("sound named m3u", "a.m3u", QByteArray("OggS\0\2\0\0", 8), false);
        row("sound", "a.ogg", QByteArray("OggS\0\2\0\0", 8), false);
    }

    void playlist()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, content);
        QFETCH(bool, expected);
        QCOMPARE(Medium(write(name.constData(), content)).isPlaylist(), expected);
    }

    void answer_givesTheResultBack()
    {
        const std::string longCause = std::string(100'000, 'x') + "\n@control\nerr:n:0";
        voro::pps::Message message;
        QVERIFY(message.parse(answer("seek", 7, {ErrorCode::Read, longCause})));
        QVERIFY(message.text("res") == "seek" && message.number("id") == 7);
        QCOMPARE(static_cast<int>(resultOf(message).code), static_cast<int>(ErrorCode::Read));
        QVERIFY(resultOf(message).text.size() < 2000);
        QVERIFY(message.parse(answer("seek", 8, {})));
        QVERIFY(resultOf(message));
        // An answer that does not say how it went is no success.
        QVERIFY(message.parse("res::seek\nid:n:8"));
        QCOMPARE(static_cast<int>(resultOf(message).code), static_cast<int>(ErrorCode::Internal));
    }

    void workerMessage_isReadAsFarAsItIsGood_data()
    {
        const Rows<bool, QByteArray, QByteArray> add("isRequest", "text", "read");
        const auto request = [&](const char *title, const char *text, const QByteArray &read) {
            add(title, true, text, read);
        };
        const auto event = [&](const char *title, const char *text, const QByteArray &read) {
            add(title, false, text, read);
        };
        const QByteArray settings = "interval:n:250 maxduration:n:0 audio:b:false volume:n:100 eq_preset::off "
                                    "autopause:b:false role:: repeat::all";
        request("no request", "status position:n:1", "none");
        request("nothing to say", "stop", "stop id:n:0");
        request("fields that are missing, or no numbers", "seek track::x", "seek id:n:0 track:n:1 position:n:0");
        request("words that are none",
                "open url::/a type::disc speed:n:-500 interval:n:250 audio:b:false repeat::all eq_preset::",
                "open id:n:0 url::/a type::autolist speed:n:-500 track:n:1 position:n:0 " + settings
                    + " display:: xauthority::");
        request("outputs and captions",
                "set interval:n:250 audio:b:false repeat::all video::0x5 video_src_w:n:8 subpicture:: display:::0 "
                "captions_2:c:url::/a.srt\\nindex:n:3\\n captions_0::shown:b:false captions_x::shown:b:false",
                "set id:n:0 " + settings
                    + " video::0x5 video_src_x:n:0 video_src_y:n:0 video_src_w:n:8 video_src_h:n:0 subpicture:: "
                      "display:::0 "
                      "xauthority:: captions_2:c:url::/a.srt\\nindex:n:3\\nshown:b:true\\n");
        event("no event", "seek track:n:1", "none");
        event("a word that is none", "status position:n:-5 bufferlevel:n:40 bufferstatus::full",
              "status position:n:-5 bufferlevel:n:40 bufferstatus::idle volume:n:0");
        event("metadata", "track md_title_name::x track:n:3 url::z", "track track:n:3 md_title_name::x url::z");
        event("an end somewhere", "ended", "ended track:n:1");
        event("a failure", "failed position:n:9 err:n:11 error::bad",
              "failed track:n:1 position:n:9 err:n:11 error::bad");
    }

    void workerMessage_isReadAsFarAsItIsGood()
    {
        QFETCH(const bool, isRequest);
        QFETCH(QByteArray, text);
        const std::string lines = "msg::" + text.replace(' ', '\n').toStdString() + '\n';
        voro::pps::Message message;
        QVERIFY(message.parse(lines));
        const auto request = parseRequest(message);
        const auto event = parseEvent(message, lines);
        std::string read = "msg::none\n";
        if (isRequest && request) {
            read = toText(*request, 0);
        } else if (!isRequest && event) {
            read = toText(*event);
        }
        QTEST(QByteArray::fromStdString(read.substr(5)).trimmed().replace('\n', ' '), "read");
    }

private:
    std::string write(const char *name, const QByteArray &content)
    {
        return writeFile(m_folder.filePath(QString::fromLatin1(name)), content).toStdString();
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_RendererCommon)
#include "tst_renderer_common.moc"
