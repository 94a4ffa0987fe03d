#pragma once

#include "Path.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/* Shared by the connections of a process for the loss of their daemon. Every thread may use it. */

namespace voro::pps {

/** The newest will of a folder. */
struct FolderWill {
    std::string text;
    /** A reader of this version of the folder's objects has read the same; 0: none has. */
    uint64_t shownBy = 0;
    /** The folder is back: a reader that did not read the will by then reads the present. */
    bool isDropped = false;
};
/** The same, kept as long as a connection holds it. */
struct KeptWill;

/** Keeps the will that a broker left for a folder, in place of an older one. */
std::shared_ptr<KeptWill> keepWill(const std::string &folder, FolderWill will, uint64_t broker);
/** The will that this broker left for the folder; empty when there is none. */
FolderWill findWill(const std::string &folder, uint64_t broker);
void dropWill(const std::string &folder, uint64_t broker);

/** Records that this broker is gone, and whether that is recorded. */
void brokerLost(uint64_t broker);
bool isBrokerLost(uint64_t broker);

/** The part of a folder's will that a reader of the path would read. */
std::string partOf(std::string_view will, const ObjectPath &path);
/** Takes the first of several texts that begin with an object line each. */
std::string_view takeText(std::string_view &texts);

/** Waits for another daemon. */
class Waiter {
public:
    virtual ~Waiter() = default;
    /** This process has reached one; called in any thread. */
    virtual void daemonReached() = 0;
};
void addWaiter(Waiter &waiter);
/** When this returns the waiter is called no more. */
void removeWaiter(Waiter &waiter);
void callWaiters();
/** Calls the waiters when this process reaches that broker for the first time. */
void brokerReached(uint64_t broker);

} // namespace voro::pps
