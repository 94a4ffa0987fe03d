#pragma once

#include <optional>
#include <string>
#include <vector>

namespace voro {

/** The command line of the daemon. */
struct Options {
    /** Detach, and return when clients can connect. */
    bool background = false;
    /** End so many seconds after the last client went; negative: never. */
    int idleExit = -1;
    bool help = false;
    bool version = false;
};

/** Nothing for an unusable command line; `problem` names what is wrong with it then. */
std::optional<Options> parseOptions(const std::vector<std::string> &arguments, std::string &problem);

extern const char *const HelpText;

} // namespace voro
