pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Qt.labs.folderlistmodel
import voro.application

/** Whether captions are shown, in which language, and from which of the files beside the medium. */
Sheet {
    id: sheet

    required property Playback player

    title: qsTr("Captions")

    Line {
        Layout.fillWidth: true
        implicitHeight: Theme.touch
        title: qsTr("Show captions")
        focus: true
        Accessible.role: Accessible.CheckBox
        Accessible.checked: sheet.player.closedCaptionEnabled
        onClicked: sheet.player.closedCaptionEnabled = !sheet.player.closedCaptionEnabled
        Icon {
            Layout.rightMargin: Theme.margin - 4
            visible: sheet.player.closedCaptionEnabled
            symbol: "check"
            color: Theme.accent
        }
    }
    RowLayout {
        Layout.leftMargin: Theme.margin
        Layout.rightMargin: 4
        enabled: sheet.player.closedCaptionEnabled
        Label {
            Layout.fillWidth: true
            text: qsTr("Language %1").arg(sheet.player.closedCaptionIndex + 1)
        }
        IconButton {
            symbol: "back"
            text: qsTr("Previous language")
            enabled: sheet.player.closedCaptionIndex > 0
            onClicked: sheet.player.closedCaptionIndex -= 1
        }
        IconButton {
            symbol: "back"
            rotation: 180
            text: qsTr("Next language")
            onClicked: sheet.player.closedCaptionIndex += 1
        }
    }
    Repeater {
        model: FolderListModel {
            folder: Files.folderOf(sheet.player.current)
            showDirs: false
            nameFilters: ["*.srt", "*.vtt", "*.ssa", "*.ass", "*.sub"]
        }
        delegate: Line {
            required property string fileName
            required property url fileUrl
            Layout.fillWidth: true
            implicitHeight: Theme.touch
            symbol: "captions"
            title: fileName
            onClicked: {
                sheet.player.check(sheet.player.setClosedCaptionUrl(sheet.player.track, fileUrl));
                sheet.close();
            }
        }
    }
}
