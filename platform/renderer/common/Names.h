#pragma once

#include <optional>
#include <string_view>

/* The words of parameters that stand for one of a few values, as applications write them. */

namespace voro::renderer {

/** What is played again at its end. */
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

std::optional<RepeatMode> parseRepeatMode(std::string_view name);
std::optional<Preset> parsePreset(std::string_view name);

} // namespace voro::renderer
