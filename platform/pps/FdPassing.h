#pragma once

#include "Fd.h"

#include <sys/types.h>

#include <cstddef>
#include <span>

/* Descriptors that go along with packets of a SOCK_SEQPACKET socket. */

namespace voro::pps {

/** The most descriptors that go along with one packet. */
inline constexpr size_t MostPassed = 3;

/**
 * Makes the kernel refuse descriptors that are sent to a socket, or to those that a listening one accepts: closing one
 * may take as long as its sender likes. Has no effect before Linux 6.16.
 */
void refuseDescriptors(int socket);

/** Sends one packet, with descriptors, without waiting. False when the socket does not take it. */
bool sendPacket(int socket, std::span<const std::byte> packet, std::span<const int> descriptors);
/** The same with a descriptor unless that is -1. */
bool sendPacket(int socket, std::span<const std::byte> packet, int descriptor = -1);

/**
 * Receives one packet, without waiting, and the descriptors that came along. Its size, 0 at the end, -1 with errno when
 * there is none. What exceeds the buffer is lost, and so are further descriptors.
 */
ssize_t receivePacket(int socket, std::span<std::byte> buffer, std::span<Fd> descriptors);
/** The same with one descriptor. */
ssize_t receivePacket(int socket, std::span<std::byte> buffer, Fd &descriptor);

} // namespace voro::pps
