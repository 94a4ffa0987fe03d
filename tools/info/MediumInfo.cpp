#include "MediumInfo.h"

#include <QtCore/QJsonArray>
#include <QtCore/QString>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string_view>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace voro::info {

namespace {

constexpr int BufferSize = 32 * 1024;

int readSome(void *opaque, uint8_t *buffer, int size)
{
    const auto count = ::read(*static_cast<int *>(opaque), buffer, static_cast<size_t>(size));
    if (count < 0) {
        return AVERROR(errno);
    }
    return count == 0 ? AVERROR_EOF : static_cast<int>(count);
}

int64_t seek(void *opaque, int64_t offset, int whence)
{
    const int descriptor = *static_cast<int *>(opaque);
    if (whence & AVSEEK_SIZE) {
        struct stat information {};
        return fstat(descriptor, &information) == 0 ? information.st_size : AVERROR(errno);
    }
    const auto place = lseek(descriptor, offset, whence & ~AVSEEK_FORCE);
    return place < 0 ? AVERROR(errno) : place;
}

void freeInput(AVIOContext *input)
{
    av_freep(&input->buffer);
    avio_context_free(&input);
}

void closeMedium(AVFormatContext *medium)
{
    avformat_close_input(&medium);
}

QJsonObject tagsOf(const AVDictionary *dictionary)
{
    QJsonObject tags;
    const AVDictionaryEntry *tag = nullptr;
    while ((tag = av_dict_get(dictionary, "", tag, AV_DICT_IGNORE_SUFFIX))) {
        tags.insert(QString::fromUtf8(tag->key).toLower(), QString::fromUtf8(tag->value));
    }
    return tags;
}

/** Takes a tag out of the others and gives it a name of its own. */
void promote(QJsonObject &object, QJsonObject &tags, const QString &name)
{
    if (const QJsonValue value = tags.take(name); value.isString()) {
        object.insert(name, value);
    }
}

double milliseconds(int64_t time, AVRational base)
{
    return time == AV_NOPTS_VALUE ? 0 : static_cast<double>(av_rescale_q(time, base, {1, 1000}));
}

QJsonObject describe(const AVStream &stream)
{
    const AVCodecParameters &parameters = *stream.codecpar;
    const char *kind = av_get_media_type_string(parameters.codec_type);
    const AVCodecDescriptor *codec = avcodec_descriptor_get(parameters.codec_id);
    QJsonObject object{{"kind", kind ? kind : "unknown"}, {"codec", codec ? codec->name : "unknown"}};
    if (codec && codec->long_name) {
        object.insert("codecName", codec->long_name);
    }
    if (parameters.bit_rate > 0) {
        object.insert("bitRate", static_cast<double>(parameters.bit_rate));
    }
    if (parameters.codec_type == AVMEDIA_TYPE_AUDIO) {
        object.insert("sampleRate", parameters.sample_rate);
        object.insert("channels", parameters.ch_layout.nb_channels);
    }
    if (parameters.codec_type == AVMEDIA_TYPE_VIDEO) {
        object.insert("width", parameters.width);
        object.insert("height", parameters.height);
        if (stream.avg_frame_rate.den > 0) {
            object.insert("frameRate", av_q2d(stream.avg_frame_rate));
        }
        object.insert("isCover", (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0);
    }
    QJsonObject tags = tagsOf(stream.metadata);
    promote(object, tags, QStringLiteral("language"));
    promote(object, tags, QStringLiteral("title"));
    return object;
}

QJsonObject describe(const AVChapter &chapter)
{
    QJsonObject object{{"start", milliseconds(chapter.start, chapter.time_base)},
                       {"end", milliseconds(chapter.end, chapter.time_base)}};
    QJsonObject tags = tagsOf(chapter.metadata);
    promote(object, tags, QStringLiteral("title"));
    return object;
}

QJsonObject describe(const AVFormatContext &medium)
{
    QJsonArray streams;
    QJsonObject tags = tagsOf(medium.metadata);
    for (unsigned i = 0; i < medium.nb_streams; ++i) {
        const AVStream &stream = *medium.streams[i];
        QJsonObject description = describe(stream);
        // Ogg keeps the tags of the whole medium with a stream.
        const bool areOfAll = medium.nb_streams == 1 || std::string_view(medium.iformat->name) == "ogg";
        if (const QJsonObject others = tagsOf(stream.metadata); areOfAll && tags.isEmpty() && !others.isEmpty()) {
            tags = others;
            description.remove("title");
        }
        streams.append(description);
    }
    QJsonArray chapters;
    for (unsigned i = 0; i < medium.nb_chapters; ++i) {
        chapters.append(describe(*medium.chapters[i]));
    }
    return {{"container", QString::fromUtf8(medium.iformat->long_name)},
            {"duration", milliseconds(medium.duration, {1, AV_TIME_BASE})},
            {"bitRate", static_cast<double>(std::max<int64_t>(medium.bit_rate, 0))},
            {"tags", tags},
            {"streams", streams},
            {"chapters", chapters}};
}

} // namespace

QJsonObject read(int descriptor)
{
    av_log_set_level(AV_LOG_QUIET);
    auto *buffer = static_cast<unsigned char *>(av_malloc(BufferSize));
    const std::unique_ptr<AVIOContext, decltype(&freeInput)> input(
        avio_alloc_context(buffer, BufferSize, 0, &descriptor, readSome, nullptr, seek), &freeInput);
    AVFormatContext *raw = avformat_alloc_context();
    raw->pb = input.get();
    // Frees the context when it fails.
    if (avformat_open_input(&raw, nullptr, nullptr, nullptr) < 0) {
        return {};
    }
    const std::unique_ptr<AVFormatContext, decltype(&closeMedium)> medium(raw, &closeMedium);
    return avformat_find_stream_info(raw, nullptr) < 0 || raw->nb_streams == 0 ? QJsonObject() : describe(*raw);
}

} // namespace voro::info
