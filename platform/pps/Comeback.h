#pragma once

#include "Fd.h"
#include "Loss.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QSocketNotifier>
#include <QtCore/QTimer>

#include <functional>
#include <memory>

namespace voro::pps {

/**
 * Has an object that lost its daemon try to come back: when a daemon says that it is ready, when this process has
 * reached one, and, if it may start one, a few times by itself. Nothing wakes the process otherwise.
 */
class Comeback : public QObject,
                 private Waiter {
public:
    /** How often an object tried to start a daemon, since one of them lived for a while. */
    class Attempts {
    public:
        void isLost();
        void isBack() { m_sinceBack.start(); }
        /** How long to wait before the next one, in milliseconds; -1 for ever. */
        int nextDelay();

    private:
        QElapsedTimer m_sinceBack;
        int m_count = 0;
    };

    /** `attempt` is called from the event loop of the object, which is the parent, with whether to start a daemon. */
    Comeback(QObject *object, bool mayStart, Attempts &attempts, std::function<void(bool mayStart)> attempt);
    ~Comeback() override;

    /** Tries no more, and goes when nothing of it is at work. */
    void end();

private:
    void daemonReached() override;
    void startLater();

    Attempts &m_attempts;
    std::function<void(bool mayStart)> m_attempt;
    std::shared_ptr<const Fd> m_watch;
    Fd m_copy;
    QSocketNotifier *m_ready = nullptr;
    QTimer m_timer;
    bool m_isEnded = false;
};

} // namespace voro::pps
