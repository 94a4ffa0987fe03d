#pragma once

namespace voro::renderer {

/** Gives up privileges, core dumps and more memory than a medium can need. For the very beginning. */
void restrictProcess();
/** From now on this thread, and those that it starts, write to no file but devices. Sinks and sources that the
    environment describes may need to write, so there is no such rule with them. */
void forbidWriting();

} // namespace voro::renderer
