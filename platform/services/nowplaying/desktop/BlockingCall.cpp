#include "BlockingCall.h"

#include <stdlib.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <system_error>
#include <thread>

namespace voro::nowplaying {

namespace {

std::atomic<int> runningCalls = 0;

// Ends the process without destructors: threads still use the objects, and Qt would wait for a bus that hangs.
void leaveThem(int status, void *)
{
    if (runningCalls > 0) {
        std::fflush(nullptr);
        _exit(status);
    }
}

} // namespace

BlockingCall::~BlockingCall()
{
    forget();
    if (runningCalls > 0) {
        // It comes before the destructors of everything that there is by now.
        on_exit(leaveThem, nullptr);
    }
}

void BlockingCall::start(const std::function<void()> &call, const std::function<void()> &finished)
{
    forget();
    m_caller = std::make_shared<Caller>();
    m_caller->object = this;
    m_caller->finished = finished;
    const auto end = [caller = m_caller] {
        const std::lock_guard lock(caller->mutex);
        if (BlockingCall *const object = caller->object) {
            QMetaObject::invokeMethod(
                object, [object, caller] { object->finish(caller); }, Qt::QueuedConnection);
        }
        --runningCalls;
    };
    ++runningCalls;
    try {
        std::thread([call, end] {
            call();
            end();
        }).detach();
    } catch (const std::system_error &) {
        // No thread is to be had; the call has failed.
        end();
    }
}

void BlockingCall::forget()
{
    if (m_caller) {
        const std::lock_guard lock(m_caller->mutex);
        m_caller->object = nullptr;
    }
    m_caller.reset();
}

void BlockingCall::finish(const std::shared_ptr<Caller> &caller)
{
    if (caller == m_caller) {
        m_caller.reset();
        caller->finished();
    }
}

} // namespace voro::nowplaying
