#pragma once

#include <QtCore/QAtomicInt>
#include <QtCore/QMutex>
#include <QtCore/QString>

namespace voro::multimedia {

/** Generates identifiers that are unique on the device. May be used from any thread. */
class MediaUtils {
public:
    /** The only instance. It is never destroyed, so that it outlives every object that needs a name. */
    static MediaUtils *instance();

    QString generateUniqueId();

    /** The identifier of a process id and a number. */
    static QString toIdentifier(qint32 processId, qint32 number);

private:
    MediaUtils();

    QAtomicInt m_counter;
    qint32 m_processId;

    static MediaUtils *m_instance;
    static QMutex m_mutex;
};

} // namespace voro::multimedia
