#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace voro::pps {

/** The data of a daemon that is ready, in the file that it locks for as long as it lives. */
struct DaemonRecord {
    /** The process that serves. */
    pid_t process = 0;
    std::string version;
    /** The version of the packets that it understands. */
    unsigned protocol = 0;

    /** The text for the file. */
    std::string toText() const;
};

/**
 * The daemon that has a runtime folder; nothing when none does. Without a process it is not ready yet, or what it wrote
 * is no record: a version has at most 64 letters, digits and ".+~-".
 */
std::optional<DaemonRecord> runningDaemon(const std::string &folder);

/** When a daemon that is asked to end does so, in order: at once, or as soon as no player needs it. */
enum class Ending { Now, WhenIdle };
void askToEnd(const DaemonRecord &daemon, Ending ending);
/** Waits so many milliseconds at most (-1: without a limit) for its end; whether it came. */
bool waitForEnd(const DaemonRecord &daemon, int milliseconds);

} // namespace voro::pps
