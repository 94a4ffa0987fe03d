#pragma once

namespace voro::renderer {

/** Starts GStreamer with the registry of our own. */
void startGStreamer();

/** Loads what most media need, so that the first medium does not wait for it, and ranks the small decoders first. */
void warmUp();

} // namespace voro::renderer
