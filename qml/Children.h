#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQml/QQmlListProperty>
#include <QtQml/qqmlregistration.h>

namespace voro::qml {

/** Lets a non-visual element have child objects, such as the keys or timers of a player. */
class Children : public QObject {
    Q_OBJECT
    Q_PROPERTY(QQmlListProperty<QObject> data READ data CONSTANT)
    Q_CLASSINFO("DefaultProperty", "data")
    QML_ANONYMOUS
public:
    using QObject::QObject;

    QQmlListProperty<QObject> data() { return {this, &m_data}; }

private:
    QList<QObject *> m_data;
};

} // namespace voro::qml
