#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace voro::renderer {

/** Measures how long a file is when its format does not say, in a thread of its own. */
class Measure {
public:
    using Measured = std::function<void(int64_t duration)>;

    Measure() = default;
    ~Measure() { cancel(); }
    Measure(const Measure &) = delete;
    Measure &operator=(const Measure &) = delete;

    /**
     * Calls `done` from the main loop with the milliseconds, not at all when there is nothing to measure: `isKnown`
     * says that the format told a duration, which is wrong in some formats only.
     */
    void start(const std::string &path, bool isKnown, Measured done);
    void cancel() { m_done.reset(); }

private:
    std::shared_ptr<Measured> m_done;
};

} // namespace voro::renderer
