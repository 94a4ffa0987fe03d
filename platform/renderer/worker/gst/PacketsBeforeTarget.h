#pragma once

#include "Gst.h"

namespace voro::renderer {

/**
 * Keeps from a decoder of sound what it would decode for nothing after a seek: a page of an Ogg file holds about a
 * second, of which only the end and a little before it, so that the decoder is in tune, is needed. Called in a
 * streaming thread.
 */
void skipPacketsBeforeTarget(GstElement *decoder);

} // namespace voro::renderer
