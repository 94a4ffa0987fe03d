#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest>

#include <netinet/in.h>
#include <sched.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <iterator>

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

/** A server that an attacker would like to talk to. */
int listenAt(int family, const sockaddr *address, socklen_t size)
{
    const int server = socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    return bind(server, address, size) == 0 && listen(server, 8) == 0 ? server : -1;
}

int listenAt(const QByteArray &name, bool isAbstract)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    name.toStdString().copy(address.sun_path + (isAbstract ? 1 : 0), sizeof address.sun_path - 1);
    const auto size = offsetof(sockaddr_un, sun_path) + (isAbstract ? 1 : 0) + static_cast<size_t>(name.size());
    return listenAt(AF_UNIX, reinterpret_cast<sockaddr *>(&address), static_cast<socklen_t>(size));
}

/** At a free port, which it tells. */
int listenAtPort(quint16 &port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    const int server = listenAt(AF_INET, reinterpret_cast<sockaddr *>(&address), size);
    getsockname(server, reinterpret_cast<sockaddr *>(&address), &size);
    port = ntohs(address.sin_port);
    return server;
}

} // namespace

class tst_Confinement : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void workerThatWasTakenOver_canDoNothing_data();
    void workerThatWasTakenOver_canDoNothing();
};

void tst_Confinement::workerThatWasTakenOver_canDoNothing_data()
{
    QTest::addColumn<QStringList>("options");
    for (const char *user : {"", "nobody"}) {
        if (*user && geteuid() != 0) {
            continue;
        }
        for (const char *kind : {"", "windows", "network", "-N", "-L", "-S"}) {
            const QString options = QStringLiteral("%1 %2").arg(QLatin1String(kind), QLatin1String(user)).simplified();
            QTest::newRow(qPrintable(options.isEmpty() ? QStringLiteral("a local medium") : options))
                << options.split(' ', Qt::SkipEmptyParts);
        }
    }
}

void tst_Confinement::workerThatWasTakenOver_canDoNothing()
{
    QFETCH(QStringList, options);
    if (!hasNamespaces() && !options.contains("-N")) {
        options << "-N";
    }
    constexpr int Refusals[] = {EPERM, EACCES, ENOSYS, ENOENT, EROFS, ECONNREFUSED, ENETUNREACH};
    const QTemporaryDir folder;
    const QByteArray content = "the user's own";
    QFile file(folder.filePath("file"));
    QVERIFY(file.open(QFile::ReadWrite) && file.write(content) == content.size() && file.flush());
    // Other users could do what the user himself may not be able to do.
    QVERIFY(file.setPermissions(QFile::Permissions(0x6666))
            && QFile(folder.path()).setPermissions(QFile::Permissions(0x7777)));
    quint16 port = 0;
    const int servers[] = {listenAt(folder.path().toLocal8Bit(), true),
                           listenAt(folder.filePath("server").toLocal8Bit(), false), listenAtPort(port)};
    QVERIFY(std::ranges::all_of(servers, [](int server) { return server >= 0; }));
    QVERIFY(QFile(folder.filePath("server")).setPermissions(QFile::Permissions(0x7777)));

    QProcess probe;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("DISPLAY");
    probe.setProcessEnvironment(environment);
    probe.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    probe.start(QStringLiteral(CONFINED_PROBE), QStringList{folder.path(), "file", QString::number(port)} + options);
    QVERIFY(probe.waitForFinished());
    QCOMPARE(probe.exitStatus(), QProcess::NormalExit);
    QCOMPARE(probe.exitCode(), 0);

    QByteArrayList wrong;
    const QByteArrayList lines = probe.readAllStandardOutput().trimmed().split('\n');
    for (const QByteArray &line : lines) {
        const QByteArrayList parts = line.split('=');
        QCOMPARE(parts.size(), 4);
        const int error = parts[1].toInt();
        const QByteArray &layers = parts[2];
        const bool isAllowed = layers.isEmpty() || options.contains(QString::fromLatin1(parts[3]));
        const bool isPrevented = std::ranges::any_of(
            layers, [&options](char layer) { return !options.contains('-' + QString(QChar::fromLatin1(layer))); });
        const bool isRefused = std::ranges::find(Refusals, error) != std::end(Refusals);
        if (isAllowed ? error != 0 : isPrevented && !isRefused) {
            wrong.append(line);
        }
    }
    QVERIFY2(wrong.isEmpty(), wrong.join(", "));
    QVERIFY2(lines.size() > 60, "the probe has not tried everything");
    QVERIFY(file.seek(0));
    QCOMPARE(file.readAll(), content);
    std::ranges::for_each(servers, close);
}

QTEST_GUILESS_MAIN(tst_Confinement)
#include "tst_confinement.moc"
