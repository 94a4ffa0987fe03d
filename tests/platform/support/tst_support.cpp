#include <voro/audio_manager.h>
#include <voro/device/DisplayInfo.h>
#include <voro/slog2.h>
#include <voro/UIToolkitSupport.h>

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

class tst_Support : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void obfuscate_hidesNames_keepsExtension_data();
    void obfuscate_hidesNames_keepsExtension();
    void obfuscate_refusesBadArguments_andStaysInItsBuffer();
    void absolutePath_data();
    void absolutePath();
    void absolutePath_ofAssets();
    void audioTypes_haveNames();
    void displays_withoutAServer();
};

void tst_Support::obfuscate_hidesNames_keepsExtension_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("obfuscated");
    QTest::newRow("path") << QByteArray("/home/ann/Music/A very long album name/song.mp3")
                          << QByteArray("/s/s/s/l/s.mp3");
    QTest::newRow("length classes") << QByteArray("/12345678/123456789/12345678901234567") << QByteArray("/s/m/l");
    QTest::newRow("URL") << QByteArray("file:///data/secret.ogg") << QByteArray("file:///s/s.ogg");
    QTest::newRow("query and fragment") << QByteArray("/a/b.ogg?token=hidden.txt#part") << QByteArray("/s/s.ogg?s=m#s");
    QTest::newRow("hidden file") << QByteArray("/a/.secret") << QByteArray("/s/s");
    QTest::newRow("two extensions") << QByteArray("/a/private.tar.gz") << QByteArray("/s/m.gz");
    QTest::newRow("not a scheme") << QByteArray("/a:b/c.ogg") << QByteArray("/s:s/s.ogg");
    QTest::newRow("other bytes") << QByteArray("/\xff\xfe/\xc3\xa4.wav") << QByteArray("/s/s.wav");
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void tst_Support::obfuscate_hidesNames_keepsExtension()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, obfuscated);
    QByteArray output(text.size() + 1, 'x');
    QCOMPARE(slog2_obfuscate(0, '.', 0, text.constData(), static_cast<size_t>(output.size()), output.data()), 0);
    QCOMPARE(QByteArray(output.constData()), obfuscated);
}

void tst_Support::obfuscate_refusesBadArguments_andStaysInItsBuffer()
{
    char output[8] = "xxxxxxx";
    QVERIFY(slog2_obfuscate(0, '.', 0, nullptr, sizeof output, output) != 0);
    QVERIFY(slog2_obfuscate(0, '.', 0, "/a", sizeof output, nullptr) != 0);
    QVERIFY(slog2_obfuscate(0, '.', 0, "/a", 0, output) != 0);
    QVERIFY(slog2_obfuscate(1, '.', 0, "/a", sizeof output, output) != 0);
    QCOMPARE(output[0], 'x');
    QCOMPARE(slog2_obfuscate(0, '.', 0, "/aaaa/bbbb/cccc.ogg", 4, output), 0);
    QCOMPARE(QByteArray(output), QByteArray("/s/"));
    QCOMPARE(output[4], 'x');
}

void tst_Support::absolutePath_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<QString>("path");
    const QString here = QString::fromLatin1(QUrl::toPercentEncoding(QDir::currentPath(), "/"));
    QTest::newRow("file") << QUrl("file:///m/a.ogg") << "/m/a.ogg";
    QTest::newRow("local host") << QUrl("file://localhost/m/a.ogg") << "/m/a.ogg";
    QTest::newRow("other host") << QUrl("file://server/m/a.ogg") << "";
    QTest::newRow("percent in the name") << QUrl::fromLocalFile("/m/100%25.ogg") << "/m/100%2525.ogg";
    QTest::newRow("number sign, question mark") << QUrl::fromLocalFile("/m/a#b?c.ogg") << "/m/a%23b%3Fc.ogg";
    QTest::newRow("blank") << QUrl::fromLocalFile("/m/a b.ogg") << "/m/a%20b.ogg";
    QTest::newRow("non-ASCII") << QUrl::fromLocalFile(QStringLiteral("/m/ä.ogg")) << "/m/%C3%A4.ogg";
    QTest::newRow("no scheme") << QUrl("/m/a.ogg") << "/m/a.ogg";
    QTest::newRow("relative") << QUrl("m/a.ogg") << here + "/m/a.ogg";
    QTest::newRow("relative file") << QUrl("file:a.ogg") << here + "/a.ogg";
    QTest::newRow("http") << QUrl("http://host/m/a.ogg") << "";
    QTest::newRow("empty") << QUrl() << "";
}

void tst_Support::absolutePath()
{
    QFETCH(QUrl, url);
    QFETCH(QString, path);
    QCOMPARE(voro::UIToolkitSupport::absolutePathFromUrl(url), path);
}

void tst_Support::absolutePath_ofAssets()
{
    const QString folder = QString::fromLatin1(QUrl::toPercentEncoding(QCoreApplication::applicationDirPath(), "/"));
    const QString name = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
    const QString shared = QDir::cleanPath(folder + "/../share/" + name + "/assets");
    QCOMPARE(voro::UIToolkitSupport::absolutePathFromUrl(QUrl("asset:///sounds/a b.ogg")),
             shared + "/sounds/a%20b.ogg");
    QCOMPARE(voro::UIToolkitSupport::absolutePathFromUrl(QUrl("asset:a.ogg")), shared + "/a.ogg");
    QCOMPARE(voro::UIToolkitSupport::absolutePathFromUrl(QUrl("asset:///")), QString());
}

void tst_Support::audioTypes_haveNames()
{
    QCOMPARE(QByteArray(audio_manager_get_name_from_type(AUDIO_TYPE_VOICE_RECORDING)), QByteArray("voice_recording"));
    QCOMPARE(audio_manager_get_name_from_type(-1), nullptr);
    QCOMPARE(audio_manager_get_name_from_type(1000), nullptr);
}

void tst_Support::displays_withoutAServer()
{
    qunsetenv("DISPLAY");
    QCOMPARE(voro::device::DisplayInfo::primaryDisplayId(), 0);
    QCOMPARE(voro::device::DisplayInfo::secondaryDisplayId(), 1);
    qputenv("DISPLAY", ":4711");
    QCOMPARE(voro::device::DisplayInfo::primaryDisplayId(), 0);
    QCOMPARE(voro::device::DisplayInfo::secondaryDisplayId(), 1);
}

QTEST_GUILESS_MAIN(tst_Support)
#include "tst_support.moc"
