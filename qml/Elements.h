#pragma once

#include "Children.h"

#include <multimedia/MediaPlayer.h>
#include <multimedia/NowPlayingController.h>
#include <multimedia/SystemSound.h>

#include <QtQml/QQmlEngine>

/* Library classes that QML uses directly. */

namespace voro::qml {

struct PlayerElement {
    Q_GADGET
    QML_FOREIGN(voro::multimedia::MediaPlayer)
    QML_NAMED_ELEMENT(MediaPlayer)
    QML_EXTENDED(voro::qml::Children)
    QML_ADDED_IN_VERSION(1, 0)
};

struct ControllerElement {
    Q_GADGET
    QML_FOREIGN(voro::multimedia::NowPlayingController)
    QML_NAMED_ELEMENT(NowPlayingController)
    QML_EXTENDED(voro::qml::Children)
    QML_ADDED_IN_VERSION(1, 0)
};

struct SoundElement {
    Q_GADGET
    QML_FOREIGN(voro::multimedia::SystemSound)
    QML_NAMED_ELEMENT(SystemSound)
    QML_ADDED_IN_VERSION(1, 0)
};

} // namespace voro::qml
