#include "EndSignals.h"

#include <QtCore/QCoreApplication>

#include <sys/eventfd.h>

#include <csignal>

namespace application {

namespace {

int event = -1;

extern "C" void noteEnd(int)
{
    eventfd_write(event, 1);
}

int openEvent()
{
    event = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    return event;
}

void setHandlers(void (*handler)(int))
{
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction present {};
        // What the caller has switched off (nohup) stays off.
        if (sigaction(signal, nullptr, &present) == 0 && present.sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
        }
    }
}

} // namespace

EndSignals::EndSignals() : m_notifier(openEvent(), QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, qApp, [this] {
        m_notifier.setEnabled(false);
        setHandlers(SIG_DFL);
        QCoreApplication::quit();
    });
    if (event >= 0) {
        setHandlers(noteEnd);
    }
}

} // namespace application
