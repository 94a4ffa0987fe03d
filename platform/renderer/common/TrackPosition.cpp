#include "TrackPosition.h"

#include <charconv>
#include <limits>

namespace voro::renderer {

std::optional<int64_t> parseNumber(std::string_view text, int64_t smallest, int64_t largest)
{
    int64_t number = 0;
    const char *const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    if (text.empty() || text.front() == '-' || error != std::errc() || last != end || number < smallest
        || number > largest) {
        return {};
    }
    return number;
}

std::optional<ParsedPosition> parsePosition(std::string_view text)
{
    ParsedPosition position;
    if (const size_t colon = text.find(':'); colon != std::string_view::npos) {
        const auto track = parseNumber(text.substr(0, colon), 0, std::numeric_limits<uint32_t>::max());
        if (!track) {
            return {};
        }
        position.track = uint32_t(*track);
        text.remove_prefix(colon + 1);
    }
    const auto milliseconds = parseNumber(text, 0, std::numeric_limits<uint32_t>::max());
    if (!milliseconds) {
        return {};
    }
    position.milliseconds = *milliseconds;
    return position;
}

std::string toText(const TrackPosition &position)
{
    return std::to_string(position.track) + ':' + std::to_string(position.milliseconds);
}

} // namespace voro::renderer
