#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace voro::renderer {

/** A place in the queue: a track, from 1, and milliseconds from its beginning. */
struct TrackPosition {
    uint32_t track = 1;
    int64_t milliseconds = 0;
};

/** A position as somebody wrote it: without a track the current one is meant. */
struct ParsedPosition {
    std::optional<uint32_t> track;
    int64_t milliseconds = 0;
};

/** Reads "TRACK:MILLISECONDS" or "MILLISECONDS", decimal digits only. */
std::optional<ParsedPosition> parsePosition(std::string_view text);

/** "TRACK:MILLISECONDS" */
std::string toText(const TrackPosition &position);

/** Reads a whole text as a decimal number between the bounds, without sign, blanks or anything else around it. */
std::optional<int64_t> parseNumber(std::string_view text, int64_t smallest, int64_t largest);

} // namespace voro::renderer
