#pragma once

#include "InputDevice.h"

#include <QtCore/QSocketNotifier>

#include <map>
#include <memory>
#include <string>

namespace voro::mediakeys {

/**
 * The devices with media keys, as they come and go. A watch on the folder reports them, with udev and without:
 * a device's node appears, and later perhaps gets permissions that let us read it.
 */
class InputDevices {
public:
    explicit InputDevices(KeyListener &listener, std::string folder);
    InputDevices(const InputDevices &) = delete;
    InputDevices &operator=(const InputDevices &) = delete;

    /** Reads what has happened up to now. */
    void read();

private:
    struct OpenDevice {
        uint64_t number;
        std::unique_ptr<InputDevice> device;
        std::unique_ptr<QSocketNotifier> notifier;
    };

    void watch();
    void readWatch();
    void scan();
    void add(const std::string &name);
    void remove(const std::string &name);
    bool read(const OpenDevice &entry);

    KeyListener &m_listener;
    const std::string m_folder;
    pps::Fd m_watch;
    int m_parentWatch = -1;
    int m_folderWatch = -1;
    std::unique_ptr<QSocketNotifier> m_watchReady;
    /** By their names. */
    std::map<std::string, OpenDevice> m_devices;
    uint64_t m_lastNumber = 0;
    bool m_hasWarned = false;
};

} // namespace voro::mediakeys
