#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/*
 * How pictures get from a worker to an item of an application.
 *
 * A window id that is no number names a frame queue. The item connects to the daemon's socket FrameSocketName and sends
 * the name; the daemon hands it one end of a socket whose other end the worker got, whenever a worker shows there. Over
 * that socket the worker passes a sealed memory file with a ring of slots (Description, PlanarDescription) and tells of
 * every frame that it has put into a slot (Frame); the item says which formats it can show, and again whenever that
 * changes (Formats), and gives slots back (Release). A slot belongs to the item from the one to the other. Each packet
 * is one of the structures below. The memory file's seals keep it from shrinking, and whatever else the worker says is
 * checked against its size.
 */

namespace voro::renderer {

inline constexpr std::string_view FrameSocketName = "frames.sock";
inline constexpr size_t MaximumQueueName = 200;
inline constexpr int MaximumFrameSide = 16'384;
inline constexpr uint64_t MaximumFrameMemory = static_cast<uint64_t>(2) << 30;
inline constexpr uint32_t FewestFrameSlots = 3;
inline constexpr uint32_t MostFrameSlots = 64;

/** Bits, so that the item can name several. */
enum class FrameFormat : uint32_t {
    /** Bytes blue, green, red, unused: what every scene can draw, and every item therefore takes. */
    Bgrx = 1,
    /** A plane of luma, then one of Cb and one of Cr, which are half as wide and high. */
    I420 = 2,
    /** A plane of luma, then one of Cb and Cr in turn, which is half as wide and high. */
    Nv12 = 4,
    /** As I420, in 16 bits in little-endian order, of which the lowest ten count. */
    I420Ten = 8,
    /** As Nv12, in 16 bits in little-endian order, of which the highest ten count. */
    P010 = 16,
};

/** A plane of a format, in relation to the picture. */
struct PlaneShape {
    uint32_t pixelBytes = 0;
    /** 2 for what is half as wide and high as the picture. */
    uint32_t divisor = 1;

    uint32_t side(uint32_t pictureSide) const { return (pictureSide + divisor - 1) / divisor; }
};

/** The planes of a format; none of an unknown one. */
std::span<const PlaneShape> planesOf(FrameFormat format);

enum class FramePacket : uint32_t { Description = 1, Frame, Clear, Formats, Release, PlanarDescription };

/** Describes the memory file that comes along. Of several planes this is the first one. */
struct FrameDescription {
    FramePacket packet = FramePacket::Description;
    /** Another number for every memory file; the other packets name the one that they mean. */
    uint32_t generation = 0;
    FrameFormat format = FrameFormat::Bgrx;
    uint32_t width = 0;
    uint32_t height = 0;
    /** How wide and high a pixel is in relation. */
    uint32_t pixelWidth = 1;
    uint32_t pixelHeight = 1;
    uint32_t slots = 0;
    /** Bytes from slot to slot. */
    uint64_t slotSize = 0;
    /** Where the picture begins in its slot, and bytes from line to line. */
    uint32_t offset = 0;
    uint32_t stride = 0;

    bool operator==(const FrameDescription &) const = default;
};

enum class FrameMatrix : uint32_t { Bt601, Bt709, Bt2020 };
enum class FrameRange : uint32_t { Limited, Full };

/** How luma and chroma become colours. */
struct FrameColors {
    FrameMatrix matrix = FrameMatrix::Bt601;
    FrameRange range = FrameRange::Limited;
    /** Where a chroma sample lies: 1 above the left of its two columns of pixels, 0 midway; the same for rows. */
    uint32_t isLeft = 1;
    uint32_t isTop = 0;

    bool operator==(const FrameColors &) const = default;
};

struct FramePlane {
    uint32_t offset = 0;
    uint32_t stride = 0;

    bool operator==(const FramePlane &) const = default;
};

/** Describes a memory file with pictures of several planes, which only items get that take such formats. */
struct PlanarDescription {
    FrameDescription frame;
    FrameColors colors;
    /** The second and the third plane. */
    std::array<FramePlane, 2> chroma;

    FramePlane plane(size_t index) const
    {
        return index == 0 ? FramePlane{frame.offset, frame.stride} : chroma[index - 1];
    }
    bool operator==(const PlanarDescription &) const = default;
};

/** A slot holds a frame. */
struct FrameReady {
    FramePacket packet = FramePacket::Frame;
    uint32_t generation = 0;
    uint32_t slot = 0;
    uint32_t reserved = 0;
    /** Grows by one from frame to frame, also over those that were dropped for want of a slot. */
    uint64_t serial = 0;
    /** When it was put there: CLOCK_MONOTONIC in nanoseconds. */
    int64_t time = 0;
};

/** There is no picture any more. */
struct FrameClear {
    FramePacket packet = FramePacket::Clear;
};

/** Which formats can be shown, as bits, of which Bgrx is one. The worker sends nothing before it knows. */
struct FrameFormats {
    FramePacket packet = FramePacket::Formats;
    uint32_t formats = 0;
};

/** A slot is free. */
struct FrameRelease {
    FramePacket packet = FramePacket::Release;
    uint32_t generation = 0;
    uint32_t slot = 0;
};

/** The beginning of every slot. */
struct FrameHeader {
    /** The same as in FrameReady. */
    uint64_t serial = 0;
};

/** The room for it, so that the picture is aligned. */
inline constexpr uint32_t FrameHeaderSize = 64;

/** Whether a description is one, and every plane that it describes lies in a memory file of that size. */
bool isValid(const PlanarDescription &description, uint64_t size);

/** Whether a window id names a frame queue: it is neither empty nor the number of a window. */
bool isFrameQueue(std::string_view window);

template<typename Packet>
std::span<const std::byte> bytesOf(const Packet &packet)
{
    return std::as_bytes(std::span(&packet, 1));
}

/** The kind of a received packet, which need not be a known one. */
FramePacket kindOf(std::span<const std::byte> bytes);

/** Reads a received packet; false when it has another size. */
template<typename Packet>
bool readPacket(std::span<const std::byte> bytes, Packet &packet)
{
    if (bytes.size() != sizeof packet) {
        return false;
    }
    std::copy(bytes.begin(), bytes.end(), std::as_writable_bytes(std::span(&packet, 1)).begin());
    return true;
}

inline constexpr size_t MaximumFramePacket = sizeof(PlanarDescription);

} // namespace voro::renderer
