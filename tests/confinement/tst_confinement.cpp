#include "../platform/renderer/HttpServer.h"
#include "Daemon.h"
#include "Files.h"
#include "Media.h"
#include "PulseServer.h"
#include "Workers.h"
#include "XServer.h"

#include <multimedia/AudioRecorder.h>
#include <multimedia/MediaPlayer.h>

#include <QtCore/QFile>
#include <QtCore/QMap>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtTest>

#include <Rows.h>
#include <sched.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <iterator>

using namespace voro::multimedia;

namespace {

/** Whether this system gives users namespaces. */
bool hasNamespaces()
{
    const pid_t child = fork();
    if (child == 0) {
        _exit(unshare(CLONE_NEWUSER | CLONE_NEWNS | CLONE_NEWNET) == 0 ? 0 : 1);
    }
    int status = 1;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

/** A server at a socket with that path, or of that abstract name. */
int listenAt(const QByteArray &name, bool isAbstract)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    name.toStdString().copy(address.sun_path + (isAbstract ? 1 : 0), sizeof address.sun_path - 1);
    const auto size = offsetof(sockaddr_un, sun_path) + (isAbstract ? 1 : 0) + static_cast<size_t>(name.size());
    const int server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    return bind(server, reinterpret_cast<sockaddr *>(&address), static_cast<socklen_t>(size)) == 0
                   && listen(server, 8) == 0
               ? server
               : -1;
}

/** What an attacker finds: a file of the user's, shared memory, and servers. */
class Victim {
public:
    Victim()
    {
        // Other users could do what the user himself may not be able to do.
        m_isGood = m_segment >= 0 && QFile::setPermissions(m_file, QFile::Permissions(0x6666))
                   && QFile::setPermissions(m_folder.filePath("server"), QFile::Permissions(0x7777))
                   && QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7777))
                   && std::ranges::all_of(m_servers, [](int server) { return server >= 0; });
    }
    ~Victim()
    {
        std::ranges::for_each(m_servers, close);
        shmctl(m_segment, IPC_RMID, nullptr);
    }
    Victim(const Victim &) = delete;
    Victim &operator=(const Victim &) = delete;

    bool isGood() const { return m_isGood; }
    /** Folder, port and segment. */
    QStringList places() const
    {
        return {m_folder.path(), QString::number(QUrl(m_web.url({})).port()), QString::number(m_segment)};
    }
    /** Whether the file holds what it did. */
    bool isUntouched() const { return readFile(m_file) == Content; }

private:
    static constexpr char Content[] = "the user's own";

    QTemporaryDir m_folder;
    const QString m_file = writeFile(m_folder.filePath("file"), Content);
    const HttpServer m_web{[](HttpExchange &) {}};
    int m_segment = shmget(IPC_PRIVATE, 1, 0666);
    int m_servers[2] = {listenAt(m_folder.path().toLocal8Bit(), true),
                        listenAt(m_folder.filePath("server").toLocal8Bit(), false)};
    bool m_isGood = false;
};

/** The attempts that one process reports. */
struct Attempts {
    int count = 0;
    /** What was possible though it should not be, or the other way round. */
    QByteArrayList wrong;
};

/** Reads what was printed about a kind of worker and the layers that it has been without, by process. */
QMap<QByteArray, Attempts> read(const QByteArray &output, const QStringList &options)
{
    constexpr int Refusals[] = {EPERM, EACCES, ENOSYS, ENOENT, EROFS, ECONNREFUSED, ENETUNREACH};
    QMap<QByteArray, Attempts> processes;
    for (const QByteArray &line : output.split('\n')) {
        const QByteArrayList parts = line.split('=');
        if (parts.size() != 5 || !line.startsWith("ATTEMPT ")) {
            continue;
        }
        Attempts &attempts = processes[parts[0]];
        ++attempts.count;
        const int error = parts[2].toInt();
        const QByteArray &layers = parts[3];
        const bool isAllowed = layers.isEmpty() || options.contains(QString::fromLatin1(parts[4]));
        const bool isPrevented = std::ranges::any_of(
            layers, [&options](char layer) { return !options.contains('-' + QString(QChar::fromLatin1(layer))); });
        const bool isRefused = std::ranges::find(Refusals, error) != std::end(Refusals);
        if (isAllowed ? error != 0 : isPrevented && !isRefused) {
            attempts.wrong.append(line);
        }
    }
    return processes;
}

constexpr int AllAttempts = 80;

} // namespace

