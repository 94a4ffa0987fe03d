#pragma once

#include "Gst.h"

#include <renderer/common/Error.h>

namespace voro::renderer {

/** Whether an error message says that nobody knows what the medium is. */
bool isUnrecognized(GstMessage *message);

/** Whether an error message names a codec that libavcodec does not decode. */
bool namesCodec(GstMessage *message);

/** What an error message of a pipeline means to the application. `isOutput` tells that an output's element sent it. */
Result toResult(GstMessage *message, bool isOutput);

} // namespace voro::renderer
