import QtQuick
import voro.application

/** Room for a film on the whole screen; the controls come when somebody moves, and go when nobody does. */
Rectangle {
    id: page

    required property Playback player
    /** Where the picture goes. */
    readonly property alias holder: holder
    readonly property bool showsControls: calm.running || !player.isPlaying

    signal closed

    color: "black"

    /** Shows the controls for a while. */
    function wake() {
        calm.restart();
    }

    onVisibleChanged: if (visible) wake()

    Timer {
        id: calm
        interval: 3000
    }
    Item {
        id: holder
        // Captions stand at the lower edge of the picture.
        anchors { fill: parent; bottomMargin: page.player.closedCaptionEnabled && bar.visible ? bar.height : 0 }
    }
    HoverHandler {
        cursorShape: page.showsControls ? Qt.ArrowCursor : Qt.BlankCursor
        // It is told of points with every new picture, also of a mouse that rests.
        readonly property point place: point.scenePosition
        onPlaceChanged: page.wake()
    }
    TapHandler {
        onTapped: page.wake()
        onDoubleTapped: page.closed()
    }
    Rectangle {
        id: bar
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: transport.implicitHeight + 24
        color: Theme.surface
        opacity: page.showsControls ? 0.9 : 0
        visible: opacity > 0
        Behavior on opacity {
            NumberAnimation { duration: 150 }
        }
        Transport {
            id: transport
            anchors { fill: parent; margins: 12 }
            player: page.player
        }
    }
    Rectangle {
        anchors { right: parent.right; top: parent.top; margins: 12 }
        implicitWidth: leave.implicitWidth
        implicitHeight: leave.implicitHeight
        radius: height / 2
        color: bar.color
        opacity: bar.opacity
        visible: bar.visible
        IconButton {
            id: leave
            symbol: "full-screen"
            text: qsTr("Leave full screen")
            onClicked: page.closed()
        }
    }
}
