#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayList>
#include <QtCore/QHash>
#include <QtCore/QMetaEnum>
#include <QtCore/QString>

#include <limits>
#include <optional>
#include <vector>

namespace voro {

/** Unusable arguments: the program says why and ends with status 2. */
struct UsageError {
    QString reason;
};

/** An option of a command: `--name`, or `--name VALUE` when there is a placeholder for the value. */
struct Option {
    const char *name;
    const char *placeholder;
    const char *description;
};

/** What `--help` says of a command, and what its arguments may be. */
struct CommandHelp {
    const char *name;
    const char *synopsis;
    const char *summary;
    const char *details;
    std::vector<Option> options;
    /** Nothing after the first operand is an option: operands may begin with a dash. */
    bool operandsMayBeginWithDash = false;
};

// Texts as what they have to be. When they are not that, UsageError says what they were to be and begins with the name.

double numberFrom(const char *name, const QByteArray &text, double minimum, double maximum);
unsigned millisecondsFrom(const char *name, const QByteArray &text);
int enumeratorFrom(const char *name, const QByteArray &text, const QMetaEnum &type, const QByteArrayList &refused);
/** An enumerator of `Class::Type` by its name, in any case; the names in `refused` do not count. */
template<typename Class>
typename Class::Type enumeratorFrom(const char *name, const QByteArray &text, const QByteArrayList &refused = {})
{
    return typename Class::Type(enumeratorFrom(name, text, QMetaEnum::fromType<typename Class::Type>(), refused));
}
/** True for "on", false for "off". */
bool switchFrom(const char *name, const QByteArray &text);

/** A command's arguments as the shell gave them, checked against its options. */
class Arguments {
public:
    /** Throws UsageError when an option is unknown, or its value missing or too much. */
    Arguments(const CommandHelp &help, const QByteArrayList &raw);

    bool wantsHelp() const { return has("--help"); }
    bool has(const char *option) const { return m_values.contains(option); }
    std::optional<QByteArray> value(const char *option) const;
    const QByteArrayList &operands() const { return m_operands; }

    // Values of options, converted as by the functions above.

    std::optional<double> number(const char *option, double minimum, double maximum) const;
    std::optional<unsigned> milliseconds(const char *option) const;
    template<typename Class>
    std::optional<typename Class::Type> enumerator(const char *option, const QByteArrayList &refused = {}) const
    {
        const auto text = value(option);
        return text ? std::optional(enumeratorFrom<Class>(option, *text, refused)) : std::nullopt;
    }

private:
    QHash<QByteArray, QByteArray> m_values;
    QByteArrayList m_operands;
};

/** The key name of an enumerator, or its number when it has none. */
template<typename Enumeration>
QString enumeratorName(Enumeration value)
{
    const char *key = QMetaEnum::fromType<Enumeration>().valueToKey(value);
    return key ? QString::fromLatin1(key) : QString::number(value);
}

/** The lines that `voro COMMAND --help` prints. */
QByteArray helpText(const CommandHelp &help);

} // namespace voro
