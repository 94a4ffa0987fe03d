#include "FrameQueue.h"

#include "Window.h"

namespace voro::renderer {

std::span<const PlaneShape> planesOf(FrameFormat format)
{
    static constexpr std::array<PlaneShape, 1> Bgrx{{{4, 1}}};
    static constexpr std::array<PlaneShape, 3> I420{{{1, 1}, {1, 2}, {1, 2}}};
    static constexpr std::array<PlaneShape, 2> Nv12{{{1, 1}, {2, 2}}};
    static constexpr std::array<PlaneShape, 3> I420Ten{{{2, 1}, {2, 2}, {2, 2}}};
    static constexpr std::array<PlaneShape, 2> P010{{{2, 1}, {4, 2}}};
    switch (format) {
    case FrameFormat::Bgrx:
        return Bgrx;
    case FrameFormat::I420:
        return I420;
    case FrameFormat::Nv12:
        return Nv12;
    case FrameFormat::I420Ten:
        return I420Ten;
    case FrameFormat::P010:
        return P010;
    }
    return {};
}

bool isValid(const PlanarDescription &description, uint64_t size)
{
    const FrameDescription &frame = description.frame;
    const auto isSide = [](uint32_t side) { return side >= 1 && side <= static_cast<uint32_t>(MaximumFrameSide); };
    const auto kind = frame.format == FrameFormat::Bgrx ? FramePacket::Description : FramePacket::PlanarDescription;
    const bool isPlausible = frame.packet == kind && isSide(frame.width) && isSide(frame.height)
                             && isSide(frame.pixelWidth) && isSide(frame.pixelHeight) && frame.slots >= FewestFrameSlots
                             && frame.slots <= MostFrameSlots && description.colors.matrix <= FrameMatrix::Bt2020
                             && description.colors.range <= FrameRange::Full;
    // Divided, not multiplied: nothing may overflow.
    if (!isPlausible || size > MaximumFrameMemory || frame.slotSize > size / frame.slots
        || frame.slotSize % alignof(FrameHeader) != 0) {
        return false;
    }
    const std::span<const PlaneShape> shapes = planesOf(frame.format);
    for (size_t i = 0; i < shapes.size(); ++i) {
        const FramePlane plane = description.plane(i);
        const uint64_t end = plane.offset + static_cast<uint64_t>(plane.stride) * shapes[i].side(frame.height);
        if (plane.offset < FrameHeaderSize || plane.offset % 4 != 0 || plane.stride % 4 != 0
            || plane.stride < shapes[i].side(frame.width) * shapes[i].pixelBytes || end > frame.slotSize) {
            return false;
        }
    }
    return !shapes.empty();
}

bool isFrameQueue(std::string_view window)
{
    return !window.empty() && window.size() <= MaximumQueueName && !windowNumber(window);
}

FramePacket kindOf(std::span<const std::byte> bytes)
{
    FramePacket kind{};
    if (bytes.size() >= sizeof kind) {
        std::copy_n(bytes.begin(), sizeof kind, std::as_writable_bytes(std::span(&kind, 1)).begin());
    }
    return kind;
}

} // namespace voro::renderer
