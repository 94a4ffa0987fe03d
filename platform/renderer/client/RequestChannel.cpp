#include "RequestChannel.h"

#include "../common/Protocol.h"

#include <cerrno>

namespace voro::renderer {

bool RequestChannel::open(std::string_view path)
{
    return m_connection.open(path, pps::Publish | pps::Subscribe);
}

Result RequestChannel::call(std::string_view command, std::string_view lines)
{
    const int64_t id = ++m_lastId;
    m_answer = {};
    if (!m_connection.write(request(command, id).append(lines))) {
        const bool isRefused = m_connection.error() == EMSGSIZE || m_connection.error() == EINVAL;
        return isRefused ? Result(ErrorCode::InvalidParameter, "the request cannot be sent")
                         : Result(ErrorCode::Internal, "the renderer is gone");
    }
    return receive(id);
}

// An answer to an earlier request is passed over: its caller stopped waiting.
Result RequestChannel::receive(int64_t id)
{
    std::string text;
    while (m_connection.read(text, true)) {
        if (m_answer.parse(text) && m_answer.has("res") && m_answer.number("id") == id) {
            return resultOf(m_answer);
        }
    }
    m_answer = {};
    return {ErrorCode::Internal, "the renderer is gone"};
}

} // namespace voro::renderer
