#include "World.h"

#include "Media.h"

#include <voro/PpsObject.h>

#include <QtCore/QMetaEnum>
#include <QtCore/QMetaProperty>
#include <QtCore/QTemporaryDir>

#include <LibraryClasses.h>

using namespace voro::multimedia;

namespace {

QString nameOf(const QMetaObject *type)
{
    return QString::fromLatin1(type->className()).section(QLatin1String("::"), -1);
}

const QMetaObject *classNamed(const QString &name)
{
    for (const QMetaObject *type : LibraryClasses) {
        if (nameOf(type) == name) {
            return type;
        }
    }
    qFatal("There is no class %s", qUtf8Printable(name));
}

QStringList methods(const QString &className, QMetaMethod::MethodType kind)
{
    const QMetaObject *type = classNamed(className);
    QStringList names;
    for (int i = type->methodOffset(); i < type->methodCount(); ++i) {
        if (const QMetaMethod method = type->method(i); method.methodType() == kind) {
            names += QString::fromLatin1(method.name());
        }
    }
    names.removeDuplicates();
    return names;
}

const QTemporaryDir &folder()
{
    static const QTemporaryDir folder;
    return folder;
}

} // namespace

QStringList World::classes()
{
    QStringList names;
    for (const QMetaObject *type : LibraryClasses) {
        names += nameOf(type);
    }
    return names;
}

QStringList World::properties(const QString &className) const
{
    const QMetaObject *type = classNamed(className);
    QStringList names;
    for (int i = type->propertyOffset(); i < type->propertyCount(); ++i) {
        names += QString::fromLatin1(type->property(i).name());
    }
    return names;
}

QStringList World::signalNames(const QString &className) const
{
    return methods(className, QMetaMethod::Signal);
}

QStringList World::slotNames(const QString &className) const
{
    return methods(className, QMetaMethod::Slot);
}

QStringList World::enumerators()
{
    QStringList all;
    for (const QMetaObject *type : LibraryEnumerations + QList{&SystemSound::staticMetaObject}) {
        const QMetaEnum enumeration = type->enumerator(type->indexOfEnumerator("Type"));
        for (int i = 0; i < enumeration.keyCount(); ++i) {
            all += QStringLiteral("%1.%2=%3")
                       .arg(nameOf(type), QString::fromLatin1(enumeration.key(i)))
                       .arg(enumeration.value(i));
        }
    }
    return all;
}

QUrl World::tone(const QString &name, double seconds, const QString &title) const
{
    return QUrl::fromLocalFile(
        media::makeTone(folder().filePath(name), {.seconds = seconds, .tags = {QLatin1String("title=") + title}}));
}

QUrl World::place(const QString &name) const
{
    return QUrl::fromLocalFile(folder().filePath(name));
}

void World::press(const QString &key, int milliseconds) const
{
    const QVariantMap request{
        {QStringLiteral("msg"), QStringLiteral("press")},
        {QStringLiteral("dat"), QVariantMap{{QStringLiteral("key"), key}, {QStringLiteral("ms"), milliseconds}}},
    };
    voro::PpsObject service(QStringLiteral("/pps/services/multimedia/mediakeys/control?wait"));
    if (!service.open(voro::PpsOpenMode::PublishSubscribe) || !service.write(voro::PpsObject::encode(request))
        || service.read().isEmpty()) {
        qFatal("The key cannot be pressed: %s", qUtf8Printable(service.errorString()));
    }
}
