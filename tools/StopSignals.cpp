#include "StopSignals.h"

#include <fcntl.h>
#include <pps/Fd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <ctime>

namespace voro {

namespace {

constexpr std::array Handled{SIGINT, SIGTERM, SIGHUP, SIGTSTP, SIGCONT, SIGALRM, SIGWINCH};
/** How long the program may be busy with something else once it is to end. */
constexpr itimerspec Grace{{}, {0, 500'000'000}};

/** The handler writes the signal's number into the pipe, the event loop reads it. */
std::array<pps::Fd, 2> signalPipe;
volatile std::sig_atomic_t endsAtOnce = 0;
volatile std::sig_atomic_t isEnding = 0;
/** Runs from the first signal to the end of the grace, if there is one. */
timer_t graceTimer;
volatile std::sig_atomic_t hasGraceTimer = 0;

bool ends(int number)
{
    return number != SIGTSTP && number != SIGCONT && number != SIGWINCH;
}

void onSignal(int number)
{
    // Asked twice, or too busy to end: whoever waits for this program waits for nothing else.
    if (ends(number) && (endsAtOnce || isEnding)) {
        std::quick_exit(0);
    }
    const int saved = errno;
    if (ends(number)) {
        isEnding = 1;
        if (hasGraceTimer) {
            timer_settime(graceTimer, 0, &Grace, nullptr);
        }
    }
    const auto byte = static_cast<char>(number);
    // A full pipe has a signal in it already.
    [[maybe_unused]] const auto written = write(signalPipe[1].get(), &byte, 1);
    errno = saved;
}

int openPipe()
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        qFatal("cannot make a pipe");
    }
    signalPipe = {pps::Fd(ends[0]), pps::Fd(ends[1])};
    return ends[0];
}

void setHandlers(void (*handler)(int))
{
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (int number : Handled) {
        struct sigaction present {};
        // What the caller has switched off (nohup) stays off.
        if (sigaction(number, nullptr, &present) == 0 && present.sa_handler != SIG_IGN) {
            sigaction(number, &action, nullptr);
        }
    }
}

} // namespace

StopSignals::StopSignals(Patience patience, QObject *parent)
    : QObject(parent),
      m_notifier(openPipe(), QSocketNotifier::Read)
{
    isEnding = 0;
    hasGraceTimer = patience == Short && timer_create(CLOCK_MONOTONIC, nullptr, &graceTimer) == 0;
    connect(&m_notifier, &QSocketNotifier::activated, this, &StopSignals::onReadable);
    setHandlers(onSignal);
}

StopSignals::~StopSignals()
{
    setHandlers(SIG_DFL);
    if (hasGraceTimer) {
        hasGraceTimer = 0;
        timer_delete(graceTimer);
    }
    m_notifier.setEnabled(false);
    signalPipe = {};
}

StopSignals::AtOnce::AtOnce()
{
    endsAtOnce = 1;
}

StopSignals::AtOnce::~AtOnce()
{
    endsAtOnce = 0;
}

void StopSignals::onReadable()
{
    char number = 0;
    if (read(signalPipe[0].get(), &number, 1) != 1) {
        return;
    }
    if (ends(number)) {
        Q_EMIT stop();
    } else if (number == SIGTSTP) {
        Q_EMIT suspending();
        raise(SIGSTOP);
    } else if (number == SIGWINCH) {
        Q_EMIT resized();
    } else {
        Q_EMIT resumed();
    }
}

} // namespace voro
