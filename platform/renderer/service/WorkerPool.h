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

/**
 * Starts the workers and passes on what they say. While a context has no worker, as one that is new or parked, it keeps
 * a spare one.
 */
class WorkerPool : public EngineSource,
                   private pps::Service {
public:
    explicit WorkerPool(pps::Broker &broker, Worker::Kind kind = Worker::usual());
    ~WorkerPool() override;
    WorkerPool(const WorkerPool &) = delete;
    WorkerPool &operator=(const WorkerPool &) = delete;

    /** How many contexts there are, each with one worker at most. */
    void setContexts(size_t count);
    /** Where its workers show pictures when not in windows. */
    FrameQueues &frameQueues() { return m_queues; }
    std::unique_ptr<Engine> start(EngineListener &listener, pid_t owner, Reach reach) override;
    void expectFilms() override { m_nursery.expectFilms(); }

private:
    class Lease;

    void clientOpened(pps::ClientId client, const pps::Peer &peer) override;
    void clientMessage(pps::ClientId client, std::string_view text) override;
    void clientClosed(pps::ClientId client) override;

    bool isSpareWanted() const { return m_leases < m_contexts; }
    void makeSpare();
    void reviewSpare();
    std::shared_ptr<Worker> make(Reach reach);
    std::shared_ptr<Worker> find(pps::ClientId client) const;
    void died(Worker *worker);
    void end(const std::shared_ptr<Worker> &worker);
    void endCompleted(const std::shared_ptr<Worker> &worker);

    pps::Broker &m_broker;
    const Worker::Kind m_kind;
    FrameQueues m_queues;
    size_t m_contexts = 0;
    /** How many of them have a worker. */
    size_t m_leases = 0;
    std::shared_ptr<Worker> m_spare;
    QTimer m_spareTimer;
    QTimer m_calmTimer;
    QElapsedTimer m_lastStart;
    /** Whether starts follow each other so closely that the next one is expected. */
    bool m_isBurst = false;
    std::list<std::shared_ptr<Worker>> m_workers;
    EndingProcesses m_ending;
    Nursery m_nursery;
};

} // namespace voro::renderer
