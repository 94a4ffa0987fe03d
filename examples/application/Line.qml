import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

/** One line of a list: an icon, a title, what is to be said below it, and what can be done at its end. */
ItemDelegate {
    id: line

    required property string title
    property string subtitle: ""
    property string symbol: ""
    /** A picture in place of the icon. */
    property url cover
    /** It is the one that plays. */
    property bool isCurrent: false
    /** Where a title is cut that has no room in its line. */
    property int elide: Text.ElideRight
    /** The height of a line that is not broken. */
    property real least: Math.max(60, Theme.fontSize * 3.6)
    default property alias actions: actions.data

    width: ListView.view ? ListView.view.width : implicitWidth
    implicitHeight: Math.max(least, texts.implicitHeight + 12)
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
        anchors { fill: parent; leftMargin: Theme.margin; rightMargin: 4 }
        spacing: 12
        Cover {
            visible: String(line.cover) !== ""
            implicitWidth: 44
            implicitHeight: 44
            radius: 6
            size: 96
            source: line.cover
            placeholder: line.symbol
            Accessible.ignored: true
        }
        Icon {
            visible: line.symbol !== "" && String(line.cover) === ""
            symbol: line.symbol
            color: line.isCurrent ? Theme.accent : Theme.faint
        }
        ColumnLayout {
            id: texts
            spacing: 2
            Label {
                Layout.fillWidth: true
                text: line.title
                // By the language of the application, not by that of the text.
                horizontalAlignment: Text.AlignLeft
                elide: Theme.isLarge ? Text.ElideRight : line.elide
                wrapMode: Theme.isLarge ? Text.Wrap : Text.NoWrap
                maximumLineCount: Theme.isLarge ? 2 : 1
                Accessible.ignored: true
                textFormat: Text.PlainText
                color: line.isCurrent ? Theme.accent : Theme.text
                font.bold: line.isCurrent
            }
            Label {
                Layout.fillWidth: true
                visible: text !== ""
                text: line.subtitle
                horizontalAlignment: Text.AlignLeft
                elide: Text.ElideRight
                wrapMode: Theme.isLarge ? Text.Wrap : Text.NoWrap
                maximumLineCount: Theme.isLarge ? 3 : 1
                Accessible.ignored: true
                textFormat: Text.PlainText
                color: Theme.faint
                font.pixelSize: Theme.smallSize
            }
        }
        RowLayout {
            id: actions
            spacing: 0
        }
    }
}
