#include <QtTest/QtTest>

#include <fcntl.h>
#include <Files.h>
#include <pps/broker/Broker.h>
#include <pps/FdPassing.h>
#include <renderer/common/FileRequest.h>
#include <renderer/service/FileView.h>
#include <renderer/service/ListNames.h>
#include <renderer/service/MediaFiles.h>
#include <renderer/service/MemoryFiles.h>
#include <renderer/service/RecordingFile.h>
#include <renderer/service/SocketPair.h>
#include <Rows.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <optional>
#include <vector>

using namespace voro;
using namespace voro::renderer;

namespace {

/** What came for a question: the errno number, or the beginning of the file. */
struct Answer {
    int64_t id;
    int error;
    std::string content;
};

} // namespace

/** Shows itself one folder in another one's place, tells whether it does, and waits to be killed. */
[[noreturn]] static void showInstead(const QByteArray &seen, const QByteArray &place, int told)
{
    const bool isThere =
        seen == place
        || (unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
            && mount(seen.constData(), place.constData(), nullptr, MS_BIND, nullptr) == 0);
    (void)!write(told, isThere ? "y" : "n", 1);
    for (;;) {
        pause();
    }
}

/** A worker gets the files that its context was given and that its lists name, and no others. */
class tst_MediaFiles : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void names_areFoundHoweverTheyAreWritten_data()
    {
        const Rows<QByteArray, QByteArray, bool> add("text", "path", "expected");
        const auto row = [&](const char *title, const QByteArray &text, const QByteArray &path, bool expected = true) {
            add(title, text, path, expected);
        };
        row("beside the list", "#EXTM3U\na.ogg\n", "/music/a.ogg");
        row("in a folder below", "sub/./x/../a.ogg\r\n", "/music/sub/a.ogg");
        row("beside the folder", "../other/a.ogg", "/music/../other/a.ogg");
        row("beside the folder, made absolute", "../other/a.ogg", "/other/a.ogg");
        row("whole path", "File1=/else/a.ogg\n", "/else/a.ogg");
        row("URI", "<location>file:///else/a%20b%25.ogg</location>", "/else/a b%.ogg");
        row("URI with a host", "file://localhost/else/a.ogg", "/else/a.ogg");
        row("signs of percent as they stand", "100%25.ogg", "/music/100%25.ogg");
        row("reference of XML", "<ref href=\"Tom &amp; J&#233;r&#xf4;me.ogg\"/>", "/music/Tom & Jérôme.ogg");
        row("references of XML, in more bytes", "<ref href=\"&#9833;&#x10FFFD;.ogg\"/>",
            "/music/♩\xf4\x8f\xbf\xbd.ogg");
        row("backslashes", "sub\\a.ogg", "/music/sub/a.ogg");
        row("Latin 1 in the list", "\xe4.ogg", "/music/ä.ogg");
        row("Latin 1 in the name", "ä.ogg", "/music/\xe4.ogg");
        row("with parameters", "a.ogg?x#y", "/music/a.ogg");
        row("segment", R"(media="s/$RepresentationID$-$Number%05d$.m4s")", "/music/s/0-00001.m4s");
        row("segment with a sign", "initialization='$$5-$Time$-x.m4s'", "/music/$5-7-x.m4s");
        row("segment elsewhere", "media='$Number$.m4s'", "/home/1.m4s", false);
        row("no segment", "media='a-$Number$.m4s'", "/music/b-1.m4s", false);
        row("signs without a segment", "media='$a.ogg'", "/music/xa.ogg", false);
        row("hidden file as a segment", "media='$Number$'", "/music/.key", false);
        row("segment in a hidden folder", "media='$Number$'", "/music/.keys/1", false);
        row("not named", "a.ogg\n", "/music/b.ogg", false);
        row("part of a name", "aa.ogg\na.ogg.gz\n", "/music/a.ogg", false);
        row("the same name elsewhere", "a.ogg\n", "/home/a.ogg", false);
        row("the same name beside the folder", "a.ogg\n", "/music/../a.ogg", false);
        row("folder", "sub/a.ogg\n", "/music/", false);
        row("nothing", "\n\n", "", false);
        row("without the folder", "a.ogg\n", "a.ogg", false);
        row("another file before a zero", "a.ogg\n", QByteArray("/home/key\0/../../music/a.ogg", 28), false);
    }

    void names_areFoundHoweverTheyAreWritten()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const QByteArray, path);
        QTEST(ListNames("/music/list.m3u", text.toStdString()).contain(path.toStdString()), "expected");
    }

    void worker_getsWhatItsContextWasGiven()
    {
        const QTemporaryDir folder;
        const auto path = [&](const char *name) { return folder.filePath(QString::fromLatin1(name)).toStdString(); };
        for (const auto &[name, content] : {std::pair("list.m3u", "a.ogg\ninner.m3u\ngone.ogg\n/proc/self/fd/0\n"),
                                            {"inner.m3u", "b.ogg\n"},
                                            {"a.ogg", "A"},
                                            {"b.ogg", "B"},
                                            {"song.mp3", "ID3\nsecret\n"},
                                            {"secret", "S"},
                                            {"film.srt", "1"}}) {
            writeFile(folder.filePath(QLatin1String(name)), content);
        }

        pps::Broker broker;
        QSocketNotifier ready(broker.fd(), QSocketNotifier::Read);
        connect(&ready, &QSocketNotifier::activated, this, [&broker] { broker.process(); });
        auto [ours, theirs] = socketPair();
        MediaFiles files(broker, std::move(ours));
        files.setOwner(pps::Accounts::Services);

        const int worker = theirs.get();
        const auto receive = [worker] {
            std::array<std::byte, 64> packet;
            pps::Fd file;
            ssize_t size = -1;
            (void)QTest::qWaitFor([&] { return (size = pps::receivePacket(worker, packet, file)) > 0; }, 20'000);
            const auto answer =
                FileAnswer::fromBytes(std::span(packet).first(static_cast<size_t>(std::max<ssize_t>(size, 0))));
            return answer ? Answer{answer->id, answer->error, LocalFile(std::move(file)).at(0, 1)} : Answer{};
        };
        int64_t lastId = 0;
        const auto ask = [&](const std::string &wanted) {
            const int64_t id = --lastId;
            std::string packet(reinterpret_cast<const char *>(&id), sizeof id);
            packet += wanted;
            if (!pps::sendPacket(worker, std::as_bytes(std::span(packet)))) {
                return std::string("the question was not taken");
            }
            const Answer answer = receive();
            return answer.id != id     ? "another answer"
                   : answer.error != 0 ? std::to_string(answer.error)
                                       : answer.content;
        };
        const auto request = [](const std::string &url, const std::string &captions) {
            requests::Open open;
            open.medium = Medium(url);
            open.type = InputType::Playlist;
            open.settings.captions[1].medium = Medium(captions);
            return open;
        };
        const std::string refused = std::to_string(EACCES);

        QCOMPARE(ask(path("a.ogg")), refused);
        files.open(request("file://" + path("list.m3u"), path("film.srt")), 7);
        const Answer medium = receive();
        QCOMPARE(medium.id, 7);
        QCOMPARE(medium.content, "a");
        QCOMPARE(ask(path("b.ogg")), refused);
        QCOMPARE(ask(path("a.ogg")), "A");
        QCOMPARE(ask(path("inner.m3u")), "b");
        QCOMPARE(ask(path("b.ogg")), "B");
        QCOMPARE(ask(path("film.srt")), "1");
        QCOMPARE(ask(path("gone.ogg")), std::to_string(ENOENT));
        QCOMPARE(ask("/proc/self/fd/0"), std::to_string(ELOOP));
        QCOMPARE(ask(path("secret")), refused);
        QCOMPARE(ask(folder.path().toStdString()), refused);

        files.set({});
        QCOMPARE(ask(path("film.srt")), refused);
        files.open(request(path("a.ogg"), {}), 8);
        QCOMPARE(receive().content, "A");
        QCOMPARE(ask(path("b.ogg")), refused);
        // A medium that is text is no list.
        files.open(request(path("song.mp3"), {}), 9);
        QCOMPARE(receive().content, "I");
        QCOMPARE(ask(path("secret")), refused);
        files.open(request("http://host/list.m3u", {}), 10);
        QCOMPARE(ask(path("a.ogg")), refused);
    }

    void application_meansTheFilesThatItSees_data()
    {
        const Rows<QByteArray, QByteArray> row("seen", "unseen");
        row("the same files as others", "outer", "inner");
        // Not every system gives users namespaces.
        if (QProcess::execute("unshare", {"--map-root-user", "--mount", "mount", "--bind", "/tmp", "/tmp"}) == 0) {
            row("files of its own", "inner", "outer");
        }
    }

    void application_meansTheFilesThatItSees()
    {
        QFETCH(const QByteArray, seen);
        QFETCH(const QByteArray, unseen);
        const QTemporaryDir folder;
        QDir(folder.path()).mkdir("inner");
        QDir(folder.path()).mkdir("outer");
        const auto in = [&](const QByteArray &name) { return folder.filePath(QString::fromUtf8(name)); };
        for (const char *place : {"inner", "outer"}) {
            writeFile(in(place) + "/file", place);
            QVERIFY(QFile::link(in("outer/file"), in(place) + "/link"));
        }
        const auto [reading, writing] = socketPair();
        const pid_t application = fork();
        if (application == 0) {
            showInstead(in(seen).toLocal8Bit(), in("outer").toLocal8Bit(), writing.get());
        }
        const auto end = qScopeGuard([application] {
            kill(application, SIGKILL);
            waitpid(application, nullptr, 0);
        });
        char isThere = 0;
        QVERIFY(QTest::qWaitFor([&, socket = reading.get()] { return read(socket, &isThere, 1) == 1; }, 20'000));
        QCOMPARE(isThere, 'y');
        const auto view = FileView::of(application);
        const auto content = [&](const char *name, const FileView &from) {
            return LocalFile::openAt(from.open(in(name).toStdString(), O_PATH | O_CLOEXEC))->at(0, 10);
        };
        QCOMPARE(content("outer/file", *view), seen.toStdString());
        QCOMPARE(content("outer/link", *view), seen.toStdString());
        QCOMPARE(content("outer/link", *FileView::of(getpid())), "outer");

        // It records there, too, and what was made for nothing goes again.
        const std::string path = in("outer/new.wav").toStdString();
        std::string key;
        QVERIFY(RecordingFile::inspect(*view, path, key));
        std::shared_ptr<OpenRecording> recording = OpenRecording::make(view, path, application);
        QVERIFY(recording->open());
        QVERIFY(QFile::exists(in(seen + "/new.wav")) && !QFile::exists(in(unseen + "/new.wav")));
        recording->close();
        QVERIFY(!QFile::exists(in(seen + "/new.wav")));
    }

    void application_thatHasGone_meansWhatItSaw_orNothing()
    {
        const pid_t application = fork();
        if (application == 0) {
            pause();
            _exit(0);
        }
        FileView::Shared view = FileView::of(application);
        const auto errorOf = [](pid_t process) {
            return FileView::of(process)->open("/", O_PATH | O_CLOEXEC).isValid() ? 0 : errno;
        };
        QCOMPARE(kill(application, SIGKILL), 0);
        QCOMPARE(waitpid(application, nullptr, 0), application);
        QCOMPARE(errorOf(application), 0);
        view.reset();
        QCOMPARE(errorOf(application), EACCES);
        QCOMPARE(errorOf(pps::Accounts::Services), 0);
    }

    void memory_isCountedWhileItIsInUse_data()
    {
        const Rows<int> row("seals");
        row("may shrink", 0);
        row("may not shrink", F_SEAL_SHRINK);
    }

    void memory_isCountedWhileItIsInUse()
    {
        QFETCH(const int, seals);
        MemoryFiles memory;
        QVERIFY(!memory.make(MemoryFiles::MostSize + 1).isValid());
        pps::Fd large = memory.make(MemoryFiles::MostSize - 1);
        QVERIFY(large.isValid());
        QVERIFY(ftruncate(large.get(), MemoryFiles::MostSize) != 0);
        QVERIFY(!memory.make(2).isValid());
        void *mapped = mmap(nullptr, 1, PROT_READ, MAP_SHARED, large.get(), 0);
        large.reset();
        QVERIFY(!memory.make(2).isValid());
        munmap(mapped, 1);

        // Whoever has a name for it alone finds it empty, and cannot fill it again.
        pps::Fd full = memory.make(MemoryFiles::MostSize);
        pps::Fd reader(::open(nameOf(full).c_str(), O_RDONLY | O_CLOEXEC));
        const pps::Fd place(::open(nameOf(full).c_str(), O_PATH | O_CLOEXEC));
        QCOMPARE(write(full.get(), "x", 1), 1);
        QCOMPARE(fcntl(full.get(), F_ADD_SEALS, seals), 0);
        full.reset();
        QVERIFY(!memory.make(1).isValid());
        reader.reset();
        memory.release();
        const pps::Fd again(::open(nameOf(place).c_str(), O_RDWR | O_CLOEXEC));
        char byte = 0;
        QVERIFY(again.isValid());
        QCOMPARE(read(again.get(), &byte, 1), seals == 0 ? 0 : 1);
        QCOMPARE(byte, '\0');
        QVERIFY(write(again.get(), "x", 1) < 0);

        std::vector<pps::Fd> files;
        while (files.size() <= MemoryFiles::MostFiles) {
            files.push_back(memory.make(1));
        }
        QVERIFY(files.at(MemoryFiles::MostFiles - 1).isValid());
        QVERIFY(!files.back().isValid());
    }
};

QTEST_GUILESS_MAIN(tst_MediaFiles)
#include "tst_media_files.moc"
