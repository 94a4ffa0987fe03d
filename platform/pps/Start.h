#pragma once

#include <string>
#include <string_view>

namespace voro::pps {

/**
 * Starts the daemon when none answers, and returns when it does; 0 or an errno number. Two processes that race start
 * one.
 */
int startDaemon(const std::string &folder);

/**
 * Whether a daemon gets that variable ("NAME=VALUE") of the application that starts it: where the user's things are,
 * its own settings, the sanitizers'. The rest (loader, media framework, locale, screen) is the application's own
 * matter.
 */
bool isForDaemon(std::string_view variable);

} // namespace voro::pps
