#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QSocketNotifier>

#include <optional>

namespace voro {

/** A key that commands the player. */
enum class Key {
    PlayPause,
    Back,
    Forward,
    FarBack,
    FarForward,
    Louder,
    Softer,
    Mute,
    Slower,
    Faster,
    Next,
    Previous,
    NextChapter,
    PreviousChapter,
    Captions,
    Help,
    Quit,
    /** To the beginning; those after it stand for as many tenths of the medium. */
    Tenth0,
    Tenth9 = Tenth0 + 9
};

/** The lines that say what the keys do. */
QByteArray keyHelp();

/** Finds keys in the bytes that a terminal sends, which may arrive in pieces. */
class KeyDecoder {
public:
    /** The key that the byte completes, if any; bytes that mean nothing are dropped. */
    std::optional<Key> feed(char byte);

private:
    enum class State { Plain, Escape, Sequence };
    State m_state = State::Plain;
};

/**
 * Reads single keys from the terminal on standard input, without echo. The terminal's own mode is back when the object
 * goes, and also when the program dies of a signal. One at a time.
 */
class Keyboard : public QObject {
    Q_OBJECT
public:
    explicit Keyboard(QObject *parent = nullptr);
    ~Keyboard() override;

    /** Whether there is a terminal that listens to this program: standard input, in the foreground. */
    static bool isAvailable();

    /** Gives the terminal back, for instance while the program is suspended, and takes it again. */
    void release();
    void take();

Q_SIGNALS:
    void pressed(voro::Key key);

private:
    void onReadable();

    KeyDecoder m_decoder;
    QSocketNotifier m_notifier;
};

} // namespace voro
