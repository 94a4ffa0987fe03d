#pragma once

#include "Wire.h"

#include <cstddef>
#include <string_view>

/* A client's packets to the broker and from it. */

namespace voro::pps {

enum class Received { Packet, Nothing, End };

/** A packet of the broker; the views point into its buffer. */
struct Packet {
    Reply header;
    std::string_view held;
    std::string_view body;
    std::string_view will;
    std::string_view back;
    // Not initialised: only what arrives is touched.
    char buffer[MaximumReply];

    /** Takes the socket's next packet, without waiting. */
    Received receive(int socket);

private:
    bool parse(size_t size);
};

/** Waits for a packet; false, with errno, when none comes in time (-1: without a limit). */
bool waitForPacket(int socket, int milliseconds);

/** Numbers a request and sends it; 0 or an errno number, EPIPE when the broker is gone. */
int sendRequest(int socket, Request &request, std::string_view body);

} // namespace voro::pps
