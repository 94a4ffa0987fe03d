#include <voro/PpsObject.h>

#include <QtCore/QStringList>

#include <private/Announcement.h>
#include <private/MmrContextNotifier.h>
#include <private/Values.h>

#include <algorithm>

namespace voro::multimedia {

void MmrContextNotifier::onPpsStatusChanged(const QMap<QString, voro::PpsAttribute> &map)
{
    TRACE_FUNCTION();
    reportPosition(tracer, map.value(QStringLiteral("position")).toString());

    const auto bufferLevel = map.constFind(QStringLiteral("bufferlevel"));
    if (bufferLevel != map.constEnd()) {
        if (const auto level = changedLevel(tracer, "buffer", "bufferlevel", bufferLevel->toString(), m_bufferLevel)) {
            logSignal(tracer, "buffering", "level", *level);
            Q_EMIT buffering(*level);
        }
    }
    const auto bufferStatus = map.constFind(QStringLiteral("bufferstatus"));
    if (bufferStatus != map.constEnd()) {
        reportBufferStatus(tracer, bufferStatus->toString());
    }

    const auto volume = map.constFind(QStringLiteral("volume"));
    if (volume != map.constEnd()) {
        if (const auto level = changedLevel(tracer, "volume", "volume", volume->toString(), m_volumeLevel)) {
            logSignal(tracer, "volumeLevelChanged", "level", *level);
            Q_EMIT volumeLevelChanged(*level);
        }
    }
}

void MmrContextNotifier::reportPosition(const FunctionTracer &tracer, const QString &text)
{
    unsigned int track = 0;
    unsigned int position = 0;
    if (!decodePosition(text, track, position)) {
        WARNING_LINE << "Unable to decode error position. error_pos=" << text;
    } else if (replace(m_position, position)) {
        logSignal(tracer, "position", "position", m_position);
        Q_EMIT positionChanged(m_position);
    }
}

void MmrContextNotifier::reportBufferStatus(const FunctionTracer &tracer, const QString &text)
{
    bool ok = false;
    const BufferStatus::Type status = toBufferStatus(text, &ok);
    if (!ok) {
        WARNING_LINE << "Unable to buffer status. bufferstatus=" << text;
    } else if (replace(m_bufferStatus, status)) {
        logSignal(tracer, "bufferStatus", "bufferStatus", m_bufferStatus);
        Q_EMIT bufferStatusChanged(m_bufferStatus);
    }
}

/** The level to report; empty when it equals the stored one or cannot be decoded. */
std::optional<double> MmrContextNotifier::changedLevel(const FunctionTracer &tracer, const char *name,
                                                       const char *attribute, const QString &text, double &stored)
{
    unsigned int level = 0;
    unsigned int maximum = 0;
    if (!decodeLevel(text, level, maximum)) {
        WARNING_LINE << "Unable to decode " << name << " level. " << attribute << "=" << text;
        return std::nullopt;
    }
    if (maximum == 0) {
        WARNING_LINE << "Unable to calculate " << name << " level; division by zero. " << attribute << "=" << text;
        return std::nullopt;
    }
    const double ratio = static_cast<double>(level) / maximum;
    if (!replace(stored, ratio)) {
        return std::nullopt;
    }
    return std::clamp(ratio, 0.0, 100.0);
}

bool MmrContextNotifier::decodePosition(const QString &data, unsigned int &track, unsigned int &position)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "data=" << data;
    const QStringList parts = data.split(QLatin1Char(':'));
    switch (parts.size()) {
    case 1:
        position = parts[0].toUInt();
        track = 1;
        return true;
    case 2:
        track = parts[0].toUInt();
        position = parts[1].toUInt();
        return true;
    default:
        return false;
    }
}

bool MmrContextNotifier::decodeLevel(const QString &data, unsigned int &level, unsigned int &maximum)
{
    TRACE_FUNCTION();
    DEBUG_LINE << "data=" << data;
    const QStringList parts = data.split(QLatin1Char('/'));
    if (parts.size() != 2) {
        return false;
    }
    level = parts[0].toUInt();
    maximum = parts[1].toUInt();
    return true;
}

BufferStatus::Type MmrContextNotifier::toBufferStatus(const QString &status, bool *ok)
{
    TRACE_FUNCTION();
    if (ok) {
        *ok = true;
    }
    if (status == QLatin1String("buffering")) {
        return BufferStatus::Buffering;
    }
    if (status == QLatin1String("playing")) {
        return BufferStatus::Playing;
    }
    if (status != QLatin1String("idle") && ok) {
        *ok = false;
    }
    return BufferStatus::Idle;
}

} // namespace voro::multimedia
