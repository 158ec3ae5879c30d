import QtQuick
import Tarvo

// What is written on a tile: as much of it as there is room for, and never part of a number.
Item {
    id: texts

    required property string label
    required property string bytes
    required property string tickState
    required property color ink
    required property color fill
    required property bool large

    readonly property bool hasTick: width > 30 * Theme.scale && height > 16 * Theme.scale
    readonly property bool hasName: width - (tick.visible ? tick.width + 4 : 0) > 38 * Theme.scale
                                    && height > 14 * Theme.scale

    Line {
        id: name

        Accessible.ignored: true
        color: texts.ink
        font.pixelSize: texts.large ? Theme.strong : texts.height > 34 * Theme.scale ? Theme.body : Theme.small
        font.weight: Font.DemiBold
        maximumLineCount: texts.large ? 2 : 1
        text: texts.label
        visible: texts.hasName
        width: parent.width - (tick.visible ? tick.width + 6 : 0)
        wrapMode: texts.large ? Text.Wrap : Text.NoWrap
    }
    Line {
        Accessible.ignored: true
        anchors.top: name.bottom
        anchors.topMargin: texts.large ? 2 : 0
        color: texts.ink
        elide: Text.ElideNone
        font.pixelSize: texts.large ? Theme.title : name.font.pixelSize
        text: texts.bytes
        visible: texts.hasName && implicitWidth <= texts.width && y + implicitHeight <= texts.height + 2
    }
    TickBox {
        id: tick

        anchors.right: parent.right
        anchors.rightMargin: texts.large ? -2 : 0
        anchors.top: parent.top
        ink: texts.ink
        inner: texts.fill
        side: Math.round((texts.large ? 20 : 15) * Theme.scale)
        tickState: texts.tickState
        visible: texts.hasTick && texts.tickState !== "info"
    }
}
