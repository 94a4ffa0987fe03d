#include "ListText.h"

#include <renderer/worker/gst/Gst.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <map>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace voro::renderer {

namespace {

constexpr std::string_view Head = "#EXTM3U\n";

bool startsWith(std::string_view text, std::string_view beginning)
{
    return text.size() >= beginning.size() && g_ascii_strncasecmp(text.data(), beginning.data(), beginning.size()) == 0;
}

std::string_view trimmed(std::string_view text)
{
    const size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? "" : text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

std::vector<std::string_view> linesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find_first_of("\r\n", start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

/** A place made absolute, so that the list may be read from elsewhere. */
std::string absolutePlace(const std::string &place, const Medium &list)
{
    const Owned<char> scheme(g_uri_parse_scheme(place.c_str()));
    const bool isLocalPath = list.isLocal() && place[0] == '/';
    if (isLocalPath || (scheme && place.find("://") != std::string::npos)) {
        return place;
    }
    if (list.isLocal()) {
        return list.path().substr(0, list.path().rfind('/') + 1) + place;
    }
    const Owned<char> escaped(g_uri_escape_string(place.c_str(), "/?&=;+%", FALSE));
    const Owned<char> joined(gst_uri_join_strings(list.uri().c_str(), escaped.get()));
    return joined ? joined.get() : escaped.get();
}

std::string absoluteLines(std::string_view text, const Medium &list)
{
    std::string result;
    for (const std::string_view written : linesOf(text)) {
        const std::string_view line = trimmed(written);
        const bool isPlace = !line.empty() && line[0] != '#';
        result += isPlace ? absolutePlace(std::string(line), list) : std::string(line);
        result += '\n';
    }
    return result;
}

/** A text of XML without white space beside its tags: the parser would take it for a part of a place. */
std::string withoutEdges(std::string_view text)
{
    constexpr std::string_view Space = " \t\r\n";
    std::string result;
    for (const char character : text) {
        if (character == '<') {
            result.erase(result.find_last_not_of(Space) + 1);
        }
        const bool isEdge = result.ends_with('>') && Space.find(character) != Space.npos;
        if (!isEdge) {
            result += character;
        }
    }
    return result;
}

/** A list with numbers, whose places are ordered by them; what repeats a number belongs to another list behind. */
class NumberedList {
public:
    explicit NumberedList(std::string_view text)
    {
        for (const std::string_view line : linesOf(text)) {
            add(trimmed(line));
        }
        std::ranges::stable_sort(m_places, {}, &Place::number);
    }

    std::string withoutNumbers(const Medium &list) const
    {
        std::string result(Head);
        for (const auto &[number, place] : m_places) {
            const auto title = m_titles.find(number);
            if (title != m_titles.end()) {
                result += "#EXTINF:-1," + title->second + '\n';
            }
            result += absolutePlace(place, list) + '\n';
        }
        return result;
    }

private:
    /** The list that it belongs to, and its place therein. */
    using Number = std::pair<int, uint64_t>;
    struct Place {
        Number number;
        std::string place;
    };

    void add(std::string_view line)
    {
        const size_t equals = line.find('=');
        if (line.starts_with('[')) {
            ++m_list;
        } else if (equals != std::string_view::npos) {
            const std::string_view key = trimmed(line.substr(0, equals));
            const std::string_view value = trimmed(line.substr(equals + 1));
            if (startsWith(key, "file") && !value.empty()) {
                m_places.push_back({numberOfPlace(key), std::string(value)});
            } else if (startsWith(key, "title") && !value.empty()) {
                m_titles.emplace(Number{m_list, numberIn(key)}, value);
            }
        }
    }

    Number numberOfPlace(std::string_view key)
    {
        if (key.find_first_of("0123456789") == std::string_view::npos) {
            // It stays behind the one before it.
            return m_places.empty() ? Number{m_list, 0} : m_places.back().number;
        }
        const uint64_t number = numberIn(key);
        if (!m_numbers.insert({m_list, number}).second) {
            m_numbers.insert({++m_list, number});
        }
        return {m_list, number};
    }

    static uint64_t numberIn(std::string_view key)
    {
        uint64_t number = 0;
        const size_t first = std::min(key.find_first_of("0123456789"), key.size());
        const auto [end, error] = std::from_chars(key.data() + first, key.data() + key.size(), number);
        return error == std::errc::result_out_of_range ? UINT64_MAX : number;
    }

    int m_list = 0;
    std::vector<Place> m_places;
    std::map<Number, std::string> m_titles;
    std::set<Number> m_numbers;
};

} // namespace

std::string repairedList(std::string text, const Medium &list)
{
    text.erase(0, text.size() - Medium::withoutByteOrderMark(text).size());
    if (!g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr)) {
        gsize size = 0;
        const Owned<char> wide(
            g_convert(text.data(), static_cast<gssize>(text.size()), "UTF-8", "ISO-8859-1", nullptr, &size, nullptr));
        text.assign(wide ? wide.get() : "", wide ? size : 0);
    }
    const size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos || text[first] == '<') {
        return withoutEdges(text);
    }
    text.erase(0, first);
    if (startsWith(text, "[playlist]")) {
        return NumberedList(text).withoutNumbers(list);
    }
    text = absoluteLines(text, list);
    return text.starts_with(Head.substr(0, Head.size() - 1)) ? text : Head.data() + text;
}

} // namespace voro::renderer
