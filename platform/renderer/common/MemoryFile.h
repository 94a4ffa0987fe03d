#pragma once

#include <pps/Fd.h>

#include <cstddef>
#include <functional>
#include <string_view>

/* Files in memory: by this process itself, or by whom it asks for them. */

namespace voro::renderer {

using MemoryMaker = std::function<pps::Fd(size_t size)>;

/** Has somebody else make the files; to be called before there are other threads. */
void setMemoryMaker(MemoryMaker maker);

/** A file in memory of that size, which cannot grow; invalid when there is no room. May be called by every thread. */
pps::Fd makeMemoryFile(size_t size);

/** A file in memory with that content; invalid when there is no room. */
pps::Fd makeMemoryFile(std::string_view content);

} // namespace voro::renderer
