#pragma once

#include "Gst.h"

#include <renderer/common/Error.h>

namespace voro::renderer {

/** Why a medium does not play. */
struct Failure {
    Result result;
    /** Nobody knows what the medium is. */
    bool isUnrecognized = false;
    /** It names a codec that libavcodec does not decode. */
    bool namesCodec = false;
};

/** Whether it is the medium that does not play, and nothing else. */
bool isOfMedium(const Result &failure);

/** What an error message says of the medium. `isOutput` tells that an output's element sent it. */
Failure failureOf(GstMessage *error, bool isOutput);

/** What an error message of a pipeline means to the application. `isOutput` tells that an output's element sent it. */
Result toResult(GstMessage *message, bool isOutput);

} // namespace voro::renderer
