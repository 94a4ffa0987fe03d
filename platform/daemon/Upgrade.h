#pragma once

#include <QtCore/QSocketNotifier>

#include <pps/Fd.h>

#include <functional>
#include <string>

namespace voro {

/** Notices that another version of the daemon's program is there: it was replaced on the disk. */
class Upgrade {
public:
    /** Has `found` called from the event loop, at most once. */
    explicit Upgrade(std::function<void()> found);

private:
    void check();

    std::function<void()> m_found;
    std::string m_program;
    pps::Fd m_watch;
    QSocketNotifier m_changed;
};

} // namespace voro
