import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import voro.application

/** Where the track is, as a bar and in numbers. */
ColumnLayout {
    id: progress

    property real position: 0
    property real duration: 0

    // Time runs from left to right in every language.
    LayoutMirroring.enabled: false
    LayoutMirroring.childrenInherit: true

    ProgressBar {
        id: bar
        Layout.fillWidth: true
        to: Math.max(1, progress.duration)
        value: progress.duration > 0 ? Math.min(progress.position, to) : 0
        Accessible.name: qsTr("Position")
        background: Rectangle {
            implicitHeight: 4
            radius: 2
            color: Theme.raised
        }
        contentItem: Item {
            Rectangle {
                x: bar.mirrored ? parent.width - width : 0
                width: bar.position * parent.width
                height: 4
                radius: 2
                color: Theme.accent
            }
        }
    }
    RowLayout {
        Label {
            text: Format.time(progress.position)
            color: Theme.faint
        }
        Item {
            Layout.fillWidth: true
        }
        Label {
            text: progress.duration > 0 ? Format.time(progress.duration) : "–:––"
            color: Theme.faint
        }
    }
}
