#pragma once

#include <QtCore/QObject>

#include <functional>
#include <memory>
#include <mutex>

namespace voro::nowplaying {

/**
 * A call that may hang, made in a thread of its own. Nobody waits for it: an owner that goes forgets it, and the
 * process ends without it.
 */
class BlockingCall : public QObject {
public:
    ~BlockingCall() override;

    bool isRunning() const { return m_caller != nullptr; }
    /** Makes the call and forgets the one before. `finished` is called from the event loop. */
    void start(const std::function<void()> &call, const std::function<void()> &finished);

private:
    /** The object that is notified of the end; the lock keeps it alive meanwhile. */
    struct Caller {
        std::mutex mutex;
        BlockingCall *object;
        std::function<void()> finished;
    };

    void forget();
    void finish(const std::shared_ptr<Caller> &caller);

    std::shared_ptr<Caller> m_caller;
};

} // namespace voro::nowplaying
