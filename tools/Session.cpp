#include "Session.h"

#include "Display.h"
#include "LogFilter.h"
#include "Output.h"
#include "StopSignals.h"

#include <QtCore/QCoreApplication>

#include <utility>

namespace voro {

Session::Session(const char *name) : m_name(QString::fromLatin1(name))
{
    LogFilter::setRoomMaker([this] { clearLine(); });
}

Session::~Session()
{
    LogFilter::setRoomMaker({});
}

ExitStatus Session::run()
{
    StopSignals stopSignals(patience());
    connect(&stopSignals, &StopSignals::stop, this, &Session::finish);
    connect(&stopSignals, &StopSignals::suspending, this, &Session::onSuspending);
    connect(&stopSignals, &StopSignals::resumed, this, &Session::onResumed);
    connect(&stopSignals, &StopSignals::resized, this, &Session::redraw);
    if (Keyboard::isAvailable()) {
        m_keyboard = new Keyboard(this);
        connect(m_keyboard, &Keyboard::pressed, this, &Session::onKey);
    }
    const bool hasBegun = begin();
    if (hasBegun) {
        QCoreApplication::exec();
    }
    delete std::exchange(m_keyboard, nullptr);
    if (hasBegun) {
        end();
    }
    return m_status;
}

void Session::finish()
{
    QCoreApplication::quit();
}

void Session::report(const QString &text)
{
    clearLine();
    complain(m_name + QLatin1String(": ") + printable(text));
}

void Session::fail(const QString &text)
{
    m_status = Failure;
    report(text);
}

void Session::onSuspending()
{
    m_goesOnWhenResumed = hold();
    clearLine();
    if (m_keyboard) {
        m_keyboard->release();
    }
}

void Session::onResumed()
{
    if (m_keyboard) {
        m_keyboard->take();
    }
    if (std::exchange(m_goesOnWhenResumed, false)) {
        goOn();
    }
}

} // namespace voro
