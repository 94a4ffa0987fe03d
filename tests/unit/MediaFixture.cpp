#include "MediaFixture.h"

#include <QtCore/QDebug>
#include <QtCore/QEventLoop>
#include <QtCore/QMetaProperty>

namespace {

QString shown(const QMetaProperty &property, const QVariant &value)
{
    if (value.metaType().flags().testFlag(QMetaType::IsEnumeration)) {
        return QLatin1String(property.enumerator().valueToKey(value.toInt()));
    }
    if (value.canConvert<QString>()) {
        return value.toString();
    }
    QString text;
    QDebug(&text).nospace() << value;
    return text;
}

} // namespace

QStringList propertiesOf(const QObject &object)
{
    QStringList lines;
    const QMetaObject &metaObject = *object.metaObject();
    for (int i = metaObject.propertyOffset(); i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        lines += QLatin1String(property.name()) + QLatin1Char('=') + shown(property, property.read(&object));
    }
    return lines;
}

bool isSignal(const QString &line)
{
    return line.endsWith(QLatin1Char(')'));
}

void runEventLoop()
{
    QEventLoop loop;
    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    loop.exec();
}
