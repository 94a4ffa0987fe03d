#include "Keyboard.h"

#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>

namespace voro {

namespace {

/** The terminal's mode before the program changed it; the handler of deadly signals needs it as well. */
termios ownMode;
volatile std::sig_atomic_t isChanged = 0;

void restoreMode()
{
    if (!isChanged) {
        return;
    }
    isChanged = 0;
    tcsetattr(STDIN_FILENO, TCSANOW, &ownMode);
}

void onDeadlySignal(int number)
{
    restoreMode();
    raise(number);
}

void setDeadlyHandlers(void (*handler)(int))
{
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
    for (int number : {SIGQUIT, SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGPIPE}) {
        sigaction(number, &action, nullptr);
    }
}

std::optional<Key> plainKey(char byte)
{
    switch (byte) {
    case ' ':
        return Key::PlayPause;
    case '+':
    case '=':
        return Key::Louder;
    case '-':
        return Key::Softer;
    case 'n':
        return Key::Next;
    case 'p':
        return Key::Previous;
    case 'c':
        return Key::Captions;
    case 'q':
        return Key::Quit;
    default:
        return std::nullopt;
    }
}

std::optional<Key> arrowKey(char final)
{
    switch (final) {
    case 'A':
        return Key::Louder;
    case 'B':
        return Key::Softer;
    case 'C':
        return Key::Forward;
    case 'D':
        return Key::Back;
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<Key> KeyDecoder::feed(char byte)
{
    constexpr char Escape = '\x1b';
    if (byte == Escape) {
        m_state = State::Escape;
        return std::nullopt;
    }
    switch (m_state) {
    case State::Plain:
        return plainKey(byte);
    case State::Escape:
        if (byte == '[' || byte == 'O') {
            m_state = State::Sequence;
            return std::nullopt;
        }
        m_state = State::Plain;
        return plainKey(byte);
    case State::Sequence:
        // Parameters (0x20 to 0x3f) may stand before the byte that ends a sequence.
        if (byte >= 0x20 && byte <= 0x3f) {
            return std::nullopt;
        }
        m_state = State::Plain;
        return arrowKey(byte);
    }
    return std::nullopt;
}

Keyboard::Keyboard(QObject *parent) : QObject(parent), m_notifier(STDIN_FILENO, QSocketNotifier::Read)
{
    m_notifier.setEnabled(false);
    connect(&m_notifier, &QSocketNotifier::activated, this, &Keyboard::onReadable);
    take();
    setDeadlyHandlers(onDeadlySignal);
    std::at_quick_exit(restoreMode);
}

Keyboard::~Keyboard()
{
    setDeadlyHandlers(SIG_DFL);
    release();
}

bool Keyboard::isAvailable()
{
    return isatty(STDIN_FILENO) && tcgetpgrp(STDIN_FILENO) == getpgrp();
}

void Keyboard::release()
{
    m_notifier.setEnabled(false);
    restoreMode();
}

void Keyboard::take()
{
    if (isChanged || !isAvailable() || tcgetattr(STDIN_FILENO, &ownMode) != 0) {
        return;
    }
    termios single = ownMode;
    single.c_lflag &= ~tcflag_t(ICANON | ECHO);
    single.c_cc[VMIN] = 1;
    single.c_cc[VTIME] = 0;
    isChanged = 1;
    tcsetattr(STDIN_FILENO, TCSANOW, &single);
    m_notifier.setEnabled(true);
}

void Keyboard::onReadable()
{
    std::array<char, 64> bytes;
    const auto count = read(STDIN_FILENO, bytes.data(), bytes.size());
    // The terminal went: no more keys.
    if (count <= 0) {
        m_notifier.setEnabled(false);
        return;
    }
    for (ssize_t i = 0; i < count; ++i) {
        if (const auto key = m_decoder.feed(bytes[static_cast<size_t>(i)])) {
            Q_EMIT pressed(*key);
        }
    }
}

} // namespace voro
