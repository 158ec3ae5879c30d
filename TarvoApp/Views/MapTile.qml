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
    required property int tickState
    required property string status
    required property string word
    required property bool unknown
    required property int kind
    required property bool canZoom
    required property var nested
    required property string known
    // By what was searched for or asked for; a pointer only adds to what is there.
    required property bool dimmed
    required property bool clickable

    // What nobody sees is where it belongs at once.
    property bool slides: true
    // Kept for a map with more tiles.
    readonly property bool spare: key.length === 0
    // False while there is more to be made than one frame has time for. The tile's face stays once it is made, until
    // the tile is not needed: 150 faces that are all written anew when a map comes back take longer than a frame.
    property bool filled: true
    property bool made: false
    // Colors alone: writing at a new size for every frame takes longer than a frame has.
    property bool bare: false

    readonly property color fill: tint ? tint : Theme.neutralTile
    readonly property color ink: tint ? darkInk ? Theme.darkInk : Theme.lightInk : Theme.text
    readonly property bool hovered: pointer.hovered
    readonly property bool hasNested: nested.length > 0
    readonly property bool large: !hasNested && width > 150 * Theme.scale && height > 96 * Theme.scale
    readonly property bool opensOnClick: kind === Kinds.Inside && canZoom
    readonly property bool canTick: tickState === Kinds.Selected || tickState === Kinds.Unselected

    signal menuWanted(string key, Item at)
    signal zoomWanted(string key)

    function enter(modifiers: int) {
        if (modifiers & Qt.AltModifier)
            App.places.showPreview(key);
        else
            App.places.enter(key);
    }
    function act() {
        App.places.click(key);
    }

    Accessible.checkable: canTick
    Accessible.checked: tickState === Kinds.Selected
    Accessible.description: (known ? known + ". " : "") + status + (canZoom ? ". " + Words.magnifier : "")
    Accessible.focusable: true
    Accessible.name: label + ", " + bytes + (word ? ", " + word : "")
    Accessible.role: opensOnClick ? Accessible.Button : canTick ? Accessible.CheckBox : Accessible.ListItem
    enabled: !spare
    height: place.height
    opacity: dimmed || App.cleaning.inHand === key ? Theme.dimmed : 1
    visible: !spare
    width: place.width
    x: place.x
    y: place.y
    z: activeFocus ? 1 : 0

    Component.onCompleted: made = !spare && filled
    onFilledChanged: made = !spare && (made || filled)
    onSpareChanged: made = !spare && filled

    Accessible.onPressAction: act()
    Accessible.onToggleAction: act()
    Keys.onEnterPressed: event => enter(event.modifiers)
    Keys.onReturnPressed: event => enter(event.modifiers)
    Keys.onSpacePressed: act()
    Keys.onMenuPressed: menuWanted(key, tile)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier) !== 0;
        if (event.accepted)
            menuWanted(key, tile);
    }

    // A spring that answers in 0.55 s with a damping of 0.85: stiffness and friction of a step of 16 ms.
    component Slide: SpringAnimation { damping: 0.31; epsilon: 0.25; spring: 2.09 }

    Behavior on x { enabled: tile.slides && tile.visible; Slide {} }
    Behavior on y { enabled: tile.slides && tile.visible; Slide {} }
    Behavior on width { enabled: tile.slides && tile.visible; Slide {} }
    Behavior on height { enabled: tile.slides && tile.visible; Slide {} }
    Behavior on opacity {
        NumberAnimation { duration: Theme.hoverTime; easing.type: Easing.OutQuad }
    }

    // Below the face, where what is in the tile is pressed.
    MouseArea {
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        anchors.fill: parent
        cursorShape: tile.clickable ? Qt.PointingHandCursor : Qt.ArrowCursor

        onClicked: mouse => {
            // What the keys do next is done with what was pressed last.
            tile.forceActiveFocus(Qt.MouseFocusReason);
            mouse.button === Qt.RightButton ? tile.menuWanted(tile.key, null) : tile.act();
        }
    }
    Loader {
        active: tile.made
        anchors.fill: parent

        sourceComponent: TileFace {
            of: tile // qmllint disable unqualified
        }
    }
    HoverHandler {
        id: pointer
    }
}
