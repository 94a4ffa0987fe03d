#pragma once

#include <cstdint>
#include <string>

namespace voro::renderer {

/** What the sound server is told that the stream of an audio manager's handle is for; empty when that says nothing. */
std::string roleOf(uint32_t handle);
/** Likewise for the name of an audio type. */
std::string roleOf(const std::string &type);

} // namespace voro::renderer
