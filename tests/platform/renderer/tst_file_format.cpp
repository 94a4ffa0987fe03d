#include "RealMedia.h"

#include <QtTest/QtTest>

#include <renderer/worker/media/FileFormat.h>
#include <renderer/worker/media/Mp3Length.h>
#include <Rows.h>

using voro::renderer::fileFormat;
using voro::renderer::FileFormat;
using voro::renderer::hasGuessedLength;
using voro::renderer::mp3Length;

Q_DECLARE_METATYPE(FileFormat)

/** What is decoded by known parts, and what has to be looked at more closely. */
class tst_FileFormat : public QObject,
                       media::Folder {
    Q_OBJECT
private Q_SLOTS:
    void format_isFoundOut_data()
    {
        const Rows<QByteArray, FileFormat> row("content", "format");
        const QByteArray vorbis = encoded("a.ogg", {"-c:a", "libvorbis"});
        const QByteArray mp3 = encoded("a.mp3", {"-id3v2_version", "0", "-write_id3v1", "0"});
        const QByteArray taggedMp3 = encoded("b.mp3", {"-metadata", "title=T"});
        const QByteArray aac = encoded("a.aac", {"-f", "adts"});
        row("wav", encoded("a.wav"), FileFormat::Wav);
        row("wav, floats", encoded("f.wav", {"-c:a", "pcm_f32le"}), FileFormat::Wav);
        row("wav, not samples", encoded("l.wav", {"-c:a", "pcm_alaw"}), FileFormat::Other);
        row("flac", encoded("a.flac"), FileFormat::Flac);
        row("mp3", mp3, FileFormat::Mp3);
        row("mp3, tags before", taggedMp3, FileFormat::TaggedMp3);
        row("mp3, tags behind", mp3 + "TAG" + QByteArray(125, '\0'), FileFormat::TaggedMp3);
        row("mp3, other tags", mp3 + "APETAGEX" + QByteArray(24, '\0'), FileFormat::Other);
        row("tags before something else", taggedMp3.left(taggedMp3.indexOf('\xff')) + aac, FileFormat::Other);
        row("aac, no container", aac, FileFormat::Other);
        row("ogg vorbis", vorbis, FileFormat::OggVorbis);
        row("ogg opus", encoded("o.ogg", {"-c:a", "libopus"}), FileFormat::OggOpus);
        row("ogg, two after another", vorbis + encoded("b.ogg", {"-c:a", "libvorbis"}), FileFormat::Other);
        row("ogg, two at a time",
            encoded("t.ogg", {"-f", "lavfi", "-i", "sine=duration=0.5", "-map", "0", "-map", "1"}), FileFormat::Other);
        row("mp4", encoded("a.m4a", {"-metadata", "title=T"}), FileFormat::Mp4Aac);
        row("mp4, description first", encoded("s.m4a", {"-movflags", "+faststart"}), FileFormat::Mp4Aac);
        row("mp4, another coding", encoded("l.m4a", {"-c:a", "alac"}), FileFormat::Other);
        row("mp4, pictures", encoded("v.mp4", {}, "testsrc=duration=0.5:size=64x64[out0];sine=duration=0.5[out1]"),
            FileFormat::Other);
        row("matroska", encoded("a.mka"), FileFormat::Other);
        row("nothing", {}, FileFormat::Other);
        row("text", "\xff\xfe never a frame", FileFormat::Other);
    }

    void format_isFoundOut()
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

    void length_isGuessed()
    {
        const auto isGuessed = [this](const char *name, const QStringList &arguments = {}) {
            encoded(name, arguments);
            return hasGuessedLength(file(name).toStdString());
        };
        QVERIFY(!isGuessed("a.webm"));
        QVERIFY(isGuessed("b.webm", {"-live", "1"}));
        QVERIFY(!isGuessed("a.m4a"));
        QVERIFY(isGuessed("b.m4a", {"-movflags", "frag_keyframe+empty_moov"}));
        QVERIFY(isGuessed("a.ts"));
        QVERIFY(!isGuessed("a.flac"));
    }

    void mp3Length_goesOnBehindABreak()
    {
        const QByteArray part = encoded("l.mp3", {"-write_xing", "0", "-metadata", "title=T"});
        const auto lengthOf = [this](const QByteArray &content) {
            write("it", content);
            return mp3Length(file("it").toStdString()).value_or(0);
        };
        const int64_t length = lengthOf(part);
        QVERIFY(length > 0);
        QCOMPARE(lengthOf(part + part) / 2, length);
        QCOMPARE(lengthOf(part + QByteArray(3'000, 'x') + part) / 2, length);
    }

private:
    QByteArray encoded(const char *name, const QStringList &arguments = {},
                       const char *graph = "sine=duration=0.5") const
    {
        encode(name, QString::fromUtf8(graph), arguments);
        return content(name);
    }
    FileFormat formatOf(const QByteArray &content) const
    {
        write("it", content);
        return fileFormat(file("it").toStdString());
    }
};

QTEST_GUILESS_MAIN(tst_FileFormat)
#include "tst_file_format.moc"
