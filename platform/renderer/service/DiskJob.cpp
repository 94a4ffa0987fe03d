#include "DiskJob.h"

#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <semaphore>
#include <system_error>
#include <thread>
#include <utility>

namespace voro::renderer {

/** Shared by the thread and the event loop. */
struct DiskJob::Shared {
    Work work;
    Result result;
    std::atomic<bool> hasEnded = false;
    pps::Fd ended{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    std::shared_ptr<const void> made;
    /** Released when the event loop has let go of what the work has made. */
    std::binary_semaphore handled{0};
};

/** The listener. It belongs to the event loop, and stays there as long as the thread runs. */
struct DiskJob::Wait {
    pps::Broker &broker;
    pps::Accounts::Charge charge;
    Finished done;
    pps::Fd timer{timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)};

    void finish(const Result &result)
    {
        forget();
        if (const Finished callback = std::exchange(done, nullptr)) {
            callback(result);
        }
    }
    void forget()
    {
        if (timer.isValid()) {
            broker.unwatch(timer.get());
            timer.reset();
        }
    }
};

DiskJob::DiskJob(pps::Broker &broker, pid_t owner, Work work, const Result &silence, Finished done, time_t longest,
                 std::shared_ptr<const void> made)
    : m_wait(new Wait{broker, broker.accounts().take(owner, pps::Resource::DiskJobs), std::move(done)})
{
    const auto shared = std::make_shared<Shared>();
    shared->work = std::move(work);
    shared->made = std::move(made);
    itimerspec time{};
    time.it_value.tv_sec = longest;
    if (m_wait->charge.isValid()) {
        broker.watch(shared->ended.get(), [shared, wait = m_wait] {
            if (shared->hasEnded) {
                wait->broker.unwatch(shared->ended.get());
                wait->charge.release();
                wait->finish(shared->result);
                shared->handled.release();
            }
        });
        try {
            std::thread([shared] {
                shared->result = shared->work();
                shared->work = nullptr;
                shared->hasEnded = true;
                eventfd_write(shared->ended.get(), 1);
                if (shared->made) {
                    shared->handled.acquire();
                    shared->made.reset();
                }
            }).detach();
        } catch (const std::system_error &) {
            broker.unwatch(shared->ended.get());
            m_wait->charge.release();
        }
    }
    if (!m_wait->charge.isValid()) {
        time.it_value = {0, 1};
    }
    timerfd_settime(m_wait->timer.get(), 0, &time, nullptr);
    broker.watch(m_wait->timer.get(), [wait = m_wait, silence] {
        if (uint64_t count = 0; ::read(wait->timer.get(), &count, sizeof count) == sizeof count) {
            wait->finish(silence);
        }
    });
}

DiskJob::~DiskJob()
{
    m_wait->done = nullptr;
    m_wait->forget();
}

} // namespace voro::renderer
