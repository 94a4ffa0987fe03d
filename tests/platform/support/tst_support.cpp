#include <voro/audio_manager.h>
#include <voro/device/DisplayInfo.h>
#include <voro/slog2.h>
#include <voro/UIToolkitSupport.h>

#include <QtTest/QtTest>

#include <Rows.h>

class tst_Support : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void obfuscate_hidesNames_keepsExtension_data()
    {
        const Rows<QByteArray, QByteArray> row("text", "obfuscated");
        row("path", "/home/ann/Music/A very long album name/song.mp3", "/s/s/s/l/s.mp3");
        row("length classes", "/12345678/123456789/12345678901234567", "/s/m/l");
        row("URL", "file:///data/secret.ogg", "file:///s/s.ogg");
        row("query and fragment", "/a/b.ogg?token=hidden.txt#part", "/s/s.ogg?s=m#s");
        row("hidden file", "/a/.secret", "/s/s");
        row("two extensions", "/a/private.tar.gz", "/s/m.gz");
        row("not a scheme", "/a:b/c.ogg", "/s:s/s.ogg");
        row("empty", {}, {});
    }

    void obfuscate_hidesNames_keepsExtension()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, obfuscated);
        QByteArray output(text.size() + 1, 'x');
        QCOMPARE(slog2_obfuscate(0, '.', 0, text.constData(), static_cast<size_t>(output.size()), output.data()), 0);
        QCOMPARE(QByteArray(output.constData()), obfuscated);
    }

    void obfuscate_refusesBadArguments_andStaysInItsBuffer()
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

    void absolutePath_data()
    {
        const Rows<QUrl, QString> row("url", "path");
        const QString here = QString::fromLatin1(QUrl::toPercentEncoding(QDir::currentPath(), "/"));
        row("file", QUrl("file:///m/a.ogg"), "/m/a.ogg");
        row("local host", QUrl("file://localhost/m/a.ogg"), "/m/a.ogg");
        row("other host", QUrl("file://server/m/a.ogg"), "");
        row("percent in the name", QUrl::fromLocalFile("/m/100%25.ogg"), "/m/100%2525.ogg");
        row("number sign, question mark", QUrl::fromLocalFile("/m/a#b?c.ogg"), "/m/a%23b%3Fc.ogg");
        row("no scheme", QUrl("/m/a.ogg"), "/m/a.ogg");
        row("relative", QUrl("m/a.ogg"), here + "/m/a.ogg");
        row("http", QUrl("http://host/m/a.ogg"), "");
        row("empty", QUrl(), "");
    }

    void absolutePath()
    {
        QFETCH(QUrl, url);
        QFETCH(QString, path);
        QCOMPARE(voro::UIToolkitSupport::absolutePathFromUrl(url), path);
    }

    void absolutePath_ofAssets()
    {
        const QString folder =
            QString::fromLatin1(QUrl::toPercentEncoding(QCoreApplication::applicationDirPath(), "/"));
        const QString name = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
        const QString shared = QDir::cleanPath(folder + "/../share/" + name + "/assets");
        QCOMPARE(voro::UIToolkitSupport::absolutePathFromUrl(QUrl("asset:///sounds/a b.ogg")),
                 shared + "/sounds/a%20b.ogg");
        QCOMPARE(voro::UIToolkitSupport::absolutePathFromUrl(QUrl("asset:a.ogg")), shared + "/a.ogg");
        QCOMPARE(voro::UIToolkitSupport::absolutePathFromUrl(QUrl("asset:///")), QString());
    }

    void audioTypes_haveNames()
    {
        QCOMPARE(QByteArray(audio_manager_get_name_from_type(AUDIO_TYPE_VOICE_RECORDING)),
                 QByteArray("voice_recording"));
        QCOMPARE(audio_manager_get_name_from_type(-1), nullptr);
        QCOMPARE(audio_manager_get_name_from_type(1000), nullptr);
    }

    void displays_withoutAServer()
    {
        qunsetenv("DISPLAY");
        QCOMPARE(voro::device::DisplayInfo::primaryDisplayId(), 0);
        QCOMPARE(voro::device::DisplayInfo::secondaryDisplayId(), 1);
        qputenv("DISPLAY", ":4711");
        QCOMPARE(voro::device::DisplayInfo::primaryDisplayId(), 0);
        QCOMPARE(voro::device::DisplayInfo::secondaryDisplayId(), 1);
    }
};

QTEST_GUILESS_MAIN(tst_Support)
#include "tst_support.moc"
