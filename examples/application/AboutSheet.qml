import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

/** What this is. */
Sheet {
    title: Application.displayName

    Label {
        Layout.fillWidth: true
        Layout.margins: Theme.margin
        Layout.topMargin: 0
        horizontalAlignment: Text.AlignLeft
        text: qsTr("Version %1").arg(Application.version)
    }
    Label {
        Layout.fillWidth: true
        Layout.margins: Theme.margin
        Layout.topMargin: 0
        wrapMode: Text.Wrap
        text: qsTr("An application on libvoromultimedia. Free software under the Apache License 2.0.")
    }
}
