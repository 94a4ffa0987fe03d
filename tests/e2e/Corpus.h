#pragma once

#include "Files.h"
#include "Programs.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThreadPool>

/* Short media in every format that the encoder writes, made on the spot and kept in the build folder. */

namespace media {

struct Sample {
    QString name;
    /** What goes into it: "sound", "film", "pictures", "captions" or "cover". */
    QString content;
    /** How the encoder makes it. */
    QStringList arguments;
};

inline constexpr char Text[] = "1\n00:00:00,200 --> 00:00:01,000\nHello\n\n";

/** Everything but the file that is written. */
inline QStringList command(const Sample &sample)
{
    QStringList inputs;
    QStringList maps;
    const auto add = [&](const QStringList &input) {
        maps << "-map" << QString::number(maps.size() / 2);
        inputs << input;
    };
    if (sample.content == QLatin1String("cover")) {
        add({"-f", "lavfi", "-i", "testsrc2=size=64x48:rate=10:duration=0.1"});
    } else if (sample.content != QLatin1String("sound")) {
        add({"-f", "lavfi", "-i", "testsrc2=size=64x48:rate=10:duration=2"});
    }
    if (sample.content != QLatin1String("pictures")) {
        add({"-f", "lavfi", "-i", "sine=frequency=440:duration=2:sample_rate=48000"});
    }
    if (sample.content == QLatin1String("captions")) {
        add({"-f", "srt", "-i", "text.srt"});
    }
    return QStringList{"-nostdin", "-loglevel", "error", "-y"} + inputs + maps
           + QStringList{"-metadata", "title=Tone", "-ac", "2"} + sample.arguments;
}

/** Makes a sample and what is known of it elsewhere first, so that it is there whole or not at all. */
inline void encode(const Sample &sample, const QString &path)
{
    QTemporaryDir folder;
    const QString made = folder.filePath(sample.name);
    writeFile(folder.filePath("text.srt"), Text);
    const QStringList questions{"-v",   "error",         "-of",
                                "json", "-show_entries", "format=duration:format_tags:stream_tags"};
    const bool isMade = runToEnd("ffmpeg", command(sample) + QStringList{"file:" + made}, folder.path()).has_value();
    const auto facts = runToEnd("ffprobe", questions + QStringList{"file:" + made});
    if (!isMade || !facts) {
        qFatal("The encoder failed for %s", qUtf8Printable(sample.name));
    }
    writeFile(path + ".facts", *facts);
    if (!QFile::copy(made, path)) {
        qFatal("%s cannot be written", qUtf8Printable(path));
    }
}

/** What an independent reader tells of a medium. */
struct Facts {
    int duration = 0; ///< ms, 0 when it tells none
    QString title;
};

/** A folder of samples; the encoder runs only for those that are not there yet, and for several at once. */
class Corpus {
public:
    /** Makes the samples that a file lists, a line each. */
    Corpus(const QString &list, const QString &folder) : m_folder(folder)
    {
        m_folder.mkpath(".");
        const QStringList lines = QString::fromUtf8(readFile(list)).split('\n', Qt::SkipEmptyParts);
        for (const QString &line : lines) {
            const QStringList words = line.split(' ', Qt::SkipEmptyParts);
            if (line.startsWith('#')) {
                continue;
            }
            const Sample sample{words.at(0), words.at(1), words.mid(2)};
            m_samples << sample;
            if (const QString target = path(sample); !QFile::exists(target)) {
                QThreadPool::globalInstance()->start([sample, target] { encode(sample, target); });
            }
        }
        QThreadPool::globalInstance()->waitForDone();
    }

    const QList<Sample> &samples() const { return m_samples; }
    QString path(const Sample &sample) const
    {
        const QByteArray text = command(sample).join(' ').toUtf8();
        const QByteArray hash = QCryptographicHash::hash(text, QCryptographicHash::Sha1).toHex().left(8);
        return m_folder.filePath(QString::fromLatin1(hash) + '-' + sample.name);
    }
    Facts facts(const Sample &sample) const
    {
        const QJsonObject all = QJsonDocument::fromJson(readFile(path(sample) + ".facts")).object();
        const QJsonObject format = all.value("format").toObject();
        Facts facts{qRound(format.value("duration").toString().toDouble() * 1000),
                    format.value("tags").toObject().value("title").toString()};
        const QJsonArray streams = all.value("streams").toArray();
        for (const auto &stream : streams) {
            if (facts.title.isEmpty()) {
                facts.title = stream.toObject().value("tags").toObject().value("title").toString();
            }
        }
        return facts;
    }

private:
    QList<Sample> m_samples;
    QDir m_folder;
};

} // namespace media
