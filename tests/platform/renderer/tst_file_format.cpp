#include "RealMedia.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <renderer/worker/media/FileFormat.h>

using voro::renderer::fileFormat;
using voro::renderer::FileFormat;

Q_DECLARE_METATYPE(FileFormat)

/** What is decoded by known parts, and what has to be looked at more closely. */
class tst_FileFormat : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void format_isFoundOut_data();
    void format_isFoundOut();

private:
    QString path(const char *name) const { return m_folder.filePath(QString::fromUtf8(name)); }
    QByteArray encoded(const char *name, const QStringList &arguments = {},
                       const char *graph = "sine=duration=0.5") const
    {
        media::encode(path(name), QString::fromUtf8(graph), arguments);
        QFile file(path(name));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }
    FileFormat formatOf(const QByteArray &content) const
    {
        QFile file(path("it"));
        if (!file.open(QFile::WriteOnly) || file.write(content) != content.size()) {
            qFatal("cannot write %s", qPrintable(file.fileName()));
        }
        file.close();
        return fileFormat(file.fileName().toStdString());
    }

    QTemporaryDir m_folder;
};

void tst_FileFormat::format_isFoundOut_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<FileFormat>("format");
    const QByteArray vorbis = encoded("a.ogg", {"-c:a", "libvorbis"});
    const QByteArray mp3 = encoded("a.mp3", {"-id3v2_version", "0", "-write_id3v1", "0"});
    const QByteArray taggedMp3 = encoded("b.mp3", {"-metadata", "title=T"});
    const QByteArray aac = encoded("a.aac", {"-f", "adts"});
    QTest::newRow("wav") << encoded("a.wav") << FileFormat::Wav;
    QTest::newRow("wav, floats") << encoded("f.wav", {"-c:a", "pcm_f32le"}) << FileFormat::Wav;
    QTest::newRow("wav, not samples") << encoded("l.wav", {"-c:a", "pcm_alaw"}) << FileFormat::Other;
    QTest::newRow("flac") << encoded("a.flac") << FileFormat::Flac;
    QTest::newRow("mp3") << mp3 << FileFormat::Mp3;
    QTest::newRow("mp3, tags before") << taggedMp3 << FileFormat::TaggedMp3;
    QTest::newRow("mp3, tags behind") << mp3 + "TAG" + QByteArray(125, '\0') << FileFormat::TaggedMp3;
    QTest::newRow("mp3, other tags") << mp3 + "APETAGEX" + QByteArray(24, '\0') << FileFormat::Other;
    QTest::newRow("tags before something else") << taggedMp3.left(taggedMp3.indexOf('\xff')) + aac << FileFormat::Other;
    QTest::newRow("aac, no container") << aac << FileFormat::Other;
    QTest::newRow("ogg vorbis") << vorbis << FileFormat::OggVorbis;
    QTest::newRow("ogg opus") << encoded("o.ogg", {"-c:a", "libopus"}) << FileFormat::OggOpus;
    QTest::newRow("ogg, two after another") << vorbis + encoded("b.ogg", {"-c:a", "libvorbis"}) << FileFormat::Other;
    QTest::newRow("ogg, two at a time") << encoded("t.ogg",
                                                   {"-f", "lavfi", "-i", "sine=duration=0.5", "-map", "0", "-map", "1"})
                                        << FileFormat::Other;
    QTest::newRow("mp4") << encoded("a.m4a", {"-metadata", "title=T"}) << FileFormat::Mp4Aac;
    QTest::newRow("mp4, description first") << encoded("s.m4a", {"-movflags", "+faststart"}) << FileFormat::Mp4Aac;
    QTest::newRow("mp4, another coding") << encoded("l.m4a", {"-c:a", "alac"}) << FileFormat::Other;
    QTest::newRow("mp4, pictures") << encoded("v.mp4", {},
                                              "testsrc=duration=0.5:size=64x64[out0];sine=duration=0.5[out1]")
                                   << FileFormat::Other;
    QTest::newRow("matroska") << encoded("a.mka") << FileFormat::Other;
    QTest::newRow("nothing") << QByteArray() << FileFormat::Other;
    QTest::newRow("text") << QByteArray("\xff\xfe never a frame") << FileFormat::Other;
}

void tst_FileFormat::format_isFoundOut()
{
    QFETCH(const QByteArray, content);
    QFETCH(const FileFormat, format);
    QCOMPARE(formatOf(content), format);
    // What is cut anywhere in its head is read no further than it goes.
    for (qsizetype size = 0; size < std::min<qsizetype>(200, content.size()); ++size) {
        formatOf(content.left(size));
    }
    QCOMPARE(formatOf(content.left(3)), FileFormat::Other);
}

QTEST_GUILESS_MAIN(tst_FileFormat)
#include "tst_file_format.moc"
