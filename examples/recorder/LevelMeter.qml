pragma ComponentBehavior: Bound
import QtQuick
import voro.application

/** The level of the last seconds: a bar for each report, the newest at the right. */
Item {
    id: meter

    /** The present level, from 0.0 to 1.0. */
    property real level: 0
    readonly property int count: Math.max(8, Math.floor(width / 8))
    property var levels: []

    implicitHeight: 88
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
    }
    Row {
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
