#pragma once

#include "BrokerThread.h"

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

/** A broker without the daemon's services, in a runtime folder of its own that VORO_RUNTIME_DIR names. */
class RuntimeBroker {
public:
    RuntimeBroker();
    ~RuntimeBroker() { s_current = nullptr; }
    Q_DISABLE_COPY_MOVE(RuntimeBroker)

    /** The one that there is; null when there is none. */
    static RuntimeBroker *current() { return s_current; }

    /**
     * Publishes an object of a folder: "NAME ATTRIBUTE…", each attribute as it stands in PPS text. A name may have "*"
     * before it, which replaces the object, or "-", which deletes it.
     */
    void publish(const QString &folder, const QString &object);

    voro::pps::BrokerThread &thread() { return m_thread; }

private:
    static RuntimeBroker *s_current;
    QTemporaryDir m_folder;
    voro::pps::BrokerThread m_thread;
};
