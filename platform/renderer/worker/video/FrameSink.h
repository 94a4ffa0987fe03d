#pragma once

#include "FrameChannel.h"

namespace voro::renderer {

/** A sink that shows pictures in a frame queue, each when its time has come. */
GstElement *frameSink(std::shared_ptr<FrameChannel> channel);

} // namespace voro::renderer
