#include "Tone.h"

#include <cmath>
#include <numbers>
#include <span>

namespace tone {

namespace {

constexpr double Rate = 48'000;

std::span<const qint16> toSamples(const QByteArray &bytes)
{
    return {reinterpret_cast<const qint16 *>(bytes.constData()), static_cast<size_t>(bytes.size()) / 2};
}

} // namespace

double share(const QByteArray &bytes, double frequency)
{
    const auto samples = toSamples(bytes);
    const double step = 2 * std::numbers::pi * frequency / Rate;
    double real = 0;
    double imaginary = 0;
    double power = 0;
    for (size_t i = 0; i < samples.size(); ++i) {
        const double value = samples[i];
        real += value * std::cos(step * static_cast<double>(i));
        imaginary += value * std::sin(step * static_cast<double>(i));
        power += value * value;
    }
    if (power == 0) {
        return 0;
    }
    return 2 * (real * real + imaginary * imaginary) / (power * static_cast<double>(samples.size()));
}

qsizetype firstSound(const QByteArray &bytes, int threshold)
{
    const auto samples = toSamples(bytes);
    for (size_t i = 0; i < samples.size(); ++i) {
        if (std::abs(samples[i]) > threshold) {
            return static_cast<qsizetype>(i);
        }
    }
    return -1;
}

} // namespace tone
