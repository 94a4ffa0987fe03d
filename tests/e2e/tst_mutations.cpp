#include "Daemon.h"
#include "Files.h"
#include "LogCatcher.h"
#include "Media.h"

#include <multimedia/MediaPlayer.h>

#include <QtTest/QtTest>

#include <Rows.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>

using namespace voro::multimedia;

namespace {

constexpr int DefaultCount = 500;
constexpr int LongestWait = 10'000;
constexpr std::array Formats{"wav", "ogg", "mp3", "mp4", "mkv", "flac"};

/** Damages media, for each seed in another way and always in the same one. */
class Mutator {
public:
    explicit Mutator(const QList<QByteArray> &others) : m_others(others) {}

    QByteArray mutate(QByteArray medium, unsigned seed)
    {
        m_random.seed(seed);
        switch (seed % 5) {
        case 0:
            flipBits(medium, medium.size());
            break;
        case 1:
            // The head decides most.
            flipBits(medium, std::min<qsizetype>(medium.size(), 600));
            break;
        case 2:
            medium.truncate(below(medium.size()));
            break;
        case 3: {
            const qsizetype size = 1 + below(4096);
            const qsizetype start = below(medium.size());
            medium.replace(start, std::min(size, medium.size() - start), QByteArray(size, '\0'));
            break;
        }
        default: {
            const QByteArray &other = m_others[below(m_others.size())];
            const qsizetype size = 1 + below(2000);
            medium = other.left(size) + medium.mid(below(2 * size));
        }
        }
        return medium;
    }

private:
    qsizetype below(qsizetype limit) { return static_cast<qsizetype>(m_random() % std::mt19937::result_type(limit)); }
    void flipBits(QByteArray &medium, qsizetype limit)
    {
        for (qsizetype count = 1 + below(20); count > 0; --count) {
            medium[below(limit)] = static_cast<char>(medium[below(limit)] ^ (1 << below(8)));
        }
    }

    QList<QByteArray> m_others;
    std::mt19937 m_random;
};

} // namespace

/** Damaged media: whatever is in a file, it is played or it fails. */
class tst_Mutations : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        for (const QString format : Formats) {
            const bool hasPicture = format == QLatin1String("mp4") || format == QLatin1String("mkv");
            const QString path = media::makeTone(m_folder.filePath("tone." + format),
                                                 {.seconds = 2, .tags = {"title=Tone"}, .hasPicture = hasPicture});
            m_media << readFile(path);
        }
    }

    void mutatedFile_isPlayedOrFails_data()
    {
        const Rows<int> row("format");
        for (size_t i = 0; i < Formats.size(); ++i) {
            row(Formats[i], static_cast<int>(i));
        }
    }

    void mutatedFile_isPlayedOrFails()
    {
        QFETCH(const int, format);
        const int count =
            qEnvironmentVariableIsSet("VORO_MUTATIONS") ? qEnvironmentVariableIntValue("VORO_MUTATIONS") : DefaultCount;
        const QString path = m_folder.filePath("mutated");
        const qint64 daemon = m_daemon.processId();
        Mutator mutator(m_media);
        MediaPlayer player;
        player.setWindowId(QStringLiteral("1"));
        player.setWindowGroupId(QStringLiteral("group"));
        QCOMPARE(player.setVideoOutput(VideoOutput::PrimaryDisplay), MediaError::None);
        QMap<QString, int> results;
        auto log = std::make_unique<voro::test::LogCatcher>();
        for (int i = 0; i < count; ++i) {
            const unsigned seed = static_cast<unsigned>(format) * 10'000 + static_cast<unsigned>(i);
            writeFile(path, mutator.mutate(m_media[format], seed));
            const QString result = play(player, path);
            player.reset();
            QVERIFY2(!result.isEmpty(), qPrintable(QStringLiteral("seed %1 hangs").arg(seed)));
            ++results[result];
        }
        QCOMPARE(m_daemon.processId(), daemon);
        log.reset();
        qInfo() << results;

        // What was not damaged plays as if nothing had been.
        QVERIFY(QFile::remove(path));
        QVERIFY(QFile::copy(m_folder.filePath(QLatin1String("tone.") + Formats[static_cast<size_t>(format)]), path));
        QCOMPARE(play(player, path), QStringLiteral("ended"));
    }

private:
    /** Plays a file; what became of it, empty when it hangs. */
    QString play(MediaPlayer &player, const QString &path)
    {
        QEventLoop loop;
        QString result;
        const auto finish = [&](const QString &what) {
            result = what;
            loop.quit();
        };
        connect(&player, &MediaPlayer::playbackCompleted, &loop, [&] { finish(QStringLiteral("ended")); });
        connect(&player, qOverload<MediaError::Type, uint>(&MediaPlayer::error), &loop,
                [&](MediaError::Type error, uint) { finish(QString::number(error)); });
        QElapsedTimer timer;
        timer.start();
        player.setSourceUrl(QUrl::fromLocalFile(path));
        if (const MediaError::Type error = player.play(); error != MediaError::None) {
            return timer.hasExpired(LongestWait) ? QString() : QStringLiteral("refused %1").arg(error);
        }
        QElapsedTimer sinceMove;
        connect(&player, qOverload<uint>(&MediaPlayer::positionChanged), &loop, [&] { sinceMove.start(); });
        QTimer::singleShot(LongestWait, &loop, [&] {
            const bool isMoving = sinceMove.isValid() && !sinceMove.hasExpired(LongestWait / 2);
            finish(isMoving ? QStringLiteral("plays on") : QString());
        });
        if (result.isEmpty()) {
            loop.exec();
        }
        return result;
    }

    QTemporaryDir m_folder;
    // Faster than time, and what goes to a window goes nowhere.
    const bool m_sinks =
        qputenv("VORO_AUDIO_SINK", "fakesink sync=false") && qputenv("VORO_VIDEO_SINK", "fakesink sync=false");
    Daemon m_daemon;
    QList<QByteArray> m_media;
};

QTEST_GUILESS_MAIN(tst_Mutations)
#include "tst_mutations.moc"
