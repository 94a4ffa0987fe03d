import QtQuick
import QtQuick.Layouts
import voro.application

/** The recordings, and below or beside them what records. */
AppWindow {
    id: window

    title: panel.isRecording ? qsTr("Recording %1").arg(Format.time(panel.duration)) : qsTr("Voro Recorder")

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
            isRecording: panel.isRecording
            unfinished: panel.file
            onFailed: (problem) => notice.text = problem
        }
        RecordPanel {
            id: panel
            Layout.fillWidth: true
            Layout.fillHeight: window.isWide
            Layout.preferredWidth: window.isWide ? window.width * 0.55 : window.width
            onStarted: list.stop()
            onFailed: (problem) => notice.text = problem
        }
    }
    Notice {
        id: notice
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12 }
        onClosed: text = ""
    }
}
