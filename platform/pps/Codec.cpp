#include "Json.h"
#include "Text.h"

#include <voro/PpsObject.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <map>

namespace voro {

namespace {

using pps::Line;

QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QVariant toVariant(const pps::Number &number)
{
    if (!number.integral) {
        return number.real;
    }
    if (number.integer >= std::numeric_limits<int>::min() && number.integer <= std::numeric_limits<int>::max()) {
        return static_cast<int>(number.integer);
    }
    return static_cast<qint64>(number.integer);
}

// --- Decoding

struct JsonBuilder {
    using Value = QVariant;
    using List = QVariantList;
    using Map = QVariantMap;
    static Value null() { return {}; }
    static Value boolean(bool value) { return value; }
    static Value number(const pps::Number &value) { return toVariant(value); }
    static Value string(std::string_view text) { return toQString(text); }
    static void append(List &list, Value &&value) { list.append(std::move(value)); }
    static void insert(Map &map, std::string_view key, Value &&value) { map.insert(toQString(key), std::move(value)); }
    static Value list(List &&list) { return std::move(list); }
    static Value map(Map &&map) { return std::move(map); }
};

bool decodeValue(const Line &line, QVariant &value)
{
    if (line.encoding.empty()) {
        value.setValue(toQString(line.value));
        return true;
    }
    if (line.encoding == "json") {
        return pps::JsonReader<JsonBuilder>(line.value).read(value);
    }
    switch (line.encoding.size() == 1 ? line.encoding.front() : '\0') {
    case 'n': {
        pps::Number number;
        const bool isNumber = pps::parseNumber(line.value, number);
        value = toVariant(number);
        return isNumber;
    }
    case 'b':
        value.setValue(line.value == "true");
        return line.value == "true" || line.value == "false";
    case 'c': {
        std::string text;
        const bool isEscaped = pps::unescape(line.value, text);
        value.setValue(toQString(text));
        return isEscaped;
    }
    default:
        return false;
    }
}

// Attribute names repeat in every message, so a name's text is made once per thread.
QString attributeName(std::string_view name)
{
    struct Known {
        char bytes[24];
        size_t size = 0;
        QString text;
    };
    static thread_local Known table[32];
    Known &known = table[(name.size() * 31 + static_cast<unsigned char>(name.back()) * 7
                          + static_cast<unsigned char>(name[name.size() / 2]))
                         % std::size(table)];
    if (name != std::string_view(known.bytes, known.size)) {
        if (name.size() > sizeof known.bytes) {
            return toQString(name);
        }
        known.size = name.copy(known.bytes, sizeof known.bytes);
        known.text = toQString(name);
    }
    return known.text;
}

PpsAttributeFlag::Types flagsOf(char mark)
{
    switch (mark) {
    case '-':
        return PpsAttributeFlag::Deleted;
    case '+':
        return PpsAttributeFlag::Created;
    case '*':
        return PpsAttributeFlag::Truncated;
    default:
        return {};
    }
}

// Reads the text of whole objects; Object takes the attributes of one.
template<typename Object, typename Finish>
bool decodeObjects(const QByteArray &data, Finish finish)
{
    pps::LineReader reader({data.constData(), static_cast<size_t>(data.size())});
    Line line;
    QString name;
    PpsAttributeFlag::Types flags;
    Object object;
    while (reader.nextUnchecked(line)) {
        if (line.kind == Line::Kind::Object) {
            if (!name.isEmpty()) {
                finish(name, std::exchange(object, {}), flags);
            }
            name = QLatin1Char('@') + toQString(line.name);
            flags = flagsOf(line.mark);
        } else if (name.isEmpty() || !object.add(line)) {
            return false;
        }
    }
    if (!name.isEmpty() && !reader.failed()) {
        finish(name, std::move(object), flags);
    }
    return !reader.failed();
}

// Attributes mostly come in the order of their names, so that the end is where the next one belongs.
template<typename Value>
void insertAttribute(std::map<QString, Value> &attributes, std::string_view name, Value &&value)
{
    attributes.insert_or_assign(attributes.end(), attributeName(name), std::move(value));
}

struct PlainObject {
    std::map<QString, QVariant> attributes;

    bool add(const Line &line)
    {
        QVariant value;
        if (!decodeValue(line, value)) {
            return false;
        }
        if (line.mark == '-') {
            attributes.erase(attributeName(line.name));
        } else {
            insertAttribute(attributes, line.name, std::move(value));
        }
        return true;
    }
};

struct FlaggedObject {
    std::map<QString, PpsAttribute> attributes;

