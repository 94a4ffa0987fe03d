#include "Options.h"

#include <charconv>

namespace voro {

namespace {

constexpr int BackgroundIdleExit = 30;
constexpr int MaximumIdleExit = 24 * 3600;

bool parseSeconds(const std::string &text, int &seconds)
{
    const char *const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, seconds);
    return result.ec == std::errc() && result.ptr == end && seconds >= 0 && seconds <= MaximumIdleExit;
}

} // namespace

const char *const HelpText = R"(Usage: vorod [OPTION]...

Serves the multimedia objects of one user: the PPS broker and the services on it. Applications start it by
themselves.

  --background         detach, and return when applications can connect
  --idle-exit SECONDS  end so long after the last application went (with --background: 30, else never)
  --help               show this text
  --version            show the version

VORO_RUNTIME_DIR names the folder of its socket; without it that is $XDG_RUNTIME_DIR/voro, else /tmp/voro-UID.
)";

std::optional<Options> parseOptions(const std::vector<std::string> &arguments, std::string &problem)
{
    Options options;
    std::optional<int> idleExit;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        if (*argument == "--background") {
            options.background = true;
        } else if (*argument == "--help") {
            options.help = true;
        } else if (*argument == "--version") {
            options.version = true;
        } else if (*argument == "--idle-exit") {
            int seconds = 0;
            if (++argument == arguments.end()) {
                problem = "--idle-exit needs a number of seconds";
                return std::nullopt;
            }
            if (!parseSeconds(*argument, seconds)) {
                problem = "--idle-exit: not a number of seconds from 0 to " + std::to_string(MaximumIdleExit) + ": "
                          + *argument;
                return std::nullopt;
            }
            idleExit = seconds;
        } else {
            problem = (argument->starts_with('-') ? "unknown option: " : "unexpected argument: ") + *argument;
            return std::nullopt;
        }
    }
    options.idleExit = idleExit.value_or(options.background ? BackgroundIdleExit : -1);
    return options;
}

} // namespace voro
