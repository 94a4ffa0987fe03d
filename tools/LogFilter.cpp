#include "LogFilter.h"

#include <QtCore/QString>

#include <utility>

namespace voro {

namespace {

QtMessageHandler showLine = nullptr;
std::function<void()> roomMaker;
bool showsAll = false;

} // namespace

LogFilter::LogFilter()
{
    showsAll = qgetenv("VOROMULTIMEDIA_LOG_DEBUG") == "1";
    showLine = qInstallMessageHandler(handle);
}

LogFilter::~LogFilter()
{
    qInstallMessageHandler(showLine);
}

void LogFilter::setRoomMaker(std::function<void()> makeRoom)
{
    roomMaker = std::move(makeRoom);
}

void LogFilter::handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!showsAll && type != QtFatalMsg) {
        return;
    }
    if (roomMaker) {
        roomMaker();
    }
    showLine(type, context, text);
}

} // namespace voro
