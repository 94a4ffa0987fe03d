#include "Comeback.h"

#include "Runtime.h"

#include <QtCore/QRandomGenerator>

#include <fcntl.h>

#include <mutex>

namespace voro::pps {

namespace {

/** A daemon that lived for so long, in milliseconds, does not die at its start. */
constexpr int LongLife = 10'000;
constexpr int MostAttempts = 5;
/** The first wait; each further one is four times as long. A random part keeps processes from going at once. */
constexpr int FirstDelay = 20;
constexpr int FirstDelayRange = 100;

/** A process has one, because few are to be had; those who wait have copies of the descriptor. */
std::shared_ptr<const Fd> sharedWatch()
{
    static std::mutex &mutex = *new std::mutex;
    static std::weak_ptr<const Fd> &shared = *new std::weak_ptr<const Fd>;
    const std::lock_guard lock(mutex);
    auto watch = shared.lock();
    if (!watch) {
        watch = std::make_shared<const Fd>(watchForDaemon());
        shared = watch;
    }
    return watch;
}

} // namespace

void Comeback::Attempts::isLost()
{
    if (m_sinceBack.isValid() && m_sinceBack.hasExpired(LongLife)) {
        m_count = 0;
    }
}

int Comeback::Attempts::nextDelay()
{
    if (m_count == MostAttempts) {
        return -1;
    }
    return (FirstDelay + QRandomGenerator::global()->bounded(FirstDelayRange)) << (2 * m_count++);
}

Comeback::Comeback(QObject *object, bool mayStart, Attempts &attempts, std::function<void(bool)> attempt)
    : QObject(object),
      m_attempts(attempts),
      m_attempt(std::move(attempt)),
      m_watch(sharedWatch()),
      m_copy(fcntl(m_watch->get(), F_DUPFD_CLOEXEC, 0)),
      m_timer(this)
{
    attempts.isLost();
    if (m_copy.isValid()) {
        m_ready = new QSocketNotifier(m_copy.get(), QSocketNotifier::Read, this);
        connect(m_ready, &QSocketNotifier::activated, this, [this] {
            takeEvents(m_copy.get());
            callWaiters();
        });
    }
    addWaiter(*this);
    // There may be one already.
    daemonReached();
    if (mayStart) {
        m_timer.setSingleShot(true);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            startLater();
            m_attempt(true);
        });
        startLater();
    }
}

Comeback::~Comeback()
{
    removeWaiter(*this);
}

void Comeback::end()
{
    removeWaiter(*this);
    m_isEnded = true;
    m_timer.stop();
    if (m_ready) {
        m_ready->setEnabled(false);
    }
    deleteLater();
}

void Comeback::daemonReached()
{
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!m_isEnded) {
                m_attempt(false);
            }
        },
        Qt::QueuedConnection);
}

void Comeback::startLater()
{
    if (const int delay = m_attempts.nextDelay(); delay >= 0) {
        m_timer.start(delay);
    }
}

} // namespace voro::pps
