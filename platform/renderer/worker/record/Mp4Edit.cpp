#include "Mp4Edit.h"

#include <algorithm>
#include <string_view>

namespace voro::renderer {

namespace {

constexpr size_t AtomHead = 8;
// Places in atoms, behind their heads; the first version has 32 bits for a time.
constexpr size_t TimeScale = 12;
constexpr size_t MovieDuration = 16;
constexpr size_t TrackDuration = 20;
constexpr size_t EditDuration = 8;
constexpr size_t EditStart = 12;

uint32_t number(std::span<const uint8_t> bytes, size_t place)
{
    uint32_t value = 0;
    for (const uint8_t byte : bytes.subspan(place, 4)) {
        value = value << 8 | byte;
    }
    return value;
}

void setNumber(std::span<uint8_t> bytes, size_t place, uint64_t value)
{
    for (size_t i = 0; i < 4; ++i) {
        bytes[place + i] = static_cast<uint8_t>(value >> (24 - 8 * i));
    }
}

/** The content of the first atom of that type; empty without one, or when it is too short for its times. */
std::span<uint8_t> inside(std::span<uint8_t> atoms, std::string_view type)
{
    while (atoms.size() >= AtomHead) {
        const uint32_t size = number(atoms, 0);
        if (size < AtomHead || size > atoms.size()) {
            break;
        }
        if (std::equal(type.begin(), type.end(), atoms.begin() + 4)) {
            return atoms.subspan(AtomHead, size - AtomHead);
        }
        atoms = atoms.subspan(size);
    }
    return {};
}

/** Whether an atom has so many bytes and is of the first version. */
bool isPlain(std::span<const uint8_t> atom, size_t size)
{
    return atom.size() >= size && atom[0] == 0;
}

} // namespace

bool isMp4Index(std::span<const uint8_t> bytes)
{
    constexpr std::string_view Type = "moov";
    return bytes.size() >= AtomHead && number(bytes, 0) == bytes.size()
           && std::equal(Type.begin(), Type.end(), bytes.begin() + 4);
}

void setMp4Edit(std::span<uint8_t> index, uint64_t delay, uint64_t samples)
{
    const auto parts = inside(index, "moov");
    const auto movie = inside(parts, "mvhd");
    const auto track = inside(parts, "trak");
    const auto head = inside(track, "tkhd");
    const auto edit = inside(inside(track, "edts"), "elst");
    const auto media = inside(inside(track, "mdia"), "mdhd");
    const bool isKnown = isPlain(movie, MovieDuration + 4) && isPlain(head, TrackDuration + 4)
                         && isPlain(edit, EditStart + 4) && isPlain(media, TimeScale + 4);
    if (!isKnown || number(media, TimeScale) == 0) {
        return;
    }
    setNumber(edit, EditStart, delay);
    if (!inside(parts, "mvex").empty()) {
        setNumber(edit, EditDuration, 0);
        return;
    }
    const uint64_t rate = number(media, TimeScale);
    const uint64_t duration = (samples * number(movie, TimeScale) + rate / 2) / rate;
    setNumber(edit, EditDuration, duration);
    setNumber(head, TrackDuration, duration);
    setNumber(movie, MovieDuration, duration);
}

} // namespace voro::renderer
