import QtQuick
import QtQuick.Layouts
import voro.application

/** The recordings, and below or beside them what records. */
AppWindow {
    id: window

    keys: [
        { key: qsTr("Space"), text: qsTr("Record, hold or go on") },
        { key: qsTr("Enter"), text: qsTr("Finish the recording, or play one of the list") },
        { key: qsTr("Delete"), text: qsTr("Delete a recording of the list") },
        { key: "F2", text: qsTr("Rename a recording of the list") },
        { key: "F", text: qsTr("Format") },
        { key: "O", text: qsTr("Show the folder") },
    ]

    title: panel.isRecording ? qsTr("Recording %1").arg(Format.time(panel.duration)) : qsTr("Voro Recorder")

    FocusScope {
        anchors.fill: parent
        focus: true
        Keys.onPressed: (event) => event.accepted = window.handleKey(event)

        GridLayout {
            anchors.fill: parent
            columns: window.isWide ? 2 : 1
            rowSpacing: 0
            columnSpacing: 0

            RecordingList {
                id: list
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: window.isWide ? window.width * 0.45 : window.width
                window: window
                isRecording: panel.isRecording
                unfinished: panel.file
                onRecordWanted: {
                    panel.forceActiveFocus(Qt.OtherFocusReason);
                    panel.toggle();
                }
                onFailed: (problem) => notice.text = problem
            }
            RecordPanel {
                id: panel
                focus: true
                Layout.fillWidth: true
                Layout.fillHeight: window.isWide
                Layout.preferredWidth: window.isWide ? window.width * 0.55 : window.width
                onStarted: {
                    notice.text = "";
                    list.stop();
                }
                onFailed: (problem) => notice.text = problem
            }
        }
        Notice {
            id: notice
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12 }
            onClosed: text = ""
        }
    }

    function handleKey(event: var): bool {
        if (handleCommonKey(event))
            return true;
        switch (event.key) {
        case Qt.Key_Space: panel.toggle(); return true;
        case Qt.Key_Return:
        case Qt.Key_Enter:
            if (panel.isRecording)
                panel.finish();
            return true;
        case Qt.Key_F: panel.chooseFormat(); return true;
        case Qt.Key_O: list.showFolder(); return true;
        case Qt.Key_Up:
        case Qt.Key_Down: list.forceActiveFocus(Qt.TabFocusReason); return true;
        }
        return false;
    }
}
