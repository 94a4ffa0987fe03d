#pragma once

#include <string>

namespace voro::pps {

/**
 * Gives back the pages of programs and libraries that this process has mapped and not changed. Its start touched many
 * that nobody needs again; the others come back from the system's cache. It takes a few milliseconds. `process` is
 * where the system describes this process, which must have one thread: another one could map something else there
 * meanwhile.
 */
void releaseFilePages(const std::string &process = "/proc/self");

/** Does so for the program and its libraries alone, as far as they cannot be written; also with several threads. */
void releaseLibraryPages();

} // namespace voro::pps
