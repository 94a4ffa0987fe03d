#pragma once

#include <cstdint>

/* What holds for every context. */

namespace voro::renderer {

/** How many engines may die in a row with a medium. */
inline constexpr int MostDeaths = 10;

inline constexpr int SlowestSpeed = 250;
inline constexpr int FastestSpeed = 4000;
inline constexpr int NormalSpeed = 1000;

/** Whether a medium can be played at that speed. A recording either goes on or pauses. */
inline bool isSpeed(int64_t speed, bool isRecording)
{
    if (isRecording) {
        return speed == 0 || speed == NormalSpeed;
    }
    const bool isInRange = speed >= -FastestSpeed && speed <= FastestSpeed;
    return isInRange && (speed == 0 || speed <= -SlowestSpeed || speed >= SlowestSpeed);
}

} // namespace voro::renderer
