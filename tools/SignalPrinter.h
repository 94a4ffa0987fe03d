#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QMetaMethod>
#include <QtCore/QObject>
#include <QtCore/QVariant>

#include <functional>
#include <utility>
#include <vector>

namespace voro {

/**
 * Prints every signal of an object as one JSON object a line: `t`, the milliseconds since the printer was made,
 * `signal`, and the arguments under their names, enumerations by enumerator name.
 *
 * Of a typed signal and its twin with a QVariant the typed one is printed.
 */
class SignalPrinter : public QObject {
public:
    /** Prints the signals that the object's class declares, not the inherited ones, line by line to `sink`. */
    SignalPrinter(QObject *sender, std::function<void(const QByteArray &)> sink, QObject *parent = nullptr);

    /** A line of the printer's form. */
    static QByteArray line(qint64 milliseconds, const QByteArray &name,
                           const std::vector<std::pair<QByteArray, QVariant>> &arguments);

    /** Prints something else in the same form. */
    void print(const QByteArray &name, const std::vector<std::pair<QByteArray, QVariant>> &arguments) const;

    /** Receives every signal; the slots are numbers, not functions, and so need no list of the signals. */
    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

private:
    void print(const QMetaMethod &signal, void **arguments) const;

    std::vector<QMetaMethod> m_signals;
    std::function<void(const QByteArray &)> m_sink;
    QElapsedTimer m_time;
};

} // namespace voro
