#include "Arguments.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <numeric>

namespace voro {

namespace {

constexpr Option HelpOption{"--help", nullptr, "says this"};

/** How many letters have to be put in, left out, replaced or swapped to make one text of the other. */
qsizetype distance(const QByteArray &one, const QByteArray &other)
{
    std::vector<std::vector<qsizetype>> table(static_cast<size_t>(one.size() + 1));
    for (size_t i = 0; i < table.size(); ++i) {
        table[i].assign(static_cast<size_t>(other.size() + 1), static_cast<qsizetype>(i));
    }
    std::iota(table[0].begin(), table[0].end(), 0);
    for (size_t i = 1; i < table.size(); ++i) {
        for (size_t j = 1; j < table[i].size(); ++j) {
            const auto at = [](const QByteArray &text, size_t place) {
                return text[static_cast<qsizetype>(place) - 1];
            };
            const bool isSame = at(one, i) == at(other, j);
            table[i][j] = std::min({table[i - 1][j] + 1, table[i][j - 1] + 1, table[i - 1][j - 1] + (isSame ? 0 : 1)});
            if (i > 1 && j > 1 && at(one, i) == at(other, j - 1) && at(one, i - 1) == at(other, j)) {
                table[i][j] = std::min(table[i][j], table[i - 2][j - 2] + 1);
            }
        }
    }
    return table.back().back();
}

const Option &findOption(const CommandHelp &help, const QByteArray &name)
{
    if (name == HelpOption.name || name == "-h") {
        return HelpOption;
    }
    const auto found = std::find_if(help.options.begin(), help.options.end(),
                                    [&](const Option &option) { return name == option.name; });
    if (found == help.options.end()) {
        refuseUnknown("option", name, namesOf(help.options) << HelpOption.name);
    }
    return *found;
}

[[noreturn]] void refuse(const char *name, const QByteArray &text, const QString &expected)
{
    throw UsageError{
        QStringLiteral("%1: '%2' is not %3").arg(QLatin1String(name), QString::fromLocal8Bit(text), expected)};
}

} // namespace

Arguments::Arguments(const CommandHelp &help, const QByteArrayList &raw)
{
    for (auto argument = raw.begin(); argument != raw.end(); ++argument) {
        if (*argument == "--") {
            m_operands.append(QByteArrayList(argument + 1, raw.end()));
            return;
        }
        const bool isNumber = argument->size() > 1 && isdigit((*argument)[1] & 0xff);
        const bool isOperand = !argument->startsWith('-') || *argument == "-" || isNumber;
        if (isOperand && help.operandsMayBeginWithDash) {
            m_operands.append(QByteArrayList(argument, raw.end()));
            return;
        }
        if (isOperand) {
            m_operands.append(*argument);
            continue;
        }
        const auto equals = argument->indexOf('=');
        const Option &option = findOption(help, equals < 0 ? *argument : argument->left(equals));
        if (!option.placeholder) {
            if (equals >= 0) {
                throw UsageError{QStringLiteral("%1 takes no value").arg(QLatin1String(option.name))};
            }
            m_values.insert(option.name, {});
        } else if (equals >= 0) {
            m_values.insert(option.name, argument->mid(equals + 1));
        } else if (argument + 1 != raw.end()) {
            m_values.insert(option.name, *++argument);
        } else {
            throw UsageError{
                QStringLiteral("%1: %2 is missing").arg(QLatin1String(option.name), QLatin1String(option.placeholder))};
        }
    }
}

std::optional<QByteArray> Arguments::value(const char *option) const
{
    const auto found = m_values.find(option);
    return found == m_values.end() ? std::nullopt : std::optional(*found);
}

std::optional<double> Arguments::number(const char *option, double minimum, double maximum) const
{
    const auto text = value(option);
    return text ? std::optional(numberFrom(option, *text, minimum, maximum)) : std::nullopt;
}

std::optional<unsigned> Arguments::milliseconds(const char *option) const
{
    const auto text = value(option);
    return text ? std::optional(millisecondsFrom(option, *text)) : std::nullopt;
}

std::optional<unsigned> Arguments::time(const char *option) const
{
    const auto text = value(option);
    return text ? std::optional(timeFrom(option, *text)) : std::nullopt;
}

double numberFrom(const char *name, const QByteArray &text, double minimum, double maximum)
{
    bool ok = false;
    const double number = text.toDouble(&ok);
    if (!ok || !std::isfinite(number) || number < minimum || number > maximum) {
        refuse(name, text, QStringLiteral("a number from %1 to %2").arg(minimum).arg(maximum));
    }
    return number;
}

unsigned millisecondsFrom(const char *name, const QByteArray &text)
{
    bool ok = false;
    const unsigned number = text.toUInt(&ok);
    if (!ok) {
        refuse(name, text, QStringLiteral("a whole number of milliseconds"));
    }
    return number;
}

unsigned timeFrom(const char *name, const QByteArray &text)
{
    const QByteArrayList parts = text.split(':');
    if (parts.size() == 1) {
        bool isNumber = false;
        const unsigned milliseconds = text.toUInt(&isNumber);
        if (isNumber) {
            return milliseconds;
        }
    }
    double seconds = 0;
    bool isTime = parts.size() == 2 || parts.size() == 3;
    for (const QByteArray &part : parts) {
        const bool isFirst = &part == &parts.first();
        const bool isLast = &part == &parts.last();
        bool isNumber = false;
        const double number = isLast ? part.toDouble(&isNumber) : part.toUInt(&isNumber);
        isTime = isTime && isNumber && number >= 0 && (isFirst || number < 60);
        seconds = seconds * 60 + number;
    }
    const double milliseconds = std::round(seconds * 1000);
    if (!isTime || !(milliseconds <= std::numeric_limits<unsigned>::max())) {
        refuse(name, text, QStringLiteral("a time as 1:30, or a whole number of milliseconds"));
    }
    return static_cast<unsigned>(milliseconds);
}

double volumeFrom(const char *name, const QByteArray &text)
{
    const bool isPercentage = text.endsWith('%');
    bool isNumber = false;
    const double number = (isPercentage ? text.chopped(1) : text).toDouble(&isNumber) / (isPercentage ? 100 : 1);
    // A sign would be that of a change.
    const bool hasSign = text.startsWith('+') || text.startsWith('-');
    if (!isNumber || hasSign || !(number >= 0 && number <= 1)) {
        refuse(name, text, QStringLiteral("a number from 0 to 1 or a percentage"));
    }
    return number;
}

void refuseUnknown(const char *kind, const QByteArray &name, const QByteArrayList &known)
{
    constexpr qsizetype ShortName = 4;
    const qsizetype mostErrors = name.size() > ShortName ? 2 : 1;
    const auto nearest =
        std::min_element(known.begin(), known.end(), [&](const QByteArray &one, const QByteArray &other) {
            return distance(name, one) < distance(name, other);
        });
    const bool isNear = nearest != known.end() && distance(name, *nearest) <= mostErrors;
    const QString hint = isNear ? QStringLiteral("; did you mean '%1'?").arg(QString::fromLatin1(*nearest)) : QString();
    throw UsageError{QStringLiteral("unknown %1 '%2'").arg(QLatin1String(kind), QString::fromLocal8Bit(name)) + hint};
}

int enumeratorFrom(const char *name, const QByteArray &text, const QMetaEnum &type, const QByteArrayList &refused)
{
    QStringList names;
    for (int i = 0; i < type.keyCount(); ++i) {
        const QByteArray key = type.key(i);
        if (refused.contains(key)) {
            continue;
        }
        if (key.compare(text, Qt::CaseInsensitive) == 0) {
            return type.value(i);
        }
        names.append(QString::fromLatin1(key));
    }
    refuse(name, text, QStringLiteral("one of ") + names.join(QStringLiteral(", ")));
}

bool switchFrom(const char *name, const QByteArray &text)
{
    if (text != "on" && text != "off") {
        refuse(name, text, QStringLiteral("on or off"));
    }
    return text == "on";
}

QByteArray helpText(const CommandHelp &help)
{
    QByteArray text = QByteArray("usage: voro ") + help.name + ' ' + help.synopsis + "\n\n" + help.details + "\n\n";
    const auto line = [](const Option &option) {
        QByteArray name = option.name;
        if (option.placeholder) {
            name += QByteArray(" ") + option.placeholder;
        }
        return "  " + name.leftJustified(20) + "  " + option.description + '\n';
    };
    for (const Option &option : help.options) {
        text += line(option);
    }
    text += line(HelpOption);
    return help.keys ? text + "\nKeys:\n" + help.keys() : text;
}

} // namespace voro
