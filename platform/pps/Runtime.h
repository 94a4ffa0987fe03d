#pragma once

#include "Fd.h"

#include <chrono>
#include <string>

/* The runtime folder, in which the daemon and its clients find each other. */

namespace voro::pps {

/** The longest time for a daemon's start, and for a send to a broker that does not read. */
inline constexpr std::chrono::seconds LongestStart{60};

/**
 * Finds the runtime folder and makes it when it is missing. Returns 0, or an errno number when there is none or it is
 * not ours alone: `folder` is what the problem is with then.
 */
int runtimeFolder(std::string &folder);
/** That problem in words. */
std::string runtimeProblem(const std::string &folder, int error);

/** The path of the broker's socket in the folder. */
std::string socketPath(const std::string &folder);

/**
 * Connects to the broker's socket in the folder; on failure the result is invalid and errno says why: EACCES when
 * another user listens there.
 */
Fd connectTo(const std::string &folder);

/** The same with any SOCK_SEQPACKET socket, by its path. */
Fd connectToSocket(const std::string &path);

/**
 * Makes such a socket, in place of what is there; whoever sees its path finds it listening. On failure the result is
 * invalid and errno says why.
 */
Fd listenAt(const std::string &path);

/** A descriptor that becomes readable when a daemon in the runtime folder says that it is ready; invalid on failure. */
Fd watchForDaemon();
/** Takes what such a descriptor has to say. */
void takeEvents(int watch);

/** The name of the file in the folder that a daemon locks, and in which it says who it is when it is ready. */
inline constexpr char LockName[] = "/vorod.lock";

} // namespace voro::pps
