#pragma once

#include <QtCore/QMetaMethod>
#include <QtCore/QObject>
#include <QtCore/QStringList>

/** Records every signal that an object's class adds to QObject into a trace, as "positionChanged(100)" or, where the
    argument is a variant, "positionChanged(uint 100)". Enumerators are shown by name. */
class SignalLog : public QObject {
public:
    SignalLog(QObject *sender, QStringList &trace);

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

private:
    QStringList &m_trace;
    QList<QMetaMethod> m_signals;
};
