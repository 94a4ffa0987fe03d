#include "Window.h"

#include <charconv>

namespace voro::renderer {

std::optional<uintptr_t> windowNumber(std::string_view text)
{
    const bool isHexadecimal = text.starts_with("0x");
    if (isHexadecimal) {
        text.remove_prefix(2);
    }
    uintptr_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, isHexadecimal ? 16 : 10);
    const bool isNumber = error == std::errc() && end == text.data() + text.size() && number != 0;
    return isNumber ? std::optional(number) : std::nullopt;
}

} // namespace voro::renderer
