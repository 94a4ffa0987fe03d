#pragma once

#include "Command.h"
#include "Keyboard.h"
#include "StopSignals.h"

#include <QtCore/QObject>
#include <QtCore/QString>

namespace voro {

/**
 * A command that goes on until it has done its work or somebody ends it, by a key or by a signal. While the program is
 * suspended it pauses.
 */
class Session : public QObject {
    Q_OBJECT
public:
    /** `name` is the command's, under which it complains. */
    explicit Session(const char *name);
    ~Session() override;

    /** Runs until the end. Failure when something was reported as failed. */
    ExitStatus run();

protected:
    /** Begins the work; false when there is none to wait for. */
    virtual bool begin() = 0;
    /** Comes after the work, when the keys work no longer but signals are still held off. */
    virtual void end() {}
    virtual void onKey(Key key) = 0;
    /** Pauses for a while; false when there is nothing to pause. */
    virtual bool hold() = 0;
    /** Goes on after hold(). */
    virtual void goOn() = 0;
    /** How long the end may take that somebody asked for. */
    virtual StopSignals::Patience patience() const { return StopSignals::Short; }
    /** Draws what stands on the terminal anew, whose size has changed. */
    virtual void redraw() {}
    /** Makes room on the terminal for lines that something else writes. */
    virtual void clearLine() {}

    void finish();
    void report(const QString &text);
    /** Reports something that lets the program fail. */
    void fail(const QString &text);
    bool hasFailed() const { return m_status != Success; }

private:
    void onSuspending();
    void onResumed();

    const QString m_name;
    Keyboard *m_keyboard = nullptr;
    bool m_goesOnWhenResumed = false;
    ExitStatus m_status = Success;
};

} // namespace voro
