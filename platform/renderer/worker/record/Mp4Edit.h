#pragma once

#include <cstdint>
#include <span>

namespace voro::renderer {

/** Whether these bytes are the index of an MP4 file and nothing else. */
bool isMp4Index(std::span<const uint8_t> bytes);
/**
 * Has the index tell that `samples` samples of its only track are sound, behind `delay` ones. In a file that is still
 * being written there is no end.
 */
void setMp4Edit(std::span<uint8_t> index, uint64_t delay, uint64_t samples);

} // namespace voro::renderer
