#include "Key.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>
#include <utility>

namespace voro::mediakeys {

namespace {

struct KeyEntry {
    std::string_view name;
    std::string_view command;
};

constexpr std::array<KeyEntry, 10> Keys{{
    {"forward", "msg::m_fforward"},
    {"pause", "msg::m_pause"},
    {"play", "msg::m_play"},
    {"playpause", "msg::m_playpause"},
    {"rewind", "msg::m_rewind"},
    {"stop", "msg::m_stop"},
    {"vdown", "msg::v_down"},
    {"vup", "msg::v_up"},
    {"prev", "msg::m_previous"},
    {"next", "msg::m_next"},
}};

struct KindEntry {
    std::string_view suffix;
    Kind kind;
};

constexpr std::array<KindEntry, 3> Kinds{{
    {"_short", Kind::AnyRelease},
    {"_short_nothresh", Kind::ShortRelease},
    {"_med", Kind::Threshold},
}};

struct CodeEntry {
    unsigned code;
    Key key;
};

// What keyboards, headsets (also over Bluetooth) and remote controls send.
constexpr std::array<CodeEntry, 16> Codes{{
    {KEY_FASTFORWARD, Key::FastForward},
    {KEY_PAUSECD, Key::Pause},
    {KEY_PLAY, Key::Play},
    {KEY_PLAYCD, Key::Play},
    {KEY_PLAYPAUSE, Key::PlayPause},
    {KEY_MEDIA, Key::PlayPause},
    {KEY_REWIND, Key::Rewind},
    {KEY_STOPCD, Key::Stop},
    {KEY_VOLUMEDOWN, Key::VolumeDown},
    {KEY_VOLUMEUP, Key::VolumeUp},
    {KEY_PREVIOUSSONG, Key::Previous},
    {KEY_PREVIOUS, Key::Previous},
    {KEY_NEXTSONG, Key::Next},
    {KEY_NEXT, Key::Next},
    {KEY_PAUSE, Key::Pause},
    {KEY_STOP, Key::Stop},
}};

constexpr bool isTypewriterKey(unsigned code)
{
    return code == KEY_PAUSE || code == KEY_STOP;
}

} // namespace

std::string_view nameOf(Key key)
{
    return Keys[static_cast<size_t>(key)].name;
}

std::optional<Key> keyNamed(std::string_view name)
{
    const auto found = std::find_if(Keys.begin(), Keys.end(), [&](const auto &entry) { return entry.name == name; });
    return found == Keys.end() ? std::nullopt : std::optional(Key(found - Keys.begin()));
}

std::string_view commandOf(Key key)
{
    return Keys[static_cast<size_t>(key)].command;
}

std::optional<Key> keyOfCode(unsigned code, bool isTypewriter)
{
    const auto found = std::find_if(Codes.begin(), Codes.end(), [&](const auto &entry) { return entry.code == code; });
    const bool isOther = found == Codes.end() || (isTypewriter && isTypewriterKey(code));
    return isOther ? std::nullopt : std::optional(found->key);
}

std::optional<Registration> parseRegistration(std::string_view name)
{
    constexpr std::string_view Prefix = "bn_";
    const size_t end = name.find('_', Prefix.size());
    if (!name.starts_with(Prefix) || end == std::string_view::npos) {
        return std::nullopt;
    }
    const auto key = keyNamed(name.substr(Prefix.size(), end - Prefix.size()));
    const auto kind =
        std::find_if(Kinds.begin(), Kinds.end(), [&](const auto &entry) { return entry.suffix == name.substr(end); });
    if (!key || kind == Kinds.end()) {
        return std::nullopt;
    }
    return Registration{*key, kind->kind};
}

} // namespace voro::mediakeys
