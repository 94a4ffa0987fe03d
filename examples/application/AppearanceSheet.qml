pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

/** Colours, contrast and the size of texts. */
Sheet {
    id: sheet

    /** The settings of the window. */
    property var settings

    readonly property var schemes: [
        { text: qsTr("As the system"), value: "" },
        { text: qsTr("Light"), value: "light" },
        { text: qsTr("Dark"), value: "dark" },
    ]

    title: qsTr("Appearance")

    Repeater {
        model: sheet.schemes
        delegate: CheckLine {
            required property var modelData
            Layout.fillWidth: true
            title: modelData.text
            isRadio: true
            isOn: sheet.settings.colours === modelData.value
            focus: isOn
            onClicked: sheet.settings.colours = modelData.value
        }
    }
    CheckLine {
        Layout.fillWidth: true
        title: qsTr("High contrast")
        isOn: sheet.settings.highContrast
        onClicked: sheet.settings.highContrast = !isOn
    }
    Label {
        Layout.leftMargin: Theme.margin
        Layout.topMargin: 8
        text: qsTr("Size of texts: %1 %").arg(Math.round(sheet.settings.scale * 100))
    }
    Seeker {
        Layout.fillWidth: true
        Layout.leftMargin: 6
        Layout.rightMargin: 6
        from: 1
        to: 2
        stepSize: 0.25
        snapMode: Slider.SnapAlways
        present: sheet.settings.scale
        Accessible.name: qsTr("Size of texts")
        onChosen: (value) => sheet.settings.scale = value
    }
}
