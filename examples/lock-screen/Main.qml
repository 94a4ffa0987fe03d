import QtQuick
import QtQuick.Controls
import voro.multimedia

/** The time, and whatever plays on the device with its buttons; a double tap unlocks. */
ApplicationWindow {
    id: window

    width: 360
    height: 640
    visible: true
    visibility: Window.FullScreen
    color: "black"

    NowPlayingController {
        id: controller
    }
    TapHandler {
        onDoubleTapped: window.close()
    }
    Column {
        anchors.centerIn: parent
        spacing: 24

        Label {
            id: clock
            anchors.horizontalCenter: parent.horizontalCenter
            color: "white"
            font.pixelSize: 64
            Timer {
                running: true
                repeat: true
                interval: 1000
                triggeredOnStart: true
                onTriggered: clock.text = new Date().toLocaleTimeString(Qt.locale(), Locale.ShortFormat)
            }
        }
        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 240
            height: 240
            fillMode: Image.PreserveAspectFit
            source: controller.iconUrl
        }
        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            color: "white"
            text: (controller.metaData[MetaData.Title] || "") + "\n" + (controller.metaData[MetaData.Artist] || "")
            horizontalAlignment: Text.AlignHCenter
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 8
            Button {
                text: "Previous"
                enabled: controller.previousEnabled
                onClicked: controller.previous()
            }
            Button {
                text: controller.mediaState === MediaState.Started ? "Pause" : "Play"
                onClicked: controller.playPause()
            }
            Button {
                text: "Next"
                enabled: controller.nextEnabled
                onClicked: controller.next()
            }
        }
    }
}
