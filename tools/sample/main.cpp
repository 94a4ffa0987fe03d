// Makes the sample that `voro play` plays without arguments: eight bars for pad, harp, bass and bells, as a WAV file.

#include "Wav.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <numbers>
#include <vector>

namespace {

constexpr int SampleRate = 44100;
constexpr double BeatsPerMinute = 108;
constexpr double Beat = 60 / BeatsPerMinute;
constexpr double Length = 32 * Beat + 2;
constexpr double Peak = 0.7;

struct Stereo {
    std::vector<double> left = std::vector<double>(static_cast<size_t>(Length * SampleRate));
    std::vector<double> right = left;
};

/** What a voice sounds like: partials with their strengths, how they fade, and how the tone begins and ends. */
struct Voice {
    std::vector<double> partials;
    /** How much faster each higher partial fades, per partial; 0 keeps the colour. */
    double dulling;
    /** Seconds until a struck tone has faded to a third; 0 holds it. */
    double decay;
    double attack;
    double release;
    double gain;
};

const Voice Pad{{1, 0.35, 0.22, 0.1, 0.05}, 0, 0, 0.5, 0.9, 0.05};
const Voice Harp{{1, 0.5, 0.28, 0.16, 0.08, 0.05}, 0.9, 0.55, 0.004, 0.25, 0.1};
const Voice Bass{{1, 0.3, 0.08}, 0.4, 1.6, 0.02, 0.2, 0.2};
const Voice Bell{{1, 0.12, 0, 0.3, 0, 0.06}, 1.4, 0.9, 0.006, 0.5, 0.2};

double frequency(int midiNote)
{
    return 440 * std::pow(2.0, (midiNote - 69) / 12.0);
}

/** The loudness at a time within a tone that is held for `held` seconds. */
double envelope(const Voice &voice, double time, double held)
{
    const double rise = std::min(1.0, time / voice.attack);
    const double fall = time < held ? 1.0 : std::max(0.0, 1 - (time - held) / voice.release);
    const double fade = voice.decay > 0 ? std::exp(-time / voice.decay) : 1.0;
    return rise * rise * (3 - 2 * rise) * fall * fall * fade;
}

/** Adds one tone. `pan` goes from 0 (left) to 1 (right). */
void play(Stereo &mix, const Voice &voice, int midiNote, double beat, double beats, double loudness, double pan)
{
    const double held = beats * Beat;
    const auto first = static_cast<size_t>(beat * Beat * SampleRate);
    const auto count = std::min(mix.left.size() - first, static_cast<size_t>((held + voice.release) * SampleRate));
    const double toLeft = std::cos(pan * std::numbers::pi / 2) * voice.gain * loudness;
    const double toRight = std::sin(pan * std::numbers::pi / 2) * voice.gain * loudness;
    const double step = 2 * std::numbers::pi * frequency(midiNote) / SampleRate;
    for (size_t i = 0; i < count; ++i) {
        const double time = static_cast<double>(i) / SampleRate;
        double value = 0;
        for (size_t partial = 0; partial < voice.partials.size(); ++partial) {
            const double colour = std::exp(-time * voice.dulling * static_cast<double>(partial));
            value += voice.partials[partial] * colour
                     * std::sin(step * static_cast<double>(partial + 1) * static_cast<double>(i));
        }
        value *= envelope(voice, time, held);
        mix.left[first + i] += toLeft * value;
        mix.right[first + i] += toRight * value;
    }
}

struct Bar {
    int bass;
    std::array<int, 4> chord;
};

// D, A over C sharp, B minor seventh, G major seventh; then D over F sharp, E minor seventh, G with A, and home.
constexpr std::array<Bar, 8> Bars{{
    {38, {62, 66, 69, 76}},
    {37, {61, 64, 69, 76}},
    {35, {62, 66, 69, 74}},
    {43, {62, 66, 67, 71}},
    {42, {62, 66, 69, 74}},
    {40, {62, 64, 67, 71}},
    {43, {61, 64, 67, 69}},
    {38, {62, 66, 69, 74}},
}};

struct Tone {
    double beat;
    double beats;
    int note;
};

constexpr std::array Melody{
    Tone{4, 1.5, 81},  Tone{5.5, 0.5, 78},  Tone{6, 2, 76},      Tone{8, 1, 78},  Tone{9, 1, 81},
    Tone{10, 2, 86},   Tone{12, 1.5, 85},   Tone{13.5, 0.5, 83}, Tone{14, 2, 78}, Tone{16, 1, 81},
    Tone{17, 0.5, 78}, Tone{17.5, 2.5, 74}, Tone{20, 1, 76},     Tone{21, 1, 79}, Tone{22, 2, 83},
    Tone{24, 1, 81},   Tone{25, 1, 79},     Tone{26, 1, 78},     Tone{27, 1, 76}, Tone{28, 4, 74},
};

void compose(Stereo &mix)
{
    for (size_t bar = 0; bar < Bars.size(); ++bar) {
        const double start = 4 * static_cast<double>(bar);
        const bool last = bar + 1 == Bars.size();
        for (size_t i = 0; i < 4; ++i) {
            const double pan = 0.2 + 0.2 * static_cast<double>(i);
            // An octave below, on the other side and softly, gives the pad its width.
            play(mix, Pad, Bars[bar].chord[i], start, 4, 1, pan);
            play(mix, Pad, Bars[bar].chord[i] - 12, start, 4, 0.5, 1 - pan);
        }
        play(mix, Bass, Bars[bar].bass, start, last ? 4 : 2.8, 1, 0.5);
        if (!last) {
            play(mix, Bass, Bars[bar].bass + 12, start + 3, 0.9, 0.5, 0.5);
        }
        constexpr std::array<size_t, 8> Figure{0, 1, 2, 3, 2, 1, 2, 1};
        for (size_t i = 0; i < (last ? 4 : Figure.size()); ++i) {
            play(mix, Harp, Bars[bar].chord[Figure[i]] + (last ? 12 : 0), start + 0.5 * static_cast<double>(i),
                 last ? 2 : 0.5, i % 4 == 0 ? 1 : 0.7, 0.3 + 0.4 * static_cast<double>(i % 2));
        }
    }
    for (const Tone &tone : Melody) {
        play(mix, Bell, tone.note, tone.beat, tone.beats, 1, 0.55);
    }
}

/** A delay line that feeds back into itself. */
class Delay {
public:
    explicit Delay(size_t samples) : m_line(samples) {}

