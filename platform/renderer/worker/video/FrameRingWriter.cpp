#include "FrameRingWriter.h"

#include <fcntl.h>
#include <renderer/common/MemoryFile.h>
#include <sys/mman.h>

#include <algorithm>
#include <bit>

namespace voro::renderer {

namespace {

constexpr uint32_t Slots = 4;
constexpr uint64_t SlotAlignment = 4096;

/** The format of converted pictures: the same in colours that every scene can draw. */
GstVideoInfo shown(const GstVideoInfo &pictures)
{
    GstVideoInfo info;
    gst_video_info_set_format(&info, GST_VIDEO_FORMAT_BGRx, static_cast<guint>(pictures.width),
                              static_cast<guint>(pictures.height));
    info.fps_n = pictures.fps_n;
    info.fps_d = pictures.fps_d;
    info.par_n = pictures.par_n;
    info.par_d = pictures.par_d;
    return info;
}

FrameDescription describe(const GstVideoInfo &target, uint32_t generation)
{
    FrameDescription description;
    description.generation = generation;
    description.width = static_cast<uint32_t>(target.width);
    description.height = static_cast<uint32_t>(target.height);
    description.pixelWidth = static_cast<uint32_t>(std::clamp(target.par_n, 1, MaximumFrameSide));
    description.pixelHeight = static_cast<uint32_t>(std::clamp(target.par_d, 1, MaximumFrameSide));
    description.slots = Slots;
    description.slotSize = (FrameHeaderSize + target.size + SlotAlignment - 1) / SlotAlignment * SlotAlignment;
    description.offset = FrameHeaderSize + static_cast<uint32_t>(target.offset[0]);
    description.stride = static_cast<uint32_t>(target.stride[0]);
    return description;
}

} // namespace

std::unique_ptr<FrameRingWriter> FrameRingWriter::make(const GstVideoInfo &pictures, uint32_t generation)
{
    std::unique_ptr<FrameRingWriter> ring(new FrameRingWriter);
    ring->m_source = pictures;
    ring->m_target = shown(pictures);
    ring->m_description = describe(ring->m_target, generation);
    const auto size = Slots * ring->m_description.slotSize;
    if (!isValid(ring->m_description, size)) {
        return nullptr;
    }
    ring->m_file = makeMemoryFile(size);
    const int file = ring->m_file.get();
    if (fcntl(file, F_ADD_SEALS, F_SEAL_SHRINK) != 0) {
        return nullptr;
    }
    void *memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (memory == MAP_FAILED) {
        return nullptr;
    }
    ring->m_memory = static_cast<std::byte *>(memory);
    ring->m_converter.reset(gst_video_converter_new(&ring->m_source, &ring->m_target, nullptr));
    return ring->m_converter ? std::move(ring) : nullptr;
}

FrameRingWriter::~FrameRingWriter()
{
    if (m_memory) {
        munmap(m_memory, Slots * m_description.slotSize);
    }
}

bool FrameRingWriter::fits(const GstVideoInfo &pictures) const
{
    return gst_video_info_is_equal(&pictures, &m_source);
}

std::optional<uint32_t> FrameRingWriter::takeSlot()
{
    const auto slot = static_cast<uint32_t>(std::countr_one(m_taken));
    if (slot >= Slots) {
        return std::nullopt;
    }
    m_taken |= static_cast<uint64_t>(1) << slot;
    return slot;
}

bool FrameRingWriter::freeSlot(uint32_t slot)
{
    const bool isTaken = slot < Slots && (m_taken >> slot & 1) != 0;
    if (isTaken) {
        m_taken &= ~(static_cast<uint64_t>(1) << slot);
    }
    return isTaken;
}

bool FrameRingWriter::fill(uint32_t slot, GstBuffer *picture, uint64_t serial)
{
    GstVideoFrame source;
    if (!gst_video_frame_map(&source, &m_source, picture, GST_MAP_READ)) {
        return false;
    }
    GstBuffer *place = gst_buffer_new_wrapped_full(static_cast<GstMemoryFlags>(0), address(slot) + FrameHeaderSize,
                                                   m_target.size, 0, m_target.size, nullptr, nullptr);
    GstVideoFrame target;
    const bool isMapped = gst_video_frame_map(&target, &m_target, place, GST_MAP_WRITE);
    if (isMapped) {
        *reinterpret_cast<FrameHeader *>(address(slot)) = {serial};
        gst_video_converter_frame(m_converter.get(), &source, &target);
        gst_video_frame_unmap(&target);
    }
    gst_buffer_unref(place);
    gst_video_frame_unmap(&source);
    return isMapped;
}

} // namespace voro::renderer
