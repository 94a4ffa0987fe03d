#pragma once

#include "Gst.h"

namespace voro::renderer {

/**
 * Keeps gaps within what a pad plays. Of a stream that has nothing more behind a seek's target a gap is told that lies
 * before it, or even without saying what is played: a sink would wait for that until the end of time.
 */
void keepGapsInside(GstPad *pad);

} // namespace voro::renderer
