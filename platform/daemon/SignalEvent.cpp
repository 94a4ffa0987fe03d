#include "SignalEvent.h"

#include <sys/eventfd.h>

#include <csignal>

namespace voro {

namespace {

int eventOf[NSIG];

extern "C" void note(int signal)
{
    eventfd_write(eventOf[signal], 1);
}

} // namespace

int signalEvent(std::initializer_list<int> signals)
{
    const int event = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    // Handlers, not blocked signals: workers must not inherit them.
    struct sigaction action {};
    action.sa_handler = note;
    action.sa_flags = SA_RESTART;
    for (const int signal : signals) {
        eventOf[signal] = event;
        sigaction(signal, &action, nullptr);
    }
    return event;
}

} // namespace voro
