import QtQuick
import Tarvo

// One thing on the disk, as large as it is.
Item {
    id: tile

    required property int index
    required property string key
    required property string label
    required property string detail
    required property string bytes
    required property rect place
    required property var tint
    required property bool darkInk
    required property string tickState
    required property string status
    required property string word
    required property bool unknown
    required property bool inside
    required property bool free
    required property bool canZoom
    required property var nested

    property bool slides: true
    property bool dimmed: false
    // False while there is more to be made than one frame has time for.
    property bool filled: true

    readonly property color fill: tint ? tint : Theme.neutralTile
    readonly property color ink: tint ? darkInk ? Theme.darkInk : Theme.lightInk : Theme.text
    readonly property bool hovered: pointer.hovered
    readonly property bool hasNested: nested.length > 0
    readonly property bool large: !hasNested && width > 150 * Theme.scale && height > 96 * Theme.scale
    readonly property bool opensOnClick: inside && canZoom

    signal menuWanted(string key)
    signal zoomWanted(string key)

    function enter(modifiers: int) {
        if (modifiers & Qt.AltModifier)
            App.showPreview(key);
        else if (canZoom)
            zoomWanted(key);
    }
    function act() {
        if (opensOnClick)
            zoomWanted(key);
        else
            App.toggle(key);
    }

    Accessible.checkable: tickState === "selected" || tickState === "unselected"
    Accessible.checked: tickState === "selected"
    Accessible.description: status + (canZoom ? ". " + Words.magnifier : "")
    Accessible.focusable: true
    Accessible.name: label + ", " + bytes + (word ? ", " + word : "")
    Accessible.role: opensOnClick ? Accessible.Button : Accessible.CheckBox
    height: place.height
    opacity: dimmed ? Theme.dimmed : 1
    width: place.width
    x: place.x
    y: place.y
    z: activeFocus ? 1 : 0

    Accessible.onPressAction: act()
    Accessible.onToggleAction: act()
    Keys.onEnterPressed: event => enter(event.modifiers)
    Keys.onReturnPressed: event => enter(event.modifiers)
    Keys.onSpacePressed: act()
    Keys.onMenuPressed: menuWanted(key)

    // A spring that answers in 0.55 s with a damping of 0.85: stiffness and friction of a step of 16 ms.
    component Slide: SpringAnimation { damping: 0.31; epsilon: 0.25; spring: 2.09 }

    Behavior on x { enabled: tile.slides; Slide {} }
    Behavior on y { enabled: tile.slides; Slide {} }
    Behavior on width { enabled: tile.slides; Slide {} }
    Behavior on height { enabled: tile.slides; Slide {} }
    Behavior on opacity {
        NumberAnimation { duration: Theme.hoverTime; easing.type: Easing.OutQuad }
    }

    Rectangle {
        anchors.fill: parent
        color: tile.fill
        opacity: tile.free ? 0.45 : 1
        radius: Theme.tileRadius
    }
    Hatch {
        anchors.fill: parent
        color: Qt.alpha(tile.ink, 0.1)
        radius: Theme.tileRadius
        visible: tile.unknown
    }
    Rectangle {
        anchors.fill: parent
        border.color: tile.activeFocus ? Theme.accent : tile.ink
        border.width: tile.activeFocus ? 3 : 2
        color: Qt.alpha(tile.ink, 0.08)
        opacity: tile.activeFocus || tile.hovered || App.hovered === tile.key ? 1 : 0
        radius: Theme.tileRadius

        Behavior on opacity {
            NumberAnimation { duration: Theme.hoverTime }
        }
    }
    MouseArea {
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        anchors.fill: parent
        cursorShape: tile.opensOnClick || tile.tickState === "selected" || tile.tickState === "unselected"
                     ? Qt.PointingHandCursor : Qt.ArrowCursor

        onClicked: mouse => mouse.button === Qt.RightButton ? tile.menuWanted(tile.key) : tile.act()
    }
    TileLabel {
        anchors.fill: parent
        anchors.margins: tile.large ? 12 : 6
        anchors.topMargin: tile.hasNested ? 3 : tile.large ? 10 : 5
        bytes: tile.bytes
        fill: tile.fill
        ink: tile.ink
        label: tile.label
        large: tile.large
        tickState: tile.tickState
        visible: !tile.hasNested || tile.width > 64
    }
    Repeater {
        model: tile.filled ? tile.nested : []

        NestedTile {
            ink: tile.ink // qmllint disable unqualified

            onMenuWanted: key => tile.menuWanted(key) // qmllint disable unqualified
            onZoomWanted: key => tile.zoomWanted(key) // qmllint disable unqualified
        }
    }
    IconButton {
        anchors.bottom: parent.bottom
        anchors.margins: 4
        anchors.right: parent.right
        backdrop: Qt.alpha(tile.fill, 0.85)
        focusPolicy: Qt.NoFocus
        ink: tile.ink
        name: Words.zoom
        shape: "zoom"
        side: Math.round(26 * Theme.scale)
        visible: tile.canZoom && (tile.hovered || tile.activeFocus) && tile.width > side + 8 && tile.height > side + 8

        onClicked: tile.zoomWanted(tile.key)
    }
    HoverHandler {
        id: pointer
    }
}
