import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import voro.application

/** What is played, in one line below the library. */
AbstractButton {
    id: bar

    required property Playback player

    signal opened

    implicitHeight: 64
    text: qsTr("Now playing: %1").arg(player.title)
    Accessible.name: text
    onClicked: opened()

    background: Rectangle {
        color: Theme.surface
        Rectangle {
            width: parent.width
            height: 2
            color: Theme.raised
            Rectangle {
                width: bar.player.length > 0 ? parent.width * Math.min(1, bar.player.position / bar.player.length) : 0
                height: parent.height
                color: Theme.accent
            }
        }
        Rectangle {
            anchors { fill: parent; margins: 2 }
            color: "transparent"
            radius: 6
            border.width: bar.visualFocus ? 2 : 0
            border.color: Theme.accent
        }
    }
    contentItem: RowLayout {
        spacing: 12
        Cover {
            Layout.leftMargin: 10
            implicitWidth: 44
            implicitHeight: 44
            radius: 6
            source: bar.player.cover
            placeholder: bar.player.hasVideo ? "film" : "note"
        }
        ColumnLayout {
            spacing: 0
            Label {
                Layout.fillWidth: true
                text: bar.player.title
                textFormat: Text.PlainText
                horizontalAlignment: Text.AlignLeft
                elide: Text.ElideRight
                font.bold: true
            }
            Label {
                Layout.fillWidth: true
                visible: text !== ""
                text: bar.player.artist
                textFormat: Text.PlainText
                horizontalAlignment: Text.AlignLeft
                elide: Text.ElideRight
                color: Theme.faint
            }
        }
        IconButton {
            Layout.rightMargin: 8
            symbol: bar.player.isPlaying ? "pause" : "play"
            text: bar.player.isPlaying ? qsTr("Pause") : qsTr("Play")
            onClicked: bar.player.toggle()
        }
    }
}
