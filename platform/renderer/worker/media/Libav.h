#pragma once

#include <cstdint>
#include <string>

namespace voro::renderer {

/* Media that GStreamer's own elements cannot read, or read badly, are read with libavformat. */

/** The URI under which a local medium is read so, empty for one that is not local and without the module. */
std::string libavUri(const std::string &uri);

/** The length of a file in milliseconds, 0 when it has none. It may take its time. */
int64_t measureWithLibav(const std::string &path);

} // namespace voro::renderer
