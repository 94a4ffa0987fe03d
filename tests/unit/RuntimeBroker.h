#pragma once

#include "BrokerThread.h"

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

/** A broker without the daemon's services, in a runtime folder of its own that VORO_RUNTIME_DIR names. */
class RuntimeBroker {
public:
    RuntimeBroker();

    /**
     * Publishes an object of a folder: "NAME ATTRIBUTE…", each attribute as it stands in PPS text. A name may have "*"
     * before it, which replaces the object, or "-", which deletes it.
     */
    void publish(const QString &folder, const QString &object);

    voro::pps::BrokerThread &thread() { return m_thread; }

private:
    QTemporaryDir m_folder;
    voro::pps::BrokerThread m_thread;
};
