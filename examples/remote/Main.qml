import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import voro.application
import voro.multimedia
import voro.remote

/** Like a lock screen: the time, and whoever holds the now-playing role with everything it can be told. */
AppWindow {
    id: window

    readonly property bool isPlaying: controller.mediaState === MediaState.Started
    readonly property string track: controller.metaData[MetaData.Title] || ""
    readonly property string artist: controller.metaData[MetaData.Artist] || ""
    readonly property string album: controller.metaData[MetaData.Album] || ""
    readonly property bool isSilent: track === "" && artist === "" && !isPlaying
                                     && controller.mediaState !== MediaState.Paused

    title: isSilent ? qsTr("Voro Remote") : track

    keys: [
        { key: qsTr("Space"), text: qsTr("Play or pause") },
        { key: "← →", text: qsTr("Back or on") },
        { key: "N P", text: qsTr("Next or previous track") },
        { key: "↑ ↓ + −", text: qsTr("Louder or softer") },
        { key: "M", text: qsTr("Sound off or on") },
    ]

    /** As it was asked for here: nobody tells. */
    property bool isMuted: false

    function setMuted(muted: bool) {
        isMuted = muted;
        check(controller.setMute(muted));
    }

    function check(result: int) {
        if (result !== MediaError.None)
            notice.text = qsTr("The device does not answer.");
    }

    NowPlayingController {
        id: controller
    }
    RunningPosition {
        id: running
        controller: controller
        running: window.visible && isPlaying
    }
    Sources {
        id: sources
    }
    Timer {
        running: window.visible
        repeat: true
        interval: 1000
        triggeredOnStart: true
        onTriggered: clock.now = new Date()
    }

    FocusScope {
        anchors.fill: parent
        focus: true
        Keys.onPressed: (event) => event.accepted = window.handleKey(event)

        GridLayout {
            anchors.fill: parent
            anchors.margins: 24
            columns: window.isWide && !window.isSilent ? 2 : 1
            columnSpacing: 40
            rowSpacing: 12

            ColumnLayout {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                spacing: 16
                Label {
                    id: clock
                    property date now: new Date()
                    Layout.alignment: Qt.AlignHCenter
                    text: now.toLocaleTimeString(Qt.locale(), "HH:mm")
                    font { pixelSize: Math.round(Math.min(Theme.fontSize, 20) * 3.7); weight: Font.Light }
                }
                Item {
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Cover {
                        anchors.centerIn: parent
                        width: Math.min(parent.width, parent.height, 380)
                        height: width
                        visible: !window.isSilent
                        source: controller.iconUrl
                    }
                    EmptyState {
                        anchors.centerIn: parent
                        width: parent.width
                        visible: window.isSilent
                        symbol: "moon"
                        title: qsTr("Nothing is playing")
                        text: qsTr("What plays on this device shows up here.")
                    }
                }
            }

            ColumnLayout {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                Layout.alignment: Qt.AlignCenter
                spacing: 4
                TextButton {
                    Layout.alignment: Qt.AlignHCenter
                    Layout.fillWidth: true
                    Layout.maximumWidth: 300
                    visible: !window.isSilent && sources.activeName !== ""
                    text: sources.activeName
                    icon.name: sources.activeIcon
                    Accessible.name: qsTr("Played by %1").arg(text)
                    onClicked: sourceSheet.open()
                }
                Label {
                    Layout.fillWidth: true
                    horizontalAlignment: Text.AlignHCenter
                    text: window.track
                    visible: !window.isSilent
                    textFormat: Text.PlainText
                    wrapMode: Text.Wrap
                    maximumLineCount: 2
                    elide: Text.ElideRight
                    font { pixelSize: Theme.titleSize; bold: true }
                    Accessible.role: Accessible.Heading
                }
                Label {
                    Layout.fillWidth: true
                    horizontalAlignment: Text.AlignHCenter
                    text: window.artist !== "" && window.album !== "" ? window.artist + " · " + window.album : window.artist + window.album
                    visible: text !== ""
                    textFormat: Text.PlainText
                    wrapMode: Theme.isLarge ? Text.Wrap : Text.NoWrap
                    maximumLineCount: Theme.isLarge ? 2 : 1
                    elide: Text.ElideRight
                    color: Theme.faint
                }
                Progress {
                    Layout.fillWidth: true
                    Layout.topMargin: 16
                    visible: !window.isSilent
                    position: running.position
                    duration: controller.duration
                }
                RowLayout {
                    Layout.alignment: Qt.AlignHCenter
                    Layout.topMargin: 8
                    visible: !window.isSilent
                    spacing: 8
                    // As the bar of the position, which runs from left to right in every language.
                    LayoutMirroring.enabled: false
                    LayoutMirroring.childrenInherit: true
                    IconButton {
                        symbol: "shuffle"
                        text: controller.shuffleMode === ShuffleMode.All ? qsTr("Plays in a random order") : qsTr("Plays in order")
                        enabled: controller.shuffleMode !== ShuffleMode.Unsupported
                        isOn: controller.shuffleMode === ShuffleMode.All
                        onClicked: window.check(controller.shuffle())
                    }
                    IconButton {
                        symbol: "previous"
                        text: qsTr("Previous track")
                        enabled: controller.previousEnabled
                        onClicked: window.check(controller.previous())
                    }
                    IconButton {
                        symbol: window.isPlaying ? "pause" : "play"
                        text: window.isPlaying ? qsTr("Pause") : qsTr("Play")
                        size: 64
                        isMain: true
                        focus: true
                        onClicked: window.check(controller.playPause())
                    }
                    IconButton {
                        symbol: "next"
                        text: qsTr("Next track")
                        enabled: controller.nextEnabled
                        onClicked: window.check(controller.next())
                    }
                    IconButton {
                        symbol: controller.repeatMode === RepeatMode.Track ? "repeat-one" : "repeat"
                        text: controller.repeatMode === RepeatMode.Track ? qsTr("Repeats the track")
                            : controller.repeatMode === RepeatMode.All ? qsTr("Repeats everything") : qsTr("Repeats nothing")
                        enabled: controller.repeatMode !== RepeatMode.Unsupported
                        isOn: enabled && controller.repeatMode !== RepeatMode.None
                        onClicked: window.check(controller.repeat())
                    }
                }
                RowLayout {
                    Layout.alignment: Qt.AlignHCenter
                    Layout.topMargin: 8
                    spacing: 24
                    IconButton {
                        symbol: "softer"
                        text: qsTr("Softer")
                        autoRepeat: true
                        onClicked: window.check(controller.volumeDown())
                    }
                    IconButton {
                        symbol: window.isMuted ? "mute" : "volume"
                        text: window.isMuted ? qsTr("Sound on") : qsTr("Sound off")
                        isOn: window.isMuted
                        onClicked: window.setMuted(!window.isMuted)
                    }
                    IconButton {
                        symbol: "louder"
                        text: qsTr("Louder")
                        autoRepeat: true
                        onClicked: window.check(controller.volumeUp())
                    }
                }
            }
        }
        AppMenu {
            anchors { right: parent.right; top: parent.top; margins: 4 }
            window: window
            entries: sources.count > 0 ? [{ text: qsTr("Sources"), symbol: "library", run: () => sourceSheet.open() }] : []
        }
        Notice {
            id: notice
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12 }
            onClosed: text = ""
        }
    }

    LazySheet {
        id: sourceSheet
        sheet: Qt.resolvedUrl("SourceSheet.qml")
        properties: ({ sources: sources })
    }

    function handleKey(event: var): bool {
        if (handleCommonKey(event))
            return true;
        switch (event.key) {
        case Qt.Key_Space: check(controller.playPause()); return true;
        case Qt.Key_N: check(controller.next()); return true;
        case Qt.Key_P: check(controller.previous()); return true;
        case Qt.Key_Right: check(controller.forward()); return true;
        case Qt.Key_Left: check(controller.rewind()); return true;
        case Qt.Key_Up:
        case Qt.Key_Plus: check(controller.volumeUp()); return true;
        case Qt.Key_Down:
        case Qt.Key_Minus: check(controller.volumeDown()); return true;
        case Qt.Key_M: setMuted(!isMuted); return true;
        }
        return false;
    }
}
