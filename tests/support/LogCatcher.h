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

    /**
     * The lines since the last call, each behind the letter of its level (D, I, W, C) and a blank. Lines for debugging
     * are apart when VOROMULTIMEDIA_LOG_DEBUG asks for them.
     */
    QStringList takeLines();
    /** Those lines for debugging, without a letter. */
    QStringList takeDebugLines();

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);

    static LogCatcher *s_current;
    const bool m_isDebugApart;
    QMutex m_mutex;
    QStringList m_lines;
    QStringList m_debugLines;
    QtMessageHandler m_previous;
};

} // namespace voro::test
