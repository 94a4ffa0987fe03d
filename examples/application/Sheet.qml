import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

/** Something to choose or to set, from the lower edge of the window. */
Popup {
    id: sheet

    property string title: ""
    default property alias content: content.data

    parent: Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: parent.height - height
    width: Math.min(parent.width, 480)
    height: Math.min(implicitHeight, Math.round(parent.height * 0.85))
    padding: 0
    topPadding: 4
    bottomPadding: 8
    modal: true
    focus: true

    Overlay.modal: Rectangle {
        color: "#90000000"
    }
    background: Rectangle {
        color: Theme.surface
        radius: Theme.radius
        border.width: Theme.borderWidth
        border.color: Theme.text
        Rectangle {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            height: Theme.radius
            color: Theme.surface
            visible: !Theme.highContrast
        }
    }
    ColumnLayout {
        anchors.fill: parent
        spacing: 0
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.title
        RowLayout {
            Layout.leftMargin: Theme.margin
            Layout.rightMargin: 4
            Label {
                Layout.fillWidth: true
                text: sheet.title
                horizontalAlignment: Text.AlignLeft
                font.bold: true
                wrapMode: Text.Wrap
                verticalAlignment: Text.AlignVCenter
                color: Theme.text
            }
            IconButton {
                symbol: "close"
                text: qsTr("Close")
                onClicked: sheet.close()
            }
        }
        ColumnLayout {
            id: content
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: 0
        }
    }
}
