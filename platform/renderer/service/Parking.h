#pragma once

#include "Timer.h"

#include <QtCore/QElapsedTimer>

#include <pps/broker/Broker.h>
#include <sys/types.h>

#include <cstddef>
#include <deque>
#include <utility>

namespace voro::renderer {

/**
 * The contexts that rest with an engine. Each keeps it for a while, but only a few of each process do: an application
 * that prepares a hundred players does not fill the memory with engines.
 */
class Parking {
public:
    class Guest {
    public:
        /** Gives its engine back. It is not among those who rest any more. */
        virtual void park() = 0;

    protected:
        ~Guest() = default;
    };

    /** How long one rests before it gives its engine back, in milliseconds. */
    struct Delays {
        int usual = 10'000;
        /** For contexts beyond `MostResting`; an engine that was just asked to open a medium still looks at it. */
        int beyondMost = 500;
    };
    /** How many of a process's rest with an engine for the usual time: those who began last. */
    static constexpr size_t MostResting = 8;

    explicit Parking(pps::Broker &broker) : Parking(broker, Delays()) {}
    Parking(pps::Broker &broker, const Delays &delays) : m_delays(delays), m_timer(broker, [this] { parkRested(); }) {}
    Parking(const Parking &) = delete;
    Parking &operator=(const Parking &) = delete;

    /** It begins to rest now. */
    void add(Guest &guest, pid_t owner);
    /** It does not rest any more. */
    void remove(const Guest &guest);

private:
    struct Resting {
        Guest *guest;
        pid_t owner;
        QElapsedTimer since;
    };

    bool forget(const Guest *guest);
    void parkRested();
    void armTimer();
    /** The one whose time ends first, and in how many milliseconds it does. */
    std::pair<Guest *, qint64> next() const;

    const Delays m_delays;
    Timer m_timer;
    /** In the order in which they began to rest. */
    std::deque<Resting> m_resting;
};

} // namespace voro::renderer
