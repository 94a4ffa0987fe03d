import QtQuick

/** A picture of what is played, or a note where there is none. */
Rectangle {
    id: cover

    property url source
    property string placeholder: "note"
    /** The pixels that the picture is read with. */
    property int size: 640
    readonly property bool hasPicture: picture.status === Image.Ready

    radius: Theme.radius
    color: Theme.raised
    clip: true
    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Cover")

    gradient: Gradient {
        GradientStop {
            position: 0
            color: Theme.isDark ? "#2d3b46" : "#dbe5ea"
        }
        GradientStop {
            position: 1
            color: Theme.isDark ? "#1a2229" : "#c2d2d8"
        }
    }
    Icon {
        anchors.centerIn: parent
        visible: !cover.hasPicture
        symbol: cover.placeholder
        size: Math.round(Math.min(cover.width, cover.height) * 0.45)
        color: Theme.accent
    }
    Image {
        id: picture
        anchors.fill: parent
        source: cover.source
        sourceSize.width: cover.size
        sourceSize.height: cover.size
        asynchronous: true
        fillMode: Image.PreserveAspectCrop
        visible: cover.hasPicture
    }
}
