#pragma once

#include "Dictionary.h"
#include "Logger.h"
#include "MmrContextNotifier.h"

#include <voro/mmr.h>

#include <QtCore/QObject>

#include <optional>

namespace voro::multimedia {

/** Logs a refusal under its caller's name and passes it on. */
inline MediaError::Type report(const FunctionTracer &tracer, MediaError::Type error, const char *text)
{
    if (error != MediaError::None)
        CRITICAL_LINE << text << keyName(error);
    return error;
}

/** What has a renderer context of its own, and the rules for calling the renderer. Functions that take the tracer of
    their caller log in the caller's name. */
class ContextOwner : public QObject {
public:
    explicit ContextOwner(QObject *parent) : QObject(parent) {}

    virtual MediaError::Type lastError() const = 0;

protected:
    bool hasContext(const FunctionTracer &tracer) const
    {
        if (!m_context)
            CRITICAL_LINE << "MMR context is null";
        return m_context;
    }

    /** The renderer's error when a call has failed, which is -1. */
    std::optional<MediaError::Type> failure(const FunctionTracer &tracer, int result, const char *text) const
    {
        if (result != -1)
            return std::nullopt;
        const MediaError::Type error = lastError();
        CRITICAL_LINE << text << keyName(error);
        return error;
    }

    /** Sets how often the context reports, in milliseconds. */
    MediaError::Type sendUpdateInterval(const FunctionTracer &tracer, unsigned int updateInterval)
    {
        DEBUG_LINE << "updateInterval=" << updateInterval;
        if (!hasContext(tracer))
            return MediaError::InvalidState;
        Dictionary dictionary;
        if (dictionary.isNull()) {
            CRITICAL_LINE << "Unable to create parameter dictionary";
            return MediaError::OutOfMemory;
        }
        if (!dictionary.set(QStringLiteral("updateinterval"), QString::number(updateInterval))) {
            CRITICAL_LINE << "Unable to create update interval parameter. updateInterval=" << updateInterval
                          << ", error=" << keyName(MediaError::InvalidParameter);
            return MediaError::InvalidParameter;
        }
        return failure(tracer, mmr_context_parameters(m_context, dictionary.release()),
                       "Unable to set input parameters. error=")
            .value_or(MediaError::None);
    }

    void destroyContext()
    {
        if (m_context)
            mmr_context_destroy(m_context);
        if (m_connection)
            mmr_disconnect(m_connection);
    }

    mmr_connection_t *m_connection = nullptr;
    mmr_context_t *m_context = nullptr;
    MmrContextNotifier *m_notifier = new MmrContextNotifier(this);
};

} // namespace voro::multimedia
