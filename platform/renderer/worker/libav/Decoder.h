#pragma once

#include <renderer/worker/gst/Gst.h>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <functional>
#include <memory>
#include <string>

namespace voro::renderer {

/** Decodes a stream to raw samples or pictures. */
class Decoder {
public:
    /** Gets what was decoded; the caps come with the first buffer and whenever they change, else null. */
    using Take = std::function<GstFlowReturn(Owned<GstBuffer>, Owned<GstCaps>)>;

    /** Times count from `origin`, in microseconds. Null, with the reason in `problem`, for what nobody decodes. */
    static std::unique_ptr<Decoder> make(const AVStream &stream, int64_t origin, std::string &problem);
    virtual ~Decoder() = default;
    Decoder(const Decoder &) = delete;
    Decoder &operator=(const Decoder &) = delete;

    /** Decodes a packet, or at the end, with null, what is left. Damaged packets are passed over. */
    GstFlowReturn decode(const AVPacket *packet, const Take &take);
    /** Begins anew at a time of the file, in microseconds. */
    void restart(int64_t time);

protected:
    struct FreeContext {
        void operator()(AVCodecContext *context) const { avcodec_free_context(&context); }
    };
    struct FreeFrame {
        void operator()(AVFrame *frame) const { av_frame_free(&frame); }
    };
    using Context = std::unique_ptr<AVCodecContext, FreeContext>;
    using Frame = std::unique_ptr<AVFrame, FreeFrame>;

    Decoder(const AVStream &stream, Context context);
    /** The caps when they are others than of the last frame. */
    virtual Owned<GstCaps> capsOf(const AVFrame &frame) = 0;
    /** Null for a frame that cannot be used. */
    virtual Owned<GstBuffer> convert(const AVFrame &frame) = 0;
    virtual int64_t lengthOf(const AVFrame &frame) const = 0;

    const AVStream &m_stream;
    Context m_context;

private:
    GstFlowReturn takeFrame(const Take &take);

    Frame m_frame{av_frame_alloc()};
    /** In nanoseconds: what is counted from, and where the next frame begins that does not tell. */
    int64_t m_origin = 0;
    int64_t m_next = 0;
};

} // namespace voro::renderer
