#pragma once

#include <cstdint>
#include <cstdlib>
#include <optional>

namespace voro::renderer {

/** How fast a medium plays, in thousandths of its normal speed: negative backward, 0 in a pause. */
struct Speed {
    int thousandths = 1000;

    bool isPaused() const { return thousandths == 0; }
    bool isBackward() const { return thousandths < 0; }
    bool operator==(const Speed &) const = default;
};

inline constexpr Speed NormalSpeed;
inline constexpr Speed Paused{0};

/** A speed that an application may set. A recording either goes on or pauses. */
inline std::optional<Speed> parseSpeed(int64_t thousandths, bool isRecording)
{
    constexpr int Slowest = 250;
    constexpr int Fastest = 4000;
    const bool isInRange = thousandths >= -Fastest && thousandths <= Fastest && std::abs(thousandths) >= Slowest;
    const bool isPossible = thousandths == 0 || (isRecording ? thousandths == NormalSpeed.thousandths : isInRange);
    return isPossible ? std::optional(Speed{static_cast<int>(thousandths)}) : std::nullopt;
}

} // namespace voro::renderer
