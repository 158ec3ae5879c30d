import QtQuick
import Tarvo

// What a row takes, for a person to read and as a part of the largest one.
Item {
    id: amount

    required property string bytes
    required property int group
    required property real share

    readonly property int barWidth: Math.round(64 * Theme.scale)

    height: figure.height + 8
    width: Math.max(barWidth, figure.implicitWidth)

    Line {
        id: figure

        Accessible.ignored: true
        anchors.right: parent.right
        elide: Text.ElideNone
        text: amount.bytes
    }
    Rectangle {
        anchors.bottom: parent.bottom
        anchors.right: parent.right
        color: Theme.raised
        height: 4
        radius: 2
        width: amount.barWidth

        Rectangle {
            color: Theme.groups[amount.group]
            height: parent.height
            radius: parent.radius
            width: Math.max(4, parent.width * amount.share)
        }
    }
}
