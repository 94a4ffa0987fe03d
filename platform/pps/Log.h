#pragma once

#include <string_view>

/* The log of daemon and workers on standard error. VORO_LOG chooses from it by category. */

namespace voro::log {

enum class Category {
    Daemon,
    Renderer,
    Worker,
    Graph,
    NowPlaying,
    Keys,
    Sound,
};

/** Writes a line about something that goes wrong, unless its category is switched off. The format is printf's. */
[[gnu::format(printf, 2, 3)]] void warn(Category category, const char *format, ...);

/** Whether details of a category are wanted. */
bool areDetailsWanted(Category category);

/** Writes a line about what happens, when details of its category are wanted; line breaks become blanks. */
void detail(Category category, const char *what, std::string_view text);

} // namespace voro::log
