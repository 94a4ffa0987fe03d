#include "FileFormat.h"

#include "Mp3Length.h"

#include <renderer/common/OpenLocal.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace voro::renderer {

namespace {

constexpr size_t HeadSize = 4096;

/** Less, or nothing, where the text ends before. */
std::string_view part(std::string_view text, size_t place, size_t size)
{
    return place < text.size() ? text.substr(place, size) : std::string_view();
}

uint64_t littleEndian(std::string_view bytes, size_t place, size_t size)
{
    uint64_t value = 0;
    const std::string_view number = part(bytes, place, size);
    for (auto byte = number.rbegin(); byte != number.rend(); ++byte) {
        value = value << 8 | static_cast<unsigned char>(*byte);
    }
    return value;
}

uint64_t bigEndian(std::string_view bytes, size_t place, size_t size)
{
    uint64_t value = 0;
    for (const char byte : part(bytes, place, size)) {
        value = value << 8 | static_cast<unsigned char>(byte);
    }
    return value;
}

/** Samples as they are, integers or floats. */
bool isPlainWav(std::string_view head)
{
    constexpr unsigned Integers = 1;
    constexpr unsigned Floats = 3;
    constexpr unsigned Extensible = 0xfffe;
    constexpr size_t SubFormat = 24;
    const size_t format = head.find("fmt ");
    if (part(head, 8, 4) != "WAVE" || format == std::string_view::npos) {
        return false;
    }
    const size_t content = format + 8;
    const uint64_t tag = littleEndian(head, content, 2);
    const uint64_t kind = tag == Extensible ? littleEndian(head, content + SubFormat, 2) : tag;
    return kind == Integers || kind == Floats;
}

FileFormat oggFormat(std::string_view head, const LocalFile &file)
{
    constexpr std::string_view Page = "OggS";
    constexpr size_t LargestPage = 65'307;
    constexpr size_t Flags = 5;
    constexpr unsigned BeginsStream = 2;
    constexpr size_t Serial = 14;
    constexpr size_t SerialSize = 4;
    const size_t segments = littleEndian(head, 26, 1);
    const std::string_view packet = part(head, 27 + segments, head.size());
    // One stream from the beginning to the end: no second one begins with it, and the last page is its own.
    const size_t second = head.find(Page, Page.size());
    const std::string tail = file.lastBytes(LargestPage);
    const size_t last = tail.rfind(Page);
    if (second == std::string_view::npos || (littleEndian(head, second + Flags, 1) & BeginsStream) != 0
        || last == std::string::npos || part(tail, last + Serial, SerialSize) != part(head, Serial, SerialSize)) {
        return FileFormat::Other;
    }
    if (packet.starts_with("\x01vorbis")) {
        return FileFormat::OggVorbis;
    }
    return packet.starts_with("OpusHead") ? FileFormat::OggOpus : FileFormat::Other;
}

FileFormat mp3Format(const std::string &path, bool isTagged, const LocalFile &file)
{
    constexpr size_t TailSize = 160;
    const std::string tail = file.lastBytes(TailSize);
    if (tail.find("APETAGEX") != std::string::npos || !isMp3(path)) {
        return FileFormat::Other;
    }
    const bool isTaggedBehind = tail.size() == TailSize && part(tail, TailSize - 128, 3) == "TAG";
    return isTagged || isTaggedBehind ? FileFormat::TaggedMp3 : FileFormat::Mp3;
}

/** The box that describes all streams, empty when it is not found. */
std::string movieBox(const LocalFile &file)
{
    constexpr uint64_t Largest = 4 << 20;
    constexpr size_t HeaderSize = 8;
    constexpr int MostBoxes = 100;
    int64_t place = 0;
    for (int i = 0; i < MostBoxes; ++i) {
        const std::string header = file.at(place, 2 * HeaderSize);
        const uint64_t size = bigEndian(header, 0, 4);
        const uint64_t whole = size == 1 ? bigEndian(header, HeaderSize, 8) : size;
        if (header.size() < HeaderSize || whole < HeaderSize || whole > INT64_MAX / 2) {
            break;
        }
        if (part(header, 4, 4) == "moov") {
            return whole <= Largest ? file.at(place, whole) : std::string();
        }
        place += static_cast<int64_t>(whole);
    }
    return {};
}

/** Nothing but one stream of sound. */
bool isPlainMp4(const LocalFile &file)
{
    constexpr std::string_view Handler = "hdlr";
    constexpr size_t Kind = 12;
    const std::string box = movieBox(file);
    int sounds = 0;
    for (size_t place = box.find(Handler); place != std::string::npos; place = box.find(Handler, place + 1)) {
        const std::string_view kind = part(box, place + Kind, 4);
        if (kind == "soun") {
            ++sounds;
        } else if (kind != "mdir" && kind != "mdta") {
            return false;
        }
    }
    return sounds == 1 && box.find("mp4a") != std::string::npos;
}

/** As it is, or as discs have it: with a time before each packet. */
bool isTransportStream(std::string_view head)
{
    constexpr char Sync = 0x47;
    constexpr size_t Packets = 5;
    for (const auto &[first, size] : {std::pair<size_t, size_t>(0, 188), std::pair<size_t, size_t>(4, 192)}) {
        size_t found = 0;
        while (found < Packets && part(head, first + found * size, 1) == std::string_view(&Sync, 1)) {
            ++found;
        }
        if (found == Packets) {
            return true;
        }
    }
    return false;
}

} // namespace

