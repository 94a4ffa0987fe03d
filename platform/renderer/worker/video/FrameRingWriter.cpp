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

/** How an item converts such pictures; nothing for those that it cannot convert. */
std::optional<FrameColors> colorsOf(const GstVideoInfo &pictures)
{
    FrameColors colors;
    switch (pictures.colorimetry.matrix) {
    case GST_VIDEO_COLOR_MATRIX_BT601:
        colors.matrix = FrameMatrix::Bt601;
        break;
    case GST_VIDEO_COLOR_MATRIX_BT709:
        colors.matrix = FrameMatrix::Bt709;
        break;
    case GST_VIDEO_COLOR_MATRIX_BT2020:
        colors.matrix = FrameMatrix::Bt2020;
        break;
    default:
        return std::nullopt;
    }
    colors.range = pictures.colorimetry.range == GST_VIDEO_COLOR_RANGE_0_255 ? FrameRange::Full : FrameRange::Limited;
    const auto site = static_cast<unsigned>(pictures.chroma_site);
    colors.isLeft = site == GST_VIDEO_CHROMA_SITE_UNKNOWN || (site & GST_VIDEO_CHROMA_SITE_H_COSITED) != 0;
    colors.isTop = (site & GST_VIDEO_CHROMA_SITE_V_COSITED) != 0;
    return colors;
}

/** The format in which an item may get pictures as they are. */
FrameFormat formatOf(const GstVideoInfo &pictures)
{
    switch (GST_VIDEO_INFO_FORMAT(&pictures)) {
    case GST_VIDEO_FORMAT_I420:
    case GST_VIDEO_FORMAT_YV12:
        return FrameFormat::I420;
    case GST_VIDEO_FORMAT_NV12:
        return FrameFormat::Nv12;
    case GST_VIDEO_FORMAT_I420_10LE:
        return FrameFormat::I420Ten;
    case GST_VIDEO_FORMAT_P010_10LE:
        return FrameFormat::P010;
    default:
        return FrameFormat::Bgrx;
    }
}

/** The same pictures in another format, line behind line. */
GstVideoInfo infoOf(const GstVideoInfo &pictures, GstVideoFormat format)
{
    GstVideoInfo info;
    gst_video_info_set_format(&info, format, static_cast<guint>(pictures.width), static_cast<guint>(pictures.height));
    info.fps_n = pictures.fps_n;
    info.fps_d = pictures.fps_d;
    info.par_n = pictures.par_n;
    info.par_d = pictures.par_d;
    return info;
}

FramePlane planeOf(const GstVideoInfo &info, unsigned plane)
{
    return {FrameHeaderSize + static_cast<uint32_t>(info.offset[plane]), static_cast<uint32_t>(info.stride[plane])};
}

PlanarDescription describe(const GstVideoInfo &target, FrameFormat format, uint32_t generation)
{
    PlanarDescription description;
    FrameDescription &frame = description.frame;
    frame.generation = generation;
    frame.format = format;
    frame.width = static_cast<uint32_t>(target.width);
    frame.height = static_cast<uint32_t>(target.height);
    frame.pixelWidth = static_cast<uint32_t>(std::clamp(target.par_n, 1, MaximumFrameSide));
    frame.pixelHeight = static_cast<uint32_t>(std::clamp(target.par_d, 1, MaximumFrameSide));
    frame.slots = Slots;
    frame.slotSize = (FrameHeaderSize + target.size + SlotAlignment - 1) / SlotAlignment * SlotAlignment;
    frame.offset = planeOf(target, 0).offset;
    frame.stride = planeOf(target, 0).stride;
    for (unsigned i = 1; i < planesOf(format).size(); ++i) {
        // The plane of Cb comes first here, also where it is the last one there.
        description.chroma[i - 1] = planeOf(target, static_cast<unsigned>(GST_VIDEO_INFO_COMP_PLANE(&target, i)));
    }
    return description;
}

} // namespace

std::unique_ptr<FrameRingWriter> FrameRingWriter::make(const GstVideoInfo &pictures, uint32_t formats,
                                                       uint32_t generation)
{
    std::unique_ptr<FrameRingWriter> ring(new FrameRingWriter);
    ring->m_source = pictures;
    ring->m_formats = formats;
    const FrameFormat format = formatOf(pictures);
    const auto colors = colorsOf(pictures);
    const bool isConverted = format == FrameFormat::Bgrx || !colors || (formats & static_cast<uint32_t>(format)) == 0;
    ring->m_target = infoOf(pictures, isConverted ? GST_VIDEO_FORMAT_BGRx : GST_VIDEO_INFO_FORMAT(&pictures));
    ring->m_description = describe(ring->m_target, isConverted ? FrameFormat::Bgrx : format, generation);
    if (!isConverted) {
        ring->m_description.frame.packet = FramePacket::PlanarDescription;
        ring->m_description.colors = *colors;
    }
    const auto size = Slots * ring->m_description.frame.slotSize;
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
    if (isConverted) {
        ring->m_converter.reset(gst_video_converter_new(&ring->m_source, &ring->m_target, nullptr));
    }
    return ring->m_converter || !isConverted ? std::move(ring) : nullptr;
}

FrameRingWriter::~FrameRingWriter()
{
    if (m_memory) {
        munmap(m_memory, Slots * m_description.frame.slotSize);
    }
}

bool FrameRingWriter::fits(const GstVideoInfo &pictures, uint32_t formats) const
{
    return formats == m_formats && gst_video_info_is_equal(&pictures, &m_source);
}

std::span<const std::byte> FrameRingWriter::description() const
{
    const bool isPlanar = m_description.frame.packet == FramePacket::PlanarDescription;
    return isPlanar ? bytesOf(m_description) : bytesOf(m_description.frame);
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
    bool isFilled = false;
    if (isMapped) {
        *reinterpret_cast<FrameHeader *>(address(slot)) = {serial};
        if (m_converter) {
            gst_video_converter_frame(m_converter.get(), &source, &target);
        }
        isFilled = m_converter || gst_video_frame_copy(&target, &source);
        gst_video_frame_unmap(&target);
    }
    gst_buffer_unref(place);
    gst_video_frame_unmap(&source);
    return isFilled;
}

} // namespace voro::renderer
