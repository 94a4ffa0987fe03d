#pragma once

#include <renderer/worker/gst/Gst.h>

#include <string>

namespace voro::renderer {

/**
 * A source of sound that no pipeline owns yet: what the environment describes, or the sound server's default one with
 * the rate and the channels that it really has. The role tells the server what it is recorded for. Null when there is
 * none.
 */
GstElement *makeAudioSource(const std::string &role);

} // namespace voro::renderer
