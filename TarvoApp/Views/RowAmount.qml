import QtQuick
import Tarvo

// What a row takes, for a person to read and as a part of the largest one. Less than 0 is no group.
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
    ShareBar {
        anchors.bottom: parent.bottom
        anchors.right: parent.right
        ink: amount.group >= 0 ? Theme.groups[amount.group] : Theme.secondaryText
        share: amount.share
        width: amount.barWidth
    }
}
