import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

/** Asks for a name. */
Sheet {
    id: dialog

    property alias name: field.text
    /** What the button that ends it says. */
    property string action: qsTr("OK")

    signal named(name: string)

    onOpened: {
        field.selectAll();
        field.forceActiveFocus(Qt.PopupFocusReason);
    }

    RowLayout {
        Layout.margins: Theme.margin
        Layout.topMargin: 0
        spacing: 12
        TextField {
            id: field
            Layout.fillWidth: true
            implicitHeight: Theme.touch
            color: Theme.text
            selectByMouse: true
            Accessible.name: dialog.title
            background: Rectangle {
                radius: 8
                color: Theme.background
                border.width: field.activeFocus ? 2 : 1
                border.color: field.activeFocus ? Theme.accent : Theme.faint
            }
            onAccepted: dialog.finish()
        }
        TextButton {
            text: dialog.action
            isMain: true
            enabled: field.text.trim() !== ""
            onClicked: dialog.finish()
        }
    }

    function finish() {
        if (field.text.trim() === "")
            return;
        close();
        named(field.text.trim());
    }
}
