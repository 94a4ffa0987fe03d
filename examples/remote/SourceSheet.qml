pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import voro.application
import voro.remote

/** Everything that can play on this device at the moment; each can be started and paused by itself. */
Sheet {
    id: sheet

    required property Sources sources

    title: qsTr("Sources")
    onOpened: list.forceActiveFocus(Qt.PopupFocusReason)

    LineList {
        id: list
        Layout.fillWidth: true
        Layout.fillHeight: true
        implicitHeight: contentHeight
        model: sheet.sources
        delegate: Line {
            id: line
            required property int index
            required property string name
            required property string sourceTitle
            required property bool isPlaying
            title: name
            subtitle: sourceTitle
            symbol: "note"
            isCurrent: isPlaying
            highlighted: ListView.isCurrentItem
            focus: ListView.isCurrentItem
            onClicked: sheet.sources.playPause(index)
            Keys.onReturnPressed: clicked()
            Keys.onEnterPressed: clicked()
            IconButton {
                symbol: "up"
                text: qsTr("Show “%1”").arg(line.name)
                onClicked: sheet.sources.raise(line.index)
            }
            Icon {
                Layout.rightMargin: 12
                symbol: line.isPlaying ? "pause" : "play"
                color: Theme.text
            }
        }
    }
}
