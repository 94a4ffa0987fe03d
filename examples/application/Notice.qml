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
    leftPadding: mirrored ? 4 : Theme.margin
    rightPadding: mirrored ? Theme.margin : 4
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
            // By the language of the application, not by that of a file's name.
            horizontalAlignment: Text.AlignLeft
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
