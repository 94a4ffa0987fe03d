#include "ChildProcess.h"
#include "Daemon.h"
#include "Files.h"
#include "StartFolder.h"

#include <QtTest/QtTest>

#include <fcntl.h>
#include <pps/Connection.h>
#include <pps/DaemonRecord.h>
#include <pps/FdPassing.h>
#include <pps/Runtime.h>
#include <Rows.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>

using namespace voro;

namespace {

constexpr auto Object = "/pps/f/o";

int openError(pps::Connection &connection)
{
    return connection.open(Object, pps::PublishSubscribe) ? 0 : connection.error();
}

/** Only root can become another user. */
void addUsers()
{
    const Rows<uid_t, int> row("user", "error");
    row("the same user", geteuid(), 0);
    if (geteuid() == 0) {
        row("another user", 65534, EACCES);
    }
}

struct Ended {
    int status;
    QByteArray out;
    QByteArray err;
};

Ended run(const QStringList &arguments)
{
    QProcess process;
    process.start(VOROD, arguments);
    process.waitForFinished();
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAllStandardOutput(),
            process.readAllStandardError()};
}

} // namespace

class TestVorod : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void commandLine_isAnswered_data()
    {
        const Rows<QStringList, int, QByteArray, QByteArray> row("arguments", "status", "out", "err");
        row("help", {"--help"}, 0, "Usage: vorod [OPTION]", {});
        row("version", {"--version"}, 0, "vorod 1.0.0", {});
        row("unknown option", {"--fast"}, 2, {}, "vorod: unknown option: --fast");
        row("argument", {"now"}, 2, {}, "vorod: unexpected argument: now");
        row("no seconds", {"--idle-exit"}, 2, {}, "vorod: --idle-exit needs a number of seconds");
        for (const char *seconds : {"", "x", "1x", "-1", "99999999999", "86401"}) {
            QTest::addRow("seconds '%s'", seconds)
                << QStringList{"--idle-exit", seconds} << 2 << QByteArray()
                << QByteArray("vorod: --idle-exit: not a number of seconds from 0 to 86400: ") + seconds;
        }
    }

    void commandLine_isAnswered()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, out);
        QFETCH(QByteArray, err);
        const Ended ended = run(arguments);
        QTEST(ended.status, "status");
        QVERIFY2(ended.out.startsWith(out) && ended.out.isEmpty() == out.isEmpty(), ended.out.constData());
        QVERIFY2(ended.err.startsWith(err) && ended.err.isEmpty() == err.isEmpty(), ended.err.constData());
    }

    void firstOpen_startsADaemon_thatHasNothingOfWhoStartedIt()
    {
        StartFolder folder;
        qputenv("VORO_AUDIO_SINK", "fakesink");
        ChildProcess application([](ChildProcess &) {
            for (const char *name :
                 {"LD_LIBRARY_PATH", "GST_DEBUG", "LC_ALL", "LANGUAGE", "DISPLAY", "QT_PLUGIN_PATH"}) {
                setenv(name, "x", 1);
            }
            setenv("LANG", "C", 1);
            umask(0);
            const rlimit few{64, 4096};
            setrlimit(RLIMIT_NOFILE, &few);
            const sched_param none{};
            sched_setscheduler(0, SCHED_BATCH, &none);
            setpriority(PRIO_PROCESS, 0, 7);
            pps::Connection connection;
            return openError(connection);
        });
        QCOMPARE(application.wait(), 0);
        struct stat status {};
        QCOMPARE(stat(folder.folder().toLocal8Bit(), &status), 0);
        QCOMPARE(status.st_mode & 0777, mode_t(0700));
        const pid_t daemon = folder.daemon();
        QVERIFY(daemon > 0 && getsid(daemon) != getsid(0));
        QCOMPARE(QFile::symLinkTarget(QString("/proc/%1/cwd").arg(daemon)), QString("/"));
        for (const char *number : {"0", "1", "2"}) {
            QCOMPARE(QFile::symLinkTarget(QString("/proc/%1/fd/").arg(daemon) + number), QString("/dev/null"));
        }
        const QByteArrayList variables = readFile(QString("/proc/%1/environ").arg(daemon)).split('\0');
        QVERIFY(variables.contains("VORO_AUDIO_SINK=fakesink"));
        QVERIFY(variables.contains("LANG=C.UTF-8"));
        for (const QByteArray &variable : variables) {
            QVERIFY2(!variable.endsWith("=x"), variable.constData());
        }
        QVERIFY(readFile(QString("/proc/%1/status").arg(daemon)).contains("\nUmask:\t0077\n"));
        rlimit limit{};
        QCOMPARE(prlimit(daemon, RLIMIT_NOFILE, nullptr, &limit), 0);
        QCOMPARE(limit.rlim_cur, rlim_t(4096));
        QCOMPARE(sched_getscheduler(daemon), SCHED_OTHER);
        // Only root may take it back.
        QCOMPARE(getpriority(PRIO_PROCESS, static_cast<id_t>(daemon)), geteuid() == 0 ? 0 : 7);
    }

    // A manager that says what it was asked for and does it.
    void userManager_startsTheDaemon()
    {
        StartFolder folder;
        QTemporaryDir session;
        QVERIFY(QDir(session.path()).mkpath("systemd"));
        writeFile(session.filePath("systemd/private"), {});
        const auto makeProgram = [&session](const QByteArray &script) {
            const QString program = writeFile(session.filePath("systemd-run"), script);
            QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        };
        makeProgram("#!/bin/sh\nprintf '%s\\n' \"$@\" > " + session.path().toLocal8Bit()
                    + "/asked\nwhile [ \"${1#--}\" != \"$1\" ]; do shift; done\n"
                      "unset XDG_RUNTIME_DIR\nexport VORO_AUDIO_SINK=managed\nexec \"$@\" --background\n");
        const QByteArray path = qgetenv("PATH");
        const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
        qputenv("PATH", session.path().toLocal8Bit() + ':' + path);
        qputenv("XDG_RUNTIME_DIR", session.path().toLocal8Bit());
        const auto restore = qScopeGuard([&] {
            qputenv("PATH", path);
            qputenv("XDG_RUNTIME_DIR", runtime);
        });
        pps::Connection connection;
        QCOMPARE(openError(connection), 0);
        QVERIFY(readFile(QString("/proc/%1/environ").arg(folder.daemon())).contains("VORO_AUDIO_SINK=managed"));
        const QByteArrayList arguments = readFile(session.filePath("asked")).split('\n');
        QVERIFY(arguments.startsWith("--user") && arguments.contains("--property=Type=notify"));
        QVERIFY(arguments.contains("--setenv=VORO_RUNTIME_DIR=" + folder.folder().toLocal8Bit()));

        // One that cannot is passed over.
        connection.close();
        folder.end();
        makeProgram("#!/bin/sh\nexit 1\n");
        QCOMPARE(openError(connection), 0);
    }

    void racingClients_startOne()
    {
        StartFolder folder;
        constexpr int Count = 4;
        std::vector<std::unique_ptr<ChildProcess>> clients;
        for (int i = 0; i < Count; ++i) {
            clients.push_back(std::make_unique<ChildProcess>([&](ChildProcess &self) {
                self.hear();
                pps::Connection connection;
                const int error = openError(connection);
                self.say();
                self.hear();
                return error;
            }));
        }
        for (const auto &client : clients) {
            client->say();
        }
        for (const auto &client : clients) {
            QVERIFY(client->hear());
        }
        const pid_t daemon = folder.daemon();
        QVERIFY(daemon > 0);
        for (const auto &client : clients) {
            client->say();
            QCOMPARE(client->wait(), 0);
        }
        // All of them were this one's clients: another would hold the lock or the socket.
        QCOMPARE(folder.daemon(), daemon);
        QCOMPARE(run({}).status, 1);
    }

    void runtimeFolder_mustBeOurs_data()
    {
        const Rows<QByteArray, QByteArray, int, QByteArray> row("variable", "folder", "error", "words");
        row("nowhere", "VORO_RUNTIME_DIR", "/nowhere/at/all", ENOENT, "No such file or directory");
        row("a link to a folder", "VORO_RUNTIME_DIR", "link", ENOTDIR, "Not a directory");
        row("somebody else's", "VORO_RUNTIME_DIR", "other", EPERM, "belongs to ");
        row("in somebody else's session", "XDG_RUNTIME_DIR", "other", EPERM, "belongs to ");
    }

    void runtimeFolder_mustBeOurs()
    {
        QFETCH(const QByteArray, variable);
        QFETCH(QByteArray, folder);
        QFETCH(const QByteArray, words);
        QTemporaryDir parent;
        const QByteArray session = qgetenv("XDG_RUNTIME_DIR");
        const auto restore = qScopeGuard([&session] { qputenv("XDG_RUNTIME_DIR", session); });
        qunsetenv("VORO_RUNTIME_DIR");
        qunsetenv("VORO_AUTOSPAWN");
        if (folder == "link") {
            folder = parent.filePath("link").toLocal8Bit();
            QCOMPARE(symlink(parent.path().toLocal8Bit(), folder), 0);
        } else if (folder == "other") {
            folder = "/";
            if (geteuid() == 0) {
                folder = parent.path().toLocal8Bit();
                QCOMPARE(chown(folder, 65534, 65534), 0);
            }
        }
        qputenv(variable, folder);
        pps::Connection connection;
        QTEST(openError(connection), "error");
        const Ended ended = run({});
        QCOMPARE(ended.status, 1);
        QVERIFY2(ended.err.startsWith("vorod: " + folder + ": " + words), ended.err.constData());
        QVERIFY(!QFile::exists(folder + "/voro"));
    }

    void runtimeFolder_isClosedToOthers()
    {
        const QTemporaryDir folder;
        QVERIFY(QFile::setPermissions(folder.path(), QFile::Permissions(0x7755)));
        qputenv("VORO_RUNTIME_DIR", folder.path().toLocal8Bit());
        qputenv("VORO_AUTOSPAWN", "0");
        pps::Connection connection;
        QVERIFY(openError(connection) != 0);
        QCOMPARE(QFile::permissions(folder.path()), QFile::Permissions(0x7700));
    }

    void secondDaemon_isRefused()
    {
        Daemon daemon;
        const Ended second = run({});
        QCOMPARE(second.status, 1);
        QCOMPARE(second.err, "vorod: already running in " + daemon.folder().toLocal8Bit() + '\n');
        QCOMPARE(run({"--background"}).status, 0);
        pps::Connection connection;
        QCOMPARE(openError(connection), 0);
    }

    void record_isTaken_ifItsVersionIsOne_data()
    {
        const Rows<QByteArray, QByteArray> row("version", "taken");
        row("a version", "1.0~rc1+a-2", "1.0~rc1+a-2");
        row("control characters", "1.0\x1b[31m", "unknown");
        row("too long", QByteArray(65, '1'), "unknown");
    }

    void record_isTaken_ifItsVersionIsOne()
    {
        QFETCH(const QByteArray, version);
        const QTemporaryDir folder;
        const std::string path = folder.path().toStdString();
        const pps::Fd lock(open((path + pps::LockName).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
        const std::string text = pps::DaemonRecord{getpid(), version.toStdString(), 1}.toText();
        QVERIFY(flock(lock.get(), LOCK_EX) == 0 && write(lock.get(), text.data(), text.size()) > 0);
        QTEST(QByteArray::fromStdString(pps::runningDaemon(path)->version), "taken");
    }

    void olderDaemon_makesRoom_whenNobodyNeedsIt_data()
    {
        const Rows<bool, int, QByteArray> row("isNeeded", "error", "words");
        row("needed", true, EPROTO,
            "voro: the daemon is version 0.9 and speaks protocol 1, this program speaks "
            "2; it ends when no player needs it, or with voro doctor --restart\n");
        row("not needed", false, 0, {});
    }

    void olderDaemon_makesRoom_whenNobodyNeedsIt()
    {
        QFETCH(const bool, isNeeded);
        StartFolder folder;
        QVERIFY(QDir().mkdir(folder.folder()));
        const std::string path = folder.folder().toStdString();
        ChildProcess older([&](ChildProcess &self) {
            signal(SIGUSR1, isNeeded ? SIG_IGN : SIG_DFL);
            const pps::Fd lock(open((path + pps::LockName).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
            const std::string text = pps::DaemonRecord{getpid(), "0.9", 1}.toText();
            const pps::Fd listener = pps::listenAt(pps::socketPath(path));
            if (flock(lock.get(), LOCK_EX) != 0 || write(lock.get(), text.data(), text.size()) < 0) {
                return 1;
            }
            fcntl(listener.get(), F_SETFL, 0);
            self.say();
            for (;;) {
                const pps::Fd client(accept4(listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
                const char refusal[pps::CommonHeader] = {pps::Reply::Opened, 0, EPROTO, 0};
                send(client.get(), refusal, sizeof refusal, MSG_NOSIGNAL);
            }
        });
        QVERIFY(older.hear());
        QTemporaryFile words;
        QVERIFY(words.open());
        ChildProcess client([&](ChildProcess &) {
            dup2(words.handle(), STDERR_FILENO);
            pps::Connection connection;
            return openError(connection);
        });
        const int error = client.wait();
        QTEST(error, "error");
        QVERIFY(words.seek(0));
        QTEST(words.readAll(), "words");
        QCOMPARE(folder.daemon() == older.process(), isNeeded);
        // A newer one that somebody starts waits; until then there is one, and no more.
        if (isNeeded) {
            QProcess newer;
            newer.start(VOROD, {});
            QVERIFY(newer.waitForReadyRead() || newer.bytesAvailable() > 0 || newer.state() == QProcess::Running);
            newer.setReadChannel(QProcess::StandardError);
            QVERIFY(newer.canReadLine() || newer.waitForReadyRead());
            QCOMPARE(newer.readLine(), QByteArray("vorod: waits for version 0.9 to have no player\n"));
            older.kill();
            pps::Connection connection;
            QTRY_VERIFY_WITH_TIMEOUT(connection.isOpen() || openError(connection) == 0, 60'000);
            newer.terminate();
            QVERIFY(newer.waitForFinished());
            QCOMPARE(newer.exitCode(), 0);
        }
    }

    void olderClient_isAnswered()
    {
        const Daemon daemon;
        const pps::Fd socket = pps::connectTo(daemon.folder().toStdString());
        const char packet[] = {pps::Request::Open, pps::Subscribe, 1, 0, '/'};
        QCOMPARE(send(socket.get(), packet, sizeof packet, 0), ssize_t(sizeof packet));
        char answer[pps::MaximumReply];
        QVERIFY(recv(socket.get(), answer, sizeof answer, 0) >= ssize_t(pps::CommonHeader));
        QCOMPARE(int(answer[0]), int(pps::Reply::Opened));
        QCOMPARE(int(answer[2]), EPROTO);
    }

    void descriptors_areRefused()
    {
        constexpr int PassRights = 83;
        int value = 0;
        socklen_t size = sizeof value;
        const pps::Fd any(socket(AF_UNIX, SOCK_SEQPACKET, 0));
        // Older kernels let every socket take them.
        const bool isKnown = getsockopt(any.get(), SOL_SOCKET, PassRights, &value, &size) == 0;
        const Daemon daemon;
        for (const char *name : {"pps.sock", "frames.sock"}) {
            const pps::Fd socket = pps::connectToSocket((daemon.folder() + '/' + name).toStdString());
            QVERIFY2(socket.isValid(), name);
            const std::byte packet{};
            const bool isSent = pps::sendPacket(socket.get(), std::span(&packet, 1), socket.get());
            QCOMPARE(isSent ? 0 : errno, isKnown ? EPERM : 0);
        }
    }

    void replacedProgram_endsTheDaemon_whenNoPlayerNeedsIt()
    {
        QTemporaryDir folder;
        qputenv("VORO_RUNTIME_DIR", folder.path().toLocal8Bit());
        qputenv("VORO_AUTOSPAWN", "0");
        qputenv("VORO_AUDIO_SINK", "fakesink");
        const QString program = folder.filePath("vorod");
        QVERIFY(QFile::copy(VOROD, program) && QFile::copy(VOROD, program + ".new"));
        QVERIFY(QFile::link(QFileInfo(VOROD).dir().filePath("voro-renderer"), folder.filePath("voro-renderer")));
        const QString medium = writeFile(folder.filePath("a.wav"), silentWav(1));
        QProcess daemon;
        daemon.start(program, {});
        pps::Connection control;
        QTRY_VERIFY_WITH_TIMEOUT(
            control.isOpen() || control.open("/pps/services/multimedia/renderer/control", pps::PublishSubscribe),
            60'000);
        std::string text;
        QVERIFY(control.write("msg::context_create\nname::c") && control.read(text, true));
        pps::Connection context;
        QVERIFY(context.open("/pps/services/multimedia/renderer/context/c/control", pps::PublishSubscribe));
        const auto ask = [&context, &text](const std::string &request) {
            return context.write("msg::" + request) && context.read(text, true) && text.find("err:n:0\n") != text.npos;
        };
        QVERIFY2(ask("input_attach\nurl::" + medium.toStdString() + "\ntype::autolist"), text.c_str());
        QCOMPARE(rename((program + ".new").toLocal8Bit(), program.toLocal8Bit()), 0);
        for (int i = 0; i < 100; ++i) {
            QVERIFY(ask("stop"));
        }
        QVERIFY(ask("input_detach"));
        QVERIFY(daemon.waitForFinished());
        QCOMPARE(daemon.exitCode(), 0);
        QCOMPARE(daemon.exitStatus(), QProcess::NormalExit);
    }

    void daemon_endsWhenNobodyIsLeft()
    {
        StartFolder folder;
        QCOMPARE(run({"--background", "--idle-exit", "1"}).status, 0);
        const pid_t daemon = folder.daemon();
        QVERIFY(daemon > 0);
        QVERIFY(pps::waitForEnd({daemon, {}, 0}, 60'000));
        QVERIFY(!QFile::exists(folder.folder() + "/pps.sock"));
    }

    void daemon_takesThePassedSocket()
    {
        QTemporaryDir folder;
        qputenv("VORO_RUNTIME_DIR", folder.path().toLocal8Bit());
        qputenv("VORO_AUTOSPAWN", "0");
        const pps::Fd listener = pps::listenAt(folder.filePath("pps.sock").toStdString());
        QProcess daemon;
        daemon.setProcessChannelMode(QProcess::ForwardedChannels);
        daemon.setChildProcessModifier([&listener] { dup2(listener.get(), 3); });
        daemon.start("/bin/sh", {"-c", "LISTEN_FDS=1 LISTEN_PID=$$ exec \"$0\"", VOROD});
        pps::Connection connection;
        QCOMPARE(openError(connection), 0);
        daemon.terminate();
        QVERIFY(daemon.waitForFinished());
        QCOMPARE(daemon.exitCode(), 0);
        QVERIFY(QFile::exists(folder.filePath("pps.sock")));
    }

    void process_isTurnedAway_ifItIsAnotherUsers_data() { addUsers(); }

    void process_isTurnedAway_ifItIsAnotherUsers()
    {
        QFETCH(const uid_t, user);
        Daemon daemon;
        const QByteArray folder = daemon.folder().toLocal8Bit();
        QCOMPARE(chmod(folder, 0711), 0);
        QCOMPARE(chmod(folder + "/pps.sock", 0666), 0);
        ChildProcess other([&](ChildProcess &) {
            if (setuid(user) != 0) {
                return -1;
            }
            sockaddr_un address{};
            address.sun_family = AF_UNIX;
            qstrncpy(address.sun_path, folder + "/pps.sock", sizeof address.sun_path);
            const int socket = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
            if (::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
                return -1;
            }
            pps::Connection connection;
            return connection.openOn(socket, Object, pps::Subscribe) ? 0 : connection.error();
        });
        QTEST(other.wait(), "error");
        pps::Connection ours;
        QCOMPARE(openError(ours), 0);
    }

    void server_isTurnedAway_ifItIsAnotherUsers_data() { addUsers(); }

    void server_isTurnedAway_ifItIsAnotherUsers()
    {
        QFETCH(const uid_t, user);
        QTemporaryDir folder;
        QCOMPARE(chmod(folder.path().toLocal8Bit(), 0777), 0);
        const std::string path = folder.filePath("s").toStdString();
        ChildProcess other([&](ChildProcess &self) {
            const pps::Fd listener = setuid(user) == 0 ? pps::listenAt(path) : pps::Fd();
            self.say();
            self.hear();
            return listener.isValid() ? 0 : 1;
        });
        QVERIFY(other.hear());
        QTEST(pps::connectToSocket(path).isValid() ? 0 : errno, "error");
        other.say();
        QCOMPARE(other.wait(), 0);
    }
};

QTEST_GUILESS_MAIN(TestVorod)
#include "tst_vorod.moc"
