#pragma once

#include "Logger.h"

#include <type_traits>

namespace voro::multimedia {

/** Logs under the caller's name that a signal follows, and its argument; an enumerator by name. */
template<typename Value>
void announce(const FunctionTracer &tracer, const char *signal, const char *name, const Value &value)
{
    DEBUG_LINE << "emit " << signal << "()";
    if constexpr (std::is_enum_v<Value>) {
        DEBUG_LINE << "  " << name << "=" << keyName(value);
    } else {
        DEBUG_LINE << "  " << name << "=" << value;
    }
}

/** The same for a signal without an argument. */
inline void announce(const FunctionTracer &tracer, const char *signal)
{
    DEBUG_LINE << "emit " << signal << "()";
}

} // namespace voro::multimedia
