#pragma once

#include "Fd.h"

#include <sys/types.h>

#include <cstddef>
#include <span>

/* Descriptors that go along with packets of a SOCK_SEQPACKET socket. */

namespace voro::pps {

/** Sends one packet, with a descriptor unless that is -1, without waiting. False when the socket does not take it. */
bool sendPacket(int socket, std::span<const std::byte> packet, int descriptor = -1);

/**
 * Receives one packet, without waiting, and the descriptor that came along. Its size, 0 at the end, -1 with errno when
 * there is none. What exceeds the buffer is lost, and so are further descriptors.
 */
ssize_t receivePacket(int socket, std::span<std::byte> buffer, Fd &descriptor);

} // namespace voro::pps
