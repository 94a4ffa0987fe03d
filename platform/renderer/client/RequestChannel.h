#pragma once

#include "../common/Error.h"

#include <pps/Connection.h>
#include <pps/Text.h>

#include <cstdint>
#include <string_view>

namespace voro::renderer {

/** Requests to one control object, each of which waits for its answer. Used by one thread at a time. */
class RequestChannel {
public:
    bool open(std::string_view path);
    /** Sends a request with its attribute lines and waits. A service that is gone is Internal; so is everything from
        then on. */
    Result call(std::string_view command, std::string_view lines);
    /** The answer to the last call. */
    const pps::Message &answer() const { return m_answer; }

private:
    Result receive(int64_t id);

    pps::Connection m_connection;
    pps::Message m_answer;
    int64_t m_lastId = 0;
};

} // namespace voro::renderer
