#pragma once

#include "Dictionary.h"
#include "Failures.h"
#include "MmrContextNotifier.h"
#include "PrivateObject.h"

#include <voro/mmr.h>

#include <utility>

namespace voro::multimedia {

/**
 * Owns a renderer context and has the rules for calling the renderer. A function that takes its caller's tracer logs
 * under the caller's name. An orphan has no context.
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

    /** Whether a call that ends playback has succeeded. */
    bool hasEnded(int result)
    {
        if (result == -1) {
            return false;
        }
        m_notifier->forgetPlaying();
        return true;
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
            return fail(tracer, MediaError::OutOfMemory, "Unable to create parameter dictionary");
        }
        if (!dictionary.set(QStringLiteral("updateinterval"), QString::number(updateInterval))) {
            return fail(tracer, MediaError::InvalidParameter,
                        "Unable to create update interval parameter. updateInterval=", updateInterval, ", error=");
        }
        if (mmr_context_parameters(m_context, dictionary.release()) == -1) {
            return fail(tracer, lastError(), "Unable to set input parameters. error=");
        }
        return MediaError::None;
    }

    /** Announces an error that ended playback or recording. */
    void announceError(const FunctionTracer &tracer, MediaError::Type error, unsigned int position)
    {
        if (this->isOrphan()) {
            return;
        }
        logSignal(tracer, "error", "error", error, "position", position);
        const Emission<Public> to{this};
        if (to) {
            Q_EMIT to->error(error, position);
        }
        if (to) {
            Q_EMIT to->error(error, QVariant(position));
        }
    }

    /** Destroys the context. The public object's destructor calls this. */
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
