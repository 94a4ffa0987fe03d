#pragma once

#include "FrameChannel.h"

#include <renderer/worker/gst/Gst.h>

#include <string>

namespace voro::renderer {

/** A bin that the environment describes, null without one or with a bad one. */
GstElement *configuredBin(const char *variable);
/** Has windows looked for at that X server from now on, and says whether it can be drawn with there. */
bool useDisplay(const std::string &display, const std::string &authority);
/** A sink that shows nothing and lets time pass as if it did. */
GstElement *silentSink();
/**
 * A sink that shows pictures in a frame queue, or draws into a window of the X server and goes on when the window
 * goes. Null for what is neither, or without an X server.
 */
GstElement *screenSink(const Window &window);

} // namespace voro::renderer
