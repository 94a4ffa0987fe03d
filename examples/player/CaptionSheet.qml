pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import voro.application

/** Whether captions are shown, and which: those of the files beside the film, and those in the film itself. */
Sheet {
    id: sheet

    required property Playback player

    title: qsTr("Captions")

    readonly property var files: Files.captionsOf(player.current)

    function nameOf(stream: var, number: int): string {
        const language = Files.nameOfLanguage(stream.language);
        if (language !== "" && stream.title !== "")
            return qsTr("%1 (%2)").arg(language).arg(stream.title);
        return language || stream.title || qsTr("Captions %1").arg(number + 1);
    }

    CheckLine {
        Layout.fillWidth: true
        title: qsTr("Show captions")
        focus: true
        isOn: sheet.player.closedCaptionEnabled
        onClicked: sheet.player.closedCaptionEnabled = !sheet.player.closedCaptionEnabled
    }
    Repeater {
        model: sheet.files
        delegate: CheckLine {
            required property var modelData
            Layout.fillWidth: true
            symbol: "captions"
            title: modelData.text
            isRadio: true
            isOn: String(sheet.player.captions) === String(modelData.url) && !sheet.player.areCaptionsUnreadable
            onClicked: {
                sheet.player.showCaptions(modelData.url);
                sheet.player.closedCaptionEnabled = true;
            }
        }
    }
    Repeater {
        model: sheet.player.captionStreams
        delegate: CheckLine {
            required property var modelData
            required property int index
            Layout.fillWidth: true
            symbol: "film"
            title: sheet.nameOf(modelData, index)
            isRadio: true
            isOn: String(sheet.player.captions) === "" && sheet.player.closedCaptionIndex === index
            onClicked: {
                sheet.player.showCaptionStream(index);
                sheet.player.closedCaptionEnabled = true;
            }
        }
    }
    Label {
        Layout.fillWidth: true
        Layout.margins: Theme.margin
        visible: sheet.files.length + sheet.player.captionStreams.length === 0
        text: qsTr("This film has no captions.")
        wrapMode: Text.Wrap
        color: Theme.faint
    }
}
