#include "FrameQueue.h"

#include "Window.h"

namespace voro::renderer {

bool isValid(const FrameDescription &description, uint64_t size)
{
    const auto isSide = [](uint32_t side) { return side >= 1 && side <= static_cast<uint32_t>(MaximumFrameSide); };
    const bool isPlausible = description.packet == FramePacket::Description && description.format == FrameFormat::Bgrx
                             && isSide(description.width) && isSide(description.height)
                             && isSide(description.pixelWidth) && isSide(description.pixelHeight)
                             && description.slots >= FewestFrameSlots && description.slots <= MostFrameSlots;
    // Divided, not multiplied: nothing may overflow.
    if (!isPlausible || size > MaximumFrameMemory || description.slotSize > size / description.slots
        || description.slotSize % alignof(FrameHeader) != 0) {
        return false;
    }
    const uint64_t end = description.offset + static_cast<uint64_t>(description.stride) * description.height;
    return description.offset >= FrameHeaderSize && description.offset % 4 == 0
           && description.stride >= description.width * 4 && description.stride % 4 == 0 && end <= description.slotSize;
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
