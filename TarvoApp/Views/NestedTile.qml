import QtQuick
import Tarvo

// Something inside a folder that is itself a tile.
Rectangle {
    id: tile

    required property var modelData
    property color ink: Theme.text
    property bool bare: false

    signal zoomWanted(string key)
    signal menuWanted(string key)

    Accessible.description: modelData.canZoom ? Words.zoom : ""
    Accessible.name: modelData.label + ", " + modelData.bytes
    Accessible.role: modelData.canZoom ? Accessible.Button : Accessible.StaticText
    // Away from the words, which could not be read else on the gray and the violet.
    color: Qt.alpha(ink.hslLightness < 0.5 ? Theme.lightInk : Theme.darkInk, pointer.hovered ? 0.26 : 0.13)
    height: modelData.place.height
    opacity: modelData.dimmed ? Theme.dimmed : 1
    radius: Theme.nestedRadius
    width: modelData.place.width
    x: modelData.place.x
    y: modelData.place.y

    Accessible.onPressAction: zoomWanted(modelData.key)

    HoverHandler {
        id: pointer
    }
    MouseArea {
        // What cannot be opened leaves the click to the tile around it.
        acceptedButtons: tile.modelData.canZoom ? Qt.LeftButton | Qt.RightButton : Qt.RightButton
        anchors.fill: parent

        onClicked: mouse => mouse.button === Qt.RightButton ? tile.menuWanted(tile.modelData.key)
                                                            : tile.zoomWanted(tile.modelData.key)
    }
    Line {
        Accessible.ignored: true
        color: tile.ink
        font.pixelSize: Theme.small
        text: tile.modelData.label
        visible: !tile.bare && tile.width > 44 * Theme.scale && tile.height > 20 * Theme.scale
        width: parent.width - 12
        x: 6
        y: 4
    }
    Line {
        id: amount

        Accessible.ignored: true
        color: tile.ink
        elide: Text.ElideNone
        font.pixelSize: Theme.small
        text: tile.modelData.bytes
        visible: !tile.bare && implicitWidth < tile.width - 12 && tile.height > 38 * Theme.scale
        x: 6
        y: 4 + 15 * Theme.scale
    }
}
