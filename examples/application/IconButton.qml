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
    /** What it stands for is on, which only the application says. */
    property bool isOn: false
    /** Points into the direction of reading. */
    property bool isDirected: false
    /** With high contrast a colour alone does not tell. */
    readonly property bool isInverted: isOn && Theme.highContrast

    implicitWidth: size
    implicitHeight: size
    opacity: enabled ? 1 : 0.35
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    checked: isOn
    onToggled: checked = Qt.binding(() => isOn)
    Accessible.checkable: isOn
    Accessible.checked: isOn
    ToolTip.text: text
    ToolTip.visible: hovered && text !== ""
    ToolTip.delay: 700

    background: Rectangle {
        radius: width / 2
        color: {
            if (button.isMain)
                return Theme.accent;
            if (button.isInverted)
                return Theme.text;
            return button.down || button.hovered ? Theme.raised : "transparent";
        }
        opacity: button.isMain && button.down ? 0.8 : 1
        border.width: button.visualFocus ? 2 : Theme.borderWidth
        border.color: button.isMain || !button.visualFocus ? Theme.text : Theme.accent
    }
    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            symbol: button.symbol
            size: Math.round(button.size / Theme.touch * Theme.iconSize)
            rotation: button.isDirected && button.mirrored ? 180 : 0
            color: {
                if (button.isMain)
                    return Theme.accentText;
                if (button.isInverted)
                    return Theme.background;
                return button.isOn ? Theme.accent : Theme.text;
            }
        }
    }
}
