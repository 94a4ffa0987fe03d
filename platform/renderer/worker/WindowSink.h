#pragma once

#include "Gst.h"

#include <optional>
#include <string_view>

namespace voro::renderer {

/** A bin that the environment describes, null without one or with a bad one. */
GstElement *configuredBin(const char *variable);
/** A sink that shows nothing and lets time pass as if it did. */
GstElement *silentSink();
/** A sink that draws into a window of the X server, which goes on when the window goes. Null for what is no number of a
    window or without an X server. */
GstElement *windowSink(std::string_view window);

} // namespace voro::renderer
