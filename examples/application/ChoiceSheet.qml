pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

/** A sheet with one choice of several. */
Sheet {
    id: sheet

    /** What there is to choose: objects with a `text`, a `value` and perhaps a `symbol`. */
    property var choices: []
    /** The value that is chosen. */
    property var current

    signal chosen(value: var)

    onOpened: {
        list.currentIndex = Math.max(0, choices.findIndex(choice => choice.value === current));
        list.positionViewAtIndex(list.currentIndex, ListView.Center);
        list.forceActiveFocus(Qt.PopupFocusReason);
    }

    ListView {
        id: list
        Layout.fillWidth: true
        Layout.fillHeight: true
        implicitHeight: contentHeight
        clip: true
        model: sheet.choices
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: true
        ScrollBar.vertical: ScrollBar { }
        delegate: Line {
            id: choice
            required property var modelData
            required property int index
            implicitHeight: Theme.touch
            title: modelData.text
            symbol: modelData.symbol ?? ""
            isCurrent: modelData.value === sheet.current
            highlighted: ListView.isCurrentItem
            Accessible.role: Accessible.RadioButton
            Accessible.checked: isCurrent
            focus: ListView.isCurrentItem
            onClicked: sheet.choose(modelData.value)
            Keys.onReturnPressed: sheet.choose(modelData.value)
            Icon {
                Layout.rightMargin: Theme.margin - 4
                visible: choice.isCurrent
                symbol: "check"
                color: Theme.accent
            }
        }
    }

    function choose(value: var) {
        close();
        chosen(value);
    }
}
