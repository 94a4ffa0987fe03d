#pragma once

namespace voro::renderer {

/** The module's function: XShmAttach() for a segment whose number is the descriptor of a file in memory. */
using AttachToScreen = int (*)(void *display, void *segment);
inline constexpr char AttachToScreenName[] = "voroAttachToScreen";

} // namespace voro::renderer
