#pragma once

#include "Logger.h"

#include <QtCore/QMetaMethod>

#include <type_traits>

namespace voro::multimedia {

inline void logArguments(const FunctionTracer &) {}

template<typename Value, typename... Rest>
void logArguments(const FunctionTracer &tracer, const char *name, const Value &value, const Rest &...rest)
{
    if constexpr (std::is_enum_v<Value>) {
        DEBUG_LINE << "  " << name << "=" << keyName(value);
    } else {
        DEBUG_LINE << "  " << name << "=" << value;
    }
    logArguments(tracer, rest...);
}

/** Logs under the caller's name that a signal follows, and its arguments as pairs of name and value. */
template<typename... Arguments>
void logSignal(const FunctionTracer &tracer, const char *signal, const Arguments &...arguments)
{
    DEBUG_LINE << "emit " << signal << "()";
    logArguments(tracer, arguments...);
}

/** The same; the signal's name is looked up only when it is written. */
template<typename Object, typename... Parameters, typename... Arguments>
void logSignal(const FunctionTracer &tracer, void (Object::*signal)(Parameters...), const Arguments &...arguments)
{
    DEBUG_LINE << "emit " << QMetaMethod::fromSignal(signal).name().constData() << "()";
    logArguments(tracer, arguments...);
}

} // namespace voro::multimedia
