#pragma once

#include "Medium.h"
#include "Names.h"
#include "Protocol.h"
#include "Speed.h"
#include "TrackPosition.h"

#include <pps/Text.h>

#include <concepts>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

/*
 * How the messages between the renderer service and its workers become text and are read again. A message names its
 * fields once, in `fields(self, field)`, which calls `field(name, value)` for each, to write it or to read it.
 */

namespace voro::renderer {

/** The fields of a message as lines, and a message of fields. */
template<typename Value>
std::string fieldsOf(const Value &value);
template<typename Value>
Value parseFields(const pps::Message &message);

/** Appends fields as attribute lines. */
class FieldWriter {
public:
    explicit FieldWriter(std::string &lines) : m_lines(lines) {}
    void operator()(std::string_view name, bool value) const { pps::appendBool(m_lines, name, value); }
    void operator()(std::string_view name, std::integral auto value) const { pps::appendNumber(m_lines, name, value); }
    void operator()(std::string_view name, Speed value) const { (*this)(name, value.thousandths); }
    void operator()(std::string_view name, std::string_view value) const { pps::appendText(m_lines, name, value); }
    void operator()(std::string_view name, const Medium &value) const { (*this)(name, value.url()); }
    void operator()(std::string_view name, Named auto value) const { (*this)(name, nameOf(value)); }
    template<typename Value>
    void operator()(std::string_view name, const std::optional<Value> &value) const
    {
        if (value) {
            (*this)(name, *value);
        }
    }
    /** Each in a field of its own. */
    template<typename Value>
    void operator()(std::string_view prefix, const std::map<unsigned, Value> &values) const
    {
        for (const auto &[number, value] : values) {
            (*this)(std::string(prefix) + std::to_string(number), fieldsOf(value));
        }
    }

private:
    std::string &m_lines;
};

/** Reads fields from a message; one that is missing leaves its value as it is. */
class FieldReader {
public:
    explicit FieldReader(const pps::Message &message) : m_message(message) {}
    void operator()(std::string_view name, bool &value) const
    {
        value = m_message.has(name) ? m_message.text(name) == "true" : value;
    }
    void operator()(std::string_view name, std::integral auto &value) const
    {
        value = static_cast<std::remove_reference_t<decltype(value)>>(m_message.number(name, value));
    }
    void operator()(std::string_view name, Speed &value) const { (*this)(name, value.thousandths); }
    void operator()(std::string_view name, std::string &value) const
    {
        value = m_message.has(name) ? m_message.text(name) : value;
    }
    void operator()(std::string_view name, Medium &value) const
    {
        value = m_message.has(name) ? Medium(m_message.text(name)) : value;
    }
    void operator()(std::string_view name, Named auto &value) const
    {
        value = parseName<std::remove_reference_t<decltype(value)>>(m_message.text(name)).value_or(value);
    }
    template<typename Value>
    void operator()(std::string_view name, std::optional<Value> &value) const
    {
        if (m_message.has(name)) {
            (*this)(name, value.emplace());
        }
    }
    template<typename Value>
    void operator()(std::string_view prefix, std::map<unsigned, Value> &values) const
    {
        for (const auto &[name, text] : m_message.attributes()) {
            const auto number =
                name.starts_with(prefix) ? parseNumber(name.substr(prefix.size()), 1, MostTracks) : std::nullopt;
            if (pps::Message fields; number && fields.parse(text)) {
                values[static_cast<unsigned>(*number)] = parseFields<Value>(fields);
            }
        }
    }

private:
    const pps::Message &m_message;
};

template<typename Value>
std::string fieldsOf(const Value &value)
{
    std::string lines;
    if constexpr (requires { Value::fields(value, FieldWriter(lines)); }) {
        Value::fields(value, FieldWriter(lines));
    }
    return lines;
}

template<typename Value>
Value parseFields(const pps::Message &message)
{
    Value value;
    if constexpr (requires { Value::fields(value, FieldReader(message)); }) {
        Value::fields(value, FieldReader(message));
    }
    return value;
}

} // namespace voro::renderer
