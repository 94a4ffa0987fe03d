import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

/** Tells what went wrong, until somebody closes it. */
Pane {
    id: notice

    property string text: ""

    signal closed

    visible: text !== ""
    padding: 4
    leftPadding: Theme.margin
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    background: Rectangle {
        color: Theme.surface
        radius: Theme.radius
        border.color: Theme.warning
    }
    RowLayout {
        width: parent.width
        spacing: 8
        Label {
            Layout.fillWidth: true
            text: notice.text
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.warning
        }
        IconButton {
            symbol: "close"
            size: 40
            text: qsTr("Close the message")
            onClicked: notice.closed()
        }
    }
}
