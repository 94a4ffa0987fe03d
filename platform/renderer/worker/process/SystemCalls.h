#pragma once

namespace voro::renderer {

/** Whether devices may be asked for whatever they can do. */
enum class Devices { Closed, Open };

/**
 * Limits this process, all of its threads included, to the system calls that playing and recording need. Every other
 * one fails with EPERM; of builds with a sanitizer the kernel logs it as well. False when the kernel or the filter
 * library refuses.
 */
bool limitSystemCalls(Devices devices);

} // namespace voro::renderer
