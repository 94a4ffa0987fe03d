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

} // namespace

EndSignals::EndSignals() : m_notifier(openEvent(), QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, qApp, [this] {
        m_notifier.setEnabled(false);
        QCoreApplication::quit();
    });
    struct sigaction action {};
    action.sa_handler = noteEnd;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction present {};
        // What the caller has switched off (nohup) stays off.
        if (sigaction(signal, nullptr, &present) == 0 && present.sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
        }
    }
}

} // namespace application
