#pragma once

#include <multimedia/AudioChannelConfiguration.h>
#include <multimedia/AudioOutput.h>
#include <multimedia/BufferStatus.h>
#include <multimedia/DeviceMode.h>
#include <multimedia/EqualizerPreset.h>
#include <multimedia/MediaError.h>
#include <multimedia/MediaKey.h>
#include <multimedia/MediaKeyNotification.h>
#include <multimedia/MediaState.h>
#include <multimedia/OverlayStyle.h>
#include <multimedia/PriorityLevel.h>
#include <multimedia/RepeatMode.h>
#include <multimedia/ShuffleMode.h>
#include <multimedia/VideoOutput.h>

#include <QtQml/QQmlEngine>

/* The library's enumerations, as in `MediaState.Started`. */

#define VORO_QML_ENUMERATION(Name)                    \
    namespace Name##Enumeration                       \
    {                                                 \
        Q_NAMESPACE                                   \
        QML_NAMED_ELEMENT(Name)                       \
        QML_FOREIGN_NAMESPACE(voro::multimedia::Name) \
    }

namespace voro::qml {

VORO_QML_ENUMERATION(AudioChannelConfiguration)
VORO_QML_ENUMERATION(AudioOutput)
VORO_QML_ENUMERATION(BufferStatus)
VORO_QML_ENUMERATION(DeviceMode)
VORO_QML_ENUMERATION(EqualizerPreset)
VORO_QML_ENUMERATION(MediaError)
VORO_QML_ENUMERATION(MediaKey)
VORO_QML_ENUMERATION(MediaKeyNotification)
VORO_QML_ENUMERATION(MediaState)
VORO_QML_ENUMERATION(OverlayStyle)
VORO_QML_ENUMERATION(PriorityLevel)
VORO_QML_ENUMERATION(RepeatMode)
VORO_QML_ENUMERATION(ShuffleMode)
VORO_QML_ENUMERATION(VideoOutput)

} // namespace voro::qml

#undef VORO_QML_ENUMERATION
