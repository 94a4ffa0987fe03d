#pragma once

#include "Gst.h"

#include <string>

namespace voro::renderer {

/** A source of sound that no pipeline owns yet: what the environment describes, or the sound server's. The role tells
    the server what it is recorded for. Null when this installation has no source. */
GstElement *makeAudioSource(const std::string &role);

} // namespace voro::renderer
