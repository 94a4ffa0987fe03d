#pragma once

#include <QtCore/qlogging.h>
#include <QtCore/QMutex>
#include <QtCore/QStringList>

namespace voro::test {

/** Takes every message of Qt's message handler for as long as it lives. One at a time. */
class LogCatcher {
public:
    LogCatcher();
    ~LogCatcher();
    Q_DISABLE_COPY_MOVE(LogCatcher)

    /** The lines since the last call, each behind the letter of its level (D, I, W, C) and a blank. */
    QStringList takeLines();
    /** The same without the lines that tell of functions being entered and left. */
    QStringList takeLinesWithoutTraces();

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);

    static LogCatcher *s_current;
    QMutex m_mutex;
    QStringList m_lines;
    QtMessageHandler m_previous;
};

} // namespace voro::test
