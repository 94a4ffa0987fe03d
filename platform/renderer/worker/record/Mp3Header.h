#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace voro::renderer {

/**
 * The frame in front of an MP3 file that tells players how long the file is, where its parts are, and which samples the
 * encoder added. Players that do not know it play it as a frame of silence.
 */
class Mp3Header {
public:
    static constexpr uint64_t Unknown = ~static_cast<uint64_t>(0);

    /** Begins a file whose first frame is this one. */
    void begin(std::span<const uint8_t> frame);
    /** The file got one frame more. */
    void add(uint64_t size);
    /**
     * The frame for what the file has got; `samples` is how many were recorded, `delay` by how many the encoder is
     * late. Empty before a file has begun, and of the same size from then on.
     */
    std::vector<uint8_t> bytes(uint64_t samples, int delay) const;

private:
    void writePlaces(uint8_t *table, size_t size) const;

    std::array<uint8_t, 4> m_first{};
    uint64_t m_frames = 0;
    uint64_t m_bytes = 0;
    /** Where every m_step-th frame begins. */
    std::vector<uint64_t> m_places;
    uint64_t m_step = 1;
};

} // namespace voro::renderer
