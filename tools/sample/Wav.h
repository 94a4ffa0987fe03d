#pragma once

#include <cmath>
#include <cstdint>
#include <span>
#include <string>

/** Appends a number as so many bytes, the lowest first. */
inline void appendNumber(std::string &bytes, uint64_t value, int size)
{
    for (int i = 0; i < size; ++i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xff);
    }
}

/** A WAV file of 16-bit samples out of channels of one length, whose samples lie from -1 to 1. */
inline std::string wav(unsigned sampleRate, std::span<const std::span<const double>> channels)
{
    const size_t frameSize = 2 * channels.size();
    const uint64_t dataSize = channels.front().size() * frameSize;
    std::string bytes = "RIFF";
    appendNumber(bytes, 36 + dataSize, 4);
    bytes += "WAVEfmt ";
    appendNumber(bytes, 16, 4);
    appendNumber(bytes, 1, 2);
    appendNumber(bytes, channels.size(), 2);
    appendNumber(bytes, sampleRate, 4);
    appendNumber(bytes, sampleRate * frameSize, 4);
    appendNumber(bytes, frameSize, 2);
    appendNumber(bytes, 16, 2);
    bytes += "data";
    appendNumber(bytes, dataSize, 4);
    for (size_t i = 0; i < channels.front().size(); ++i) {
        for (const auto channel : channels) {
            appendNumber(bytes, static_cast<uint64_t>(std::lround(channel[i] * 32767)), 2);
        }
    }
    return bytes;
}
