#include "Corpus.h"
#include "Daemon.h"
#include "Files.h"

#include <multimedia/MediaPlayer.h>
#include <multimedia/MetaData.h>
#include <voro/mmr.h>

#include <QtTest/QtTest>

#include <Rows.h>

using namespace voro::multimedia;

namespace {

constexpr int LongestWait = 20'000;

/** A tag of the kind that MP3 and AIFF files have; its texts are no longer than a byte tells. */
QByteArray id3(const QList<std::pair<QByteArray, QByteArray>> &texts)
{
    const auto sized = [](qsizetype size) { return QByteArray(3, '\0') + static_cast<char>(size); };
    QByteArray frames;
    for (const auto &[name, text] : texts) {
        frames += name + sized(text.size() + 1) + QByteArray("\0\0\3", 3) + text;
    }
    return QByteArray("ID3\4\0\0", 6) + sized(frames.size()) + frames;
}

QByteArray chunk(const char *name, QByteArray content)
{
    QByteArray size(4, '\0');
    qToBigEndian(static_cast<quint32>(content.size()), size.data());
    return name + size + content + QByteArray(content.size() % 2, '\0');
}

/** Where the frame of MPEG audio begins that comes after a place. */
qsizetype frameAfter(const QByteArray &medium, qsizetype place)
{
    return medium.indexOf("\xff\xfb", place + 1);
}

} // namespace

