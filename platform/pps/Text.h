#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/* The text of PPS messages, line by line: what the codec, the broker and the programs without Qt share. */

namespace voro::pps {

/** The longest message and the largest object, in bytes. */
inline constexpr size_t MaximumMessage = 64 * 1024;

/** One line of PPS text; all views point into the text that was read. */
struct Line {
    enum class Kind { Object, Attribute };
    Kind kind;
    /** '-', '+' or '*' before the name, else 0. */
    char mark;
    /** The name: of an object without its "@". */
    std::string_view name;
    /** Attributes only: the encoding ("", "c", "b", "n", "json") and the value as written. */
    std::string_view encoding;
    std::string_view value;
    /** The line without its line feed. */
    std::string_view whole;
};

/** Walks the lines of a text that may come from anybody. */
class LineReader {
public:
    explicit LineReader(std::string_view text);
    /** Reads the next line; false at the end of the text or at the first bad line. */
    bool next(Line &line);
    /** The same without a look at encoding and value, for callers that convert the value themselves. */
    bool nextUnchecked(Line &line);
    /** Whether a bad line (no name, unknown encoding, a bad value, an embedded NUL) ended the walk. */
    bool failed() const { return m_failed; }

private:
    std::string_view m_rest;
    bool m_failed;
};

/**
 * Whether a name may stand in an object or attribute line: up to 255 bytes of UTF-8 without control characters and
 * colons, not beginning with '@', '-', '+' or '*'.
 */
bool isValidName(std::string_view name);

/** Undoes C escapes ("c" encoding); false when the text holds a bad escape. */
bool unescape(std::string_view escaped, std::string &text);

/** Append one attribute line each; text is written plain, or as "c" when it holds control characters. */
void appendText(std::string &out, std::string_view name, std::string_view value);
void appendNumber(std::string &out, std::string_view name, int64_t value);
void appendBool(std::string &out, std::string_view name, bool value);
/** Appends a JSON string with its quotes; bytes that are no UTF-8 become U+FFFD. */
void appendJsonString(std::string &out, std::string_view value);

/**
 * A decoded message of text, number and truth values, for programs without Qt: the attributes of the first object, or
 * of a message without an object line.
 */
class Message {
public:
    /** False when the text is bad; the message is empty then. */
    bool parse(std::string_view text);
    /** The object's name without "@", empty without an object line. */
    const std::string &object() const { return m_object; }
    bool has(std::string_view name) const;
    /** The value as text (unescaped); empty when absent. */
    std::string text(std::string_view name) const;
    /** The value as a number; `fallback` when absent or no number. */
    int64_t number(std::string_view name, int64_t fallback = 0) const;

    struct Attribute {
        std::string name;
        std::string value;
    };
    /** Every attribute in the order of the text. */
    const std::vector<Attribute> &attributes() const { return m_attributes; }

private:
    const Attribute *find(std::string_view name) const;

    std::string m_object;
    std::vector<Attribute> m_attributes;
};

} // namespace voro::pps
