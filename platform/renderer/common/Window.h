#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace voro::renderer {

/** The number of an X11 window that a window id is, decimal or hexadecimal; nothing for other ids and for 0. */
std::optional<uintptr_t> windowNumber(std::string_view text);

} // namespace voro::renderer