FileFormat fileFormat(const std::string &path)
{
    const LocalFile::Shared file = openLocal(path);
    const std::string head = file->at(0, HeadSize);
    const std::string_view view(head);
    if (view.starts_with("RIFF") || view.starts_with("RF64")) {
        return isPlainWav(view) ? FileFormat::Wav : FileFormat::Other;
    }
    if (view.starts_with("fLaC")) {
        return FileFormat::Flac;
    }
    if (view.starts_with("OggS")) {
        return oggFormat(view, *file);
    }
    if (part(view, 4, 4) == "ftyp") {
        return isPlainMp4(*file) ? FileFormat::Mp4Aac : FileFormat::Other;
    }
    const bool isTagged = view.starts_with("ID3");
    return isTagged || view.starts_with('\xff') ? mp3Format(path, isTagged, *file) : FileFormat::Other;
}

bool isReadBestByLibavformat(const std::string &path)
{
    const std::string head = openLocal(path)->at(0, HeadSize);
    const std::string_view view(head);
    const bool isAiff = view.starts_with("FORM") && part(view, 8, 3) == "AIF";
    const bool isCodedWav = view.starts_with("RIFF") && part(view, 8, 4) == "WAVE" && !isPlainWav(view);
    const auto hasMark = [&](const std::string_view &mark) { return view.starts_with(mark); };
    // AU, W64, and recordings of television, which are taken for the pictures in them.
    constexpr std::array<std::string_view, 3> Marks{".snd", "riff\x2e\x91\xcf\x11",
                                                    std::string_view("\xb7\xd8\x00\x20\x37\x49", 6)};
    return isAiff || isCodedWav || std::ranges::any_of(Marks, hasMark);
}

bool hasGuessedLength(const std::string &path)
{
    using namespace std::string_view_literals;
    constexpr size_t DescriptionSize = 64 << 10;
    constexpr std::string_view Matroska = "\x1a\x45\xdf\xa3";
    // The duration, as a number of eight or four bytes.
    constexpr std::array Durations{"\x44\x89\x88"sv, "\x44\x89\x84"sv};
    const std::string head = openLocal(path)->at(0, DescriptionSize);
    const auto isInHead = [&head](std::string_view mark) { return head.find(mark) != std::string::npos; };
    if (head.starts_with(Matroska)) {
        return std::ranges::none_of(Durations, isInHead);
    }
    const bool isFragmented = part(head, 4, 4) == "ftyp" && isInHead("mvex");
    return isFragmented || isTransportStream(head);
}

} // namespace voro::renderer
