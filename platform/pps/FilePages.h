#pragma once

#include <string>

namespace voro::pps {

/**
 * Gives back the pages of programs and libraries that this process has mapped and not changed. Its start touched many
 * that nobody needs again; the others come back from the system's cache. It takes a few milliseconds. `process` is
 * where the system describes this process.
 */
void releaseFilePages(const std::string &process = "/proc/self");

} // namespace voro::pps
