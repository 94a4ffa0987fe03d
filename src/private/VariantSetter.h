#pragma once

#include "Logger.h"

#include <QtCore/QVariant>

namespace voro::multimedia {

/**
 * Calls the typed setter with the number in a variant. A variant that is no number is refused with a warning. When the
 * warning ends in "=", the variant's text follows.
 */
template<typename Object, typename Result>
void setFromVariant(const FunctionTracer &tracer, Object *object, Result (Object::*setter)(unsigned int),
                    const char *name, const QVariant &value, const char *warning)
{
    DEBUG_LINE << name << "=" << value.toString();
    bool ok = false;
    const unsigned int number = value.toUInt(&ok);
    if (ok) {
        (object->*setter)(number);
    } else if (QLatin1String(warning).endsWith(QLatin1Char('='))) {
        WARNING_LINE << warning << value.toString();
    } else {
        WARNING_LINE << warning;
    }
}

} // namespace voro::multimedia
