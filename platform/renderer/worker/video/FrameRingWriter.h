#pragma once

#include <gst/video/video.h>
#include <pps/Fd.h>
#include <renderer/common/FrameQueue.h>
#include <renderer/worker/gst/Gst.h>

#include <optional>

namespace voro::renderer {

/** A memory file of a frame queue, for pictures of one size, as the worker makes and fills it. */
class FrameRingWriter {
public:
    /** Nothing when there is no memory, or for pictures that are too large. */
    static std::unique_ptr<FrameRingWriter> make(const GstVideoInfo &pictures, uint32_t generation);
    ~FrameRingWriter();
    FrameRingWriter(const FrameRingWriter &) = delete;
    FrameRingWriter &operator=(const FrameRingWriter &) = delete;

    /** Whether such pictures can go into it. */
    bool fits(const GstVideoInfo &pictures) const;
    const FrameDescription &description() const { return m_description; }
    int descriptor() const { return m_file.get(); }

    /** Takes a free slot; nothing when the other side has them all. */
    std::optional<uint32_t> takeSlot();
    /** Gives a slot back; false for one that was not taken. */
    bool freeSlot(uint32_t slot);
    /** Puts a picture into a slot, converted when it has to be. */
    bool fill(uint32_t slot, GstBuffer *picture, uint64_t serial);

private:
    struct FreeConverter {
        void operator()(GstVideoConverter *converter) const { gst_video_converter_free(converter); }
    };

    FrameRingWriter() = default;
    std::byte *address(uint32_t slot) const { return m_memory + slot * m_description.slotSize; }

    FrameDescription m_description;
    GstVideoInfo m_source{};
    GstVideoInfo m_target{};
    std::unique_ptr<GstVideoConverter, FreeConverter> m_converter;
    pps::Fd m_file;
    std::byte *m_memory = nullptr;
    /** One bit a slot. */
    uint64_t m_taken = 0;
};

} // namespace voro::renderer
