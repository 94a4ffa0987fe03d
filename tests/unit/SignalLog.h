#pragma once

#include <QtCore/QMetaMethod>
#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <functional>

/** A value as a text; an enumerator by its name. */
QString shown(const QVariant &value);

/**
 * Records every signal that an object's class adds to QObject into a trace, as "positionChanged(100)" or, where the
 * argument is a variant, "positionChanged(uint 100)". Enumerators are shown by name.
 */
class SignalLog : public QObject {
public:
    SignalLog(QObject *sender, QStringList &trace);

    /** Does something in the slot, after each record. */
    void setThen(const std::function<void()> &then) { m_then = then; }

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

private:
    QStringList &m_trace;
    QList<QMetaMethod> m_signals;
    std::function<void()> m_then;
};
