import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import voro.application
import voro.multimedia

/** What is played: its picture, its name, everything that can be done with it. */
FocusScope {
    id: page

    required property Playback player
    readonly property alias windowId: picture.windowId
    property bool canGoBack: false
    /** Films fill the screen. */
    property bool isCinema: false
    readonly property bool isFilling: isCinema && player.hasVideo

    signal back

    readonly property FullScreen screen: filling.item as FullScreen

    onIsCinemaChanged: if (!screen) filling.setSource("FullScreen.qml", { player: page.player })

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
                checked: page.player.closedCaptionEnabled
                onClicked: captions.open()
            }
            IconButton {
                symbol: "speed"
                text: qsTr("Speed: %1×").arg(page.player.wantedSpeed)
                checked: page.player.wantedSpeed !== 1
                onClicked: speed.open()
            }
            IconButton {
                symbol: "equalizer"
                text: qsTr("Equalizer")
                checked: page.player.equalizerPreset !== EqualizerPreset.Off
                onClicked: equalizer.open()
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
                player: page.player
            }
            TapHandler {
                enabled: page.player.hasVideo
                onDoubleTapped: page.isCinema = true
            }
        }

        ColumnLayout {
            Layout.margins: 24
            Layout.topMargin: 16
            Layout.bottomMargin: 4
            spacing: 4
            Label {
                Layout.fillWidth: true
                horizontalAlignment: Text.AlignHCenter
                text: page.player.isLoaded ? page.player.title : qsTr("Nothing is played")
                textFormat: Text.PlainText
                elide: Text.ElideRight
                maximumLineCount: 2
                wrapMode: Text.Wrap
                font { pixelSize: 20; bold: true }
                Accessible.role: Accessible.Heading
            }
            Label {
                Layout.fillWidth: true
                horizontalAlignment: Text.AlignHCenter
                text: page.player.isLoaded ? page.player.artist : qsTr("Choose something from the library.")
                textFormat: Text.PlainText
                elide: Text.ElideRight
                color: Theme.faint
            }
        }

        Transport {
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
            Icon {
                symbol: page.player.volume > 0 ? "volume" : "mute"
                color: Theme.faint
            }
            Seeker {
                Layout.fillWidth: true
                present: page.player.volume
                isLive: true
                stepSize: 0.05
                Accessible.name: qsTr("Volume")
                onChosen: (volume) => page.player.volume = volume
            }
        }
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
