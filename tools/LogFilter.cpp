#include "LogFilter.h"

#include <utility>

namespace voro {

namespace {

LogFilter *current = nullptr;
QtMessageHandler showLine = nullptr;

} // namespace

LogFilter::LogFilter(std::function<void()> makeRoom)
    : m_makeRoom(std::move(makeRoom)),
      m_showsAll(qgetenv("VOROMULTIMEDIA_LOG_DEBUG") == "1")
{
    current = this;
    showLine = qInstallMessageHandler(handle);
}

LogFilter::~LogFilter()
{
    qInstallMessageHandler(showLine);
    current = nullptr;
}

void LogFilter::handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (current->m_isHolding && type != QtFatalMsg) {
        current->m_held.push_back({type, text});
        return;
    }
    current->m_makeRoom();
    showLine(type, context, text);
}

void LogFilter::finish(bool failed)
{
    const auto lines = std::exchange(m_held, {});
    if (!failed || lines.empty()) {
        return;
    }
    m_makeRoom();
    for (const Line &line : lines) {
        showLine(line.type, QMessageLogContext(), line.text);
    }
}

} // namespace voro
