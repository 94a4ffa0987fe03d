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

using Names = QByteArrayList (*)();

/** An option of a command: `--name`, or `--name VALUE` when there is a placeholder for the value. */
struct Option {
    const char *name;
    const char *placeholder;
    const char *description;
    /** What the value may be, where that can be counted. */
    Names values = nullptr;
};

/** What `--help` says of a command, and what its arguments may be. */
struct CommandHelp {
    const char *name;
    const char *synopsis;
    const char *summary;
    const char *details;
    std::vector<Option> options;
    /** The keys of a terminal that it listens to, a line each; null without. */
    QByteArray (*keys)() = nullptr;
    /** What the first operand may be; null where it is a file or a free text. */
    Names words = nullptr;
    /** Nothing after the first operand is an option: operands may begin with a dash. */
    bool operandsMayBeginWithDash = false;
};

// Texts as what they have to be. When they are not that, UsageError says what they were to be and begins with the name.

double numberFrom(const char *name, const QByteArray &text, double minimum, double maximum);
unsigned millisecondsFrom(const char *name, const QByteArray &text);
/** Milliseconds from `1:30`, `1:02:03.5` or a whole number of milliseconds. */
unsigned timeFrom(const char *name, const QByteArray &text);
/** A fraction from `0.5` or `50%`. */
double volumeFrom(const char *name, const QByteArray &text);
int enumeratorFrom(const char *name, const QByteArray &text, const QMetaEnum &type, const QByteArrayList &refused);
/** An enumerator of `Class::Type` by its name, in any case; the names in `refused` do not count. */
template<typename Class>
typename Class::Type enumeratorFrom(const char *name, const QByteArray &text, const QByteArrayList &refused = {})
{
    return typename Class::Type(enumeratorFrom(name, text, QMetaEnum::fromType<typename Class::Type>(), refused));
}
/** The enumerators of `Class::Type` but for those in `refused`. */
template<typename Class>
QByteArrayList enumeratorNames(const QByteArrayList &refused = {})
{
    const auto type = QMetaEnum::fromType<typename Class::Type>();
    QByteArrayList names;
    for (int i = 0; i < type.keyCount(); ++i) {
        if (!refused.contains(type.key(i))) {
            names.append(type.key(i));
        }
    }
    return names;
}
/** The names of the rows of a table. */
template<typename Table>
QByteArrayList namesOf(const Table &table)
{
    QByteArrayList names;
    for (const auto &row : table) {
        names.append(row.name);
    }
    return names;
}
/** Throws UsageError for a name that is none of those known, with the known one that it resembles. */
[[noreturn]] void refuseUnknown(const char *kind, const QByteArray &name, const QByteArrayList &known);
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
    std::optional<unsigned> time(const char *option) const;
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
