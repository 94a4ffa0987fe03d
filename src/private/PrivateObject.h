#pragma once

#include "Values.h"

#include <QtCore/QObject>

namespace voro::multimedia {

template<typename Public>
class Emission;

/**
 * The private object of a public one, which may be destroyed in a slot of each of its own signals. Then the private
 * object is an orphan until everything that was under way has returned.
 */
template<typename Public>
class PrivateObject : public QObject {
public:
    explicit PrivateObject(Public *object) : QObject(object), q(object) {}

protected:
    friend class Emission<Public>;

    /** Whether the public object is gone. To be asked after an emission, before anything but a return. */
    bool isOrphan() const { return !q; }

    /** Stores what became known; false when there is nothing to tell, or nobody. */
    template<typename Value>
    bool learn(Value &stored, const Value &value)
    {
        return !isOrphan() && replace(stored, value);
    }

    /** The public object's destructor begins with it; false when the private object goes as well, as its child. */
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

/** Stands around each emission of a public object's signal; false when that object is gone. */
template<typename Public>
class Emission {
public:
    explicit Emission(PrivateObject<Public> *object) : m_object(object) { ++m_object->m_emissions; }
    /**
     * An orphan goes when control is back in the event loop. That is asked for only when the slots have returned, so
     * that an event loop of theirs is not the one.
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
