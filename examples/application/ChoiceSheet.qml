pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts

/** A sheet with one choice of several. */
Sheet {
    id: sheet

    /** What there is to choose: objects with a `text`, a `value` and perhaps a `symbol`. */
    property var choices: []
    /** The value that is chosen; undefined in a menu. */
    property var current

    signal chosen(value: var)

    onOpened: {
        list.currentIndex = Math.max(0, choices.findIndex(choice => choice.value === current));
        list.positionViewAtIndex(list.currentIndex, ListView.Center);
        list.forceActiveFocus(Qt.PopupFocusReason);
    }

    LineList {
        id: list
        Layout.fillWidth: true
        Layout.fillHeight: true
        implicitHeight: contentHeight
        model: sheet.choices
        delegate: CheckLine {
            required property var modelData
            required property int index
            title: modelData.text
            symbol: modelData.symbol ?? ""
            isRadio: sheet.current !== undefined
            isOn: isRadio && modelData.value === sheet.current
            highlighted: ListView.isCurrentItem
            focus: ListView.isCurrentItem
            checkable: isRadio
            Accessible.role: isRadio ? Accessible.RadioButton : Accessible.MenuItem
            onClicked: sheet.choose(modelData.value)
        }
    }

    function choose(value: var) {
        close();
        chosen(value);
    }
}
