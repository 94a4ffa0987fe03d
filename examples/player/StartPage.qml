import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import voro.application

/** What stands where nothing is played yet: things to begin with. */
ColumnLayout {
    id: start

    required property Playback player
    required property Resume resume
    required property Opening opening
    property alias title: heading.text
    /** With something to begin with; else the title alone, where the same is offered beside it. */
    property bool offers: true

    spacing: 12

    Icon {
        visible: !Theme.isLarge
        Layout.alignment: Qt.AlignHCenter
        symbol: "note"
        size: 56
        color: Theme.accent
    }
    Label {
        id: heading
        Layout.fillWidth: true
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        font.pixelSize: Theme.titleSize
        Accessible.role: Accessible.Heading
    }
    TextButton {
        Layout.fillWidth: true
        visible: start.offers && String(start.resume.last) !== ""
        text: qsTr("Go on with “%1”").arg(Files.nameOf(start.resume.last))
        lines: 2
        isMain: true
        onClicked: start.resume.openLast()
    }
    TextButton {
        Layout.fillWidth: true
        visible: start.offers
        text: qsTr("Open files…")
        onClicked: start.opening.askForFiles()
    }
    TextButton {
        Layout.fillWidth: true
        visible: start.offers
        text: qsTr("Open an address…")
        onClicked: start.opening.askForAddress()
    }
    TextButton {
        Layout.fillWidth: true
        visible: start.offers && String(Files.sample) !== ""
        text: qsTr("Play the sample")
        onClicked: start.player.open([Files.sample], 0)
    }
}
