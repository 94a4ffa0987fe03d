import QtQuick
import QtQuick.Layouts

/** A line of a sheet that is on or off, or one of several. */
Line {
    id: line

    property bool isOn: false
    property bool isRadio: false

    least: Math.max(Theme.touch, Theme.fontSize * 2.4)
    isCurrent: isRadio && isOn
    Accessible.role: isRadio ? Accessible.RadioButton : Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: isOn
    checkable: true
    checked: isOn
    // Only the application says so.
    onToggled: checked = Qt.binding(() => isOn)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Icon {
        Layout.rightMargin: Theme.margin - 4
        visible: line.isOn
        symbol: "check"
        color: Theme.accent
    }
}
