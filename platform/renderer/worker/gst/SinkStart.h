#pragma once

#include <gst/gst.h>

namespace voro::renderer {

/**
 * Has the sound server's sink be heard now, if it plays: by itself it waits until its whole buffer is filled. To be
 * called by the thread that hands it buffers.
 */
void startSink(GstElement *serverSink);

} // namespace voro::renderer
