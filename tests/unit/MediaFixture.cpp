#include "MediaFixture.h"

#include <QtCore/QEventLoop>
#include <QtCore/QMetaProperty>

QStringList propertiesOf(const QObject &object)
{
    QStringList lines;
    const QMetaObject &metaObject = *object.metaObject();
    for (int i = metaObject.propertyOffset(); i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        lines += QLatin1String(property.name()) + QLatin1Char('=') + shown(property.read(&object));
    }
    return lines;
}

void runEventLoop()
{
    QEventLoop loop;
    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    loop.exec();
}
