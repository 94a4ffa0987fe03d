#pragma once

namespace voro::renderer {

/** Gives up privileges, core dumps and more memory and descriptors than a medium can need. For the very beginning. */
void restrictProcess();

/** Whether the process goes on for a moment when its daemon dies; else it dies with it, whatever it is doing. */
void setOutliving(bool isOutliving);

/**
 * From now on this process starts no programs or processes, reads no files but the system's and those that it is
 * handed, changes none, accepts no connections and signals nobody. What sinks and sources need that the environment
 * describes is left to it, and the log says so. To be called before there are other threads.
 */
void confineProcess();

} // namespace voro::renderer
