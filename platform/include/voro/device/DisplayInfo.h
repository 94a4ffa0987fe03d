#pragma once

namespace voro::device {

/** The screens of the device. */
class DisplayInfo {
public:
    /** The primary screen's index among the screens of the display server; 0 without one. */
    static int primaryDisplayId();
    /** The index of the first screen that is not the primary one; 1 when there is none. */
    static int secondaryDisplayId();
};

} // namespace voro::device
