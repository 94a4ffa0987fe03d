#pragma once

#include "Logger.h"

#include <voro/PpsObject.h>

#include <QtCore/QVariantMap>

namespace voro::multimedia {

/** The outcome of sending a message. */
enum class Delivery { NotEncoded, NotWritten, Written };

/** The warnings of a failed delivery; the object's error follows. A null text logs nothing. */
struct DeliveryTexts {
    const char *notEncoded;
    const char *notWritten;
};

/** Encodes a message and writes it into an open object. */
inline Delivery deliver(const FunctionTracer &tracer, voro::PpsObject &object, const QVariantMap &message,
                        const DeliveryTexts &texts)
{
    bool ok = false;
    const QByteArray encoded = voro::PpsObject::encode(message, &ok);
    if (!ok) {
        WARNING_LINE << texts.notEncoded << object.error();
        return Delivery::NotEncoded;
    }
    if (object.write(encoded)) {
        return Delivery::Written;
    }
    if (texts.notWritten) {
        WARNING_LINE << texts.notWritten << object.error();
    }
    return Delivery::NotWritten;
}

} // namespace voro::multimedia
