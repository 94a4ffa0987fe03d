#include "Text.h"

#include "Json.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace voro::pps {

namespace {

constexpr size_t MaximumName = 255;

bool isControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

bool isMark(char c)
{
    return c == '-' || c == '+' || c == '*';
}

bool isValidValue(const Line &line)
{
    if (line.encoding.empty()) {
        return true;
    }
    if (line.encoding == "n") {
        Number number;
        return parseNumber(line.value, number);
    }
    if (line.encoding == "b") {
        return line.value == "true" || line.value == "false";
    }
    if (line.encoding == "c") {
        std::string text;
        return unescape(line.value, text);
    }
    return line.encoding == "json" && isJson(line.value);
}

// The length of the name in front of a colon or the end; 0 when there is no valid one.
size_t nameLength(std::string_view text)
{
    if (text.empty() || isMark(text.front()) || text.front() == '@') {
        return 0;
    }
    size_t length = 0;
    bool isAscii = true;
    for (; length < text.size() && text[length] != ':'; ++length) {
        if (isControl(text[length])) {
            return 0;
        }
        isAscii = isAscii && static_cast<unsigned char>(text[length]) < 0x80;
    }
    return length <= MaximumName && (isAscii || isUtf8(text.substr(0, length))) ? length : 0;
}

bool splitAttribute(std::string_view text, Line &line)
{
    line.kind = Line::Kind::Attribute;
    const size_t first = nameLength(text);
    line.name = text.substr(0, first);
    line.encoding = line.value = {};
    if (first == 0) {
        return false;
    }
    if (first == text.size()) {
        return line.mark == '-';
    }
    const size_t second = text.find(':', first + 1);
    if (second == std::string_view::npos || line.mark == '+' || line.mark == '*') {
        return false;
    }
    line.encoding = text.substr(first + 1, second - first - 1);
    line.value = text.substr(second + 1);
    return true;
}

int digitValue(char c, int base)
{
    int value = -1;
    if (c >= '0' && c <= '9') {
        value = c - '0';
    } else if (c >= 'a' && c <= 'f') {
        value = c - 'a' + 10;
    } else if (c >= 'A' && c <= 'F') {
        value = c - 'A' + 10;
    }
    return value < base ? value : -1;
}

// Reads up to `most` digits of a numbered escape; -1 without any or beyond a byte.
int readDigits(std::string_view text, size_t &at, int base, int most)
{
    int value = -1;
    for (; most > 0 && at < text.size() && digitValue(text[at], base) >= 0; --most, ++at) {
        value = std::max(value, 0) * base + digitValue(text[at], base);
    }
    return value <= 0xFF ? value : -1;
}

constexpr std::string_view EscapeLetters = "abfnrtv\\\"'?";
constexpr std::string_view EscapeMeanings = "\a\b\f\n\r\t\v\\\"'?";

void appendEscaped(std::string &out, std::string_view value)
{
    for (const char c : value) {
        const size_t index = c == '\\' || isControl(c) ? EscapeMeanings.find(c) : std::string_view::npos;
        if (index != std::string_view::npos) {
            out += {'\\', EscapeLetters[index]};
        } else if (isControl(c)) {
            // Three octal digits, because a hexadecimal escape would swallow digits that follow it.
            out += {'\\', static_cast<char>('0' + (c >> 6)), static_cast<char>('0' + ((c >> 3) & 7)),
                    static_cast<char>('0' + (c & 7))};
        } else {
            out += c;
        }
    }
}

} // namespace

bool isValidName(std::string_view name)
{
    return !name.empty() && nameLength(name) == name.size();
}

LineReader::LineReader(std::string_view text)
    : m_rest(text),
      m_failed(!text.empty() && std::memchr(text.data(), 0, text.size()) != nullptr)
{}

bool LineReader::next(Line &line)
{
    if (!nextUnchecked(line)) {
        return false;
    }
    m_failed = line.kind == Line::Kind::Attribute && !isValidValue(line);
    return !m_failed;
}

