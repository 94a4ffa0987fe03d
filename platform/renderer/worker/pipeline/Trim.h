#pragma once

#include <renderer/worker/gst/Gst.h>

#include <string>

namespace voro::renderer {

/**
 * Lets pass, of the decoded sound of a stream, only what its encoder was given: without what encoders of some formats
 * put before and behind it, a track begins at once and the next one follows without a gap. Times of the stream, seeks
 * included, count from its first real sample. Does nothing for a file that needs no trimming or does not hold the
 * numbers.
 */
void trimEncoderDelay(GstPad *stream, const std::string &path);

} // namespace voro::renderer
