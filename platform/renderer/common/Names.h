#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

/* The words that stand for one of a few values, as applications and workers write them: one table for each kind. */

namespace voro::renderer {

/** The states of a context. */
enum class State { Idle, Stopped, Playing };

/** How an input is read. */
enum class InputType { AutoList, Playlist, Track };

/** The content of an output. */
enum class OutputType { Audio, Video, Captions, File };

/** The state of a medium's buffer. */
enum class BufferStatus { Idle, Buffering, Playing };

/** The part of a queue that is repeated. */
enum class RepeatMode { None, Track, All };

/** The presets of the equalizer. */
enum class Preset {
    Off,
    Airplane,
    BassBoost,
    TrebleBoost,
    VoiceBoost,
    BassLower,
    TrebleLower,
    VoiceLower,
    Acoustic,
    Dance,
    Electronic,
    HipHop,
    Jazz,
    Lounge,
    Piano,
    RhythmAndBlues,
    Rock,
    SpokenWord,
};

template<typename Value>
struct Name {
    Value value;
    std::string_view text;
};

template<typename Value>
inline constexpr auto Names = nullptr;

template<>
inline constexpr auto Names<State> = std::to_array<Name<State>>({
    {State::Idle, "idle"},
    {State::Stopped, "stopped"},
    {State::Playing, "playing"},
});

template<>
inline constexpr auto Names<InputType> = std::to_array<Name<InputType>>({
    {InputType::AutoList, "autolist"},
    {InputType::Playlist, "playlist"},
    {InputType::Track, "track"},
});

template<>
inline constexpr auto Names<OutputType> = std::to_array<Name<OutputType>>({
    {OutputType::Audio, "audio"},
    {OutputType::Video, "video"},
    {OutputType::Captions, "subpicture"},
    {OutputType::File, "file"},
});

template<>
inline constexpr auto Names<BufferStatus> = std::to_array<Name<BufferStatus>>({
    {BufferStatus::Idle, "idle"},
    {BufferStatus::Buffering, "buffering"},
    {BufferStatus::Playing, "playing"},
});

template<>
inline constexpr auto Names<RepeatMode> = std::to_array<Name<RepeatMode>>({
    {RepeatMode::None, "none"},
    {RepeatMode::Track, "track"},
    {RepeatMode::All, "all"},
});

template<>
inline constexpr auto Names<Preset> = std::to_array<Name<Preset>>({
    {Preset::Off, "off"},
    {Preset::Airplane, "airplane"},
    {Preset::BassBoost, "bassboost"},
    {Preset::TrebleBoost, "trebleboost"},
    {Preset::VoiceBoost, "voiceboost"},
    {Preset::BassLower, "basslower"},
    {Preset::TrebleLower, "treblelower"},
    {Preset::VoiceLower, "voicelower"},
    {Preset::Acoustic, "acoustic"},
    {Preset::Dance, "dance"},
    {Preset::Electronic, "electronic"},
    {Preset::HipHop, "hiphop"},
    {Preset::Jazz, "jazz"},
    {Preset::Lounge, "lounge"},
    {Preset::Piano, "piano"},
    {Preset::RhythmAndBlues, "randb"},
    {Preset::Rock, "rock"},
    {Preset::SpokenWord, "spokenword"},
});

template<typename Value>
concept Named = requires { Names<Value>.size(); };

/** The value of that name, if there is one. */
template<Named Value>
std::optional<Value> parseName(std::string_view text)
{
    const auto found = std::ranges::find(Names<Value>, text, &Name<Value>::text);
    return found == Names<Value>.end() ? std::nullopt : std::optional(found->value);
}

template<Named Value>
std::string_view nameOf(Value value)
{
    return std::ranges::find(Names<Value>, value, &Name<Value>::value)->text;
}

} // namespace voro::renderer
