#pragma once

#include "Logger.h"

#include <multimedia/RepeatMode.h>
#include <multimedia/ShuffleMode.h>

#include <QtCore/QString>

namespace voro::multimedia {

// The now-playing services' names of modes, for both sides. The lines carry the caller's name.

inline QString modeName(const FunctionTracer &tracer, RepeatMode::Type repeatMode)
{
    DEBUG_LINE << "repeatMode=" << keyName(repeatMode);
    switch (repeatMode) {
    case RepeatMode::Track:
        return QStringLiteral("track");
    case RepeatMode::All:
        return QStringLiteral("all");
    default:
        return QStringLiteral("none");
    }
}

inline QString modeName(const FunctionTracer &tracer, ShuffleMode::Type shuffleMode)
{
    DEBUG_LINE << "shuffleMode=" << keyName(shuffleMode);
    return shuffleMode == ShuffleMode::All ? QStringLiteral("all") : QStringLiteral("off");
}

/** Ends a failed conversion. Logs a warning only when the caller asks for `ok`. */
inline void refuseMode(const FunctionTracer &tracer, const char *kind, const QString &text, bool *ok)
{
    if (!ok) {
        return;
    }
    *ok = false;
    WARNING_LINE << "Unknown " << kind << " mode string '" << text << "'";
}

inline RepeatMode::Type repeatModeFrom(const FunctionTracer &tracer, const QString &text, bool *ok)
{
    if (ok) {
        *ok = true;
    }
    if (text == QLatin1String("track")) {
        return RepeatMode::Track;
    }
    if (text == QLatin1String("all")) {
        return RepeatMode::All;
    }
    if (text != QLatin1String("none")) {
        refuseMode(tracer, "repeat", text, ok);
    }
    return RepeatMode::None;
}

inline ShuffleMode::Type shuffleModeFrom(const FunctionTracer &tracer, const QString &text, bool *ok)
{
    if (ok) {
        *ok = true;
    }
    if (text == QLatin1String("all")) {
        return ShuffleMode::All;
    }
    if (text != QLatin1String("off")) {
        refuseMode(tracer, "shuffle", text, ok);
    }
    return ShuffleMode::Off;
}

} // namespace voro::multimedia
