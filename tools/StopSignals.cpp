#include "StopSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <utility>

namespace voro {

namespace {

constexpr std::array Handled{SIGINT, SIGTERM, SIGHUP, SIGTSTP, SIGCONT};

/** The handler writes the signal's number into the pipe, the event loop reads it. */
std::array<int, 2> signalPipe{-1, -1};
volatile std::sig_atomic_t endsAtOnce = 0;

bool ends(int number)
{
    return number != SIGTSTP && number != SIGCONT;
}

void onSignal(int number)
{
    if (endsAtOnce && ends(number)) {
        std::quick_exit(0);
    }
    const int saved = errno;
    const auto byte = static_cast<char>(number);
    // A full pipe has a signal in it already.
    [[maybe_unused]] const auto written = write(signalPipe[1], &byte, 1);
    errno = saved;
}

int openPipe()
{
    if (pipe2(signalPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        qFatal("cannot make a pipe");
    }
    return signalPipe[0];
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

StopSignals::StopSignals(QObject *parent) : QObject(parent), m_notifier(openPipe(), QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, &StopSignals::onReadable);
    setHandlers(onSignal);
}

StopSignals::~StopSignals()
{
    setHandlers(SIG_DFL);
    m_notifier.setEnabled(false);
    for (int &end : signalPipe) {
        close(std::exchange(end, -1));
    }
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
    if (read(signalPipe[0], &number, 1) != 1) {
        return;
    }
    if (ends(number)) {
        Q_EMIT stop();
    } else if (number == SIGTSTP) {
        Q_EMIT suspending();
        raise(SIGSTOP);
    } else {
        Q_EMIT resumed();
    }
}

} // namespace voro
