#pragma once

#include <QtCore/QString>

#include <linux/input.h>
#include <pps/Fd.h>

#include <chrono>
#include <span>

/**
 * An input device that the kernel knows nothing of: a pipe of which this program's ioctl() tells what libevdev asks of
 * an event device. It has all media keys.
 */
class FakeDevice {
public:
    explicit FakeDevice(const QString &path);
    /** Unplugs it. */
    ~FakeDevice();
    FakeDevice(const FakeDevice &) = delete;
    FakeDevice &operator=(const FakeDevice &) = delete;

    using Time = std::chrono::steady_clock::time_point;
    /** Waits until somebody has opened it, and tells that a key went up (0) or down (1), or repeats (2). */
    void send(unsigned code, int value, Time at = std::chrono::steady_clock::now());
    /** Tells of a whole press at once. */
    void sendPress(unsigned code, Time from, Time to);
    /** Tells that events were lost, after which no key is down. */
    void sendLoss();

private:
    void write(std::span<const input_event> events);

    QByteArray m_path;
    voro::pps::Fd m_writeEnd;
};
