pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import voro.application

/** The level of the last seconds: a bar for each report, the newest at the right. */
Item {
    id: meter

    /** The present level, from 0.0 to 1.0. */
    property real level: 0
    readonly property int count: Math.max(8, Math.floor((width - 16) / 8))
    property var levels: []
    /** The loudest level of the last bars that are shown. */
    readonly property real peak: Math.max(0, ...levels)
    readonly property bool isTooLoud: peak > 0.98
    /** For as long as the bars reach back nothing was heard, or next to nothing. */
    readonly property bool isSilent: levels.length >= Math.min(count, 20) && peak < 0.01

    implicitHeight: Theme.isLarge ? 56 : 88
    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("Level")
    Accessible.description: qsTr("%1 percent").arg(Math.round(level * 100))

    /** Draws one more bar. */
    function add(value: real) {
        level = value;
        levels = [...levels, value].slice(-count);
    }
    function clear() {
        level = 0;
        levels = [];
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: Theme.background
        border.width: Theme.borderWidth
        border.color: Theme.text
    }
    Label {
        anchors { top: parent.top; horizontalCenter: parent.horizontalCenter; topMargin: 6 }
        visible: text !== ""
        text: meter.isTooLoud ? qsTr("Too loud") : meter.isSilent ? qsTr("Nothing is heard") : ""
        color: Theme.warning
        font.bold: true
        Accessible.role: Accessible.AlertMessage
    }
    Row {
        // Time runs from left to right in every language.
        LayoutMirroring.enabled: false
        anchors { right: parent.right; rightMargin: 8; verticalCenter: parent.verticalCenter }
        spacing: 3
        Repeater {
            model: meter.levels
            delegate: Rectangle {
                required property real modelData
                anchors.verticalCenter: parent?.verticalCenter
                width: 5
                height: Math.max(4, (meter.height - 20) * modelData)
                radius: 2
                color: modelData > 0.98 ? Theme.warning : Theme.accent
            }
        }
    }
}
