#pragma once

#include <QtCore/QObject>
#include <QtCore/QSocketNotifier>

namespace voro {

/**
 * Turns the signals that end a program from outside (^C, TERM, HUP), that suspend it (^Z), that let it go on and that
 * tell of another size of the terminal into Qt signals. One at a time. A second one that ends the program ends it at
 * once.
 */
class StopSignals : public QObject {
    Q_OBJECT
public:
    /** Short: a program that was to end and did not come to it, because a call waits, ends all the same. */
    enum Patience { Short, Long };

    explicit StopSignals(Patience patience = Short, QObject *parent = nullptr);
    ~StopSignals() override;

    /**
     * While one lives the event loop does not run, so a signal that ends the program ends it at once, with status 0.
     */
    class AtOnce {
    public:
        AtOnce();
        ~AtOnce();
        AtOnce(const AtOnce &) = delete;
        AtOnce &operator=(const AtOnce &) = delete;
    };

Q_SIGNALS:
    void stop();
    /** Comes right before the program is suspended. */
    void suspending();
    void resumed();
    /** The terminal has another size. */
    void resized();

private:
    void onReadable();

    QSocketNotifier m_notifier;
};

} // namespace voro
