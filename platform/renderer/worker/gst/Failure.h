#pragma once

#include "Gst.h"

#include <renderer/common/Error.h>

namespace voro::renderer {

/** Why a medium does not play. */
struct Failure {
    Result result;
    /** No element recognized the medium. */
    bool isUnrecognized = false;
    /** It names a codec that libavcodec does not decode. */
    bool namesCodec = false;
};

/** Whether it is the medium that does not play, and nothing else. */
bool isOfMedium(const Result &failure);

/** Reads an error message about the medium; `isOutput` for one of an output's element. */
Failure failureOf(GstMessage *error, bool isOutput);

/** The failure for the application behind a pipeline's error message; `isOutput` for one of an output's element. */
Result toResult(GstMessage *message, bool isOutput);

} // namespace voro::renderer
