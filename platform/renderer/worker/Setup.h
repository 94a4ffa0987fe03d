#pragma once

namespace voro::renderer {

/** Gives up what a worker does not need: new privileges, core dumps, a life without its daemon. */
void restrictProcess();

/** Starts GStreamer with the registry of our own. */
void startGStreamer();

/** Loads what most media need, so that the first medium does not wait for it, and ranks the small decoders first. */
void warmUp();

} // namespace voro::renderer