bool LineReader::nextUnchecked(Line &line)
{
    if (m_failed || m_rest.empty()) {
        return false;
    }
    const size_t end = m_rest.find('\n');
    line.whole = m_rest.substr(0, end);
    m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
    std::string_view text = line.whole;
    line.mark = !text.empty() && isMark(text.front()) ? text.front() : '\0';
    text.remove_prefix(line.mark != 0);
    if (!text.empty() && text.front() == '@') {
        line.kind = Line::Kind::Object;
        line.name = text.substr(1);
        line.encoding = line.value = {};
        m_failed = !isValidName(line.name);
    } else {
        m_failed = !splitAttribute(text, line);
    }
    return !m_failed;
}

bool unescape(std::string_view escaped, std::string &text)
{
    text.clear();
    text.reserve(escaped.size());
    for (size_t at = 0; at < escaped.size();) {
        if (escaped[at] != '\\') {
            text += escaped[at++];
            continue;
        }
        if (++at == escaped.size()) {
            return false;
        }
        const size_t index = EscapeLetters.find(escaped[at]);
        if (index != std::string_view::npos) {
            text += EscapeMeanings[index];
            ++at;
            continue;
        }
        const bool hexadecimal = escaped[at] == 'x';
        at += hexadecimal;
        const int value = readDigits(escaped, at, hexadecimal ? 16 : 8, hexadecimal ? 2 : 3);
        if (value < 0) {
            return false;
        }
        text += static_cast<char>(value);
    }
    return true;
}

void appendText(std::string &out, std::string_view name, std::string_view value)
{
    out += name;
    if (std::any_of(value.begin(), value.end(), isControl)) {
        out += ":c:";
        appendEscaped(out, value);
    } else {
        out += "::";
        out += value;
    }
    out += '\n';
}

void appendNumber(std::string &out, std::string_view name, int64_t value)
{
    char digits[24];
    out += name;
    out += ":n:";
    out.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    out += '\n';
}

void appendBool(std::string &out, std::string_view name, bool value)
{
    out += name;
    out += value ? ":b:true\n" : ":b:false\n";
}

void appendJsonString(std::string &out, std::string_view value)
{
    static constexpr char Hex[] = "0123456789abcdef";
    out += '"';
    while (!value.empty()) {
        const char c = value.front();
        if (static_cast<unsigned char>(c) < 0x80) {
            value.remove_prefix(1);
            if (c == '"' || c == '\\') {
                out += {'\\', c};
            } else if (isControl(c)) {
                out += {'\\', 'u', '0', '0', Hex[c >> 4], Hex[c & 15]};
            } else {
                out += c;
            }
            continue;
        }
        size_t length = 2;
        while (length <= 4 && length <= value.size() && !isUtf8(value.substr(0, length))) {
            ++length;
        }
        if (length > 4 || length > value.size()) {
            out += "\xEF\xBF\xBD";
            value.remove_prefix(1);
        } else {
            out += value.substr(0, length);
            value.remove_prefix(length);
        }
    }
    out += '"';
}

bool Message::parse(std::string_view text)
{
    m_object.clear();
    m_attributes.clear();
    LineReader reader(text);
    Line line;
    while (reader.next(line)) {
        if (line.kind == Line::Kind::Object) {
            if (!m_object.empty() || !m_attributes.empty()) {
                break;
            }
            m_object = line.name;
        } else if (line.mark != '-') {
            std::string value;
            if (line.encoding == "c") {
                unescape(line.value, value);
            } else {
                value = line.value;
            }
            m_attributes.push_back({std::string(line.name), std::move(value)});
        }
    }
    while (reader.next(line)) {
    }
    if (reader.failed()) {
        m_object.clear();
        m_attributes.clear();
    }
    return !reader.failed();
}

const Message::Attribute *Message::find(std::string_view name) const
{
    const auto found =
        std::find_if(m_attributes.rbegin(), m_attributes.rend(), [&](const Attribute &e) { return e.name == name; });
    return found == m_attributes.rend() ? nullptr : &*found;
}

bool Message::has(std::string_view name) const
{
    return find(name) != nullptr;
}

std::string Message::text(std::string_view name) const
{
    const Attribute *entry = find(name);
    return entry ? entry->value : std::string();
}

int64_t Message::number(std::string_view name, int64_t fallback) const
{
    const Attribute *entry = find(name);
    Number number;
    return entry && parseNumber(entry->value, number) && number.integral ? number.integer : fallback;
}

} // namespace voro::pps
