#pragma once

#include "Gst.h"

#include <renderer/common/Error.h>

namespace voro::renderer {

/** What an error message of a pipeline means to the application. `isOutput` tells that an output's element sent it. */
Result toResult(GstMessage *message, bool isOutput);

} // namespace voro::renderer
