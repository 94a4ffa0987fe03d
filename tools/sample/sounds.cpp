// Makes the system sounds that the sound theme may lack, one WAV file each in a folder.

#include "Wav.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <numbers>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr unsigned SampleRate = 44100;
constexpr double Peak = 0.6;

/** One element of a sound: a tone that may glide, or a burst of noise where it has no frequency. Times are seconds. */
struct Element {
    double at;
    double length;
    double from = 0;
    double to = from;
    /** Share of the overtones, which fade sooner. */
    double colour = 0.2;
};

struct Sound {
    const char *name;
    std::vector<Element> elements;
};

/** A camera's shutter that opens and closes. */
std::vector<Element> shutters(int count)
{
    std::vector<Element> elements;
    for (int i = 0; i < count; ++i) {
        const double at = 0.13 * i;
        elements.push_back({at, 0.03});
        elements.push_back({at + 0.06, 0.05});
    }
    return elements;
}

const std::vector<Sound> Sounds{
    {"alarm_battery", {{0, 0.16, 880}, {0.24, 0.16, 880}, {0.48, 0.5, 587}}},
    {"event_browser_start", {{0, 0.09, 1100, 1700}}},
    {"event_camera_shutter", shutters(1)},
    {"event_device_lock", {{0, 0.015}, {0, 0.09, 700}, {0.08, 0.16, 467}}},
    {"event_device_unlock", {{0, 0.015}, {0, 0.09, 467}, {0.08, 0.16, 700}}},
    {"event_device_tether", {{0, 0.16, 523}, {0.1, 0.16, 659}, {0.2, 0.3, 784}}},
    {"event_device_untether", {{0, 0.16, 784}, {0.1, 0.16, 659}, {0.2, 0.3, 523}}},
    {"notification_general", {{0, 0.5, 988}, {0.12, 0.8, 1319}}},
    {"input_keypress", {{0, 0.012}, {0, 0.03, 2100}}},
    {"event_recording_start", {{0, 0.28, 587, 880, 0.05}}},
    {"event_recording_stop", {{0, 0.28, 880, 440, 0.05}}},
    {"notification_sapphire", {{0, 0.5, 1568, 1568, 0.5}, {0.09, 0.5, 1976, 1976, 0.5}, {0.18, 0.9, 2349, 2349, 0.5}}},
    {"system_master_volume_reference", {{0, 0.12, 1000}}},
    {"event_video_call",
     {{0, 0.2, 659}, {0.15, 0.2, 784}, {0.3, 0.2, 659}, {0.45, 0.4, 784}, {1, 0.2, 659}, {1.15, 0.4, 784}}},
    {"event_video_call_outgoing", {{0, 0.7, 425, 425, 0}, {1, 0.7, 425, 425, 0}}},
    {"event_camera_burst_sound", shutters(5)},
};

double tone(const Element &element, double time)
{
    const double glide = (element.to - element.from) / element.length;
    const double phase = 2 * std::numbers::pi * (element.from * time + glide * time * time / 2);
    const double fading = std::exp(-4 * time / element.length);
    return std::sin(phase) + element.colour * fading * (std::sin(2 * phase) + std::sin(3 * phase) / 2);
}

void add(std::vector<double> &samples, const Element &element, std::mt19937 &random)
{
    constexpr double Attack = 0.003;
    const auto first = static_cast<size_t>(element.at * SampleRate);
    const auto count = static_cast<size_t>(element.length * SampleRate);
    for (size_t i = 0; i < count; ++i) {
        const double time = static_cast<double>(i) / SampleRate;
        const double noise = 2 * static_cast<double>(random()) / static_cast<double>(std::mt19937::max()) - 1;
        const double value = element.from > 0 ? tone(element, time) : noise;
        const double left = 1 - time / element.length;
        samples[first + i] += value * std::min(1.0, time / Attack) * left * left;
    }
}

std::vector<double> synthesise(const Sound &sound)
{
    double length = 0;
    for (const Element &element : sound.elements) {
        length = std::max(length, element.at + element.length);
    }
    std::vector<double> samples(static_cast<size_t>(length * SampleRate) + 1);
    // The same noise whenever it is made.
    std::mt19937 random(1);
    for (const Element &element : sound.elements) {
        add(samples, element, random);
    }
    double highest = 0;
    for (const double sample : samples) {
        highest = std::max(highest, std::abs(sample));
    }
    for (double &sample : samples) {
        sample *= Peak / highest;
    }
    return samples;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: make-sounds FOLDER\n");
        return 2;
    }
    for (const Sound &sound : Sounds) {
        const std::string path = std::string(argv[1]) + '/' + sound.name + ".wav";
        const std::vector<double> samples = synthesise(sound);
        std::ofstream file(path, std::ios::binary);
        file << wav(SampleRate, std::array<std::span<const double>, 1>{samples});
        file.close();
        if (!file) {
            std::fprintf(stderr, "make-sounds: cannot write %s\n", path.c_str());
            return 1;
        }
    }
    return 0;
}
