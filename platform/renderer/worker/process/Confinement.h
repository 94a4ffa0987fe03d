#pragma once

#include "OwnElements.h"
#include "SystemCalls.h"

#include <renderer/common/Reach.h>

#include <utility>
#include <vector>

namespace voro::renderer {

/**
 * Has the process end with its parent, and gives up core dumps, privileges to come, and memory without end. To be
 * called first.
 */
void restrictProcess();

/** Whether the end of its parent leaves this process running, for what it still has to write. */
void setOutliving(bool isOutliving);

/**
 * Three layers, each enough for what it covers, keep a worker from files but the system's and those that it is handed,
 * from programs, from other processes, and from servers that it does not need. What sinks and sources need that the
 * environment describes is left to it, and the log says so. It is to be used before there are other threads.
 */
class Confinement {
public:
    struct Layers {
        bool namespaces;
        bool landlock;
        bool systemCalls;
    };

    explicit Confinement(Layers layers = {true, true, true});

    /** The first half, which a fork inherits: a root and a user of its own, and what takes time to prepare. */
    void begin();
    /** Does without the network from now on, between the halves. */
    void leaveNetwork();
    /** Prepares what complete() needs for that reach, which takes time. */
    void prepare(Reach reach);
    /** The second half, for this process only. */
    void complete(Reach reach);

private:
    Reach widened(Reach reach) const;
    const SystemCalls &callsFor(Reach reach);
    bool limitFiles(Reach reach) const;

    Layers m_layers;
    OwnElements m_elements;
    /** Whether sound goes there, be it to a server or by elements about which nothing is known. */
    bool m_keepsNetwork;
    bool m_isInNamespaces = false;
    std::vector<std::pair<Reach, SystemCalls>> m_calls;
};

} // namespace voro::renderer
