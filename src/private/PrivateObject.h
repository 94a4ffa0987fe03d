#pragma once

#include "Announcement.h"
#include "Values.h"

#include <QtCore/QObject>
#include <QtCore/QVariant>

#include <functional>

namespace voro::multimedia {

template<typename Public>
class Emission;

/**
 * The private object of a public one. A slot of any signal may destroy the public object. The private object is an
 * orphan then, until all calls in progress have returned.
 */
template<typename Public>
class PrivateObject : public QObject {
public:
    explicit PrivateObject(Public *object) : QObject(object), q(object) {}

protected:
    friend class Emission<Public>;

    /** A signal that comes twice: typed, and then as a variant. */
    struct Twins {
        void (Public::*typed)(unsigned int);
        void (Public::*variant)(const QVariant &);
    };

    /** Whether the public object is gone. Ask after every emission, before anything but a return. */
    bool isOrphan() const { return !q; }

    /** Stores a reported value; false when it is not new or the public object is gone. */
    template<typename Value>
    bool learn(Value &stored, const Value &value)
    {
        return !isOrphan() && replace(stored, value);
    }

    /** Emits a signal without a line in the log. An orphan emits nothing. */
    template<typename... Parameters, typename... Arguments>
    void emitSignal(void (Public::*signal)(Parameters...), const Arguments &...arguments)
    {
        if (const Emission<Public> to{this}) {
            Q_EMIT std::invoke(signal, q, arguments...);
        }
    }

    /** Each of the two carries the value at its time: a slot of the first may change it. */
    void emitSignal(const Twins &signal, const unsigned int &value)
    {
        const Emission<Public> to{this};
        if (to) {
            Q_EMIT std::invoke(signal.typed, q, value);
        }
        if (to) {
            Q_EMIT std::invoke(signal.variant, q, QVariant(value));
        }
    }

    /** Logs under the caller's name that a signal follows, with its argument, and emits it. An orphan does neither. */
    template<typename Parameter, typename Value>
    void announce(const FunctionTracer &tracer, void (Public::*signal)(Parameter), const char *name, const Value &value)
    {
        if (!isOrphan()) {
            logSignal(tracer, signal, name, value);
            emitSignal(signal, value);
        }
    }

    void announce(const FunctionTracer &tracer, const Twins &signal, const char *name, const unsigned int &value)
    {
        if (!isOrphan()) {
            logSignal(tracer, signal.typed, name, value);
            emitSignal(signal, value);
        }
    }

    void announce(const FunctionTracer &tracer, void (Public::*signal)())
    {
        if (!isOrphan()) {
            logSignal(tracer, signal);
            emitSignal(signal);
        }
    }

    /** The public object's destructor calls this first. False when the private object is destroyed with it. */
    bool becomeOrphan()
    {
        q = nullptr;
        if (m_emissions == 0) {
            return false;
        }
        setParent(nullptr);
        return true;
    }

    Public *q;

private:
    int m_emissions = 0;
};

/** Guards the emission of a public object's signal; false when that object is gone. */
template<typename Public>
class Emission {
public:
    explicit Emission(PrivateObject<Public> *object) : m_object(object) { ++m_object->m_emissions; }
    /**
     * Destroys an orphan from the event loop. The request waits until the slots have returned, so that an event loop in
     * a slot does not destroy it.
     */
    ~Emission()
    {
        if (--m_object->m_emissions == 0 && m_object->isOrphan()) {
            m_object->deleteLater();
        }
    }
    Q_DISABLE_COPY_MOVE(Emission)

    explicit operator bool() const { return !m_object->isOrphan(); }
    Public *operator->() const { return m_object->q; }

private:
    PrivateObject<Public> *const m_object;
};

} // namespace voro::multimedia
