#include "Keyboard.h"

#include <termios.h>
#include <unistd.h>

#include <algorithm>
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

struct CharacterKey {
    char character;
    Key key;
};

constexpr std::array CharacterKeys{
    CharacterKey{' ', Key::PlayPause},   CharacterKey{'+', Key::Louder},
    CharacterKey{'=', Key::Louder},      CharacterKey{'-', Key::Softer},
    CharacterKey{'m', Key::Mute},        CharacterKey{'[', Key::Slower},
    CharacterKey{']', Key::Faster},      CharacterKey{'n', Key::Next},
    CharacterKey{'p', Key::Previous},    CharacterKey{'c', Key::Captions},
    CharacterKey{'?', Key::Help},        CharacterKey{'q', Key::Quit},
    CharacterKey{'>', Key::NextChapter}, CharacterKey{'<', Key::PreviousChapter},
};

constexpr std::array ArrowKeys{
    CharacterKey{'A', Key::FarForward},
    CharacterKey{'B', Key::FarBack},
    CharacterKey{'C', Key::Forward},
    CharacterKey{'D', Key::Back},
};

template<typename Keys>
std::optional<Key> find(const Keys &keys, char character)
{
    const auto found = std::find_if(keys.begin(), keys.end(),
                                    [character](const CharacterKey &it) { return it.character == character; });
    return found == keys.end() ? std::nullopt : std::optional(found->key);
}

std::optional<Key> plainKey(char byte)
{
    if (byte >= '0' && byte <= '9') {
        return static_cast<Key>(static_cast<int>(Key::Tenth0) + (byte - '0'));
    }
    return find(CharacterKeys, byte);
}

} // namespace

QByteArray keyHelp()
{
    return "  space         pauses and goes on\n"
           "  left right    seek by 5 seconds\n"
           "  down up       seek by 60 seconds\n"
           "  0 to 9        seek to as many tenths of the medium\n"
           "  p n           go to the previous and the next track\n"
           "  < >           go to the previous and the next chapter\n"
           "  - +           change the volume\n"
           "  m             switches the sound off and on\n"
           "  [ ]           play slower and faster\n"
           "  c             switches captions off and on\n"
           "  ?             shows this list\n"
           "  q             ends\n";
}

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
        return find(ArrowKeys, byte);
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
