#include "Pictures.h"

extern "C" {
#include <libavutil/imgutils.h>
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <array>
#include <utility>

namespace voro::renderer {

namespace {

struct PictureKind {
    AVPixelFormat made;
    GstVideoFormat format;
};

/** Formats of both sides; all others are converted to the first or the second one. */
constexpr std::array PictureKinds{
    PictureKind{AV_PIX_FMT_YUV420P, GST_VIDEO_FORMAT_I420},
    PictureKind{AV_PIX_FMT_BGRA, GST_VIDEO_FORMAT_BGRA},
    PictureKind{AV_PIX_FMT_YUV422P, GST_VIDEO_FORMAT_Y42B},
    PictureKind{AV_PIX_FMT_YUV444P, GST_VIDEO_FORMAT_Y444},
    PictureKind{AV_PIX_FMT_YUV420P10LE, GST_VIDEO_FORMAT_I420_10LE},
    PictureKind{AV_PIX_FMT_YUV422P10LE, GST_VIDEO_FORMAT_I422_10LE},
    PictureKind{AV_PIX_FMT_RGB24, GST_VIDEO_FORMAT_RGB},
    PictureKind{AV_PIX_FMT_BGR24, GST_VIDEO_FORMAT_BGR},
};

PictureKind pictureKindOf(AVPixelFormat format)
{
    const auto *const known = std::ranges::find(PictureKinds, format, &PictureKind::made);
    if (known != PictureKinds.end()) {
        return *known;
    }
    const AVPixFmtDescriptor *descriptor = av_pix_fmt_desc_get(format);
    constexpr uint64_t Coloured = AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL | AV_PIX_FMT_FLAG_ALPHA;
    return descriptor && (descriptor->flags & Coloured) != 0 ? PictureKinds[1] : PictureKinds[0];
}

} // namespace

Owned<GstCaps> Pictures::capsOf(const AVFrame &frame)
{
    const AVRational shape = frame.sample_aspect_ratio;
    if (frame.format == m_format && frame.width == m_width && frame.height == m_height
        && av_cmp_q(shape, m_shape) == 0) {
        return nullptr;
    }
    m_format = frame.format;
    m_width = frame.width;
    m_height = frame.height;
    m_shape = shape;
    const auto format = static_cast<AVPixelFormat>(m_format);
    const PictureKind kind = pictureKindOf(format);
    sws_freeContext(std::exchange(m_converter, nullptr));
    if (kind.made != format) {
        m_converter = sws_getContext(m_width, m_height, format, m_width, m_height, kind.made, SWS_BILINEAR, nullptr,
                                     nullptr, nullptr);
        av_frame_unref(m_made.get());
        m_made->format = kind.made;
        m_made->width = m_width;
        m_made->height = m_height;
        if (av_frame_get_buffer(m_made.get(), 0) < 0) {
            sws_freeContext(std::exchange(m_converter, nullptr));
        }
    }
    gst_video_info_set_format(&m_info, kind.format, static_cast<guint>(m_width), static_cast<guint>(m_height));
    if (shape.num > 0 && shape.den > 0) {
        m_info.par_n = shape.num;
        m_info.par_d = shape.den;
    }
    const AVRational rate = m_stream.avg_frame_rate;
    m_info.fps_n = rate.num > 0 && rate.den > 0 ? rate.num : 0;
    m_info.fps_d = rate.num > 0 && rate.den > 0 ? rate.den : 1;
    return Owned<GstCaps>(gst_video_info_to_caps(&m_info));
}

Owned<GstBuffer> Pictures::convert(const AVFrame &frame)
{
    const PictureKind kind = pictureKindOf(static_cast<AVPixelFormat>(frame.format));
    if (kind.made != frame.format && !m_converter) {
        return nullptr;
    }
    Owned<GstBuffer> buffer(gst_buffer_new_allocate(nullptr, m_info.size, nullptr));
    GstVideoFrame target;
    if (!gst_video_frame_map(&target, &m_info, buffer.get(), GST_MAP_WRITE)) {
        return nullptr;
    }
    std::array<uint8_t *, 4> planes{};
    std::array<int, 4> strides{};
    for (guint i = 0; i < GST_VIDEO_FRAME_N_PLANES(&target); ++i) {
        planes[i] = static_cast<uint8_t *>(GST_VIDEO_FRAME_PLANE_DATA(&target, i));
        strides[i] = GST_VIDEO_FRAME_PLANE_STRIDE(&target, i);
    }
    const AVFrame &source = m_converter ? *m_made : frame;
    if (m_converter) {
        sws_scale(m_converter, frame.data, frame.linesize, 0, m_height, m_made->data, m_made->linesize);
    }
    const uint8_t *sources[] = {source.data[0], source.data[1], source.data[2], source.data[3]};
    av_image_copy(planes.data(), strides.data(), sources, source.linesize, kind.made, m_width, m_height);
    gst_video_frame_unmap(&target);
    return buffer;
}

int64_t Pictures::lengthOf(const AVFrame &frame) const
{
    if (frame.pkt_duration > 0) {
        return av_rescale_q(frame.pkt_duration, m_stream.time_base, {1, 1'000'000'000});
    }
    constexpr AVRational Usual{25, 1};
    const AVRational known = m_stream.avg_frame_rate.num > 0 ? m_stream.avg_frame_rate : m_stream.r_frame_rate;
    return av_rescale_q(1, av_inv_q(known.num > 0 && known.den > 0 ? known : Usual), {1, 1'000'000'000});
}

} // namespace voro::renderer
