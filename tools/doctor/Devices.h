#pragma once

#include <QtCore/QString>

#include <optional>

namespace voro::doctor {

/** How the sound server has set a device. */
struct Device {
    QString name;
    bool isMuted = false;
    /** In percent of its loudest channel. */
    int volume = 0;
};

/** The devices that are used by default; nothing where the server does not say. */
struct Devices {
    std::optional<Device> output{};
    std::optional<Device> input{};
};

/** Asks the sound server, by a module, because what that links would make every start of the program slower. */
Devices defaultDevices();

/** The module's entry; its name is `voroDefaultDevices`. */
using ReadDevices = void(Devices &devices);

} // namespace voro::doctor
