#pragma once

#include "Engine.h"
#include "FrameQueues.h"
#include "Worker.h"

#include <pps/broker/Broker.h>

#include <list>
#include <memory>

namespace voro::renderer {

/** Starts the workers, keeps one of them spare, and passes on what they say. */
class WorkerPool : public EngineSource,
                   private pps::Service {
public:
    explicit WorkerPool(pps::Broker &broker, Worker::Kind kind = Worker::usual());
    ~WorkerPool() override;
    WorkerPool(const WorkerPool &) = delete;
    WorkerPool &operator=(const WorkerPool &) = delete;

    /** Sees to it that there is a spare worker. */
    void prepareSpare();
    /** Has workers from now on draw at that session's X server, unless it has none. */
    void setSession(const Session &session);
    /** Where its workers show pictures when not in windows. */
    FrameQueues &frameQueues() { return m_queues; }
    std::unique_ptr<Engine> start(EngineListener &listener, pid_t owner) override;
    void expectFilms() override { m_expectsFilms = true; }

private:
    class Lease;

    void clientOpened(pps::ClientId client, const pps::Peer &peer) override;
    void clientMessage(pps::ClientId client, std::string_view text) override;
    void clientClosed(pps::ClientId client) override;

    std::shared_ptr<Worker> make();
    std::shared_ptr<Worker> find(pps::ClientId client) const;
    void died(Worker *worker);
    void end(const std::shared_ptr<Worker> &worker);
    void endCompleted(const std::shared_ptr<Worker> &worker);
    void killSlowly(std::unique_ptr<Process> process);

    pps::Broker &m_broker;
    const Worker::Kind m_kind;
    FrameQueues m_queues;
    std::shared_ptr<Worker> m_spare;
    Session m_session;
    bool m_expectsFilms = false;
    QTimer m_spareTimer;
    std::list<std::shared_ptr<Worker>> m_workers;
    /** Killed ones that are still ending. */
    std::list<std::unique_ptr<Process>> m_ending;
};

} // namespace voro::renderer
