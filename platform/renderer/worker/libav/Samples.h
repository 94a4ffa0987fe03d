#pragma once

#include "Decoder.h"

extern "C" {
#include <libswresample/swresample.h>
}

namespace voro::renderer {

/** Decodes sound to interleaved samples. */
class Samples : public Decoder {
public:
    Samples(const AVStream &stream, Context context) : Decoder(stream, std::move(context)) {}
    ~Samples() override { swr_free(&m_converter); }
    Samples(const Samples &) = delete;
    Samples &operator=(const Samples &) = delete;

private:
    Owned<GstCaps> capsOf(const AVFrame &frame) override;
    Owned<GstBuffer> convert(const AVFrame &frame) override;
    int64_t lengthOf(const AVFrame &frame) const override;

    SwrContext *m_converter = nullptr;
    int m_format = AV_SAMPLE_FMT_NONE;
    int m_rate = 0;
    int m_channels = 0;
    int m_frameSize = 0;
};

} // namespace voro::renderer
