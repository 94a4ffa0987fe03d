import QtQuick
import QtQuick.Controls

/** A round button with an icon; its text is what a screen reader says. */
AbstractButton {
    id: button

    /** The icon's name, see Theme.icon(). */
    required property string symbol
    /** On the accent's colour. */
    property bool isMain: false
    property int size: Theme.touch

    implicitWidth: size
    implicitHeight: size
    opacity: enabled ? 1 : 0.35
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Accessible.checkable: checked
    Accessible.checked: checked
    ToolTip.text: text
    ToolTip.visible: hovered && text !== ""
    ToolTip.delay: 700

    background: Rectangle {
        radius: width / 2
        color: button.isMain ? Theme.accent : button.down || button.hovered ? Theme.raised : "transparent"
        opacity: button.isMain && button.down ? 0.8 : 1
        border.width: button.visualFocus ? 2 : 0
        border.color: button.isMain ? Theme.text : Theme.accent
    }
    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            symbol: button.symbol
            size: Math.round(button.size / 2)
            color: button.isMain ? Theme.accentText : button.checked ? Theme.accent : Theme.text
        }
    }
}
