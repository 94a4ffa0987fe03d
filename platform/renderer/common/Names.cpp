#include "Names.h"

#include <algorithm>
#include <array>

namespace voro::renderer {

namespace {

template<typename Value>
struct Name {
    Value value;
    std::string_view text;
};
// For compilers that do not deduce an aggregate's arguments: clang before 17.
template<typename Value>
Name(Value, std::string_view) -> Name<Value>;

template<typename Value, size_t Count>
std::optional<Value> find(const std::array<Name<Value>, Count> &names, std::string_view text)
{
    const auto found = std::ranges::find(names, text, &Name<Value>::text);
    return found == names.end() ? std::nullopt : std::optional(found->value);
}

constexpr std::array RepeatModes{
    Name{RepeatMode::None, "none"},
    Name{RepeatMode::Track, "track"},
    Name{RepeatMode::All, "all"},
};

constexpr std::array Presets{
    Name{Preset::Off, "off"},
    Name{Preset::Airplane, "airplane"},
    Name{Preset::BassBoost, "bassboost"},
    Name{Preset::TrebleBoost, "trebleboost"},
    Name{Preset::VoiceBoost, "voiceboost"},
    Name{Preset::BassLower, "basslower"},
    Name{Preset::TrebleLower, "treblelower"},
    Name{Preset::VoiceLower, "voicelower"},
    Name{Preset::Acoustic, "acoustic"},
    Name{Preset::Dance, "dance"},
    Name{Preset::Electronic, "electronic"},
    Name{Preset::HipHop, "hiphop"},
    Name{Preset::Jazz, "jazz"},
    Name{Preset::Lounge, "lounge"},
    Name{Preset::Piano, "piano"},
    Name{Preset::RhythmAndBlues, "randb"},
    Name{Preset::Rock, "rock"},
    Name{Preset::SpokenWord, "spokenword"},
};

} // namespace

std::optional<RepeatMode> parseRepeatMode(std::string_view name)
{
    return find(RepeatModes, name);
}

std::optional<Preset> parsePreset(std::string_view name)
{
    return find(Presets, name);
}

} // namespace voro::renderer
