import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

/** What stands where a list has nothing to show. */
ColumnLayout {
    id: empty

    property alias symbol: image.symbol
    property alias title: title.text
    property alias text: text.text

    spacing: 12
    Icon {
        id: image
        Layout.alignment: Qt.AlignHCenter
        symbol: "note"
        size: 56
        color: Theme.faint
    }
    Label {
        id: title
        Layout.fillWidth: true
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        font.pixelSize: Math.round(Theme.fontSize * 1.2)
        color: Theme.text
    }
    Label {
        id: text
        Layout.fillWidth: true
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        color: Theme.faint
    }
}
