#include "LogCatcher.h"

#include <utility>

namespace voro::test {

LogCatcher *LogCatcher::s_current = nullptr;

LogCatcher::LogCatcher()
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

QStringList LogCatcher::takeLinesWithoutTraces()
{
    QStringList lines = takeLines();
    lines.removeIf([](const QString &line) { return line.startsWith(QLatin1String("D FunctionTracer::")); });
    return lines;
}

void LogCatcher::handle(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    static constexpr char letters[] = {'D', 'W', 'C', 'F', 'I'};
    const QMutexLocker locker(&s_current->m_mutex);
    s_current->m_lines += QStringLiteral("%1 %2").arg(QLatin1Char(letters[type])).arg(text);
}

} // namespace voro::test
