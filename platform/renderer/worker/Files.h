#pragma once

#include <pps/Fd.h>

namespace voro::renderer {

/** The last file that the service handed over; an invalid one when there is none. */
pps::Fd takeFile();

} // namespace voro::renderer
