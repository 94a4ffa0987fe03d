#pragma once

#include "EndingProcesses.h"
#include "Engine.h"
#include "FrameQueues.h"
#include "Nursery.h"
#include "Worker.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

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
    /** Where its workers show pictures when not in windows. */
    FrameQueues &frameQueues() { return m_queues; }
    std::unique_ptr<Engine> start(EngineListener &listener, pid_t owner, Reach reach) override;
    void expectFilms() override { m_nursery.expectFilms(); }

private:
    class Lease;

    void clientOpened(pps::ClientId client, const pps::Peer &peer) override;
    void clientMessage(pps::ClientId client, std::string_view text) override;
    void clientClosed(pps::ClientId client) override;

    std::shared_ptr<Worker> make(Reach reach);
    std::shared_ptr<Worker> find(pps::ClientId client) const;
    void died(Worker *worker);
    void end(const std::shared_ptr<Worker> &worker);
    void endCompleted(const std::shared_ptr<Worker> &worker);

    pps::Broker &m_broker;
    const Worker::Kind m_kind;
    FrameQueues m_queues;
    std::shared_ptr<Worker> m_spare;
    QTimer m_spareTimer;
    QElapsedTimer m_lastStart;
    std::list<std::shared_ptr<Worker>> m_workers;
    EndingProcesses m_ending;
    Nursery m_nursery;
};

} // namespace voro::renderer