    bool add(const Line &line)
    {
        QVariant value;
        const bool isBare = line.mark == '-' && line.whole.size() == line.name.size() + 1;
        if (!isBare && !decodeValue(line, value)) {
            return false;
        }
        insertAttribute(attributes, line.name, PpsAttribute(std::move(value), flagsOf(line.mark)));
        return true;
    }
};

// --- Encoding

template<typename Value>
bool appendReal(std::string &out, Value value)
{
    char digits[32];
    if (!std::isfinite(value)) {
        return false;
    }
    out.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    return true;
}

// Appends a value of any number type; false for any other type and for what has no digits.
bool appendAnyNumber(std::string &out, const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Long:
    case QMetaType::Short:
    case QMetaType::SChar:
    case QMetaType::Char:
        out += std::to_string(value.toLongLong());
        return true;
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::ULong:
    case QMetaType::UShort:
    case QMetaType::UChar:
        out += std::to_string(value.toULongLong());
        return true;
    case QMetaType::Float:
        return appendReal(out, value.toFloat());
    case QMetaType::Double:
        return appendReal(out, value.toDouble());
    default:
        return false;
    }
}

void appendJsonText(std::string &out, const QString &text)
{
    pps::appendJsonString(out, text.toUtf8().toStdString());
}

bool appendJson(std::string &out, const QVariant &value, int depth);

bool appendJsonMap(std::string &out, const QVariantMap &map, int depth)
{
    out += '{';
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        if (entry != map.cbegin()) {
            out += ',';
        }
        appendJsonText(out, entry.key());
        out += ':';
        if (!appendJson(out, entry.value(), depth + 1)) {
            return false;
        }
    }
    out += '}';
    return true;
}

bool appendJsonList(std::string &out, const QVariantList &list, int depth)
{
    out += '[';
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (i > 0) {
            out += ',';
        }
        if (!appendJson(out, list.at(i), depth + 1)) {
            return false;
        }
    }
    out += ']';
    return true;
}

bool appendJson(std::string &out, const QVariant &value, int depth)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
    case QMetaType::Nullptr:
        out += "null";
        return true;
    case QMetaType::QString:
        appendJsonText(out, value.toString());
        return true;
    case QMetaType::Bool:
        out += value.toBool() ? "true" : "false";
        return true;
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
        return depth < pps::MaximumJsonDepth && appendJsonMap(out, value.toMap(), depth);
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return depth < pps::MaximumJsonDepth && appendJsonList(out, value.toList(), depth);
    default:
        return appendAnyNumber(out, value);
    }
}

bool appendAttribute(std::string &out, const std::string &name, const QVariant &value)
{
    if (!pps::isValidName(name)) {
        return false;
    }
    switch (value.typeId()) {
    case QMetaType::UnknownType:
    case QMetaType::Nullptr:
        return false;
    case QMetaType::QString:
        pps::appendText(out, name, value.toString().toUtf8().toStdString());
        return true;
    case QMetaType::Bool:
        pps::appendBool(out, name, value.toBool());
        return true;
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
    case QMetaType::QVariantList:
    case QMetaType::QStringList: {
        out.append(name).append(":json:");
        const bool isJson = appendJson(out, value, 0);
        out += '\n';
        return isJson;
    }
    default: {
        out.append(name).append(":n:");
        const bool isNumber = appendAnyNumber(out, value);
        out += '\n';
        return isNumber;
    }
    }
}

void setOk(bool *ok, bool value)
{
    if (ok) {
        *ok = value;
    }
}

} // namespace

QByteArray PpsObject::encode(const QVariantMap &map, bool *ok)
{
    std::string out;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        if (!appendAttribute(out, entry.key().toUtf8().toStdString(), entry.value())) {
            setOk(ok, false);
            return {};
        }
    }
    setOk(ok, true);
    return QByteArray::fromStdString(out);
}

QVariantMap PpsObject::decode(const QByteArray &data, bool *ok)
{
    QVariantMap objects;
    const auto finish = [&objects](const QString &name, PlainObject &&object, PpsAttributeFlag::Types flags) {
        if (flags & PpsAttributeFlag::Deleted) {
            objects.remove(name);
        } else {
            objects.insert(name, QVariantMap(std::move(object.attributes)));
        }
    };
    const bool isGood = decodeObjects<PlainObject>(data, finish);
    setOk(ok, isGood);
    return isGood ? objects : QVariantMap();
}

QMap<QString, PpsAttribute> PpsObject::decodeWithFlags(const QByteArray &data, bool *ok)
{
    QMap<QString, PpsAttribute> objects;
    const auto finish = [&objects](const QString &name, FlaggedObject &&object, PpsAttributeFlag::Types flags) {
        objects.insert(name, PpsAttribute(QMap<QString, PpsAttribute>(std::move(object.attributes)), flags));
    };
    const bool isGood = decodeObjects<FlaggedObject>(data, finish);
    setOk(ok, isGood);
    return isGood ? objects : QMap<QString, PpsAttribute>();
}

} // namespace voro
