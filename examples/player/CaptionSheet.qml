pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import voro.application

/** Whether captions are shown, and which: those of a file beside the film, or those in the film itself. */
Sheet {
    id: sheet

    required property Playback player

    title: qsTr("Captions")

    function choose(url: url) {
        player.showCaptions(url);
        player.closedCaptionEnabled = true;
    }

    CheckLine {
        Layout.fillWidth: true
        title: qsTr("Show captions")
        focus: true
        isOn: sheet.player.closedCaptionEnabled
        onClicked: sheet.player.closedCaptionEnabled = !sheet.player.closedCaptionEnabled
    }
    Repeater {
        model: Files.captionsOf(sheet.player.current)
        delegate: CheckLine {
            required property var modelData
            Layout.fillWidth: true
            symbol: "captions"
            title: modelData.text
            isRadio: true
            isOn: String(sheet.player.captions) === String(modelData.url)
            onClicked: sheet.choose(modelData.url)
        }
    }
    CheckLine {
        Layout.fillWidth: true
        symbol: "film"
        title: qsTr("In the film itself")
        isRadio: true
        isOn: String(sheet.player.captions) === ""
        onClicked: sheet.choose("")
    }
    RowLayout {
        Layout.fillWidth: true
        Layout.leftMargin: Theme.margin
        Layout.rightMargin: 4
        visible: String(sheet.player.captions) === ""
        enabled: sheet.player.closedCaptionEnabled
        Label {
            Layout.fillWidth: true
            text: qsTr("Language %1").arg(sheet.player.closedCaptionIndex + 1)
        }
        IconButton {
            symbol: "back"
            isDirected: true
            text: qsTr("Previous language")
            enabled: sheet.player.closedCaptionIndex > 0
            onClicked: sheet.player.closedCaptionIndex -= 1
        }
        IconButton {
            symbol: "back"
            isDirected: true
            rotation: 180
            text: qsTr("Next language")
            onClicked: sheet.player.closedCaptionIndex += 1
        }
    }
}
