#include <QtCore/QCoreApplication>

#include <private/Logger.h>
#include <private/MediaUtils.h>

namespace voro::multimedia {

MediaUtils *MediaUtils::m_instance = nullptr;
QMutex MediaUtils::m_mutex;

MediaUtils::MediaUtils() : m_counter(0), m_processId(static_cast<qint32>(QCoreApplication::applicationPid()))
{
    TRACE_FUNCTION();
}

MediaUtils *MediaUtils::instance()
{
    TRACE_FUNCTION();
    const QMutexLocker locker(&m_mutex);
    if (!m_instance) {
        m_instance = new MediaUtils;
    }
    return m_instance;
}

QString MediaUtils::generateUniqueId()
{
    TRACE_FUNCTION();
    QString identifier = toIdentifier(m_processId, m_counter.fetchAndAddOrdered(1));
    DEBUG_LINE << QStringLiteral("generated: ") + identifier;
    return identifier;
}

QString MediaUtils::toIdentifier(qint32 processId, qint32 number)
{
    // A negative number is sign-extended, so its upper half overwrites the process id.
    const quint64 high = static_cast<quint64>(static_cast<quint32>(processId)) << 32;
    return QString::number(high | static_cast<quint64>(static_cast<qint64>(number)), 36);
}

} // namespace voro::multimedia
