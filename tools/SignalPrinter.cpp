#include "SignalPrinter.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QMetaEnum>
#include <QtCore/QSize>
#include <QtCore/QUrl>

namespace voro {

namespace {

bool hasVariant(const QMetaMethod &method)
{
    for (int i = 0; i < method.parameterCount(); ++i) {
        if (method.parameterType(i) == QMetaType::QVariant) {
            return true;
        }
    }
    return false;
}

/** Whether another signal tells the same with types of its own. */
bool isTwin(const QMetaObject &type, const QMetaMethod &method)
{
    if (!hasVariant(method)) {
        return false;
    }
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        if (type.method(i).name() == method.name() && !hasVariant(type.method(i))) {
            return true;
        }
    }
    return false;
}

QJsonValue jsonValue(const QVariant &value)
{
    const QMetaType type = value.metaType();
    if (type.flags() & QMetaType::IsEnumeration) {
        const QMetaObject *scope = type.metaObject();
        const QMetaEnum enumeration = scope ? scope->enumerator(scope->indexOfEnumerator("Type")) : QMetaEnum();
        const char *key = enumeration.valueToKey(value.toInt());
        return key ? QJsonValue(QLatin1String(key)) : QJsonValue(value.toInt());
    }
    if (type == QMetaType::fromType<QUrl>()) {
        return value.toUrl().toString(QUrl::FullyEncoded);
    }
    if (type == QMetaType::fromType<QSize>()) {
        return QJsonObject{{QStringLiteral("width"), value.toSize().width()},
                           {QStringLiteral("height"), value.toSize().height()}};
    }
    return QJsonValue::fromVariant(value);
}

QByteArray jsonText(const QJsonValue &value)
{
    const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

} // namespace

SignalPrinter::SignalPrinter(QObject *sender, std::function<void(const QByteArray &)> sink, QObject *parent)
    : QObject(parent),
      m_sink(std::move(sink))
{
    m_time.start();
    const QMetaObject &type = *sender->metaObject();
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        const QMetaMethod method = type.method(i);
        if (method.methodType() != QMetaMethod::Signal || isTwin(type, method)) {
            continue;
        }
        const int slot = QObject::staticMetaObject.methodCount() + static_cast<int>(m_signals.size());
        m_signals.push_back(method);
        QMetaObject::connect(sender, i, this, slot, Qt::DirectConnection);
    }
}

int SignalPrinter::qt_metacall(QMetaObject::Call call, int id, void **arguments)
{
    id = QObject::qt_metacall(call, id, arguments);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod) {
        return id;
    }
    if (static_cast<size_t>(id) < m_signals.size()) {
        print(m_signals[static_cast<size_t>(id)], arguments);
    }
    return id - static_cast<int>(m_signals.size());
}

QByteArray SignalPrinter::line(qint64 milliseconds, const QByteArray &name,
                               const std::vector<std::pair<QByteArray, QVariant>> &arguments)
{
    QByteArray line = "{\"t\":" + QByteArray::number(milliseconds) + ",\"signal\":\"" + name + '"';
    for (const auto &[argument, value] : arguments) {
        line += ",\"" + argument + "\":" + jsonText(jsonValue(value));
    }
    return line + "}\n";
}

void SignalPrinter::print(const QByteArray &name, const std::vector<std::pair<QByteArray, QVariant>> &arguments) const
{
    m_sink(line(m_time.elapsed(), name, arguments));
}

void SignalPrinter::print(const QMetaMethod &signal, void **arguments) const
{
    std::vector<std::pair<QByteArray, QVariant>> values;
    const QByteArrayList names = signal.parameterNames();
    for (int i = 0; i < signal.parameterCount(); ++i) {
        values.emplace_back(names.at(i), QVariant(signal.parameterMetaType(i), arguments[i + 1]));
    }
    print(signal.name(), values);
}

} // namespace voro