    /** Echoes that grow duller, as a room's walls return them. */
    double comb(double in, double feedback)
    {
        const double out = m_line[m_at];
        m_dull = 0.7 * out + 0.3 * m_dull;
        push(in + feedback * m_dull);
        return out;
    }

    double allPass(double in)
    {
        const double delayed = m_line[m_at];
        push(in + 0.5 * delayed);
        return delayed - 0.5 * in;
    }

private:
    void push(double value)
    {
        m_line[m_at] = value;
        m_at = (m_at + 1) % m_line.size();
    }

    std::vector<double> m_line;
    size_t m_at = 0;
    double m_dull = 0;
};

void reverberate(std::vector<double> &channel, size_t spread)
{
    std::array combs{Delay(1557 + spread), Delay(1617 + spread), Delay(1491 + spread), Delay(1422 + spread)};
    std::array allPasses{Delay(225 + spread), Delay(556 + spread)};
    for (double &sample : channel) {
        double wet = 0;
        for (Delay &comb : combs) {
            wet += comb.comb(sample, 0.82) / 4;
        }
        for (Delay &allPass : allPasses) {
            wet = allPass.allPass(wet);
        }
        sample += 0.3 * wet;
    }
}

void normalise(Stereo &mix)
{
    double highest = 0;
    for (const auto *channel : {&mix.left, &mix.right}) {
        for (double sample : *channel) {
            highest = std::max(highest, std::abs(sample));
        }
    }
    for (auto *channel : {&mix.left, &mix.right}) {
        for (double &sample : *channel) {
            sample *= Peak / highest;
        }
    }
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: make-sample FILE.wav\n");
        return 2;
    }
    Stereo mix;
    compose(mix);
    reverberate(mix.left, 0);
    reverberate(mix.right, 23);
    normalise(mix);
    std::ofstream file(argv[1], std::ios::binary);
    file << wav(SampleRate, std::array<std::span<const double>, 2>{mix.left, mix.right});
    file.close();
    if (!file) {
        std::fprintf(stderr, "make-sample: cannot write %s\n", argv[1]);
        return 1;
    }
    return 0;
}
