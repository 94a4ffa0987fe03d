#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>

namespace {

const QByteArrayList Allowed = {"read what the system has", "read itself", "start a thread",
                                "connect to a server's socket", "allocate memory"};

/** A server that an attacker would like to talk to, under an abstract name. */
int listenAt(const QByteArray &name)
{
    const int server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    name.toStdString().copy(address.sun_path + 1, sizeof address.sun_path - 1);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + static_cast<size_t>(name.size()));
    const bool isListening = bind(server, reinterpret_cast<sockaddr *>(&address), size) == 0 && listen(server, 1) == 0;
    return isListening ? server : -1;
}

} // namespace

class tst_Confinement : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void workerThatWasTakenOver_canDoNothing();
};

void tst_Confinement::workerThatWasTakenOver_canDoNothing()
{
    const QTemporaryDir folder;
    const QByteArray content = "the user's own";
    QFile file(folder.filePath("file"));
    QVERIFY(file.open(QFile::ReadWrite) && file.write(content) == content.size() && file.flush());
    const int server = listenAt(folder.path().toLocal8Bit());
    QVERIFY(server >= 0);

    QProcess probe;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("DISPLAY");
    probe.setProcessEnvironment(environment);
    probe.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    probe.start(QStringLiteral(CONFINED_PROBE), {folder.path(), "file"});
    QVERIFY(probe.waitForFinished());
    QCOMPARE(probe.exitStatus(), QProcess::NormalExit);
    QCOMPARE(probe.exitCode(), 0);

    QByteArrayList wrong;
    const QByteArrayList lines = probe.readAllStandardOutput().trimmed().split('\n');
    for (const QByteArray &line : lines) {
        const QByteArray name = line.left(line.lastIndexOf('='));
        const int error = line.mid(name.size() + 1).toInt();
        const bool isRefused = error == EPERM || error == EACCES || error == ENOSYS;
        if (Allowed.contains(name) ? error != 0 : !isRefused) {
            wrong.append(line);
        }
    }
    QCOMPARE(wrong, QByteArrayList());
    QVERIFY2(lines.size() > 50, "the probe has not tried everything");
    QVERIFY(file.seek(0));
    QCOMPARE(file.readAll(), content);
    close(server);
}

QTEST_GUILESS_MAIN(tst_Confinement)
#include "tst_confinement.moc"
