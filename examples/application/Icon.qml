import QtQuick
import QtQuick.Controls

/** An icon in a colour. */
Button {
    id: image

    required property string symbol
    property int size: Theme.iconSize
    property alias color: image.icon.color

    implicitWidth: size
    implicitHeight: size
    padding: 0
    background: null
    display: AbstractButton.IconOnly
    icon.source: Theme.icon(symbol)
    icon.width: size
    icon.height: size
    enabled: false
    focusPolicy: Qt.NoFocus
    Accessible.ignored: true
}
