#pragma once

#include "Succession.h"

#include <gst/gst.h>
#include <renderer/common/Speed.h>

#include <cstdint>
#include <optional>

namespace voro::renderer {

/**
 * Runs, holds and seeks one pipeline. It can be suspended while the medium is opened in another way: then it keeps what
 * it is asked for and does it afterwards.
 */
class Transport {
public:
    struct Target {
        int64_t time;
        Speed speed;
    };
    /** Where it goes on afterwards, and whether it runs there. */
    struct Suspension {
        Target target;
        bool isRunning;
    };

    Transport(GstElement *pipeline, Succession &succession) : m_pipeline(pipeline), m_succession(succession) {}

    void run();
    void hold();
    bool seek(const Target &target);
    /** Begins anew with another medium. */
    void reset();

    Speed speed() const { return m_suspension ? m_suspension->target.speed : m_speed; }
    int64_t position() const;
    bool isHeld() const { return m_isHeld; }
    bool hasBegun() const { return m_hasBegun || m_suspension; }
    /** Whether it plays towards a seek's target: what it reports was true before. */
    bool isSeeking() const { return m_seeking && m_hasBegun; }

    /** A suspension of what it does now. */
    Suspension suspended() const { return {{position(), m_speed}, m_hasBegun && !m_isHeld}; }
    void suspend(const Suspension &suspension) { m_suspension = suspension; }
    const std::optional<Suspension> &suspension() const { return m_suspension; }
    /** Goes to where it was suspended; whether it is to run there. */
    bool resume();

    // Reports of the pipeline.
    void stateChanged();
    void seekDone();

private:
    void applyState();
    bool seekNow(const Target &target);

    GstElement *m_pipeline;
    Succession &m_succession;
    Speed m_speed;
    bool m_isHeld = true;
    bool m_hasBegun = false;
    /** The seek that is on its way, and the one that waits for its end. */
    std::optional<Target> m_seeking;
    std::optional<Target> m_next;
    /** Whether it has not played since the last seek: sinks report a position only when they have. */
    bool m_isAtTarget = false;
    /** Holds while the pipeline reports none: a bin may report the end of a seek twice, while the next one flushes. */
    mutable int64_t m_lastPosition = 0;
    std::optional<Suspension> m_suspension;
};

} // namespace voro::renderer
