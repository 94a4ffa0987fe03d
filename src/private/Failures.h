#pragma once

#include "Logger.h"

#include <multimedia/MediaError.h>

#include <QtCore/QDebug>

#include <cstring>

namespace voro::multimedia {

// The idiom for errors: when a step fails, one statement logs that and returns the step's error. A step may fail
// without an error record; the command returns `None` then.

inline bool wantsErrorName(const char *text)
{
    return text && *text != '\0' && text[std::strlen(text) - 1] == '=';
}

template<typename Value>
bool wantsErrorName(const Value &)
{
    return false;
}

/** Streams the parts of a line. When the last one is a text that ends in "=", the error's name follows. */
template<typename... Parts>
void logFailure(QDebug line, MediaError::Type error, const Parts &...parts)
{
    (line << ... << parts);
    bool isNameWanted = false;
    ((isNameWanted = wantsErrorName(parts)), ...);
    if (isNameWanted) {
        line << keyName(error);
    }
}

/** Logs a critical line under the caller's name and returns the error. */
template<typename... Parts>
MediaError::Type fail(const FunctionTracer &tracer, MediaError::Type error, const Parts &...parts)
{
    logFailure(CRITICAL_LINE, error, parts...);
    return error;
}

/** The same with a warning. */
template<typename... Parts>
MediaError::Type refuse(const FunctionTracer &tracer, MediaError::Type error, const Parts &...parts)
{
    logFailure(WARNING_LINE, error, parts...);
    return error;
}

} // namespace voro::multimedia
