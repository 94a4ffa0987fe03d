#pragma once

#include <pps/Connection.h>
#include <pps/Text.h>
#include <renderer/common/Error.h>

#include <chrono>
#include <cstdint>
#include <string_view>

namespace voro::renderer {

/** Requests to one control object, each of which waits for its answer. Used by one thread at a time. */
class RequestChannel {
public:
    /** An answer that takes longer does not come. */
    static constexpr std::chrono::seconds LongestCall{60};

    explicit RequestChannel(std::chrono::milliseconds longestCall = LongestCall) : m_longestCall(longestCall) {}

    /** Opens the object, also again. */
    bool open(std::string_view path);
    /**
     * Sends a request with its attribute lines and waits. Internal when the service is gone, then or before, and when
     * it does not answer in time.
     */
    Result call(std::string_view command, std::string_view lines);
    /** Whether the last call was not even sent, because the daemon is gone. */
    bool isUnsent() const { return m_isUnsent; }
    /** The answer to the last call. */
    const pps::Message &answer() const { return m_answer; }
    const pps::Connection &connection() const { return m_connection; }

private:
    Result receive(int64_t id);

    const std::chrono::milliseconds m_longestCall;
    pps::Connection m_connection;
    pps::Message m_answer;
    int64_t m_lastId = 0;
    bool m_isLost = false;
    bool m_isUnsent = false;
};

} // namespace voro::renderer
