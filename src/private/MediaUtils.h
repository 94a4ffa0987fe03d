#pragma once

#include <QtCore/QAtomicInt>
#include <QtCore/QMutex>
#include <QtCore/QString>

namespace voro::multimedia {

/** Hands out identifiers that no other object of the device has at the same time. May be used from any thread. */
class MediaUtils {
public:
    /** The only instance; it is never destroyed, so that it outlives every object that needs a name. */
    static MediaUtils *instance();

    QString generateUniqueId();

    /** The identifier that process and number make. */
    static QString toIdentifier(qint32 processId, qint32 number);

private:
    MediaUtils();

    QAtomicInt m_counter;
    qint32 m_processId;

    static MediaUtils *m_instance;
    static QMutex m_mutex;
};

} // namespace voro::multimedia
