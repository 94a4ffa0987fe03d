#pragma once

#include <pps/broker/Broker.h>
#include <pps/Fd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdint>
#include <functional>
#include <utility>

namespace voro::renderer {

/** Calls back once, from the broker's event loop. It takes a descriptor only while it waits. */
class Timer {
public:
    Timer(pps::Broker &broker, std::function<void()> callback) : m_broker(broker), m_callback(std::move(callback)) {}
    ~Timer() { stop(); }
    Timer(const Timer &) = delete;
    Timer &operator=(const Timer &) = delete;

    /** Waits that many milliseconds from now. */
    void start(int delay)
    {
        constexpr int Second = 1000;
        constexpr long Millisecond = 1'000'000;
        if (!m_timer.isValid()) {
            m_timer.reset(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK));
            m_broker.watch(m_timer.get(), [this] {
                if (uint64_t count = 0; ::read(m_timer.get(), &count, sizeof count) != sizeof count) {
                    // Meant for a descriptor that had this number before.
                    return;
                }
                stop();
                m_callback();
            });
        }
        const itimerspec once{{}, {delay / Second, delay % Second * Millisecond}};
        timerfd_settime(m_timer.get(), 0, &once, nullptr);
    }
    void stop()
    {
        if (m_timer.isValid()) {
            m_broker.unwatch(m_timer.get());
            m_timer.reset();
        }
    }

private:
    pps::Broker &m_broker;
    const std::function<void()> m_callback;
    pps::Fd m_timer;
};

} // namespace voro::renderer
