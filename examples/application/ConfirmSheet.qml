import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import voro.application

/** Asks before a file is deleted: Enter deletes it, Escape keeps it. */
Sheet {
    id: sheet

    property url file

    signal confirmed(file: url)

    function ask(about: url) {
        file = about;
        open();
    }

    onOpened: deletion.forceActiveFocus(Qt.PopupFocusReason)

    Label {
        Layout.fillWidth: true
        Layout.leftMargin: Theme.margin
        Layout.rightMargin: Theme.margin
        text: qsTr("“%1” cannot be brought back.").arg(Files.nameOf(sheet.file))
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
    }
    RowLayout {
        Layout.margins: Theme.margin
        spacing: 12
        TextButton {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            text: qsTr("Keep")
            onClicked: sheet.close()
        }
        TextButton {
            id: deletion
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            text: qsTr("Delete")
            isDangerous: true
            onClicked: {
                sheet.close();
                sheet.confirmed(sheet.file);
            }
        }
    }
}
