#pragma once

#include "Key.h"

#include <chrono>
#include <cstdint>

namespace voro::mediakeys {

using Clock = std::chrono::steady_clock;
using Time = Clock::time_point;

/** Who presses keys. */
struct SourceId {
    enum Kind { Device, Client };
    Kind kind;
    uint64_t number;
    /** Each press of a client is a source of its own; a device is one source. */
    uint64_t press = 0;
    bool operator==(const SourceId &) const = default;
};

/** Receives the events of key sources. All times are those of the event, not of its arrival. */
class KeyListener {
public:
    virtual ~KeyListener() = default;
    virtual void keyPressed(SourceId source, Key key, Time at) = 0;
    virtual void keyReleased(SourceId source, Key key, Time at) = 0;
    /** The device or client is gone, perhaps with keys that are down, whichever press is named. */
    virtual void sourceGone(SourceId source) = 0;
};

} // namespace voro::mediakeys
