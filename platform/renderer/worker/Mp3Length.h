#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace voro::renderer {

/** The length in milliseconds of a file of MPEG audio, layer III, counted frame by frame; nothing for what is none and for
    what tells its number of frames itself. A large file takes its time. */
std::optional<int64_t> mp3Length(const std::string &path);

} // namespace voro::renderer
