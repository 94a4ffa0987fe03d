#include "RequestChannel.h"

#include <renderer/common/Protocol.h>

#include <algorithm>
#include <cerrno>

namespace voro::renderer {

bool RequestChannel::open(std::string_view path)
{
    m_connection.close();
    m_connection.endWithDaemon();
    m_isLost = !m_connection.open(path, pps::Publish | pps::Subscribe);
    return !m_isLost;
}

Result RequestChannel::call(std::string_view command, std::string_view lines)
{
    const int64_t id = ++m_lastId;
    m_answer = {};
    m_isUnsent = false;
    if (m_isLost || !m_connection.write(beginRequest(command, id).append(lines))) {
        m_isUnsent = m_isLost = m_isLost || m_connection.error() == ECONNRESET;
        const bool isRefused = m_connection.error() == EMSGSIZE || m_connection.error() == EINVAL;
        return isRefused ? Result(ErrorCode::InvalidParameter, "the request cannot be sent")
                         : Result(ErrorCode::Internal, "the renderer is gone");
    }
    return receive(id);
}

// An answer to an earlier request is passed over: its caller stopped waiting.
Result RequestChannel::receive(int64_t id)
{
    using namespace std::chrono;
    const auto deadline = steady_clock::now() + m_longestCall;
    const auto left = [deadline] {
        return static_cast<int>(std::max(ceil<milliseconds>(deadline - steady_clock::now()), 1ms).count());
    };
    std::string text;
    while (m_connection.readWithin(text, left())) {
        if (m_answer.parse(text) && m_answer.has("res") && m_answer.number("id") == id) {
            return resultOf(m_answer);
        }
    }
    m_answer = {};
    m_isLost = m_connection.error() == ECONNRESET;
    return {ErrorCode::Internal,
            m_connection.error() == ETIMEDOUT ? "the renderer does not answer" : "the renderer is gone"};
}

} // namespace voro::renderer
