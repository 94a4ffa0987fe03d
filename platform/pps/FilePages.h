#pragma once

namespace voro::pps {

/**
 * Gives back the pages of programs and libraries that this process has mapped and not changed. Its start touched many
 * that nobody needs again; the others come back from the system's cache.
 */
void releaseFilePages();

} // namespace voro::pps
