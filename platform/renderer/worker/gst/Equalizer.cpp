#include "Equalizer.h"

#include <algorithm>
#include <array>

namespace voro::renderer {

namespace {

struct Setting {
    Preset preset;
    /** dB at 29, 59, 119, 237, 474, 947, 1889, 3770, 7523 and 15011 Hz. */
    std::array<double, 10> gains;
};

constexpr std::array Settings{
    Setting{Preset::Airplane, {-9, -8, -6, -3, 0, 3, 4, 4, 2, 0}},
    Setting{Preset::BassBoost, {7, 7, 6, 4, 2, 0, 0, 0, 0, 0}},
    Setting{Preset::TrebleBoost, {0, 0, 0, 0, 0, 1, 3, 5, 7, 7}},
    Setting{Preset::VoiceBoost, {-4, -3, -1, 1, 4, 6, 6, 4, 0, -2}},
    Setting{Preset::BassLower, {-12, -12, -9, -6, -3, 0, 0, 0, 0, 0}},
    Setting{Preset::TrebleLower, {0, 0, 0, 0, 0, -2, -5, -8, -12, -12}},
    Setting{Preset::VoiceLower, {0, 0, 0, -3, -7, -9, -9, -6, 0, 0}},
    Setting{Preset::Acoustic, {4, 4, 3, 1, 1, 1, 3, 3, 3, 2}},
    Setting{Preset::Dance, {3, 6, 4, 0, 1, 3, 4, 4, 3, 0}},
    Setting{Preset::Electronic, {4, 4, 1, 0, -2, 2, 1, 1, 4, 5}},
    Setting{Preset::HipHop, {5, 4, 1, 3, -1, -1, 1, -1, 2, 3}},
    Setting{Preset::Jazz, {4, 3, 1, 2, -2, -2, 0, 1, 3, 4}},
    Setting{Preset::Lounge, {-3, -2, -1, 1, 4, 3, 0, -2, 2, 1}},
    Setting{Preset::Piano, {3, 2, 0, 2, 3, 1, 3, 5, 3, 3}},
    Setting{Preset::RhythmAndBlues, {3, 7, 6, 1, -2, -1, 2, 3, 3, 4}},
    Setting{Preset::Rock, {5, 4, 3, 1, 0, -1, 1, 3, 4, 5}},
    Setting{Preset::SpokenWord, {-6, -2, 0, 1, 3, 5, 5, 4, 2, -1}},
};

constexpr std::array<double, 10> Flat{};

} // namespace

void setPreset(GstElement *equalizer, Preset preset)
{
    const auto *const found = std::ranges::find(Settings, preset, &Setting::preset);
    const auto &gains = found == Settings.end() ? Flat : found->gains;
    for (size_t band = 0; band < gains.size(); ++band) {
        g_object_set(equalizer, ("band" + std::to_string(band)).c_str(), gains[band], nullptr);
    }
}

} // namespace voro::renderer
