#pragma once

#include <pulse/mainloop-api.h>

namespace voro::nowplaying {

/** The main loop of libpulse, run by Qt's event loop of the calling thread. */
pa_mainloop_api *pulseLoop();

} // namespace voro::nowplaying
