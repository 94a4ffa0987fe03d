#pragma once

#include "Decoder.h"

extern "C" {
#include <libswscale/swscale.h>
}

#include <gst/video/video.h>

namespace voro::renderer {

/** Decodes pictures to formats that GStreamer has. */
class Pictures : public Decoder {
public:
    Pictures(const AVStream &stream, Context context) : Decoder(stream, std::move(context)) {}
    ~Pictures() override { sws_freeContext(m_converter); }
    Pictures(const Pictures &) = delete;
    Pictures &operator=(const Pictures &) = delete;

private:
    Owned<GstCaps> capsOf(const AVFrame &frame) override;
    Owned<GstBuffer> convert(const AVFrame &frame) override;
    int64_t lengthOf(const AVFrame &frame) const override;

    SwsContext *m_converter = nullptr;
    /** The converted frame: the converter writes over the ends of lines, for which a buffer has no room. */
    Frame m_made{av_frame_alloc()};
    GstVideoInfo m_info{};
    int m_format = AV_PIX_FMT_NONE;
    int m_width = 0;
    int m_height = 0;
    AVRational m_shape{0, 1};
};

} // namespace voro::renderer
