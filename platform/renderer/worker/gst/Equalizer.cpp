#include "Equalizer.h"

#include <algorithm>
#include <array>

namespace voro::renderer {

namespace {

struct Preset {
    std::string_view name;
    /** dB at 29, 59, 119, 237, 474, 947, 1889, 3770, 7523 and 15011 Hz. */
    std::array<double, 10> gains;
};

constexpr std::array Presets{
    Preset{"airplane", {-9, -8, -6, -3, 0, 3, 4, 4, 2, 0}},
    Preset{"bassboost", {7, 7, 6, 4, 2, 0, 0, 0, 0, 0}},
    Preset{"trebleboost", {0, 0, 0, 0, 0, 1, 3, 5, 7, 7}},
    Preset{"voiceboost", {-4, -3, -1, 1, 4, 6, 6, 4, 0, -2}},
    Preset{"basslower", {-12, -12, -9, -6, -3, 0, 0, 0, 0, 0}},
    Preset{"treblelower", {0, 0, 0, 0, 0, -2, -5, -8, -12, -12}},
    Preset{"voicelower", {0, 0, 0, -3, -7, -9, -9, -6, 0, 0}},
    Preset{"acoustic", {4, 4, 3, 1, 1, 1, 3, 3, 3, 2}},
    Preset{"dance", {3, 6, 4, 0, 1, 3, 4, 4, 3, 0}},
    Preset{"electronic", {4, 4, 1, 0, -2, 2, 1, 1, 4, 5}},
    Preset{"hiphop", {5, 4, 1, 3, -1, -1, 1, -1, 2, 3}},
    Preset{"jazz", {4, 3, 1, 2, -2, -2, 0, 1, 3, 4}},
    Preset{"lounge", {-3, -2, -1, 1, 4, 3, 0, -2, 2, 1}},
    Preset{"piano", {3, 2, 0, 2, 3, 1, 3, 5, 3, 3}},
    Preset{"randb", {3, 7, 6, 1, -2, -1, 2, 3, 3, 4}},
    Preset{"rock", {5, 4, 3, 1, 0, -1, 1, 3, 4, 5}},
    Preset{"spokenword", {-6, -2, 0, 1, 3, 5, 5, 4, 2, -1}},
};

constexpr std::array<double, 10> Flat{};

} // namespace

void setPreset(GstElement *equalizer, std::string_view preset)
{
    const auto found =
        std::find_if(Presets.begin(), Presets.end(), [&](const Preset &known) { return known.name == preset; });
    const auto &gains = found == Presets.end() ? Flat : found->gains;
    for (size_t band = 0; band < gains.size(); ++band) {
        g_object_set(equalizer, ("band" + std::to_string(band)).c_str(), gains[band], nullptr);
    }
}

} // namespace voro::renderer
