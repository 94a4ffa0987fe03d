#pragma once

#include "EndingProcesses.h"
#include "Process.h"
#include "Timer.h"

#include <QtCore/QElapsedTimer>

#include <pps/broker/Broker.h>
#include <pps/Fd.h>
#include <renderer/common/Birth.h>
#include <renderer/common/Reach.h>

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace voro::renderer {

/**
 * Starts the processes of workers: has them forked by one in which everything is loaded, or starts the program when
 * there is no such process.
 */
class Nursery {
public:
    using Sockets = std::array<pps::Fd, WorkerSockets>;
    using Started = std::function<void(std::unique_ptr<Process>)>;

    Nursery(pps::Broker &broker, std::string program, bool mayFork, EndingProcesses &ending);
    ~Nursery();
    Nursery(const Nursery &) = delete;
    Nursery &operator=(const Nursery &) = delete;

    /** Sees to it that the next worker can be forked. */
    void prepare();
    /** Starts a worker. Calls back with the process, at once or from the event loop; it may not be running. */
    void start(Reach reach, Sockets sockets, Started started);
    /** Has those to come loaded what most films need. */
    void expectFilms();

private:
    /** One of the two processes. */
    struct Half {
        pps::Fd socket;
        std::unique_ptr<Process> process;
    };
    struct Birth {
        Reach reach;
        Sockets sockets;
        Started started;
    };

    bool isThere() const { return m_halves[0].socket.isValid(); }
    Half &halfFor(Reach reach) { return m_halves[reach.network ? 0 : 1]; }
    void prepareForFilms();
    void watch(Half &half);
    void receive(Half &half);
    void spawn(const Birth &birth) const;
    void awaitBirth();
    void fail();
    void close();

    pps::Broker &m_broker;
    const std::string m_program;
    const bool m_mayFork;
    EndingProcesses &m_ending;
    std::array<Half, 2> m_halves;
    std::map<int64_t, Birth> m_births;
    int64_t m_lastId = 0;
    bool m_expectsFilms = false;
    /** How often in a row it went soon after its start. */
    int m_failures = 0;
    QElapsedTimer m_age;
    /** Whether it has forked. */
    bool m_isReady = false;
    /** Runs while somebody waits for a process. */
    Timer m_patience;
};

} // namespace voro::renderer
