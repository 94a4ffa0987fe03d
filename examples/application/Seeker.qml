import QtQuick
import QtQuick.Controls

/** A slider for positions and levels: a thin bar that fills, with a handle that a thumb finds. */
Slider {
    id: seeker

    /** What is to be shown while nobody holds the handle, which is where the finger is. */
    property real present: 0
    /** Tells of every move, not only of the place where the handle is let go. */
    property bool isLive: false

    signal chosen(value: real)

    onMoved: if (isLive) chosen(value)
    onPressedChanged: if (!pressed && !isLive) chosen(value)

    Binding on value {
        when: !seeker.pressed
        value: Math.min(seeker.present, seeker.to)
        restoreMode: Binding.RestoreNone
    }

    implicitHeight: Theme.touch
    padding: 0
    leftPadding: 10
    rightPadding: 10
    opacity: enabled ? 1 : 0.5

    background: Rectangle {
        x: seeker.leftPadding
        y: (seeker.height - height) / 2
        width: seeker.availableWidth
        height: 4
        radius: 2
        color: Theme.raised
        Rectangle {
            x: seeker.mirrored ? parent.width - width : 0
            width: seeker.position * parent.width
            height: parent.height
            radius: parent.radius
            color: Theme.accent
        }
    }
    handle: Rectangle {
        visible: seeker.enabled
        x: seeker.leftPadding + seeker.visualPosition * seeker.availableWidth - width / 2
        y: (seeker.height - height) / 2
        width: seeker.pressed ? 20 : 16
        height: width
        radius: width / 2
        color: Theme.accent
        border.width: seeker.visualFocus ? 3 : 0
        border.color: Theme.text
    }
}
