#include "WorkerPool.h"

#include <pps/FilePages.h>
#include <renderer/common/Protocol.h>

#include <algorithm>
#include <utility>

namespace voro::renderer {

namespace {

/** So long after a start or an end, the daemon's own start too, few pages are needed any more that it needed. */
constexpr int Calm = 3'000;

} // namespace

/** A context's hold on a worker. */
class WorkerPool::Lease : public Engine {
public:
    Lease(WorkerPool &pool, std::shared_ptr<Worker> worker) : m_pool(pool), m_worker(std::move(worker))
    {
        ++m_pool.m_leases;
        m_pool.m_calmTimer.start(Calm);
    }
    ~Lease() override
    {
        m_pool.m_calmTimer.start(Calm);
        setFrameQueues({});
        if (m_worker->isCompleting()) {
            m_pool.endCompleted(m_worker);
        } else {
            m_pool.end(m_worker);
        }
        --m_pool.m_leases;
        // Later: its context may be about to start another one.
        m_pool.m_spareTimer.start(0);
    }

    void ask(const Request &request, Answered done) override { m_worker->ask(request, std::move(done)); }
    bool pass(int descriptor) override { return m_worker->pass(descriptor); }
    void setFrameQueues(const std::set<std::string> &names) override
    {
        for (const std::string &name : m_queues) {
            if (!names.contains(name)) {
                m_pool.m_queues.remove(name, m_worker.get());
            }
        }
        for (const std::string &name : names) {
            if (!m_queues.contains(name)) {
                m_pool.m_queues.add(name, m_worker.get(),
                                    [worker = m_worker, name](int socket) { worker->pass(socket, name); });
            }
        }
        m_queues = names;
    }
    void setWatched(bool isWatched) override { m_worker->setWatched(isWatched); }
    void setCompleting(bool isCompleting) override { m_worker->setCompleting(isCompleting); }

private:
    WorkerPool &m_pool;
    std::shared_ptr<Worker> m_worker;
    std::set<std::string> m_queues;
};

namespace {

/**
 * How long the start of the next spare worker waits, so that it takes no time from the one that begins to work. When
 * starts follow each other more closely, it is started at once: the next start would wait longer for a worker.
 */
constexpr int SpareDelay = 200;
/** How long a spare worker is kept that no context can want: one that is created soon takes it. */
constexpr int SpareRest = 300;
/** Most media are files, heard or shown in applications that draw themselves. */
constexpr Reach SpareReach;

} // namespace

WorkerPool::WorkerPool(pps::Broker &broker, Worker::Kind kind)
    : m_broker(broker),
      m_kind(std::move(kind)),
      m_queues(broker.accounts()),
      m_nursery(broker, m_kind.program, m_kind.mayFork, m_ending)
{
    m_spareTimer.setSingleShot(true);
    QObject::connect(&m_spareTimer, &QTimer::timeout, [this] { reviewSpare(); });
    m_calmTimer.setSingleShot(true);
    QObject::connect(&m_calmTimer, &QTimer::timeout, pps::releaseLibraryPages);
    m_calmTimer.start(Calm);
    m_broker.serve(WorkerPath, this);
}

WorkerPool::~WorkerPool()
{
    for (const auto &worker : m_workers) {
        if (worker->isCompleting()) {
            worker->leaveRunning();
        } else {
            worker->release();
        }
    }
    m_broker.unserve(WorkerPath);
}

std::shared_ptr<Worker> WorkerPool::make(Reach reach)
{
    // The callback comes from the event loop, when the worker exists.
    auto place = std::make_shared<Worker *>(nullptr);
    auto worker = std::make_shared<Worker>(m_broker, m_kind.limits, reach, [this, place] { died(*place); });
    *place = worker.get();
    m_workers.push_back(worker);
    m_nursery.start(reach, worker->takeSockets(), [this, waiting = std::weak_ptr(worker)](auto process) {
        const auto owner = waiting.lock();
        if (owner && !owner->isDead()) {
            owner->begin(std::move(process));
        } else {
            m_ending.add(std::move(process));
        }
    });
    return worker;
}

void WorkerPool::setContexts(size_t count)
{
    m_contexts = count;
    if (isSpareWanted()) {
        makeSpare();
    } else {
        m_spareTimer.start(SpareRest);
    }
}

void WorkerPool::makeSpare()
{
    if (!m_spare) {
        m_spare = make(SpareReach);
    }
}

void WorkerPool::reviewSpare()
{
    const bool isNextExpected = std::exchange(m_isBurst, false);
    if (isSpareWanted()) {
        makeSpare();
    } else if (isNextExpected) {
        makeSpare();
        m_spareTimer.start(SpareRest);
    } else if (m_spare) {
        end(std::exchange(m_spare, nullptr));
    }
}

std::unique_ptr<Engine> WorkerPool::start(EngineListener &listener, pid_t owner, Reach reach)
{
    auto charge = m_broker.accounts().take(owner, pps::Resource::Workers);
    if (!charge.isValid()) {
        return nullptr;
    }
    std::shared_ptr<Worker> worker =
        m_spare && m_spare->reach() == reach ? std::exchange(m_spare, nullptr) : make(reach);
    worker->setOwner(owner, std::move(charge));
    worker->setListener(&listener);
    m_isBurst = m_lastStart.isValid() && !m_lastStart.hasExpired(SpareDelay);
    m_spareTimer.start(m_isBurst ? 0 : SpareDelay);
    m_lastStart.start();
    return std::make_unique<Lease>(*this, std::move(worker));
}

std::shared_ptr<Worker> WorkerPool::find(pps::ClientId client) const
{
    const auto found = std::find_if(m_workers.begin(), m_workers.end(),
                                    [&](const auto &worker) { return worker->client() == client; });
    return found == m_workers.end() ? nullptr : *found;
}

void WorkerPool::clientOpened(pps::ClientId client, const pps::Peer &peer)
{
    const auto found = std::find_if(m_workers.begin(), m_workers.end(), [&](const auto &worker) {
        return peer.adopted != 0 && worker->socket() == peer.adopted && worker->client() == 0;
    });
    if (found == m_workers.end()) {
        // Not one of ours.
        m_broker.disconnect(client);
        return;
    }
    (*found)->connected(client);
}

void WorkerPool::clientMessage(pps::ClientId client, std::string_view text)
{
    if (const auto worker = find(client)) {
        worker->received(text);
    }
}

void WorkerPool::clientClosed(pps::ClientId client)
{
    if (const auto worker = find(client)) {
        worker->closed();
    }
}

void WorkerPool::died(Worker *dead)
{
    const auto found =
        std::find_if(m_workers.begin(), m_workers.end(), [&](const auto &worker) { return worker.get() == dead; });
    if (found == m_workers.end()) {
        return;
    }
    const std::shared_ptr<Worker> worker = *found;
    m_workers.erase(found);
    if (m_spare == worker) {
        // Not replaced at once: one that cannot start would be started in a loop.
        m_spare.reset();
    }
    worker->reportDeath();
    m_ending.add(worker->release());
}

void WorkerPool::end(const std::shared_ptr<Worker> &worker)
{
    if (const auto found = std::find(m_workers.begin(), m_workers.end(), worker); found != m_workers.end()) {
        m_workers.erase(found);
        m_ending.add(worker->release());
    }
}

/** Ends a worker that nobody listens to any more when it has completed its recording. */
void WorkerPool::endCompleted(const std::shared_ptr<Worker> &worker)
{
    if (std::find(m_workers.begin(), m_workers.end(), worker) != m_workers.end()) {
        worker->detachListener();
        worker->ask(requests::Close{},
                    [this, worker = worker.get()](const Result &) { end(worker->shared_from_this()); });
    }
}

} // namespace voro::renderer
