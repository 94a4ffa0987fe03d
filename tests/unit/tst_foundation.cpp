#include "LogCatcher.h"
#include "private/Logger.h"
#include "private/MediaUtils.h"

#include <multimedia/MetaData.h>

#include <QtTest/QtTest>

#include <Rows.h>

#include <memory>

using namespace voro::multimedia;

namespace {
QString obfuscated;
}

/** Stands in front of the system's function: notes what it was given and hides it behind a star. */
extern "C" int slog2_obfuscate(int flags, int separator, int reserved, const char *text, size_t size, char *output)
{
    obfuscated = QStringLiteral("%1 %2 %3 %4 %5").arg(flags).arg(separator).arg(reserved).arg(text).arg(size);
    if (std::strcmp(text, "unreadable") == 0) {
        return EINVAL;
    }
    qstrncpy(output, "*", size);
    return 0;
}

class FoundationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void metaDataKeys_areWhatOtherProcessesExpect()
    {
        const QByteArrayList keys{
            MetaData::Title,       MetaData::Artist,      MetaData::Album,    MetaData::Composer,
            MetaData::Genre,       MetaData::Year,        MetaData::Track,    MetaData::Disc,
            MetaData::Duration,    MetaData::Description, MetaData::Uri,      MetaData::ArtworkUri,
            MetaData::BitRate,     MetaData::SampleRate,  MetaData::Width,    MetaData::Height,
            MetaData::PixelWidth,  MetaData::PixelHeight, MetaData::Seekable, MetaData::Orientation,
            MetaData::Latitude,    MetaData::Longitude,   MetaData::Shutter,  MetaData::Aperture,
            MetaData::FocalLength, MetaData::ISO};
        QCOMPARE(keys.join(' '),
                 QByteArray("title artist album composer genre year track disc duration description uri artwork_uri "
                            "bit_rate sample_rate width height pixel_width pixel_height seekable orientation latitute "
                            "longitute shutter aperture focal_length iso"));
    }

    void debugLog_isRequested_onlyByExactlyOne_data()
    {
        const Rows<QByteArray, bool> row("value", "requested");
        row("one", "1", true);
        row("empty", "", false);
        row("leading zero", "01", false);
        row("trailing blank", "1 ", false);
    }

    void debugLog_isRequested_onlyByExactlyOne()
    {
        QFETCH(QByteArray, value);
        qputenv("VOROMULTIMEDIA_LOG_DEBUG", value);
        QTEST(isDebugLogRequested(), "requested");
        qunsetenv("VOROMULTIMEDIA_LOG_DEBUG");
        QVERIFY(!isDebugLogRequested());
    }

    void debugLog_staysOff_whenRequestedAfterLoading()
    {
        qputenv("VOROMULTIMEDIA_LOG_DEBUG", "1");
        voro::test::LogCatcher log;
        MediaUtils::instance()->generateUniqueId();
        QCOMPARE(log.takeDebugLines(), QStringList());
        qunsetenv("VOROMULTIMEDIA_LOG_DEBUG");
    }

    void prettyFunction_givesClassAndMethod_data()
    {
        const Rows<QByteArray, QString> row("text", "expected");
        row("method", "void voro::multimedia::MediaPlayer::play()", "MediaPlayer::play");
        row("static",
            "static void voro::multimedia::SystemSound::play(voro::multimedia::"
            "SystemSound::Type)",
            "SystemSound::play");
        row("destructor", "virtual voro::multimedia::SystemSoundPrivate::~SystemSoundPrivate()",
            "SystemSoundPrivate::~SystemSoundPrivate");
        row("in a namespace",
            "QSharedPointer<char> voro::multimedia::obfuscatePath(const char*, "
            "int)",
            "multimedia::obfuscatePath");
        row("free", "int main(int, char**)", "main");
        row("without a type", "Player::Player()", "Player::Player");
        row("three colons", ":::name()", "::name");
        row("no parenthesis", "void name", "nam");
        row("empty", "", {});
    }

    void prettyFunction_givesClassAndMethod()
    {
        QFETCH(QByteArray, text);
        QTEST(prettyFunction(text.constData()), "expected");
    }

    void obfuscatePath_givesWhatTheSystemMakes_orNothing()
    {
        voro::test::LogCatcher log;
        QCOMPARE(QByteArray(obfuscatePath("/a/b.ogg", 9).data()), QByteArray("*"));
        QCOMPARE(obfuscated, QStringLiteral("0 46 0 /a/b.ogg 9"));
        QCOMPARE(QByteArray(obfuscatePath(nullptr, 10).data()), QByteArray());
        QCOMPARE(QByteArray(obfuscatePath("/a", 0).data()), QByteArray());
        QCOMPARE(QByteArray(obfuscatePath("/a", -1).data()), QByteArray());
        QCOMPARE(log.takeLines(), QStringList());

        QCOMPARE(QByteArray(obfuscatePath("unreadable", 11).data()), QByteArray());
        QCOMPARE(log.takeLines(),
                 QStringList(QStringLiteral("C multimedia::obfuscatePath: Path obfuscation failed at slog2 API")));
    }

    void url_isObfuscated_whenItIsLocal_data()
    {
        const Rows<QString, QString, QString> row("url", "logged", "arguments");
        row("file", "file:///a.ogg", "*", "0 46 0 file:///a.ogg 14");
        row("asset", "asset:///a.ogg", "*", "0 46 0 asset:///a.ogg 15");
        row("path", "/a.ogg", "*", "0 46 0 /a.ogg 7");
        row("remote", "http://host/a.ogg", "\"http://host/a.ogg\"", "");
    }

    void url_isObfuscated_whenItIsLocal()
    {
        QFETCH(QString, url);
        obfuscated.clear();
        QString logged;
        QDebug(&logged).nospace() << LoggedUrl(QUrl(url));
        QTEST(logged, "logged");
        QTEST(obfuscated, "arguments");
    }

    void uniqueId_holdsProcessAndNumber_data()
    {
        const Rows<int, int, QString> row("process", "number", "expected");
        row("first", 0x1234, 0, "73ek0voxs");
        row("second", 0x1234, 1, "73ek0voxt");
        row("last before the sign", 1, 0x7fffffff, QString::number(0x17fffffffULL, 36));
        row("the sign covers the process", 0x1234, std::numeric_limits<int>::min(),
            QString::number(0xffffffff80000000ULL, 36));
    }

    void uniqueId_holdsProcessAndNumber()
    {
        QFETCH(int, process);
        QFETCH(int, number);
        QTEST(MediaUtils::toIdentifier(process, number), "expected");
    }

    void uniqueIds_differ_whenThreadsAskAtOnce()
    {
        constexpr int count = 500;
        QStringList found[2];
        std::unique_ptr<QThread> threads[2];
        for (int i = 0; i < 2; ++i) {
            threads[i].reset(QThread::create([&ids = found[i]] {
                for (int n = 0; n < count; ++n) {
                    ids += MediaUtils::instance()->generateUniqueId();
                }
            }));
            threads[i]->start();
        }
        for (const auto &thread : threads) {
            thread->wait();
        }
        const QStringList all = found[0] + found[1];
        QCOMPARE(QSet<QString>(all.begin(), all.end()).size(), 2 * count);
        // Process and number, nothing else.
        bool ok = false;
        QCOMPARE(static_cast<qint64>(all.first().toULongLong(&ok, 36) >> 32), QCoreApplication::applicationPid());
        QVERIFY(ok);
    }
};

QTEST_GUILESS_MAIN(FoundationTest)
#include "tst_foundation.moc"
