#include "Arguments.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <cmath>

namespace voro {

namespace {

constexpr Option HelpOption{"--help", nullptr, "says this"};

const Option &findOption(const CommandHelp &help, const QByteArray &name)
{
    if (name == HelpOption.name) {
        return HelpOption;
    }
    const auto found = std::find_if(help.options.begin(), help.options.end(),
                                    [&](const Option &option) { return name == option.name; });
    if (found == help.options.end()) {
        throw UsageError{QStringLiteral("unknown option '%1'").arg(QString::fromLocal8Bit(name))};
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
        const bool isOperand = !argument->startsWith('-') || *argument == "-";
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
    return text + line(HelpOption);
}

} // namespace voro
