#include <QtTest/QtTest>

#include <Files.h>
#include <renderer/worker/process/OwnElements.h>
#include <renderer/worker/process/SoundServer.h>
#include <Rows.h>

#include <algorithm>
#include <iterator>

using namespace voro::renderer;

namespace {

QByteArrayList toList(const std::vector<std::string> &texts)
{
    QByteArrayList list;
    std::ranges::transform(texts, std::back_inserter(list), QByteArray::fromStdString);
    return list;
}

} // namespace

/** What a worker is let see for the sound server, and for sinks and sources of the user's own. */
class tst_Surroundings : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void description_opensWhatItsElementsNeed_data()
    {
        const Rows<QByteArray, QByteArrayList, QByteArrayList, QByteArrayList> row("description", "folders", "files",
                                                                                   "unknown");
        row("nothing", "", {}, {}, {});
        row("harmless elements", "audioconvert ! volume volume=0.5 ! pulsesink device=a", {}, {}, {});
        row("a file to write", "wavenc ! filesink location=/tmp/a/b.wav sync=true", {"/tmp/a"}, {}, {});
        row("a file to write, in quotes, with other blanks", "wavenc!\n\tfilesink  location=\"/tmp/a/b.wav\"",
            {"/tmp/a"}, {}, {});
        row("a file to read", "filesrc location=/srv/a.wav ! wavparse", {}, {"/srv/a.wav"}, {});
        row("caps", "audio/x-raw,rate=8000 ! fakesink", {}, {}, {});
        row("elements that nobody knows", "tee ! alsasink device=hw:0 ! shmsink socket-path=/tmp/s", {}, {},
            {"alsasink", "shmsink"});
    }

    void description_opensWhatItsElementsNeed()
    {
        QFETCH(const QByteArray, description);
        OwnElements elements;
        elements.add(description.toStdString());
        QTEST(toList(elements.folders), "folders");
        QTEST(toList(elements.files), "files");
        QTEST(toList(elements.unknown), "unknown");
    }

    void soundServer_isTheLastOneThatIsConfigured_data()
    {
        const Rows<QByteArray, QByteArray, QByteArrayList> row("main", "part", "servers");
        row("usually", "default-server = unix:/run/a/native\n", "", {"/run/a/native"});
        row("no blanks, a comment, no line's end", "; a\ndefault-server=unix:/a # =\n;default-server=b", "", {"/a"});
        row("several, and a machine's name", "default-server = {m}unix:/a tcp:b:1", "", {"/a", "tcp:b:1"});
        row("a part comes later", "default-server = unix:/a", "default-server = unix:/b", {"/b"});
        row("of the part only", "", "default-server = unix:/b", {"/b"});
    }

    void soundServer_isTheLastOneThatIsConfigured()
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

        // Workers get the same, in the same order, and then one part more.
        const std::string copy = folder.filePath("copy").toStdString();
        writeSoundConfiguration(copy, soundConfiguration());
        QCOMPARE(readFile(QString::fromStdString(copy)), main);
        const QDir copies(folder.filePath("copy.d"));
        const QStringList names = copies.entryList(QDir::Files, QDir::Name);
        QCOMPARE(names.size(), 3);
        QCOMPARE(readFile(copies.filePath(names[0])), "default-sink = a\n");
        QCOMPARE(readFile(copies.filePath(names[1])), part);
        QVERIFY(readFile(copies.filePath(names[2])).contains("enable-shm = no\n"));
    }

    void soundServer_ofTheEnvironment_goesBeforeConfigurations()
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

QTEST_APPLESS_MAIN(tst_Surroundings)

#include "tst_surroundings.moc"
