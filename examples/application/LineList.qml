import QtQuick
import QtQuick.Controls

/** A list that is used by touch and by keys, which go by lines, by screens and to both ends. */
ListView {
    id: list

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: true
    highlightMoveDuration: 0
    ScrollBar.vertical: ScrollBar { }
    // A sheet is opened before it has its height, and a bar that comes takes the place of lines.
    onHeightChanged: positionViewAtIndex(currentIndex, ListView.Contain)

    Keys.onPressed: (event) => {
        const screen = Math.max(1, Math.floor(height / (currentItem?.height || height)) - 1);
        const steps = {
            [Qt.Key_Home]: -count, [Qt.Key_End]: count, [Qt.Key_PageUp]: -screen, [Qt.Key_PageDown]: screen,
        };
        event.accepted = event.key in steps;
        if (event.accepted)
            currentIndex = Math.max(0, Math.min(count - 1, currentIndex + steps[event.key]));
    }
}
