import QtQuick
import Tarvo

// Ticked, not ticked, or not to be ticked: told by the shape, not by a color.
Item {
    id: box

    required property int tickState
    property color ink: Theme.text
    property color inner: Theme.surface
    property real side: Math.round(18 * Theme.scale)

    readonly property bool ticked: tickState === Kinds.Selected

    implicitHeight: side
    implicitWidth: side
    visible: tickState !== Kinds.Info

    Rectangle {
        anchors.fill: parent
        border.color: box.ink
        border.width: box.ticked ? 0 : 1.5
        color: box.ticked ? box.ink : "transparent"
        opacity: box.ticked ? 1 : 0.65
        radius: width / 2
        visible: box.tickState !== Kinds.Blocked
    }
    Glyph {
        anchors.fill: parent
        anchors.margins: box.ticked ? box.side * 0.1 : 0
        color: box.ticked ? box.inner : box.ink
        shape: box.ticked ? "tick" : "lock"
        visible: box.tickState === Kinds.Selected || box.tickState === Kinds.Blocked
        weight: box.ticked ? 3 : 2
    }
}
