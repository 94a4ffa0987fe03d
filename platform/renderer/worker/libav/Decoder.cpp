#include "Decoder.h"

#include "Pictures.h"
#include "Samples.h"

#include <algorithm>
#include <utility>

namespace voro::renderer {

namespace {

constexpr AVRational Nanoseconds{1, 1'000'000'000};

std::string nameOf(AVCodecID codec)
{
    const AVCodecDescriptor *descriptor = avcodec_descriptor_get(codec);
    return descriptor ? std::string(descriptor->long_name ? descriptor->long_name : descriptor->name)
                      : "an unknown codec";
}

} // namespace

std::unique_ptr<Decoder> Decoder::make(const AVStream &stream, int64_t origin, std::string &problem)
{
    const AVCodec *codec = avcodec_find_decoder(stream.codecpar->codec_id);
    Context context(codec ? avcodec_alloc_context3(codec) : nullptr);
    if (context) {
        avcodec_parameters_to_context(context.get(), stream.codecpar);
        context->pkt_timebase = stream.time_base;
        const bool isSound = stream.codecpar->codec_type == AVMEDIA_TYPE_AUDIO;
        context->thread_count = isSound ? 1 : 0;
        if (avcodec_open2(context.get(), codec, nullptr) >= 0) {
            std::unique_ptr<Decoder> decoder;
            if (isSound) {
                decoder = std::make_unique<Samples>(stream, std::move(context));
            } else {
                decoder = std::make_unique<Pictures>(stream, std::move(context));
            }
            decoder->m_origin = origin * 1000;
            decoder->restart(origin);
            return decoder;
        }
    }
    problem = "there is no decoder for " + nameOf(stream.codecpar->codec_id);
    return nullptr;
}

Decoder::Decoder(const AVStream &stream, Context context) : m_stream(stream), m_context(std::move(context)) {}

void Decoder::restart(int64_t time)
{
    avcodec_flush_buffers(m_context.get());
    m_next = time * 1000 - m_origin;
}

GstFlowReturn Decoder::decode(const AVPacket *packet, const Take &take)
{
    int sent = 0;
    do {
        sent = avcodec_send_packet(m_context.get(), packet);
        while (avcodec_receive_frame(m_context.get(), m_frame.get()) >= 0) {
            if (const GstFlowReturn result = takeFrame(take); result != GST_FLOW_OK) {
                return result;
            }
        }
    } while (sent == AVERROR(EAGAIN));
    return GST_FLOW_OK;
}

GstFlowReturn Decoder::takeFrame(const Take &take)
{
    const AVFrame &frame = *m_frame;
    Owned<GstCaps> caps = capsOf(frame);
    Owned<GstBuffer> buffer = convert(frame);
    if (!buffer) {
        return GST_FLOW_OK;
    }
    const int64_t time = frame.best_effort_timestamp;
    const int64_t begin =
        time == AV_NOPTS_VALUE ? m_next : av_rescale_q(time, m_stream.time_base, Nanoseconds) - m_origin;
    const int64_t length = lengthOf(frame);
    m_next = begin + length;
    GST_BUFFER_PTS(buffer.get()) = static_cast<GstClockTime>(std::max<int64_t>(0, begin));
    GST_BUFFER_DURATION(buffer.get()) = length > 0 ? static_cast<GstClockTime>(length) : GST_CLOCK_TIME_NONE;
    return take(std::move(buffer), std::move(caps));
}

} // namespace voro::renderer
