#pragma once

#include <cstdint>
#include <string>

namespace voro::renderer {

/** The sound server's role for the stream of an audio manager's handle; empty for an unknown one. */
std::string streamRoleOf(uint32_t handle);
/** Likewise for the name of an audio type. */
std::string streamRoleOf(const std::string &type);

} // namespace voro::renderer
