#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/* Strict reading of JSON (RFC 8259) from untrusted text, into whatever a Builder makes of it. */

namespace voro::pps {

/** A number as the text formats know it. */
struct Number {
    bool integral = false;
    int64_t integer = 0;
    /** The value when it is not integral or does not fit into 64 bits. */
    double real = 0;
};

/** Reads a whole text as one number in JSON's notation; false when it is none or too large for a double. */
bool parseNumber(std::string_view text, Number &number);

bool isUtf8(std::string_view text);

/** Appends a code point as UTF-8. */
void appendUtf8(std::string &out, char32_t codePoint);

/** Nested values deeper than this are refused, so that no text can exhaust the stack. */
inline constexpr int MaximumJsonDepth = 64;

/**
 * Reads one JSON value. The Builder has the types Value, List and Map and the static functions null(), boolean(bool),
 * number(Number), string(string_view), append(List&, Value), insert(Map&, string_view, Value), list(List), map(Map).
 */
template<typename Builder>
class JsonReader {
public:
    using Value = typename Builder::Value;

    explicit JsonReader(std::string_view text) : m_at(text.data()), m_end(text.data() + text.size()) {}

    /** Whether the whole text is one value. */
    bool read(Value &value) { return readValue(value, 0) && (skipSpace(), m_at == m_end); }

private:
    bool readValue(Value &value, int depth)
    {
        skipSpace();
        if (m_at == m_end) {
            return false;
        }
        switch (*m_at) {
        case '{':
            return depth < MaximumJsonDepth && readMap(value, depth + 1);
        case '[':
            return depth < MaximumJsonDepth && readList(value, depth + 1);
        case '"': {
            std::string_view text;
            return readString(text) && (value = Builder::string(text), true);
        }
        case 't':
            return skipExactly("true") && (value = Builder::boolean(true), true);
        case 'f':
            return skipExactly("false") && (value = Builder::boolean(false), true);
        case 'n':
            return skipExactly("null") && (value = Builder::null(), true);
        default:
            return readNumber(value);
        }
    }

    bool readList(Value &value, int depth)
    {
        typename Builder::List list;
        ++m_at;
        if (!skip(']')) {
            do {
                Value item;
                if (!readValue(item, depth)) {
                    return false;
                }
                Builder::append(list, std::move(item));
            } while (skip(','));
            if (!skip(']')) {
                return false;
            }
        }
        value = Builder::list(std::move(list));
        return true;
    }

    bool readMap(Value &value, int depth)
    {
        typename Builder::Map map;
        ++m_at;
        if (!skip('}')) {
            do {
                skipSpace();
                std::string_view text;
                if (m_at == m_end || *m_at != '"' || !readString(text)) {
                    return false;
                }
                const std::string key(text);
                Value item;
                if (!skip(':') || !readValue(item, depth)) {
                    return false;
                }
                Builder::insert(map, key, std::move(item));
            } while (skip(','));
            if (!skip('}')) {
                return false;
            }
        }
        value = Builder::map(std::move(map));
        return true;
    }

    bool readNumber(Value &value)
    {
        const char *begin = m_at;
        while (m_at != m_end && (std::string_view("+-.eE").find(*m_at) != std::string_view::npos || isDigit(*m_at))) {
            ++m_at;
        }
        Number number;
        if (!parseNumber({begin, static_cast<size_t>(m_at - begin)}, number)) {
            return false;
        }
        value = Builder::number(number);
        return true;
    }

    // The result is valid until the next string.
    bool readString(std::string_view &text)
    {
        const char *begin = ++m_at;
        while (m_at != m_end && *m_at != '"' && *m_at != '\\' && static_cast<unsigned char>(*m_at) >= 0x20) {
            ++m_at;
        }
        text = {begin, static_cast<size_t>(m_at - begin)};
        if (m_at != m_end && *m_at == '\\') {
            m_scratch.assign(text);
            if (!readEscaped()) {
                return false;
            }
            text = m_scratch;
        }
        return m_at != m_end && *m_at++ == '"' && isUtf8(text);
    }

    bool readEscaped()
    {
        while (m_at != m_end && *m_at != '"') {
            if (static_cast<unsigned char>(*m_at) < 0x20) {
                return false;
            }
            if (*m_at != '\\') {
                m_scratch += *m_at++;
            } else if (!readEscape()) {
                return false;
            }
        }
        return true;
    }

    bool readEscape()
    {
        static constexpr std::string_view Letters = "\"\\/bfnrt";
        static constexpr std::string_view Meanings = "\"\\/\b\f\n\r\t";
        if (++m_at == m_end) {
            return false;
        }
        const char letter = *m_at++;
        if (letter == 'u') {
            return readCodePoint();
        }
        const size_t index = Letters.find(letter);
        if (index == std::string_view::npos) {
            return false;
        }
        m_scratch += Meanings[index];
        return true;
    }

    bool readCodePoint()
    {
        char32_t unit = 0;
        if (!readHex(unit) || (unit >= 0xDC00 && unit <= 0xDFFF)) {
            return false;
        }
        if (unit >= 0xD800 && unit <= 0xDBFF) {
            char32_t low = 0;
            if (!skipExactly("\\u") || !readHex(low) || low < 0xDC00 || low > 0xDFFF) {
                return false;
            }
            unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        }
        appendUtf8(m_scratch, unit);
        return true;
    }

    bool readHex(char32_t &unit)
    {
        if (m_end - m_at < 4) {
            return false;
        }
        for (int i = 0; i < 4; ++i, ++m_at) {
            const char lower = char(*m_at | 0x20);
            if (isDigit(*m_at)) {
                unit = unit * 16 + char32_t(*m_at - '0');
            } else if (lower >= 'a' && lower <= 'f') {
                unit = unit * 16 + char32_t(lower - 'a' + 10);
            } else {
                return false;
            }
        }
        return true;
    }

    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    void skipSpace()
    {
        while (m_at != m_end && (*m_at == ' ' || *m_at == '\t' || *m_at == '\n' || *m_at == '\r')) {
            ++m_at;
        }
    }

    bool skip(char c)
    {
        skipSpace();
        if (m_at == m_end || *m_at != c) {
            return false;
        }
        ++m_at;
        return true;
    }

    bool skipExactly(std::string_view text)
    {
        if (!std::string_view(m_at, static_cast<size_t>(m_end - m_at)).starts_with(text)) {
            return false;
        }
        m_at += text.size();
        return true;
    }

    const char *m_at;
    const char *m_end;
    std::string m_scratch;
};

/** Whether the text is one JSON value. */
bool isJson(std::string_view text);

} // namespace voro::pps
