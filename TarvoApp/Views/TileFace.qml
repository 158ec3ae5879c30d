import QtQuick
import Tarvo

// What is drawn of a tile, with the tiles in it and its magnifier.
Item {
    id: face

    // A MapTile, whose file needs this one.
    required property var of

    Rectangle {
        anchors.fill: parent
        color: face.of.fill
        opacity: face.of.kind === Kinds.Free ? 0.45 : 1
        radius: Theme.tileRadius
    }
    Hatch {
        color: Qt.alpha(face.of.ink, 0.1)
        // What is painted at all needs a pixel.
        height: Math.max(1, face.height)
        radius: Theme.tileRadius
        visible: face.of.unknown && !face.of.bare
        width: Math.max(1, face.width)
    }
    Rectangle {
        anchors.fill: parent
        border.color: face.of.activeFocus ? Theme.accent : face.of.ink
        border.width: face.of.activeFocus ? 3 : 2
        color: Qt.alpha(face.of.ink, 0.08)
        opacity: face.of.activeFocus || face.of.hovered || App.places.hovered === face.of.key ? 1 : 0
        radius: Theme.tileRadius

        Behavior on opacity {
            NumberAnimation { duration: Theme.hoverTime }
        }
    }
    TileLabel {
        anchors.fill: parent
        anchors.margins: face.of.large ? 12 : 6
        anchors.topMargin: face.of.hasNested ? 3 : face.of.large ? 10 : 5
        bytes: face.of.bytes
        fill: face.of.fill
        ink: face.of.ink
        label: face.of.label
        large: face.of.large
        tickState: face.of.tickState
        visible: !face.of.bare && (!face.of.hasNested || face.of.width > 64)
    }
    Repeater {
        model: face.of.filled ? face.of.nested : []

        NestedTile {
            bare: face.of.bare // qmllint disable unqualified
            ink: face.of.ink // qmllint disable unqualified

            onMenuWanted: key => face.of.menuWanted(key, null) // qmllint disable unqualified
            onZoomWanted: key => face.of.zoomWanted(key) // qmllint disable unqualified
        }
    }
    IconButton {
        anchors.bottom: parent.bottom
        anchors.margins: 4
        anchors.right: parent.right
        backdrop: Qt.alpha(face.of.fill, 0.85)
        focusPolicy: Qt.NoFocus
        ink: face.of.ink
        name: Words.zoom
        shape: "zoom"
        side: Math.round(26 * Theme.scale)
        visible: face.of.canZoom && (face.of.hovered || face.of.activeFocus)
                 && face.width > side + 8 && face.height > side + 8

        onClicked: face.of.zoomWanted(face.of.key)
    }
}
