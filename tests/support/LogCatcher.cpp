#include "LogCatcher.h"

#include <QtCore/QByteArray>

#include <utility>

namespace voro::test {

LogCatcher *LogCatcher::s_current = nullptr;

LogCatcher::LogCatcher() : m_isDebugApart(qgetenv("VOROMULTIMEDIA_LOG_DEBUG") == "1")
{
    s_current = this;
    m_previous = qInstallMessageHandler(handle);
}

LogCatcher::~LogCatcher()
{
    qInstallMessageHandler(m_previous);
    s_current = nullptr;
}

QStringList LogCatcher::takeLines()
{
    const QMutexLocker locker(&m_mutex);
    return std::exchange(m_lines, {});
}

QStringList LogCatcher::takeDebugLines()
{
    const QMutexLocker locker(&m_mutex);
    return std::exchange(m_debugLines, {});
}

void LogCatcher::handle(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    static constexpr char letters[] = {'D', 'W', 'C', 'F', 'I'};
    const QMutexLocker locker(&s_current->m_mutex);
    if (type == QtDebugMsg && s_current->m_isDebugApart) {
        s_current->m_debugLines += text;
        return;
    }
    s_current->m_lines += QStringLiteral("%1 %2").arg(QLatin1Char(letters[type])).arg(text);
}

} // namespace voro::test
