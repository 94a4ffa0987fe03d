#pragma once

#include <array>
#include <string_view>

/* The sounds that the service plays, and where they come from. */

namespace voro::sound {

struct Sound {
    /** Its name in messages, and that of the project's own file of it. */
    std::string_view name;
    /** The sound theme's events that come nearest, the best first; the file is played when the theme has none. */
    std::array<const char *, 2> events;
    /** Whether it has to be heard also where event sounds are muted. */
    bool isAlwaysHeard = false;
};

/** The sound of a name, null when there is none. */
const Sound *soundNamed(std::string_view name);

} // namespace voro::sound
