pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

/** The keys of an application. */
Sheet {
    id: sheet

    property var keys: []
    readonly property var all: [...keys, { key: "Ctrl+Q", text: qsTr("Quit") }, { key: "F1", text: qsTr("Show this list") }]

    title: qsTr("Keys")
    onOpened: list.forceActiveFocus(Qt.PopupFocusReason)

    ListView {
        id: list
        Layout.fillWidth: true
        Layout.fillHeight: true
        implicitHeight: contentHeight
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: sheet.all
        ScrollBar.vertical: ScrollBar { }
        Keys.onUpPressed: flick(0, 800)
        Keys.onDownPressed: flick(0, -800)
        delegate: RowLayout {
            id: line
            required property var modelData
            width: ListView.view.width
            height: Math.max(36, what.implicitHeight + 8)
            spacing: 12
            Accessible.role: Accessible.StaticText
            Accessible.name: modelData.key + ": " + modelData.text
            Label {
                Layout.leftMargin: Theme.margin
                Layout.preferredWidth: 108
                text: line.modelData.key
                horizontalAlignment: Text.AlignLeft
                font.bold: true
                color: Theme.accent
                Accessible.ignored: true
            }
            Label {
                id: what
                Layout.fillWidth: true
                Layout.rightMargin: Theme.margin
                text: line.modelData.text
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
        }
    }
}
