#pragma once

#include <renderer/worker/gst/Gst.h>

#include <string>

namespace voro::renderer {

/**
 * Ends the captions that a playbin has from elsewhere, when the sound and pictures of its medium have ended: it would
 * wait for whatever captions are still to come. False when something of the medium is still to come, which changes
 * nothing.
 */
bool endCaptions(GstElement *playbin, const std::string &medium);

} // namespace voro::renderer