/** What a worker could do for whoever took it over. */
class tst_Confinement : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void workerThatWasTakenOver_canDoNothing_data()
    {
        const Rows<QStringList> row("options");
        for (const char *kind : {"", "windows", "network", "network windows", "-N", "-L", "-S"}) {
            const QStringList options = QString::fromLatin1(kind).split(' ', Qt::SkipEmptyParts);
            row(*kind ? kind : "a local medium", options);
            if (geteuid() == 0) {
                row(qPrintable(QLatin1String("nobody ") + kind), options + QStringList("nobody"));
            }
        }
    }

    void workerThatWasTakenOver_canDoNothing()
    {
        QFETCH(QStringList, options);
        if (!hasNamespaces() && !options.contains("-N")) {
            options << "-N";
        }
        Victim victim;
        QVERIFY(victim.isGood());
        QProcess probe;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove("DISPLAY");
        probe.setProcessEnvironment(environment);
        probe.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        probe.start(QStringLiteral(CONFINED_PROBE), victim.places() + options);
        QVERIFY(probe.waitForFinished());
        QCOMPARE(probe.exitStatus(), QProcess::NormalExit);
        QCOMPARE(probe.exitCode(), 0);

        const auto processes = read(probe.readAllStandardOutput(), options);
        QCOMPARE(processes.size(), 1);
        QVERIFY2(processes.first().wrong.isEmpty(), processes.first().wrong.join(", "));
        QCOMPARE(processes.first().count, AllAttempts);
        QVERIFY(victim.isUntouched());
    }

    void workerAtWork_canDoNothing_data()
    {
        const Rows<QString, QStringList> row("url", "options");
        row("a sound", "sound.ogg", {});
        row("a film in a window", "film.mkv", {"windows"});
        row("a list", "list.m3u", {});
        row("a stream", "http", {"network"});
        row("a recording", "", {});
    }

    void workerAtWork_canDoNothing()
    {
        QFETCH(const QString, url);
        QFETCH(QStringList, options);
        if (!hasNamespaces()) {
            options << "-N";
        }
        Victim victim;
        QVERIFY(victim.isGood());
        const QTemporaryDir folder;
        const PulseServer sound;
        XServer screen;
        const QString tone = media::makeTone(folder.filePath("sound.ogg"), {.seconds = 60});
        writeFile(folder.filePath("list.m3u"), "sound.ogg\n");
        media::makeTone(folder.filePath("film.mkv"), {.seconds = 60, .hasPicture = true});
        HttpServer web([content = readFile(tone)](HttpExchange &exchange) { exchange.sendRange(content); });

        const QStringList places = victim.places();
        Daemon daemon({"LD_PRELOAD=" TAKEN_OVER, "ATTACKED_FOLDER=" + places[0], "ATTACKED_PORT=" + places[1],
                       "ATTACKED_SEGMENT=" + places[2],
                       // The sanitizers' own library would have to be the first one.
                       "ASAN_OPTIONS=verify_asan_link_order=0:" + qgetenv("ASAN_OPTIONS")},
                      QProcess::MergedChannels);
        QByteArray output;
        const auto waitFor = [&](const auto &condition) {
            return QTest::qWaitFor(
                [&] {
                    output += daemon.takeOutput();
                    return condition();
                },
                60'000);
        };

        MediaPlayer player;
        AudioRecorder recorder;
        if (url.isEmpty()) {
            recorder.setOutputUrl(QUrl::fromLocalFile(folder.filePath("new.wav")));
            QCOMPARE(recorder.record(), MediaError::None);
            QVERIFY(waitFor([&] { return recorder.duration() > 0; }));
        } else {
            if (options.contains("windows")) {
                player.setWindowId(QString::number(screen.makeWindow(0, 0, 64, 64)));
                QCOMPARE(player.setVideoOutput(VideoOutput::PrimaryDisplay), MediaError::None);
            }
            const QUrl place = url == "http" ? QUrl(web.url("/sound.ogg")) : QUrl::fromLocalFile(folder.filePath(url));
            QCOMPARE(player.setSourceUrl(place), MediaError::None);
            QCOMPARE(player.play(), MediaError::None);
            QVERIFY(waitFor([&] { return player.position() > 0; }));
        }

        // The one at work and spare ones, which may do no more.
        const QList<pid_t> workers = workersOf(daemon.processId());
        for (const pid_t worker : workers) {
            QCOMPARE(kill(worker, SIGUSR2), 0);
        }
        QMap<QByteArray, Attempts> processes;
        const auto hasTriedAll = [&](pid_t worker) {
            return processes.value("ATTEMPT " + QByteArray::number(worker)).count == AllAttempts
                   || kill(worker, 0) != 0;
        };
        QVERIFY2(waitFor([&] {
                     processes = read(output, options);
                     return std::ranges::all_of(workers, hasTriedAll);
                 }),
                 output.constData());
        const auto isRight = [](const Attempts &attempts) { return attempts.wrong.isEmpty(); };
        QVERIFY2(std::ranges::any_of(processes, isRight), output.constData());
        // There was a descriptor to try it with.
        QVERIFY(QString::fromLocal8Bit(output).contains(QRegularExpression("open what was handed for writing=(?!2=)")));
        // Nobody has died of it.
        QVERIFY(waitFor([&, before = player.position() + recorder.duration()] {
            return player.position() + recorder.duration() > before;
        }));
        for (const Attempts &attempts : processes) {
            // A spare worker may do less than the one that plays, and no more.
            QVERIFY2(std::ranges::none_of(attempts.wrong, [](const QByteArray &line) { return line.contains("=0="); }),
                     attempts.wrong.join(", "));
        }
        QVERIFY(victim.isUntouched());
    }
};

QTEST_GUILESS_MAIN(tst_Confinement)
#include "tst_confinement.moc"
