import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import voro.application
import voro.multimedia

/** What is played: its picture, its name, everything that can be done with it. */
FocusScope {
    id: page

    required property Playback player
    required property Resume resume
    required property Opening opening
    property var menu: []
    readonly property alias windowId: picture.windowId
    property bool canGoBack: false
    /** Films fill the screen. */
    property bool isCinema: false
    readonly property bool isFilling: isCinema && player.hasVideo

    signal back

    readonly property FullScreen screen: filling.item as FullScreen

    onIsCinemaChanged: if (!screen) filling.setSource("FullScreen.qml", { player: page.player })

    function showQueue() {
        transport.showQueue();
    }
    /** Somebody is there. */
    function wake() {
        screen?.wake();
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.margins: 4
            IconButton {
                visible: page.canGoBack
                symbol: "down"
                text: qsTr("Library")
                onClicked: page.back()
            }
            Item {
                Layout.fillWidth: true
                implicitHeight: Theme.touch
            }
            IconButton {
                symbol: "full-screen"
                text: qsTr("Full screen")
                visible: page.player.hasVideo
                onClicked: page.isCinema = true
            }
            IconButton {
                symbol: "captions"
                text: qsTr("Captions")
                visible: page.player.hasVideo
                isOn: page.player.closedCaptionEnabled
                onClicked: captions.open()
            }
            IconButton {
                symbol: "speed"
                text: qsTr("Speed: %1×").arg(Format.factor(page.player.wantedSpeed))
                isOn: page.player.wantedSpeed !== 1
                onClicked: speed.open()
            }
            IconButton {
                symbol: "equalizer"
                text: qsTr("Equalizer")
                isOn: page.player.equalizerPreset !== EqualizerPreset.Off
                onClicked: equalizer.open()
            }
            AppMenu {
                // Beside the library there is its menu.
                visible: page.canGoBack
                window: page.ApplicationWindow.window as AppWindow
                entries: page.menu
            }
        }

        Item {
            id: holder
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24

            Picture {
                id: picture
                parent: page.isFilling && page.screen ? page.screen.holder : holder
                anchors.fill: parent
                visible: page.player.isLoaded
                player: page.player
            }
            StartPage {
                anchors.centerIn: parent
                width: Math.min(parent.width, 320)
                visible: !page.player.isLoaded
                player: page.player
                resume: page.resume
                opening: page.opening
                title: qsTr("Nothing is played")
            }
            TextButton {
                anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 12 }
                width: Math.min(implicitWidth, parent.width)
                visible: page.resume.offered > 0
                text: qsTr("Go on at %1").arg(Format.time(page.resume.offered))
                isMain: true
                onClicked: page.resume.accept()
            }
            TapHandler {
                enabled: page.player.hasVideo
                onDoubleTapped: page.isCinema = true
            }
        }

        ColumnLayout {
            visible: page.player.isLoaded
            Layout.margins: 24
            Layout.topMargin: 16
            Layout.bottomMargin: 4
            spacing: 4
            Label {
                Layout.fillWidth: true
                horizontalAlignment: Text.AlignHCenter
                text: page.player.title
                textFormat: Text.PlainText
                elide: Text.ElideRight
                maximumLineCount: Theme.isLarge ? 3 : 2
                wrapMode: Text.Wrap
                font { pixelSize: Theme.titleSize; bold: true }
                Accessible.role: Accessible.Heading
            }
            Label {
                Layout.fillWidth: true
                horizontalAlignment: Text.AlignHCenter
                text: page.player.artist
                textFormat: Text.PlainText
                elide: Text.ElideRight
                color: Theme.faint
            }
        }

        Transport {
            id: transport
            Layout.leftMargin: 14
            Layout.rightMargin: 14
            player: page.player
        }

        RowLayout {
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.topMargin: 4
            Layout.bottomMargin: 8
            spacing: 4
            IconButton {
                symbol: page.player.volume > 0 ? "volume" : "mute"
                text: page.player.isMuted ? qsTr("Sound on") : qsTr("Sound off")
                size: 40
                isOn: page.player.isMuted
                onClicked: page.player.isMuted = !page.player.isMuted
            }
            Seeker {
                Layout.fillWidth: true
                present: page.player.volume
                isLive: true
                stepSize: 0.05
                Accessible.name: qsTr("Volume")
                onChosen: (volume) => page.player.changeVolume(volume - page.player.loudness)
            }
        }
    }
    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: (event) => page.player.changeVolume(event.angleDelta.y / 120 * 0.05)
    }

    Loader {
        id: filling
        anchors.fill: parent
        visible: page.isFilling
    }
    Connections {
        target: page.screen
        function onClosed() {
            page.isCinema = false;
        }
    }

    LazySheet {
        id: speed
        sheet: Qt.resolvedUrl("SpeedSheet.qml")
        properties: ({ player: page.player })
    }
    LazySheet {
        id: equalizer
        sheet: Qt.resolvedUrl("EqualizerSheet.qml")
        properties: ({ player: page.player })
    }
    LazySheet {
        id: captions
        sheet: Qt.resolvedUrl("CaptionSheet.qml")
        properties: ({ player: page.player })
    }
}
