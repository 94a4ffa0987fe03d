import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

/** A button with a text. */
Button {
    id: button

    /** On the accent's colour, or the warning's. */
    property bool isMain: false
    property bool isDangerous: false
    /** How many lines the text may have; one that has to fit into a single one becomes smaller. */
    property int lines: 1

    implicitHeight: Math.max(Theme.touch, implicitContentHeight + 16)
    leftPadding: 14
    rightPadding: 14
    opacity: enabled ? 1 : 0.4
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    background: Rectangle {
        radius: height / 2
        color: button.isDangerous ? Theme.warning : button.isMain ? Theme.accent : Theme.raised
        opacity: button.down ? 0.8 : 1
        border.width: button.visualFocus || button.activeFocus ? 2 : Theme.borderWidth
        border.color: Theme.text
    }
    contentItem: RowLayout {
        spacing: 8
        Icon {
            visible: button.icon.name !== ""
            symbol: ""
            icon.name: button.icon.name
            color: "transparent"
        }
        Label {
            Layout.fillWidth: true
            text: button.text
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
            wrapMode: button.lines > 1 ? Text.Wrap : Text.NoWrap
            maximumLineCount: button.lines
            fontSizeMode: button.lines > 1 ? Text.FixedSize : Text.HorizontalFit
            minimumPixelSize: 12
            color: button.isDangerous || button.isMain ? Theme.accentText : Theme.text
        }
    }
}
