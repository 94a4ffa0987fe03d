#include "Samples.h"

#include <array>
#include <utility>

namespace voro::renderer {

namespace {

/** The format that samples of a kind get, and a conversion before that when GStreamer does not know the kind. */
struct SampleKind {
    AVSampleFormat made;
    const char *name;
};

SampleKind sampleKindOf(int format)
{
    switch (av_get_packed_sample_fmt(static_cast<AVSampleFormat>(format))) {
    case AV_SAMPLE_FMT_U8:
        return {AV_SAMPLE_FMT_U8, "U8"};
    case AV_SAMPLE_FMT_S16:
        return {AV_SAMPLE_FMT_S16, "S16LE"};
    case AV_SAMPLE_FMT_S32:
    case AV_SAMPLE_FMT_S64:
        return {AV_SAMPLE_FMT_S32, "S32LE"};
    case AV_SAMPLE_FMT_DBL:
        return {AV_SAMPLE_FMT_DBL, "F64LE"};
    default:
        return {AV_SAMPLE_FMT_FLT, "F32LE"};
    }
}

} // namespace

Owned<GstCaps> Samples::capsOf(const AVFrame &frame)
{
    const int channels = frame.ch_layout.nb_channels;
    if (frame.format == m_format && frame.sample_rate == m_rate && channels == m_channels) {
        return nullptr;
    }
    m_format = frame.format;
    m_rate = frame.sample_rate;
    m_channels = channels;
    // GStreamer has the first 18 places of sound as well, at the same bits.
    constexpr uint64_t Places = (1 << 18) - 1;
    AVChannelLayout layout{};
    const bool isPlaced = frame.ch_layout.order == AV_CHANNEL_ORDER_NATIVE && (frame.ch_layout.u.mask & ~Places) == 0;
    if (isPlaced) {
        av_channel_layout_copy(&layout, &frame.ch_layout);
    } else {
        av_channel_layout_default(&layout, channels);
    }
    const SampleKind kind = sampleKindOf(m_format);
    m_frameSize = av_get_bytes_per_sample(kind.made) * channels;
    swr_free(&m_converter);
    swr_alloc_set_opts2(&m_converter, &layout, kind.made, m_rate, &layout, static_cast<AVSampleFormat>(m_format),
                        m_rate, 0, nullptr);
    if (m_converter && swr_init(m_converter) < 0) {
        swr_free(&m_converter);
    }
    const uint64_t mask = layout.order == AV_CHANNEL_ORDER_NATIVE ? layout.u.mask & Places : 0;
    GstCaps *caps =
        gst_caps_new_simple("audio/x-raw", "format", G_TYPE_STRING, kind.name, "layout", G_TYPE_STRING, "interleaved",
                            "rate", G_TYPE_INT, m_rate, "channels", G_TYPE_INT, channels, nullptr);
    if (channels > 2) {
        gst_caps_set_simple(caps, "channel-mask", GST_TYPE_BITMASK, mask, nullptr);
    }
    av_channel_layout_uninit(&layout);
    return Owned<GstCaps>(caps);
}

Owned<GstBuffer> Samples::convert(const AVFrame &frame)
{
    if (!m_converter || frame.nb_samples <= 0) {
        return nullptr;
    }
    const auto size = static_cast<gsize>(frame.nb_samples) * static_cast<gsize>(m_frameSize);
    Owned<GstBuffer> buffer(gst_buffer_new_allocate(nullptr, size, nullptr));
    GstMapInfo map;
    gst_buffer_map(buffer.get(), &map, GST_MAP_WRITE);
    const uint8_t **input = const_cast<const uint8_t **>(frame.extended_data);
    const int count = swr_convert(m_converter, &map.data, frame.nb_samples, input, frame.nb_samples);
    gst_buffer_unmap(buffer.get(), &map);
    return count == frame.nb_samples ? std::move(buffer) : nullptr;
}

int64_t Samples::lengthOf(const AVFrame &frame) const
{
    return av_rescale(frame.nb_samples, GST_SECOND, m_rate);
}

} // namespace voro::renderer