/** What others play is played: to its end, with its duration and its title. */
class tst_Corpus : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        m_player.reset();
        if (m_player.videoOutput() == VideoOutput::PrimaryDisplay) {
            return;
        }
        m_player.setWindowId(QStringLiteral("1"));
        m_player.setWindowGroupId(QStringLiteral("group"));
        QCOMPARE(m_player.setVideoOutput(VideoOutput::PrimaryDisplay), MediaError::None);
    }

    void foreignMedium_playsToItsEnd_data()
    {
        const Rows<media::Sample> row("sample");
        for (const media::Sample &sample : m_corpus.samples()) {
            row(qPrintable(sample.name), sample);
        }
    }

    void foreignMedium_playsToItsEnd()
    {
        QFETCH(media::Sample, sample);
        const media::Facts facts = m_corpus.facts(sample);
        QSignalSpy completed(&m_player, &MediaPlayer::playbackCompleted);
        QCOMPARE(m_player.setSourceUrl(QUrl::fromLocalFile(m_corpus.path(sample))), MediaError::None);
        QCOMPARE(m_player.prepare(), MediaError::None);
        const int expected = facts.duration > 0 ? facts.duration : 2000;
        const auto isRight = [&] {
            return qAbs(static_cast<int>(m_player.duration()) - expected) <= expected * 3 / 100;
        };
        QTRY_VERIFY2(isRight(), qPrintable(QStringLiteral("%1, not %2").arg(m_player.duration()).arg(expected)));
        if (!facts.title.isEmpty()) {
            QTRY_COMPARE(m_player.metaData().value(MetaData::Title).toString(), facts.title);
        }
        if (sample.content != QLatin1String("cover")) {
            const bool hasPictures = sample.content != QLatin1String("sound");
            QTRY_COMPARE(m_player.metaData().value(MetaData::Width).toInt() > 0, hasPictures);
        }
        QCOMPARE(m_player.play(), MediaError::None);
        QVERIFY(!completed.isEmpty() || completed.wait(LongestWait));
    }

    void oddMedium_plays_data()
    {
        const Rows<QString, QString> row("path", "artist");
        const QByteArray mp3 = readFile(sample("a.mp3"));
        const qsizetype first = frameAfter(mp3, 0);
        const qsizetype second = frameAfter(mp3, first + 100);
        const QByteArray mp4 = readFile(sample("v.mp4"));
        const QByteArray aiff = readFile(sample("sowt.aiff")).mid(12);
        const QByteArray artists("One\0Two", 7);
        const auto add = [&](const char *title, const char *name, const QByteArray &content, const char *artist = "") {
            row(title, write(name, content), artist);
        };
        add("mp3 with an invalid ID3 frame", "id3.mp3",
            QByteArray("ID3\3\0\0\0\0\0\24TIT2\x7f\xff\xff\xff\0\0", 20) + QByteArray(10, '\xee') + mp3.mid(first));
        add("mp3 with garbage behind the frame that counts", "garbage.mp3",
            mp3.left(second) + QByteArray(1000, '\x55') + mp3.mid(second));
        add("mp3 of two artists", "artists.mp3", id3({{"TPE1", artists}}) + mp3.mid(first), "One, Two");
        add("aiff with two tags", "tags.aiff",
            "FORM"
                + chunk("", "AIFF" + aiff + chunk("ID3 ", id3({{"TIT2", "Tone"}}))
                                + chunk("ID3 ", id3({{"TPE1", artists}}))),
            "One, Two");
        add("aiff with a Latin-1 author", "latin.aiff", "FORM" + chunk("", "AIFF" + aiff + chunk("AUTH", "Bj\xf6rk")),
            "Björk");
        add("mp4 cut in its last atom", "cut.mp4", mp4.chopped(20));
    }

    void oddMedium_plays()
    {
        QFETCH(QString, path);
        QFETCH(QString, artist);
        QSignalSpy completed(&m_player, &MediaPlayer::playbackCompleted);
        QCOMPARE(m_player.setSourceUrl(QUrl::fromLocalFile(path)), MediaError::None);
        QCOMPARE(m_player.prepare(), MediaError::None);
        QTRY_VERIFY2(qAbs(static_cast<int>(m_player.duration()) - 2000) <= 60,
                     qPrintable(QString::number(m_player.duration())));
        QTRY_COMPARE(m_player.metaData().value(MetaData::Artist).toString(), artist);
        QCOMPARE(m_player.play(), MediaError::None);
        QVERIFY(!completed.isEmpty() || completed.wait(LongestWait));
    }

    void unsupportedMedium_isRefusedByItsCodec()
    {
        const QString path =
            write("mpegh.m4a", readFile(sample("a.m4a")).replace("mp4a", "mhm1").replace("esds", "free"));
        mmr_connection_t *connection = mmr_connect(nullptr);
        mmr_context_t *context = mmr_context_create(connection, "unsupported", 0, 0700);
        QElapsedTimer time;
        time.start();
        QCOMPARE(mmr_input_attach(context, qPrintable(path), "autolist"), -1);
        QVERIFY2(time.elapsed() < 2000, qPrintable(QString::number(time.elapsed())));
        const mmr_error_info_t *error = mmr_error_info(context);
        QCOMPARE(static_cast<int>(error->error_code), static_cast<int>(MediaError::UnsupportedMediaType));
        QVERIFY2(QByteArray(error->extra_text).contains("MPEG-H 3D Audio"), error->extra_text);
        mmr_context_destroy(context);
        mmr_disconnect(connection);
    }

private:
    QString sample(const QString &name) const
    {
        for (const media::Sample &sample : m_corpus.samples()) {
            if (sample.name == name) {
                return m_corpus.path(sample);
            }
        }
        qFatal("There is no sample %s", qUtf8Printable(name));
    }

    QString write(const char *name, const QByteArray &content) const
    {
        return writeFile(m_folder.filePath(QLatin1String(name)), content);
    }

    // Faster than time, and what goes to a window goes nowhere.
    const bool m_sinks =
        qputenv("VORO_AUDIO_SINK", "fakesink sync=false") && qputenv("VORO_VIDEO_SINK", "fakesink sync=false");
    const media::Corpus m_corpus{CORPUS_LIST, CORPUS_FOLDER};
    QTemporaryDir m_folder;
    Daemon m_daemon;
    MediaPlayer m_player;
};

QTEST_GUILESS_MAIN(tst_Corpus)
#include "tst_corpus.moc"
