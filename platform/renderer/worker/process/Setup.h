#pragma once

namespace voro::renderer {

/** Starts GStreamer with the registry of our own. */
void startGStreamer();

/** Loads what most media need, so that the first medium does not wait for it, and ranks the small decoders first. */
void warmUp();
/** Loads the large library that decodes most films. */
void warmUpForFilms();
/** Merges the pieces of memory that were freed. Otherwise every worker does it later, and copies the pages for it. */
void mergeFreeMemory();

} // namespace voro::renderer
