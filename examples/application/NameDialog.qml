import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

/** Asks for a name, until one is given that can be used. */
Sheet {
    id: dialog

    property alias name: field.text
    /** What the button that ends it says. */
    property string action: qsTr("OK")
    /** Why the name that was given cannot be used; empty while there is no reason. */
    property string problem: ""

    /** Somebody gives a name: use it, or say in `problem` why it cannot be used. */
    signal named(name: string)

    onOpened: {
        problem = "";
        field.selectAll();
        field.forceActiveFocus(Qt.PopupFocusReason);
    }

    GridLayout {
        Layout.margins: Theme.margin
        Layout.topMargin: 0
        columns: Theme.isLarge ? 1 : 2
        columnSpacing: 12
        rowSpacing: 12
        TextField {
            id: field
            Layout.fillWidth: true
            implicitHeight: Theme.touch
            leftPadding: 12
            rightPadding: 12
            color: Theme.text
            selectByMouse: true
            Accessible.name: dialog.title
            background: Rectangle {
                radius: 8
                color: Theme.background
                border.width: field.activeFocus ? 2 : 1
                border.color: field.activeFocus ? Theme.accent : Theme.faint
            }
            onTextEdited: dialog.problem = ""
            onAccepted: dialog.finish()
        }
        TextButton {
            Layout.fillWidth: Theme.isLarge
            text: dialog.action
            isMain: true
            enabled: field.text.trim() !== ""
            onClicked: dialog.finish()
        }
    }
    Label {
        text: dialog.problem
        Layout.fillWidth: true
        Layout.margins: Theme.margin
        Layout.topMargin: 0
        visible: text !== ""
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.warning
        Accessible.role: Accessible.AlertMessage
    }

    function finish() {
        const wanted = field.text.trim();
        if (wanted === "")
            return;
        problem = "";
        named(wanted);
        if (problem === "")
            close();
    }
}
