#include "ListNames.h"

#include <renderer/common/Medium.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <numeric>
#include <optional>
#include <set>
#include <utility>

namespace voro::renderer {

namespace {

void appendUtf8(std::string &text, uint32_t code)
{
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += {static_cast<char>(0xc0 | code >> 6), static_cast<char>(0x80 | (code & 0x3f))};
    } else if (code < 0x10000) {
        text += {static_cast<char>(0xe0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3f)),
                 static_cast<char>(0x80 | (code & 0x3f))};
    } else {
        text += {static_cast<char>(0xf0 | code >> 18), static_cast<char>(0x80 | (code >> 12 & 0x3f)),
                 static_cast<char>(0x80 | (code >> 6 & 0x3f)), static_cast<char>(0x80 | (code & 0x3f))};
    }
}

std::optional<uint32_t> numberIn(std::string_view digits, int base)
{
    uint32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
    const bool isNumber = !digits.empty() && error == std::errc() && end == digits.data() + digits.size();
    return isNumber ? std::optional(number) : std::nullopt;
}

/** The character that a reference of XML ("amp", "#233", "#xe9") stands for. */
std::optional<uint32_t> referenced(std::string_view name)
{
    using Named = std::pair<std::string_view, char>;
    constexpr std::array Known{Named("amp", '&'), Named("lt", '<'), Named("gt", '>'), Named("quot", '"'),
                               Named("apos", '\'')};
    const auto found = std::ranges::find(Known, name, &Named::first);
    if (found != Known.end()) {
        return static_cast<unsigned char>(found->second);
    }
    if (name.starts_with("#x")) {
        return numberIn(name.substr(2), 16);
    }
    return name.starts_with('#') ? numberIn(name.substr(1), 10) : std::nullopt;
}

/** A text of XML as its characters; whatever marks them as such ("<![CDATA[...]]>") becomes white space. */
std::string withoutReferences(std::string_view text)
{
    constexpr std::string_view Begin = "<![CDATA[";
    constexpr std::string_view End = "]]>";
    constexpr size_t Longest = 10;
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        if (const auto mark = text.substr(i).starts_with(Begin) ? Begin : End; text.substr(i).starts_with(mark)) {
            result += ' ';
            i += mark.size() - 1;
            continue;
        }
        const std::string_view rest = text.substr(i + 1, Longest);
        const size_t end = text[i] == '&' ? rest.find(';') : std::string_view::npos;
        if (const auto code = end == std::string_view::npos ? std::nullopt : referenced(rest.substr(0, end))) {
            appendUtf8(result, *code);
            i += end + 1;
        } else {
            result += text[i];
        }
    }
    return result;
}

std::string withoutEscapes(std::string_view text)
{
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        const auto code = text[i] == '%' && i + 2 < text.size() ? numberIn(text.substr(i + 1, 2), 16) : std::nullopt;
        result += code ? static_cast<char>(*code) : text[i];
        i += code ? 2 : 0;
    }
    return result;
}

/** With slashes, single ones. */
std::string withSlashes(std::string_view text)
{
    std::string result;
    for (const char character : text) {
        const char shown = character == '\\' ? '/' : character;
        if (shown != '/' || !result.ends_with('/')) {
            result += shown;
        }
    }
    return result;
}

std::string fromLatin1(std::string_view text)
{
    std::string result;
    for (const char character : text) {
        appendUtf8(result, static_cast<unsigned char>(character));
    }
    return result;
}

/** Nothing for what Latin 1 cannot say. */
std::optional<std::string> toLatin1(std::string_view text)
{
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        const auto first = static_cast<unsigned char>(text[i]);
        if (first < 0x80) {
            result += text[i];
            continue;
        }
        const bool isTwoBytes = (first == 0xc2 || first == 0xc3) && i + 1 < text.size();
        const unsigned second = isTwoBytes ? static_cast<unsigned char>(text[i + 1]) : 0;
        if ((second & 0xc0) != 0x80) {
            return std::nullopt;
        }
        result += static_cast<char>((first & 3) << 6 | (second & 0x3f));
        ++i;
    }
    return result;
}

/** Whether a name stands in a text and not within a longer one. */
bool isIn(std::string_view text, std::string_view name)
{
    constexpr std::string_view Before = "\r\n\t /=\"'>:";
    constexpr std::string_view Behind = "\r\n\t \"'<?#&,";
    for (size_t place = text.find(name); place != std::string_view::npos; place = text.find(name, place + 1)) {
        const size_t end = place + name.size();
        const bool begins = place == 0 || name.starts_with('/') || Before.find(text[place - 1]) != Before.npos;
        if (begins && (end == text.size() || Behind.find(text[end]) != Behind.npos)) {
            return true;
        }
    }
    return false;
}

