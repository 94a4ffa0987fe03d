#pragma once

#include "KeySource.h"

#include <sys/types.h>

#include <functional>
#include <optional>
#include <set>
#include <vector>

namespace voro::mediakeys {

/** The processes that a press is for. */
using Owners = std::set<pid_t>;

/** A press that lasts so long is no short one any more. */
inline constexpr std::chrono::milliseconds Threshold{800};

/**
 * The keys that are held down, and what becomes of each press.
 *
 * Presses of different sources have nothing to do with each other, also when they are of one key.
 */
class Presses {
public:
    enum class Event {
        /** The key has been held for the threshold. */
        ThresholdReached,
        /** It was released before the threshold. */
        ReleasedBefore,
        /** It was released later. */
        ReleasedAfter,
    };
    using Report = std::function<void(Event event, Key key, const Owners &owners)>;

    explicit Presses(Report report) : m_report(std::move(report)) {}

    /** A key went down. Ignored when the source holds it down already. */
    void press(SourceId source, Key key, Time at, Owners owners);
    /** A key went up. Ignored when the source does not hold it down. */
    void release(SourceId source, Key key, Time at);
    /** The device or client is gone; what it held down, by any press, is released without a report. */
    void forget(SourceId source);
    /** Reports the thresholds that were reached up to the time. Every earlier press and release must be known. */
    void advance(Time now);
    /** When the next threshold will be reached. */
    std::optional<Time> next() const;

private:
    struct Press {
        SourceId source;
        Key key;
        Time since;
        Owners owners;
        bool isReported = false;
    };
    std::vector<Press>::iterator find(SourceId source, Key key);

    Report m_report;
    std::vector<Press> m_presses;
};

} // namespace voro::mediakeys
