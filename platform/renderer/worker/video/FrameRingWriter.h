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
    /**
     * For an item that takes these formats, as bits of FrameFormat. Nothing when there is no memory, or for pictures
     * that are too large.
     */
    static std::unique_ptr<FrameRingWriter> make(const GstVideoInfo &pictures, uint32_t formats, uint32_t generation);
    ~FrameRingWriter();
    FrameRingWriter(const FrameRingWriter &) = delete;
    FrameRingWriter &operator=(const FrameRingWriter &) = delete;

    /** Whether such pictures can go into it, for an item that takes these formats. */
    bool fits(const GstVideoInfo &pictures, uint32_t formats) const;
    uint32_t generation() const { return m_description.frame.generation; }
    /** The packet that describes it. */
    std::span<const std::byte> description() const;
    int descriptor() const { return m_file.get(); }

    /** Takes a free slot; nothing when the other side has them all. */
    std::optional<uint32_t> takeSlot();
    /** Gives a slot back; false for one that was not taken. */
    bool freeSlot(uint32_t slot);
    /** Puts a picture into a slot, converted when the item cannot do that. */
    bool fill(uint32_t slot, GstBuffer *picture, uint64_t serial);

private:
    struct FreeConverter {
        void operator()(GstVideoConverter *converter) const { gst_video_converter_free(converter); }
    };

    FrameRingWriter() = default;
    std::byte *address(uint32_t slot) const { return m_memory + slot * m_description.frame.slotSize; }

    PlanarDescription m_description;
    GstVideoInfo m_source{};
    uint32_t m_formats = 0;
    GstVideoInfo m_target{};
    /** Null where planes go as they are. */
    std::unique_ptr<GstVideoConverter, FreeConverter> m_converter;
    pps::Fd m_file;
    std::byte *m_memory = nullptr;
    /** One bit a slot. */
    uint64_t m_taken = 0;
};

} // namespace voro::renderer
