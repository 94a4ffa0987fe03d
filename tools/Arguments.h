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

/** A command's arguments as the shell gave them, checked against its options. */
class Arguments {
public:
    /** Throws UsageError when an option is unknown, or its value missing or too much. */
    Arguments(const CommandHelp &help, const QByteArrayList &raw);

    bool wantsHelp() const { return has("--help"); }
    bool has(const char *option) const { return m_values.contains(option); }
    std::optional<QByteArray> value(const char *option) const;
    const QByteArrayList &operands() const { return m_operands; }

    // Values as what they have to be; UsageError when they are not.

    std::optional<double> number(const char *option, double minimum, double maximum) const;
    std::optional<unsigned> milliseconds(const char *option) const;
    /** An enumerator of `Class::Type` by its name, in any case; the names in `refused` do not count. */
    template<typename Class>
    std::optional<typename Class::Type> enumerator(const char *option, const QByteArrayList &refused = {}) const
    {
        const auto number = enumeratorOf(option, QMetaEnum::fromType<typename Class::Type>(), refused);
        return number ? std::optional(typename Class::Type(*number)) : std::nullopt;
    }

private:
    std::optional<int> enumeratorOf(const char *option, const QMetaEnum &type, const QByteArrayList &refused) const;
    [[noreturn]] void refuse(const char *option, const QString &expected) const;

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
