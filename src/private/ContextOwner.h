#pragma once

#include "Dictionary.h"
#include "Logger.h"
#include "MmrContextNotifier.h"
#include "PrivateObject.h"

#include <voro/mmr.h>

#include <optional>
#include <utility>

namespace voro::multimedia {

/** Logs a refusal under its caller's name and passes it on. */
inline MediaError::Type report(const FunctionTracer &tracer, MediaError::Type error, const char *text)
{
    if (error != MediaError::None) {
        CRITICAL_LINE << text << keyName(error);
    }
    return error;
}

/**
 * What has a renderer context of its own, and the rules for calling the renderer. Functions that take the tracer of
 * their caller log in the caller's name. As an orphan it has no context.
 */
template<typename Public>
class ContextOwner : public PrivateObject<Public> {
public:
    using PrivateObject<Public>::PrivateObject;

    virtual MediaError::Type lastError() const = 0;

protected:
    bool hasContext(const FunctionTracer &tracer) const
    {
        if (!m_context) {
            CRITICAL_LINE << "MMR context is null";
        }
        return m_context;
    }

    /** The renderer's error when a call has failed, which is -1. */
    std::optional<MediaError::Type> failure(const FunctionTracer &tracer, int result, const char *text) const
    {
        if (result != -1) {
            return std::nullopt;
        }
        const MediaError::Type error = lastError();
        CRITICAL_LINE << text << keyName(error);
        return error;
    }

    /** The same for a call that ends the playing when it succeeds. */
    std::optional<MediaError::Type> failureToEnd(const FunctionTracer &tracer, int result, const char *text)
    {
        const auto error = failure(tracer, result, text);
        if (!error) {
            m_notifier->forgetPlaying();
        }
        return error;
    }

    /** Sets how often the context reports, in milliseconds. */
    MediaError::Type sendUpdateInterval(const FunctionTracer &tracer, unsigned int updateInterval)
    {
        DEBUG_LINE << "updateInterval=" << updateInterval;
        if (!hasContext(tracer)) {
            return MediaError::InvalidState;
        }
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

    /** Ends the context; the public object's destructor calls it. */
    void end()
    {
        const bool livesOn = this->becomeOrphan();
        if (m_context) {
            mmr_context_destroy(std::exchange(m_context, nullptr));
        }
        if (m_connection) {
            mmr_disconnect(std::exchange(m_connection, nullptr));
        }
        if (!livesOn) {
            return;
        }
        m_notifier->disconnect();
        m_notifier->monitor(nullptr);
    }

    mmr_connection_t *m_connection = nullptr;
    mmr_context_t *m_context = nullptr;
    MmrContextNotifier *m_notifier = new MmrContextNotifier(this);
};

} // namespace voro::multimedia
