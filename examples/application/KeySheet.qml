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
        delegate: GridLayout {
            id: line
            required property var modelData
            width: ListView.view.width
            height: Math.max(36, implicitHeight + (Theme.isLarge ? 16 : 8))
            columns: Theme.isLarge ? 1 : 2
            rowSpacing: 0
            columnSpacing: 12
            Accessible.role: Accessible.StaticText
            Accessible.name: modelData.key + ": " + modelData.text
            Label {
                Layout.leftMargin: Theme.margin
                Layout.fillWidth: Theme.isLarge
                Layout.preferredWidth: Theme.isLarge ? -1 : 108
                text: line.modelData.key
                horizontalAlignment: Text.AlignLeft
                font.bold: true
                color: Theme.accent
                Accessible.ignored: true
            }
            Label {
                Layout.fillWidth: true
                Layout.leftMargin: Theme.isLarge ? Theme.margin : 0
                Layout.rightMargin: Theme.margin
                text: line.modelData.text
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
        }
    }
}
