#include "WavHeader.h"

#include <cstring>
#include <limits>
#include <string_view>

namespace voro::renderer {

namespace {

constexpr uint64_t Largest = std::numeric_limits<uint32_t>::max();
constexpr uint32_t ReserveSize = 28;
constexpr uint32_t FormatSize = 16;

class Writer {
public:
    explicit Writer(WavHeader &header) : m_next(header.data()) {}

    Writer &text(std::string_view text)
    {
        std::memcpy(m_next, text.data(), text.size());
        m_next += text.size();
        return *this;
    }
    Writer &number(uint64_t value, int bytes)
    {
        for (int i = 0; i < bytes; ++i) {
            *m_next++ = static_cast<uint8_t>(value >> (8 * i));
        }
        return *this;
    }

private:
    uint8_t *m_next;
};

} // namespace

WavHeader wavHeader(const SampleSpec &spec, uint64_t dataSize)
{
    WavHeader header{};
    const uint64_t riffSize = header.size() - 8 + dataSize;
    const bool isLarge = riffSize > Largest;
    const auto rate = static_cast<uint32_t>(spec.rate);
    Writer writer(header);
    writer.text(isLarge ? "RF64" : "RIFF").number(isLarge ? Largest : riffSize, 4).text("WAVE");
    // The same room for the sizes of a large file or for nothing.
    writer.text(isLarge ? "ds64" : "JUNK").number(ReserveSize, 4);
    writer.number(isLarge ? riffSize : 0, 8).number(isLarge ? dataSize : 0, 8);
    writer.number(isLarge ? dataSize / spec.frameSize() : 0, 8).number(0, 4);
    writer.text("fmt ")
        .number(FormatSize, 4)
        .number(1, 2)
        .number(static_cast<uint32_t>(spec.channels), 2)
        .number(rate, 4);
    writer.number(static_cast<uint64_t>(rate) * spec.frameSize(), 4).number(spec.frameSize(), 2).number(16, 2);
    writer.text("data").number(isLarge ? Largest : dataSize, 4);
    return header;
}

} // namespace voro::renderer
