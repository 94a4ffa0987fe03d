pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import voro.application

/** What is played one after the other: to choose from, to move and to take out. */
Sheet {
    id: sheet

    required property Playback player

    title: qsTr("Queue")
    Component.onCompleted: {
        player.libraryWanted();
        list.model = player.count;
    }
    onOpened: {
        list.currentIndex = player.index;
        list.positionViewAtIndex(player.index, ListView.Center);
        list.forceActiveFocus(Qt.PopupFocusReason);
    }

    Connections {
        target: sheet.player
        // With another number of lines the list begins anew; what was looked at stays.
        function onCountChanged() {
            const top = list.contentY;
            const line = list.currentIndex;
            list.model = sheet.player.count;
            list.contentY = Math.max(0, Math.min(top, list.contentHeight - list.height));
            list.currentIndex = Math.min(line, list.count - 1);
        }
    }

    function move(from: int, to: int) {
        if (to < 0 || to >= player.queue.length || from === to)
            return;
        const top = list.contentY;
        player.move(from, to);
        list.contentY = top;
        list.currentIndex = to;
    }
    function remove(index: int) {
        const top = list.contentY;
        player.remove(index);
        list.contentY = Math.min(top, Math.max(0, list.contentHeight - list.height));
        list.currentIndex = Math.min(index, player.queue.length - 1);
        if (player.queue.length === 0)
            close();
    }

    LineList {
        id: list
        Layout.fillWidth: true
        Layout.fillHeight: true
        implicitHeight: contentHeight
        model: 0
        Accessible.role: Accessible.List
        Accessible.name: sheet.title
        delegate: Line {
            id: line
            required property int index
            readonly property bool isKnown: index < sheet.player.queue.length
            readonly property url medium: isKnown ? sheet.player.queue[index] : ""

            least: Theme.touch
            title: isKnown ? sheet.player.titleOf(medium) : qsTr("Track %1").arg(index + 1)
            isCurrent: index === sheet.player.index
            highlighted: ListView.isCurrentItem
            focus: ListView.isCurrentItem
            z: handle.isHeld ? 1 : 0
            transform: Translate {
                y: handle.isHeld ? handle.offset : 0
            }
            onMediumChanged: sheet.player.library.readTags(medium)
            onClicked: {
                sheet.player.goTo(index);
                sheet.close();
            }
            Keys.onReturnPressed: clicked()
            Keys.onEnterPressed: clicked()
            Keys.onDeletePressed: if (isKnown) sheet.remove(index)
            Keys.onPressed: (event) => {
                const by = event.key === Qt.Key_Up ? -1 : event.key === Qt.Key_Down ? 1 : 0;
                event.accepted = isKnown && by !== 0 && (event.modifiers & Qt.ControlModifier) !== 0;
                if (event.accepted)
                    sheet.move(index, index + by);
            }

            IconButton {
                visible: line.isKnown
                symbol: "close"
                size: 44
                text: qsTr("Take “%1” out").arg(line.title)
                focusPolicy: Qt.NoFocus
                onClicked: sheet.remove(line.index)
            }
            Icon {
                id: handle
                readonly property alias isHeld: drag.active
                readonly property real offset: drag.activeTranslation.y // qmllint disable
                visible: line.isKnown && sheet.player.queue.length > 1
                enabled: true
                Layout.rightMargin: 8
                implicitWidth: 40
                implicitHeight: 44
                symbol: "handle"
                color: Theme.faint
                Accessible.ignored: false
                Accessible.name: qsTr("Move “%1”").arg(line.title)
                DragHandler {
                    id: drag
                    target: null
                    xAxis.enabled: false
                    grabPermissions: PointerHandler.CanTakeOverFromItems
                    property int to: 0
                    onActiveTranslationChanged: to = Math.max(0, Math.min(sheet.player.queue.length - 1,
                                                     line.index + Math.round(activeTranslation.y / line.height)))
                    onActiveChanged: if (!active) sheet.move(line.index, to)
                }
            }
        }
    }
}