/** The name of segments ("chunk-$Number%05d$.m4s") as the texts around what varies; one text if nothing does. */
std::vector<std::string> partsOf(std::string_view pattern)
{
    std::vector<std::string> parts(1);
    for (size_t place = 0; place < pattern.size();) {
        const size_t sign = std::min(pattern.find('$', place), pattern.size());
        parts.back() += pattern.substr(place, sign - place);
        const size_t end = std::min(pattern.find('$', sign + 1), pattern.size());
        if (end == sign + 1 && end < pattern.size()) {
            parts.back() += '$';
        } else if (end < pattern.size()) {
            parts.emplace_back();
        }
        place = end + 1;
    }
    return parts;
}

/** The names of segments that an XML list has in quotes; of each the last part of its path. */
std::vector<std::vector<std::string>> segmentsIn(std::string_view text)
{
    constexpr size_t Most = 64;
    constexpr size_t Longest = 1024;
    std::vector<std::vector<std::string>> segments;
    for (size_t sign = text.find('$'); sign != text.npos && segments.size() < Most; sign = text.find('$', sign)) {
        const std::string_view before = text.substr(0, sign);
        const size_t start = before.find_last_of("\"'<>") + 1;
        const size_t end = std::min(text.find_first_of("\"'<>", sign), text.size());
        const std::string_view value = text.substr(start, std::min(end - start, Longest));
        auto parts = partsOf(value.substr(value.rfind('/') + 1));
        if (start > 0 && parts.size() > 1) {
            segments.push_back(std::move(parts));
        }
        sign = end;
    }
    return segments;
}

bool isSegment(std::string_view name, const std::vector<std::string> &parts)
{
    if (!name.starts_with(parts.front())) {
        return false;
    }
    name.remove_prefix(parts.front().size());
    for (auto part = parts.begin() + 1; part != parts.end() - 1; ++part) {
        const size_t place = name.find(*part);
        if (place == name.npos) {
            return false;
        }
        name.remove_prefix(place + part->size());
    }
    return name.ends_with(parts.back());
}

/** Whether there is the URL of a medium from the net in a text; the name of an XML language is none. */
bool hasNetworkUrl(std::string_view text)
{
    constexpr std::string_view Separator = "://";
    constexpr size_t Furthest = 24;
    for (size_t place = text.find(Separator); place != std::string_view::npos;
         place = text.find(Separator, place + 1)) {
        size_t start = place;
        while (start > 0 && std::isalpha(static_cast<unsigned char>(text[start - 1]))) {
            --start;
        }
        const std::string_view before = text.substr(0, start).substr(start - std::min(start, Furthest));
        const size_t language = before.rfind("xmlns");
        const bool isLanguage = language != before.npos && before.find_first_of(" \t\r\n", language) == before.npos;
        if (!isLanguage && Medium::isNetworkScheme(text.substr(start, place - start))) {
            return true;
        }
    }
    return false;
}

} // namespace

ListNames::ListNames(std::string_view listPath, std::string_view text)
    : m_folder(listPath.substr(0, listPath.rfind('/') + 1))
{
    text = Medium::withoutByteOrderMark(text);
    const std::string plain = withoutReferences(text);
    m_nameNetwork = hasNetworkUrl(plain);
    m_segments = segmentsIn(plain);
    for (const std::string &way : {std::string(text), plain, withoutEscapes(plain)}) {
        if (std::string slashed = withSlashes(way); std::ranges::find(m_texts, slashed) == m_texts.end()) {
            m_texts.push_back(std::move(slashed));
        }
    }
}

bool ListNames::contain(const std::string &path) const
{
    // The system would begin in this process's folder, or stop at the zero.
    if (!path.starts_with('/') || path.find('\0') != path.npos) {
        return false;
    }
    constexpr size_t LongestName = 255;
    const std::filesystem::path normal = std::filesystem::path(withSlashes(path)).lexically_normal();
    if (std::ranges::any_of(normal, [](const auto &part) { return part.string().size() > LongestName; })) {
        return false;
    }
    if (hasName(withSlashes(path)) || hasName(normal.string())) {
        return true;
    }
    const std::filesystem::path folder = std::filesystem::path(withSlashes(m_folder)).lexically_normal();
    const bool isBelow = normal.string().starts_with(folder.string());
    const auto isNamed = [name = normal.filename().string()](const auto &parts) { return isSegment(name, parts); };
    const bool isHidden = ('/' + normal.lexically_relative(folder).string()).find("/.") != std::string::npos;
    if (isBelow && !isHidden && std::ranges::any_of(m_segments, isNamed)) {
        return true;
    }
    return hasName(isBelow ? normal.filename().string() : normal.lexically_relative(folder).string());
}

bool ListNames::hasName(std::string_view name) const
{
    std::set<std::string> spellings{std::string(name), fromLatin1(name)};
    if (auto narrow = toLatin1(name)) {
        spellings.insert(std::move(*narrow));
    }
    return !name.empty() && std::ranges::any_of(m_texts, [&](const std::string &text) {
        return std::ranges::any_of(spellings, [&](const std::string &spelling) { return isIn(text, spelling); });
    });
}

size_t ListNames::size() const
{
    return std::accumulate(m_texts.begin(), m_texts.end(), size_t{0},
                           [](size_t sum, const std::string &text) { return sum + text.size(); });
}

} // namespace voro::renderer
