#pragma once

#include <QtCore/QSocketNotifier>

namespace application {

/**
 * Ends the application in order when the session or a terminal ends it (SIGTERM, SIGINT, SIGHUP): what it keeps is
 * written, its temporary files go. A second signal ends it at once.
 */
class EndSignals {
public:
    EndSignals();

private:
    QSocketNotifier m_notifier;
};

} // namespace application
