#include "Container.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <map>
#include <span>
#include <string_view>
#include <utility>

namespace voro::renderer {

namespace {

constexpr int BufferSize = 1 << 16;

/** Formats that are no media, open other files, or are read better by others: texts, lists, single pictures. */
bool isForeign(const AVInputFormat &format)
{
    constexpr std::array<std::string_view, 10> Foreign{"tty", "image2", "hls",  "dash",       "concat",
                                                       "imf", "sdp",    "rtsp", "ffmetadata", "webm_dash_manifest"};
    const std::string_view name(format.name);
    return name.ends_with("_pipe") || name.find("hls") != std::string_view::npos
           || std::ranges::find(Foreign, name) != Foreign.end();
}

std::string textOf(int error)
{
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    av_strerror(error, text.data(), text.size());
    return text.data();
}

int refuseOther(AVFormatContext *, AVIOContext **, const char *, int, AVDictionary **)
{
    return AVERROR(EPERM);
}

} // namespace

int Container::onRead(void *self, uint8_t *buffer, int size)
{
    auto *container = static_cast<Container *>(self);
    if (container->m_isInterrupted) {
        return AVERROR_EXIT;
    }
    const ssize_t count = container->m_file->read(container->m_place,
                                                  std::as_writable_bytes(std::span(buffer, static_cast<size_t>(size))));
    if (count <= 0) {
        return AVERROR_EOF;
    }
    container->m_place += count;
    return static_cast<int>(count);
}

int64_t Container::onSeek(void *self, int64_t offset, int whence)
{
    auto *container = static_cast<Container *>(self);
    int64_t place = offset;
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return container->m_file->size();
    case SEEK_CUR:
        place += container->m_place;
        break;
    case SEEK_END:
        place += container->m_file->size();
        break;
    default:
        break;
    }
    if (place < 0) {
        return AVERROR(EINVAL);
    }
    container->m_place = place;
    return place;
}

bool Container::open(const std::string &path, LocalFile::Shared file)
{
    // Below this nearly everything is some format or other.
    constexpr int LeastScore = AVPROBE_SCORE_RETRY;
    av_log_set_level(AV_LOG_QUIET);
    m_file = std::move(file);
    if (!m_file->isOpen()) {
        m_problem = std::strerror(m_file->error());
        return false;
    }
    auto *buffer = static_cast<unsigned char *>(av_malloc(BufferSize));
    m_input = avio_alloc_context(buffer, BufferSize, 0, this, onRead, nullptr, onSeek);
    const AVInputFormat *format = nullptr;
    const int score = av_probe_input_buffer2(m_input, &format, path.c_str(), nullptr, 0, 0);
    if (score < LeastScore || isForeign(*format)) {
        m_problem = "the format is not known";
        return false;
    }
    m_context = avformat_alloc_context();
    m_context->pb = m_input;
    m_context->flags |= AVFMT_FLAG_CUSTOM_IO;
    m_context->io_open = refuseOther;
    int error = avformat_open_input(&m_context, path.c_str(), format, nullptr);
    if (error >= 0) {
        error = avformat_find_stream_info(m_context, nullptr);
    }
    if (error < 0) {
        m_problem = textOf(error);
        return false;
    }
    for (unsigned i = 0; i < m_context->nb_streams; ++i) {
        m_context->streams[i]->discard = AVDISCARD_ALL;
    }
    return true;
}

Container::~Container()
{
    avformat_close_input(&m_context);
    if (m_input) {
        av_freep(&m_input->buffer);
        avio_context_free(&m_input);
    }
}

AVStream *Container::select(AVMediaType kind)
{
    const int index = av_find_best_stream(m_context, kind, -1, -1, nullptr, 0);
    AVStream *stream = index < 0 ? nullptr : m_context->streams[index];
    if (!stream || (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0) {
        return nullptr;
    }
    stream->discard = AVDISCARD_DEFAULT;
    return stream;
}

Packet Container::read()
{
    // Goes on over damage in the middle, as long as anything comes.
    constexpr int MostErrors = 100;
    Packet packet(av_packet_alloc());
    for (int errors = 0; errors < MostErrors && !m_isInterrupted;) {
        const int error = av_read_frame(m_context, packet.get());
        if (error == AVERROR_EOF) {
            break;
        }
        if (error < 0) {
            ++errors;
        } else if (m_context->streams[packet->stream_index]->discard != AVDISCARD_ALL) {
            return packet;
        }
        av_packet_unref(packet.get());
    }
    return nullptr;
}

std::optional<int64_t> Container::seek(int64_t time)
{
    if (avformat_seek_file(m_context, -1, INT64_MIN, time, time, 0) >= 0) {
        return time;
    }
    // From the beginning on, in formats that cannot be sought in.
    const bool isRewound = avformat_seek_file(m_context, -1, INT64_MIN, 0, INT64_MAX, AVSEEK_FLAG_BYTE) >= 0;
    return isRewound ? std::optional(start()) : std::nullopt;
}

int64_t Container::start() const
{
    return m_context->start_time == AV_NOPTS_VALUE ? 0 : m_context->start_time;
}

int64_t Container::duration() const
{
    const bool isGuess = m_context->duration_estimation_method == AVFMT_DURATION_FROM_BITRATE;
    return isGuess || m_context->duration == AV_NOPTS_VALUE ? 0 : m_context->duration;
}

int64_t Container::measure()
{
    struct Extent {
        int64_t first = INT64_MAX;
        int64_t last = INT64_MIN;
        int64_t sum = 0;
    };
    std::map<int, Extent> extents;
    while (const Packet packet = read()) {
        Extent &extent = extents[packet->stream_index];
        extent.sum += packet->duration;
        const int64_t time = packet->pts == AV_NOPTS_VALUE ? packet->dts : packet->pts;
        if (time != AV_NOPTS_VALUE) {
            extent.first = std::min(extent.first, time);
            extent.last = std::max(extent.last, time + packet->duration);
        }
    }
    int64_t longest = 0;
    for (const auto &[index, extent] : extents) {
        const int64_t length = extent.last > extent.first ? extent.last - extent.first : extent.sum;
        longest = std::max(longest, av_rescale_q(length, m_context->streams[index]->time_base, av_get_time_base_q()));
    }
    return longest;
}

} // namespace voro::renderer
