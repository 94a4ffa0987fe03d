#include "InputDevice.h"

#include <fcntl.h>
#include <linux/input.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <ctime>

namespace voro::mediakeys {

namespace {

using Bits = std::array<uint8_t, KEY_CNT / 8>;

/** Values of a key event; a key that is held repeats with another value. */
enum { Released = 0, Pressed = 1 };

void setBit(Bits &bits, unsigned number)
{
    bits[number / 8] = static_cast<uint8_t>(bits[number / 8] | 1U << number % 8);
}

/** Lets only the given codes of a type through; of type 0, only the given types. */
void setMask(int fd, unsigned type, const Bits &bits)
{
    const input_mask mask{type, static_cast<uint32_t>(bits.size()), reinterpret_cast<uintptr_t>(bits.data())};
    // A kernel without masks wakes us for everything.
    ioctl(fd, EVIOCSMASK, &mask);
}

Time timeOf(const input_event &event)
{
    return Time(std::chrono::seconds(event.input_event_sec) + std::chrono::microseconds(event.input_event_usec));
}

bool isHungUp(int fd)
{
    pollfd state{fd, POLLIN, 0};
    return poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0
           && (state.revents & POLLIN) == 0;
}

} // namespace

InputDevice::Outcome InputDevice::open(const std::string &path, std::unique_ptr<InputDevice> &device)
{
    pps::Fd fd(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!fd.isValid()) {
        return errno == EACCES || errno == EPERM ? Outcome::NoPermission : Outcome::Useless;
    }
    libevdev *evdev = nullptr;
    if (libevdev_new_from_fd(fd.get(), &evdev) != 0) {
        return Outcome::Useless;
    }
    device.reset(new InputDevice(std::move(fd), evdev));
    if (!device->hasMediaKeys() || libevdev_set_clock_id(evdev, CLOCK_MONOTONIC) != 0) {
        device.reset();
        return Outcome::Useless;
    }
    device->receiveMediaKeysOnly();
    return Outcome::Open;
}

InputDevice::InputDevice(pps::Fd fd, libevdev *device)
    : m_fd(std::move(fd)),
      m_device(device),
      m_isTypewriter(libevdev_has_event_code(device, EV_KEY, KEY_A)
                     && libevdev_has_event_code(device, EV_KEY, KEY_SPACE))
{}

bool InputDevice::isAt(const std::string &path) const
{
    struct stat mine {};
    struct stat there {};
    return fstat(m_fd.get(), &mine) == 0 && stat(path.c_str(), &there) == 0 && mine.st_dev == there.st_dev
           && mine.st_ino == there.st_ino;
}

bool InputDevice::hasMediaKeys() const
{
    for (unsigned code = 0; code < KEY_CNT; ++code) {
        if (keyOfCode(code, m_isTypewriter) && libevdev_has_event_code(m_device.get(), EV_KEY, code)) {
            return true;
        }
    }
    return false;
}

// All other events are private, and would wake the daemon at every key and every move of a mouse.
void InputDevice::receiveMediaKeysOnly()
{
    Bits codes{};
    for (unsigned code = 0; code < KEY_CNT; ++code) {
        if (keyOfCode(code, m_isTypewriter)) {
            setBit(codes, code);
        }
    }
    setMask(m_fd.get(), EV_KEY, codes);
    Bits types{};
    setBit(types, EV_KEY);
    setMask(m_fd.get(), EV_SYN, types);
}

bool InputDevice::read(SourceId source, KeyListener &listener)
{
    unsigned flag = LIBEVDEV_READ_FLAG_NORMAL;
    for (;;) {
        input_event event{};
        const int result = libevdev_next_event(m_device.get(), flag, &event);
        if (result == -EAGAIN && flag == LIBEVDEV_READ_FLAG_SYNC) {
            flag = LIBEVDEV_READ_FLAG_NORMAL;
            continue;
        }
        if (result == -EAGAIN) {
            return !isHungUp(m_fd.get());
        }
        if (result < 0) {
            return result == -EINTR;
        }
        if (result == LIBEVDEV_READ_STATUS_SYNC) {
            // Events were lost; the following reads bring the difference.
            flag = LIBEVDEV_READ_FLAG_SYNC;
        }
        const auto key = event.type == EV_KEY ? keyOfCode(event.code, m_isTypewriter) : std::nullopt;
        if (key && event.value == Released) {
            listener.keyReleased(source, *key, timeOf(event));
        } else if (key && event.value == Pressed) {
            listener.keyPressed(source, *key, timeOf(event));
        }
    }
}

} // namespace voro::mediakeys
