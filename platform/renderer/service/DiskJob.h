#pragma once

#include <pps/broker/Broker.h>
#include <pps/Fd.h>
#include <renderer/common/Error.h>

#include <ctime>
#include <functional>
#include <memory>

namespace voro::renderer {

/**
 * Does what may wait for a disk, for ever when a share does not answer: on a thread of its own, so that the event loop
 * never waits.
 */
class DiskJob {
public:
    using Work = std::function<Result()>;
    using Finished = std::function<void(const Result &)>;

    /**
     * Runs the work on the account of a process. `done` is called from the event loop with its result, or with
     * `silence` when there is none after some seconds, or when the process has too many disks that do not answer. It is
     * not called any more when this object is gone; the work ends when it can. What is `made` goes in that thread, when
     * nobody else has it after `done`: to close a file may take as long as to open it.
     */
    DiskJob(pps::Broker &broker, pid_t owner, Work work, const Result &silence, Finished done, time_t longest = 5,
            std::shared_ptr<const void> made = {});
    ~DiskJob();
    DiskJob(const DiskJob &) = delete;
    DiskJob &operator=(const DiskJob &) = delete;

private:
    struct Shared;
    struct Wait;

    std::shared_ptr<Wait> m_wait;
};

} // namespace voro::renderer
