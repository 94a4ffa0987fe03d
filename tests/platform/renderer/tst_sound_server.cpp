#include <QtTest/QtTest>

#include <Files.h>
#include <renderer/worker/process/SoundServer.h>
#include <Rows.h>
#include <Texts.h>

using namespace voro::renderer;

/** The sound server that workers play to. */
class tst_SoundServer : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void configured_theLastOneCounts_data()
    {
        const Rows<QByteArray, QByteArray, QByteArrayList> row("main", "part", "servers");
        row("usually", "default-server = unix:/run/a/native\n", "", {"/run/a/native"});
        row("no blanks, a comment, no line's end", "; a\ndefault-server=unix:/a # =\n;default-server=b", "", {"/a"});
        row("several, and a machine's name", "default-server = {m}unix:/a tcp:b:1", "", {"/a", "tcp:b:1"});
        row("a part comes later", "default-server = unix:/a", "default-server = unix:/b", {"/b"});
        row("of the part only", "", "default-server = unix:/b", {"/b"});
    }

    void configured_theLastOneCounts()
    {
        QFETCH(const QByteArray, main);
        QFETCH(const QByteArray, part);
        const QTemporaryDir folder;
        const QDir parts(folder.filePath("a.conf.d"));
        QVERIFY(parts.mkpath("."));
        writeFile(parts.filePath("1.conf"), "default-sink = a\n");
        writeFile(parts.filePath("2.conf"), part);
        writeFile(parts.filePath("3.other"), "default-server = no\n");
        qputenv("PULSE_CLIENTCONFIG", writeFile(folder.filePath("a.conf"), main).toLocal8Bit());
        qunsetenv("PULSE_SERVER");
        nameSoundServer();
        QTEST(toList(soundServers()), "servers");
    }

    void inEnvironment_goesBeforeConfigurations()
    {
        const QTemporaryDir folder;
        const auto found = [](const char *variable, const QString &value) {
            qunsetenv("PULSE_SERVER");
            qputenv(variable, value.toLocal8Bit());
            nameSoundServer();
            return toList(soundServers());
        };
        writeFile(folder.filePath("client.conf"), "default-server = unix:/a");
        qunsetenv("PULSE_CLIENTCONFIG");
        QCOMPARE(found("PULSE_CONFIG_PATH", folder.path()), QByteArrayList{"/a"});
        const QString other = writeFile(folder.filePath("other.conf"), "default-server = unix:/b");
        QCOMPARE(found("PULSE_CLIENTCONFIG", other), QByteArrayList{"/b"});
        QCOMPARE(found("PULSE_SERVER", "unix:/c"), QByteArrayList{"/c"});
    }
};

QTEST_APPLESS_MAIN(tst_SoundServer)

#include "tst_sound_server.moc"
