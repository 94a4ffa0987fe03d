#pragma once

#include "Dictionary.h"
#include "Logger.h"
#include "MmrContextNotifier.h"
#include "Values.h"

#include <voro/mmr.h>

#include <QtCore/QObject>

#include <optional>
#include <utility>

namespace voro::multimedia {

/** Logs a refusal under its caller's name and passes it on. */
inline MediaError::Type report(const FunctionTracer &tracer, MediaError::Type error, const char *text)
{
    if (error != MediaError::None)
        CRITICAL_LINE << text << keyName(error);
    return error;
}

template<typename Public>
class Emission;

/**
 * What has a renderer context of its own, and the rules for calling the renderer. Functions that take the tracer of
 * their caller log in the caller's name.
 *
 * It is the private object of a public one, which may be destroyed in a slot of each of its own signals. Then the
 * private object is an orphan, without context, until everything that was under way has returned.
 */
template<typename Public>
class ContextOwner : public QObject {
public:
    explicit ContextOwner(Public *object) : QObject(object), q(object) {}

    virtual MediaError::Type lastError() const = 0;

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

    /** Ends the context; the public object's destructor calls it. */
    void end()
    {
        q = nullptr;
        if (m_context)
            mmr_context_destroy(std::exchange(m_context, nullptr));
        if (m_connection)
            mmr_disconnect(std::exchange(m_connection, nullptr));
        if (m_emissions == 0)
            return;
        setParent(nullptr);
        m_notifier->disconnect();
        m_notifier->monitor(nullptr);
    }

    mmr_connection_t *m_connection = nullptr;
    mmr_context_t *m_context = nullptr;
    MmrContextNotifier *m_notifier = new MmrContextNotifier(this);
    Public *q;

private:
    int m_emissions = 0;
};

/** Stands around each emission of a public object's signal; false when that object is gone. */
template<typename Public>
class Emission {
public:
    explicit Emission(ContextOwner<Public> *owner) : m_owner(owner) { ++m_owner->m_emissions; }
    /** An orphan goes when control is back in the event loop. That is asked for only when the slots have returned, so
        that an event loop of theirs is not the one. */
    ~Emission()
    {
        if (--m_owner->m_emissions == 0 && m_owner->isOrphan())
            m_owner->deleteLater();
    }
    Q_DISABLE_COPY_MOVE(Emission)

    explicit operator bool() const { return !m_owner->isOrphan(); }
    Public *operator->() const { return m_owner->q; }

private:
    ContextOwner<Public> *const m_owner;
};

} // namespace voro::multimedia
