#pragma once

#include <QtCore/QtGlobal>

#include <functional>

namespace voro {

/**
 * Keeps the library's log lines, which go to standard error, from people, whom the program tells in its own words what
 * failed. With `VOROMULTIMEDIA_LOG_DEBUG=1` they are shown. One at a time.
 */
class LogFilter {
public:
    LogFilter();
    ~LogFilter();
    LogFilter(const LogFilter &) = delete;
    LogFilter &operator=(const LogFilter &) = delete;

    /** Whom to call before a line is shown, for instance to clear the line of a terminal; may be empty. */
    static void setRoomMaker(std::function<void()> makeRoom);

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);
};

} // namespace voro
