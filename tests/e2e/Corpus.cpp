#include "Corpus.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThreadPool>

namespace media {

namespace {

constexpr char Text[] = "1\n00:00:00,200 --> 00:00:01,000\nHello\n\n";

/** Everything but the file that is written. */
QStringList command(const Sample &sample)
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

bool run(const QString &program, const QStringList &arguments, const QString &folder, QByteArray *output = nullptr)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    const bool isDone =
        process.waitForFinished(120'000) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (output) {
        *output = process.readAllStandardOutput();
    }
    return isDone;
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(content) != content.size()) {
        qFatal("%s cannot be written", qUtf8Printable(path));
    }
}

/** Makes a sample and what is known of it elsewhere first, so that it is there whole or not at all. */
void encode(const Sample &sample, const QString &path)
{
    QTemporaryDir folder;
    const QString made = folder.filePath(sample.name);
    write(folder.filePath("text.srt"), Text);
    QByteArray facts;
    const QStringList questions{"-v",   "error",         "-of",
                                "json", "-show_entries", "format=duration:format_tags:stream_tags"};
    if (!run("ffmpeg", command(sample) + QStringList{"file:" + made}, folder.path())
        || !run("ffprobe", questions + QStringList{"file:" + made}, folder.path(), &facts)) {
        qFatal("The encoder failed for %s", qUtf8Printable(sample.name));
    }
    write(path + ".facts", facts);
    if (!QFile::copy(made, path)) {
        qFatal("%s cannot be written", qUtf8Printable(path));
    }
}

} // namespace

Corpus::Corpus(const QString &list, const QString &folder) : m_folder(folder)
{
    m_folder.mkpath(".");
    QFile file(list);
    file.open(QFile::ReadOnly);
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
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

QString Corpus::path(const Sample &sample) const
{
    const QByteArray text = command(sample).join(' ').toUtf8();
    const QByteArray hash = QCryptographicHash::hash(text, QCryptographicHash::Sha1).toHex().left(8);
    return m_folder.filePath(QString::fromLatin1(hash) + '-' + sample.name);
}

Facts Corpus::facts(const Sample &sample) const
{
    QFile file(path(sample) + ".facts");
    file.open(QFile::ReadOnly);
    const QJsonObject all = QJsonDocument::fromJson(file.readAll()).object();
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

} // namespace media
