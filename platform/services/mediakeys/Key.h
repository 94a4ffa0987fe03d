#pragma once

#include <optional>
#include <string_view>

/* The media keys and their names. */

namespace voro::mediakeys {

enum class Key { FastForward, Pause, Play, PlayPause, Rewind, Stop, VolumeDown, VolumeUp, Previous, Next };

/** The name of a key in messages. */
std::string_view nameOf(Key key);
std::optional<Key> keyNamed(std::string_view name);

/** What a controller would write to have the key's work done. */
std::string_view commandOf(Key key);

/** The key of an evdev key code. A keyboard to type on has keys of its own by the names Pause and Stop. */
std::optional<Key> keyOfCode(unsigned code, bool isTypewriter);

/** Which presses a button registration is for. */
enum class Kind {
    /** A release, whatever the length of the press. */
    AnyRelease,
    /** A release before the threshold. */
    ShortRelease,
    /** Reaching the threshold. */
    Threshold,
};

struct Registration {
    Key key;
    Kind kind;
    auto operator<=>(const Registration &) const = default;
};
/** Takes a name like "bn_play_short" apart. */
std::optional<Registration> parseRegistration(std::string_view name);

} // namespace voro::mediakeys
