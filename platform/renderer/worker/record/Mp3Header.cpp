#include "Mp3Header.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace voro::renderer {

namespace {

constexpr size_t FrameHeaderLength = 4;
/** The frame has room for all of it at 64 kbit/s, at every rate. */
constexpr unsigned BitRate = 64'000;
/** Which of its four parts the count has: frames, bytes, the table of places, the quality. */
constexpr uint64_t AllParts = 15;
constexpr size_t Places = 100;
constexpr size_t MostPlaces = 1'000;
constexpr uint64_t MostDelay = 0xfff;
/** The encoder's name and what it says of itself, which no player needs, up to the delays. */
constexpr std::string_view Encoder = "LAME3.100";
constexpr size_t EncoderSettings = 12;

void write(uint8_t *&next, uint64_t number, size_t size)
{
    for (size_t i = size; i > 0; --i) {
        *next++ = static_cast<uint8_t>(number >> (8 * (i - 1)));
    }
}

void write(uint8_t *&next, std::string_view text)
{
    next = std::copy(text.begin(), text.end(), next);
}

} // namespace

void Mp3Header::begin(std::span<const uint8_t> frame)
{
    *this = {};
    std::copy_n(frame.begin(), std::min(frame.size(), m_first.size()), m_first.begin());
}

void Mp3Header::add(uint64_t size)
{
    if (m_frames % m_step == 0) {
        m_places.push_back(m_bytes);
    }
    ++m_frames;
    m_bytes += size;
    if (m_places.size() > MostPlaces) {
        // Every other one is enough for so long a file.
        for (size_t i = 0; 2 * i < m_places.size(); ++i) {
            m_places[i] = m_places[2 * i];
        }
        m_places.resize((m_places.size() + 1) / 2);
        m_step *= 2;
    }
}

std::vector<uint8_t> Mp3Header::bytes(uint64_t samples, int delay) const
{
    constexpr unsigned FirstVersion = 3;
    constexpr unsigned Mono = 3;
    constexpr std::array<unsigned, 4> Rates{44'100, 48'000, 32'000, 44'100};
    if (m_first[0] == 0) {
        return {};
    }
    const unsigned version = m_first[1] >> 3 & 3;
    const bool isFull = version == FirstVersion;
    const bool isMono = m_first[3] >> 6 == Mono;
    // By version: 2.5, the reserved one (never written), 2 and 1.
    constexpr std::array<unsigned, 4> Divisors{4, 1, 2, 1};
    const unsigned rate = Rates[m_first[2] >> 2 & 3] / Divisors[version];
    const unsigned samplesPerFrame = isFull ? 1152 : 576;
    std::vector<uint8_t> frame(samplesPerFrame / 8 * BitRate / rate);

    std::copy(m_first.begin(), m_first.end(), frame.begin());
    frame[1] |= 1;
    frame[2] = static_cast<uint8_t>((isFull ? 5 : 8) << 4 | (m_first[2] & 0x0c));
    const size_t longSideInformation = isMono ? 17 : 32;
    const size_t shortSideInformation = isMono ? 9 : 17;
    const size_t sideInformation = isFull ? longSideInformation : shortSideInformation;

    uint8_t *next = frame.data() + FrameHeaderLength + sideInformation;
    write(next, "Xing");
    write(next, AllParts, 4);
    write(next, m_frames, 4);
    write(next, m_bytes + frame.size(), 4);
    writePlaces(next, frame.size());
    next += Places;
    write(next, 0, 4);
    write(next, Encoder);
    next += EncoderSettings;
    const auto before = static_cast<uint64_t>(delay);
    const uint64_t coded = m_frames * samplesPerFrame;
    const bool isComplete = samples != Unknown && coded > samples + before;
    const uint64_t behind = isComplete ? std::min(coded - samples - before, MostDelay) : 0;
    write(next, before << 12 | behind, 3);
    return frame;
}

/** For each hundredth of the time, the 256th of the file at which it begins. */
void Mp3Header::writePlaces(uint8_t *table, size_t size) const
{
    for (size_t i = 0; i < Places && m_frames > 0; ++i) {
        const uint64_t place = m_places[i * m_frames / Places / m_step] + size;
        table[i] = static_cast<uint8_t>(place * 256 / (m_bytes + size));
    }
}

} // namespace voro::renderer
