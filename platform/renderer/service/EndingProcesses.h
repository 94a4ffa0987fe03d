#pragma once

#include "Process.h"

#include <pps/Log.h>

#include <list>
#include <memory>

namespace voro::renderer {

/** Killed processes until they have ended, without waiting for them. */
class EndingProcesses {
public:
    void add(std::unique_ptr<Process> process)
    {
        if (!process || !process->isRunning()) {
            return;
        }
        process->kill();
        m_processes.push_back(std::move(process));
        const auto place = std::prev(m_processes.end());
        (*place)->onEnd([this, place] {
            // The end of its connection may be noticed before its own.
            if ((*place)->hasCrashed()) {
                log::warn(log::Category::Worker, "a worker %s", (*place)->ending().c_str());
            }
            m_processes.erase(place);
        });
    }

private:
    std::list<std::unique_ptr<Process>> m_processes;
};

} // namespace voro::renderer
