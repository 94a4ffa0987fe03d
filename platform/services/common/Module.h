#pragma once

namespace voro {

/**
 * A function of a module: a library that the daemon loads only when it is needed, because what it links would make
 * every start slower. A module stays loaded. Null, and a line in the log, when the module is missing.
 */
void *moduleFunction(const char *module, const char *function);

} // namespace voro
