#pragma once

namespace voro::mediakeys {

/** Whether the user is in a desktop session, which acts upon media keys by itself. */
bool isDesktopSession();

} // namespace voro::mediakeys
