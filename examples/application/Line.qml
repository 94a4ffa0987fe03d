import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

/** One line of a list: an icon, a title, what is to be said below it, and what can be done at its end. */
ItemDelegate {
    id: line

    required property string title
    property string subtitle: ""
    property string symbol: ""
    /** It is the one that plays. */
    property bool isCurrent: false
    default property alias actions: actions.data

    width: ListView.view ? ListView.view.width : implicitWidth
    implicitHeight: 60
    leftPadding: Theme.margin
    rightPadding: 4
    Accessible.name: subtitle === "" ? title : title + ", " + subtitle

    background: Rectangle {
        color: line.down || line.hovered ? Theme.raised : "transparent"
        Rectangle {
            anchors.fill: parent
            anchors.margins: 1
            color: "transparent"
            radius: 6
            border.width: line.visualFocus || (line.highlighted && line.activeFocus) ? 2 : 0
            border.color: Theme.accent
        }
    }
    contentItem: Item { }
    RowLayout {
        anchors { fill: parent; leftMargin: line.leftPadding; rightMargin: line.rightPadding }
        spacing: 12
        Icon {
            visible: line.symbol !== ""
            symbol: line.symbol
            color: line.isCurrent ? Theme.accent : Theme.faint
        }
        ColumnLayout {
            spacing: 2
            Label {
                Layout.fillWidth: true
                text: line.title
                elide: Text.ElideRight
                maximumLineCount: 1
                textFormat: Text.PlainText
                color: line.isCurrent ? Theme.accent : Theme.text
                font.bold: line.isCurrent
            }
            Label {
                Layout.fillWidth: true
                visible: text !== ""
                text: line.subtitle
                elide: Text.ElideRight
                maximumLineCount: 1
                textFormat: Text.PlainText
                color: Theme.faint
                font.pixelSize: Math.round(line.font.pixelSize * 0.85)
            }
        }
        RowLayout {
            id: actions
            spacing: 0
        }
    }
}
