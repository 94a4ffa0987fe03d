#include "SignalLog.h"

#include <QtCore/QDebug>
#include <QtCore/QMetaEnum>
#include <QtCore/QUrl>
#include <QtCore/QVariant>

namespace {

QString debugText(const QVariant &value)
{
    QString text;
    QDebug(&text).nospace().noquote() << value;
    // Without the frame "QVariant(TYPE, …)" that Qt puts around it.
    const qsizetype comma = text.indexOf(QLatin1String(", "));
    return comma < 0 ? text : text.mid(comma + 2).chopped(1);
}

QString described(const QMetaMethod &method, void **arguments)
{
    QStringList values;
    for (int i = 0; i < method.parameterCount(); ++i) {
        // Qt reads it without the sanitizer that would tell when it is gone.
        static_cast<void>(*static_cast<const volatile char *>(arguments[i + 1]));
        const QMetaType type = method.parameterMetaType(i);
        const auto *variant = static_cast<const QVariant *>(arguments[i + 1]);
        values += type == QMetaType::fromType<QVariant>()
                      ? QLatin1String(variant->metaType().name()) + QLatin1Char(' ') + shown(*variant)
                      : shown(QVariant(type, arguments[i + 1]));
    }
    return QString::fromLatin1(method.name()) + QLatin1Char('(') + values.join(QLatin1String(", ")) + QLatin1Char(')');
}

} // namespace

QString shown(const QVariant &value)
{
    const QMetaType type = value.metaType();
    if (type.flags().testFlag(QMetaType::IsEnumeration)) {
        const QMetaEnum enumeration = type.metaObject()->enumerator(type.metaObject()->indexOfEnumerator("Type"));
        return QLatin1String(enumeration.valueToKey(value.toInt()));
    }
    return value.canConvert<QString>() ? value.toString() : debugText(value);
}

SignalLog::SignalLog(QObject *sender, QStringList &trace) : m_trace(trace)
{
    const QMetaObject &metaObject = *sender->metaObject();
    for (int i = QObject::staticMetaObject.methodCount(); i < metaObject.methodCount(); ++i) {
        const QMetaMethod method = metaObject.method(i);
        if (method.methodType() != QMetaMethod::Signal) {
            continue;
        }
        QMetaObject::connect(sender, i, this,
                             QObject::staticMetaObject.methodCount() + static_cast<int>(m_signals.size()),
                             Qt::DirectConnection);
        m_signals += method;
    }
}

int SignalLog::qt_metacall(QMetaObject::Call call, int id, void **arguments)
{
    id = QObject::qt_metacall(call, id, arguments);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod) {
        return id;
    }
    const QMetaMethod &method = m_signals.at(id);
    const QString text = described(method, arguments);
    m_trace += text;
    if (m_then) {
        m_then();
        // A slot may go on with its arguments, whatever it did.
        if (described(method, arguments) != text) {
            m_trace += text + QLatin1String(" has changed");
        }
    }
    return -1;
}
