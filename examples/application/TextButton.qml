import QtQuick
import QtQuick.Controls

/** A button with a text. */
Button {
    id: button

    /** On the accent's colour, or the warning's. */
    property bool isMain: false
    property bool isDangerous: false

    implicitHeight: Theme.touch
    leftPadding: 20
    rightPadding: 20
    opacity: enabled ? 1 : 0.4

    background: Rectangle {
        radius: height / 2
        color: button.isDangerous ? Theme.warning : button.isMain ? Theme.accent : Theme.raised
        opacity: button.down ? 0.8 : 1
        border.width: button.visualFocus ? 2 : 0
        border.color: Theme.text
    }
    contentItem: Label {
        text: button.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        color: button.isDangerous || button.isMain ? Theme.accentText : Theme.text
    }
}
