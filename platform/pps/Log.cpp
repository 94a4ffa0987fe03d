#include "Log.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>

namespace voro::log {

namespace {

/** In the order of Category. */
constexpr std::string_view Names[] = {"daemon", "renderer", "worker", "graph", "nowplaying", "keys", "sound"};

enum class Level { Off, Warnings, Details };

void writeLine(std::string_view category, const char *text)
{
    std::fprintf(stderr, "%s: %.*s: %s\n", program_invocation_short_name, static_cast<int>(category.size()),
                 category.data(), text);
}

/** How much each category writes. VORO_LOG names categories, with commas between; "-" before a name silences it. */
class Levels {
public:
    Levels()
    {
        m_levels.fill(Level::Warnings);
        const char *setting = std::getenv("VORO_LOG");
        std::string_view rest = setting ? setting : "";
        while (!rest.empty()) {
            const size_t end = std::min(rest.find(','), rest.size());
            set(rest.substr(0, end));
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }

    Level of(Category category) const { return m_levels[static_cast<size_t>(category)]; }

private:
    void set(std::string_view name)
    {
        const Level level = name.starts_with('-') ? Level::Off : Level::Details;
        if (level == Level::Off) {
            name.remove_prefix(1);
        }
        const auto *known = std::find(std::begin(Names), std::end(Names), name);
        if (name == "all") {
            m_levels.fill(level);
        } else if (known != std::end(Names)) {
            m_levels[static_cast<size_t>(known - std::begin(Names))] = level;
        } else {
            std::string all = "all";
            for (const std::string_view other : Names) {
                (all += ", ") += other;
            }
            writeLine("VORO_LOG", ("'" + std::string(name) + "' is not one of " + all).c_str());
        }
    }

    std::array<Level, std::size(Names)> m_levels;
};

Level levelOf(Category category)
{
    static const Levels levels;
    return levels.of(category);
}

} // namespace

void warn(Category category, const char *format, ...)
{
    if (levelOf(category) == Level::Off) {
        return;
    }
    char text[4096];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    writeLine(Names[static_cast<size_t>(category)], text);
}

bool areDetailsWanted(Category category)
{
    return levelOf(category) == Level::Details;
}

void detail(Category category, const char *what, std::string_view text)
{
    if (areDetailsWanted(category)) {
        std::string line = std::string(what) + ' ' + std::string(text);
        std::replace(line.begin(), line.end(), '\n', ' ');
        writeLine(Names[static_cast<size_t>(category)], line.c_str());
    }
}

} // namespace voro::log
