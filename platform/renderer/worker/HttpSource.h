#pragma once

#include "Gst.h"

namespace voro::renderer {

/** Lets nobody seek in what an HTTP server does not offer in parts. The source itself takes every server of which it
    knows the length for one that does, and fails when it does not. */
void keepToServersOffer(GstElement *source);

} // namespace voro::renderer
