#include "Mp3Length.h"

#include <renderer/common/OpenLocal.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace voro::renderer {

namespace {

struct Frame {
    long size;
    int rate;
    int samples;
};

/** In kbit/s, for version 1 and for the versions with lower rates. */
constexpr std::array<std::array<int, 15>, 2> BitRates{{
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
}};

/** Follows the header of the first frame when the encoder has counted the frames. */
constexpr std::array<std::string_view, 3> Counts{"Xing", "Info", "VBRI"};
/** How far into the first frame such a count may be. */
constexpr size_t CountRange = 200;

/** How far behind the count the delays are: the encoder's name and settings stand between them. */
constexpr size_t DelaysBehindCount = 21;
/** The encoder whose delays GStreamer's parser cuts off itself. */
constexpr std::string_view CutByParser = "LAME";
/** Every decoder of this kind is late by as many samples. */
constexpr int64_t DecoderDelay = 529;

using Header = std::array<unsigned char, 10>;

std::optional<Frame> frameOf(const Header &header)
{
    if (header[0] != 0xff || (header[1] & 0xe0) != 0xe0) {
        return std::nullopt;
    }
    const unsigned version = header[1] >> 3 & 3;
    const unsigned layer = header[1] >> 1 & 3;
    const unsigned bitRate = header[2] >> 4;
    const unsigned rate = header[2] >> 2 & 3;
    const unsigned padding = header[2] >> 1 & 1;
    constexpr unsigned Reserved = 1;
    constexpr unsigned LayerThree = 1;
    constexpr unsigned VersionOne = 3;
    if (version == Reserved || layer != LayerThree || bitRate == 0 || bitRate == 15 || rate == 3) {
        return std::nullopt;
    }
    const bool isFull = version == VersionOne;
    constexpr std::array<int, 3> Rates{44100, 48000, 32000};
    // By version: 2.5, the reserved one, 2 and 1.
    constexpr std::array<int, 4> Divisors{4, 1, 2, 1};
    const int frequency = Rates[rate] / Divisors[version];
    const int samples = isFull ? 1152 : 576;
    const int kilobits = BitRates[isFull ? 0 : 1][bitRate];
    return Frame{samples / 8L * kilobits * 1000 / frequency + static_cast<long>(padding), frequency, samples};
}

/** The header at a place; zeros behind the end. */
Header headerAt(const LocalFile &file, int64_t place)
{
    Header header{};
    std::ranges::copy(file.at(place, header.size()), header.begin());
    return header;
}

/** Behind the tags that may stand before a frame. */
int64_t behindTags(const LocalFile &file, int64_t place)
{
    constexpr unsigned HasFooter = 0x10;
    for (Header tag = headerAt(file, place); tag[0] == 'I' && tag[1] == 'D' && tag[2] == '3';
         tag = headerAt(file, place)) {
        const int64_t size = (tag[6] & 127) << 21 | (tag[7] & 127) << 14 | (tag[8] & 127) << 7 | (tag[9] & 127);
        place += static_cast<int64_t>(tag.size() * ((tag[5] & HasFooter) != 0 ? 2 : 1)) + size;
    }
    return place;
}

/** Where frames go on behind tags, as in files that were joined, or behind damage; nothing when they do not. */
std::optional<int64_t> nextFrame(const LocalFile &file, int64_t place)
{
    constexpr int64_t MostDamage = 1 << 20;
    // Breaks are mostly short, and there may be many.
    constexpr size_t PieceSize = 16 << 10;
    place = behindTags(file, place);
    for (const int64_t end = place + MostDamage; place < end; place += PieceSize) {
        const std::string piece = file.at(place, PieceSize);
        for (size_t at = piece.find('\xff'); at != std::string::npos; at = piece.find('\xff', at + 1)) {
            const int64_t found = place + static_cast<int64_t>(at);
            const auto frame = frameOf(headerAt(file, found));
            const auto following = frame ? frameOf(headerAt(file, found + frame->size)) : std::nullopt;
            if (following && following->rate == frame->rate) {
                return found;
            }
        }
        if (piece.size() < PieceSize) {
            break;
        }
    }
    return std::nullopt;
}

unsigned bytesAt(std::string_view text, size_t place, size_t size)
{
    unsigned value = 0;
    for (const char byte : text.substr(place, size)) {
        value = value << 8 | static_cast<unsigned char>(byte);
    }
    return value;
}

} // namespace

std::optional<Mp3Sound> mp3Sound(const std::string &path)
{
    const LocalFile::Shared file = openLocal(path);
    const int64_t place = behindTags(*file, 0);
    const auto first = frameOf(headerAt(*file, place));
    if (!first) {
        return std::nullopt;
    }
    const std::string head = file->at(place, CountRange);
    const size_t count = std::min(head.find("Xing"), head.find("Info"));
    // All four parts of the count: how many frames and bytes, a table, the quality.
    constexpr size_t PartSizes = 4 + 4 + 100 + 4;
    constexpr unsigned AllParts = 15;
    const size_t delays = count + 8 + PartSizes + DelaysBehindCount;
    if (count == std::string::npos || head.size() < delays + 3
        || (bytesAt(head, count + 4, 4) & AllParts) != AllParts) {
        return std::nullopt;
    }
    if (std::string_view(head).substr(count + 8 + PartSizes).starts_with(CutByParser)) {
        return std::nullopt;
    }
    const int64_t frames = bytesAt(head, count + 8, 4);
    const unsigned both = bytesAt(head, delays, 3);
    const int64_t before = both >> 12;
    const int64_t behind = both & 0xfff;
    const Mp3Sound sound{before + DecoderDelay, frames * first->samples - before - behind, first->rate};
    return both != 0 && sound.count > 0 ? std::optional(sound) : std::nullopt;
}

bool isMp3(const std::string &path)
{
    const LocalFile::Shared file = openLocal(path);
    const int64_t place = behindTags(*file, 0);
    const auto first = frameOf(headerAt(*file, place));
    return first && frameOf(headerAt(*file, place + first->size));
}

std::optional<int64_t> mp3Length(const std::string &path)
{
    const LocalFile::Shared file = openLocal(path);
    int64_t place = behindTags(*file, 0);
    const auto first = frameOf(headerAt(*file, place));
    if (!first || !frameOf(headerAt(*file, place + first->size))) {
        return std::nullopt;
    }
    const std::string head = file->at(place, CountRange);
    for (const std::string_view count : Counts) {
        if (head.find(count) != std::string::npos) {
            return std::nullopt;
        }
    }
    double seconds = 0;
    for (std::optional<int64_t> next = place; next; next = nextFrame(*file, place)) {
        place = *next;
        while (const auto frame = frameOf(headerAt(*file, place))) {
            seconds += static_cast<double>(frame->samples) / frame->rate;
            place += frame->size;
        }
    }
    return static_cast<int64_t>(seconds * 1000);
}

} // namespace voro::renderer
