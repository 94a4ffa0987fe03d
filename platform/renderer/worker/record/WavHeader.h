#pragma once

#include <array>
#include <cstdint>

namespace voro::renderer {

/** The format of samples, 16 bits each. */
struct SampleSpec {
    int rate = 0;
    int channels = 0;

    uint32_t frameSize() const { return static_cast<uint32_t>(channels) * 2; }
};

using WavHeader = std::array<uint8_t, 80>;

/**
 * The head of a file with so many bytes of samples after it. It has room for sizes above 4 GiB, and is that of an RF64
 * file when it needs it.
 */
WavHeader wavHeader(const SampleSpec &spec, uint64_t dataSize);

} // namespace voro::renderer
