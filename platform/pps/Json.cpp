#include "Json.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iterator>

namespace voro::pps {

namespace {

const char *skipDigits(const char *at, const char *end)
{
    while (at != end && *at >= '0' && *at <= '9') {
        ++at;
    }
    return at;
}

struct Validator {
    struct Value {};
    using List = Value;
    using Map = Value;
    static Value null() { return {}; }
    static Value boolean(bool) { return {}; }
    static Value number(Number) { return {}; }
    static Value string(std::string_view) { return {}; }
    static void append(List &, Value) {}
    static void insert(Map &, std::string_view, Value) {}
    static Value list(List) { return {}; }
    static Value map(Map) { return {}; }
};

} // namespace

bool parseNumber(std::string_view text, Number &number)
{
    const char *const begin = text.data();
    const char *const end = begin + text.size();
    const char *at = begin;
    if (at != end && *at == '-') {
        ++at;
    }
    const char *const digits = at;
    at = skipDigits(at, end);
    if (at == digits || (*digits == '0' && at - digits > 1)) {
        return false;
    }
    number.integral = at == end;
    if (at != end && *at == '.') {
        const char *const fraction = ++at;
        at = skipDigits(at, end);
        if (at == fraction) {
            return false;
        }
    }
    if (at != end && (*at == 'e' || *at == 'E')) {
        ++at;
        if (at != end && (*at == '+' || *at == '-')) {
            ++at;
        }
        const char *const exponent = at;
        at = skipDigits(at, end);
        if (at == exponent) {
            return false;
        }
    }
    if (at != end) {
        return false;
    }
    if (number.integral) {
        if (std::from_chars(begin, end, number.integer).ec == std::errc()) {
            return true;
        }
        number.integral = false;
    }
    return std::from_chars(begin, end, number.real).ec == std::errc();
}

/** The first byte of a character of several bytes: how many follow, and what the next one may be. */
struct Lead {
    unsigned char first;
    unsigned char last;
    int more;
    unsigned char low;
    unsigned char high;
};

/** Excluded are overlong forms, surrogates and what lies beyond U+10FFFF. */
constexpr Lead Leads[] = {
    {0xC2, 0xDF, 1, 0x80, 0xBF}, {0xE0, 0xE0, 2, 0xA0, 0xBF}, {0xE1, 0xEC, 2, 0x80, 0xBF}, {0xED, 0xED, 2, 0x80, 0x9F},
    {0xEE, 0xEF, 2, 0x80, 0xBF}, {0xF0, 0xF0, 3, 0x90, 0xBF}, {0xF1, 0xF3, 3, 0x80, 0xBF}, {0xF4, 0xF4, 3, 0x80, 0x8F},
};

const Lead *leadOf(unsigned char byte)
{
    const auto *const found =
        std::ranges::find_if(Leads, [byte](const Lead &lead) { return byte >= lead.first && byte <= lead.last; });
    return found == std::end(Leads) ? nullptr : found;
}

bool isUtf8(std::string_view text)
{
    const auto *at = reinterpret_cast<const unsigned char *>(text.data());
    const auto *const end = at + text.size();
    while (at != end) {
        uint64_t eight;
        if (end - at >= 8 && (std::memcpy(&eight, at, 8), (eight & 0x8080808080808080u) == 0)) {
            at += 8;
            continue;
        }
        const unsigned char first = *at++;
        if (first < 0x80) {
            continue;
        }
        const Lead *const lead = leadOf(first);
        if (!lead || end - at < lead->more || *at < lead->low || *at > lead->high) {
            return false;
        }
        for (int i = 1; i < lead->more; ++i) {
            if ((at[i] & 0xC0) != 0x80) {
                return false;
            }
        }
        at += lead->more;
    }
    return true;
}

void appendUtf8(std::string &out, char32_t c)
{
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += {static_cast<char>(0xC0 | (c >> 6)), static_cast<char>(0x80 | (c & 0x3F))};
    } else if (c < 0x10000) {
        out += {static_cast<char>(0xE0 | (c >> 12)), static_cast<char>(0x80 | ((c >> 6) & 0x3F)),
                static_cast<char>(0x80 | (c & 0x3F))};
    } else {
        out += {static_cast<char>(0xF0 | (c >> 18)), static_cast<char>(0x80 | ((c >> 12) & 0x3F)),
                static_cast<char>(0x80 | ((c >> 6) & 0x3F)), static_cast<char>(0x80 | (c & 0x3F))};
    }
}

bool isJson(std::string_view text)
{
    Validator::Value value;
    return JsonReader<Validator>(text).read(value);
}

} // namespace voro::pps
