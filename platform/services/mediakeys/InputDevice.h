#pragma once

#include "KeySource.h"

#include <libevdev/libevdev.h>
#include <pps/Fd.h>

#include <memory>
#include <string>

namespace voro::mediakeys {

/** An evdev device that has media keys. */
class InputDevice {
public:
    enum class Outcome {
        /** The device is open. */
        Open,
        /** It has no media keys, or is no device. */
        Useless,
        NoPermission,
    };
    /** Opens the device at the path; it wakes us for media keys only. */
    static Outcome open(const std::string &path, std::unique_ptr<InputDevice> &device);

    int fd() const { return m_fd.get(); }
    /** Whether it is what the path leads to now. */
    bool isAt(const std::string &path) const;

    /** Reads what happened; false when the device is gone. */
    bool read(SourceId source, KeyListener &listener);

private:
    struct Free {
        void operator()(libevdev *device) const { libevdev_free(device); }
    };

    InputDevice(pps::Fd fd, libevdev *device);
    bool hasMediaKeys() const;
    void receiveMediaKeysOnly();

    pps::Fd m_fd;
    std::unique_ptr<libevdev, Free> m_device;
    bool m_isTypewriter;
};

} // namespace voro::mediakeys
