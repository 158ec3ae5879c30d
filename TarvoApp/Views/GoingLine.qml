import QtQuick
import Tarvo

// One thing that a cleanup takes, or the head of those of which the same becomes.
Item {
    id: line

    required property var modelData
    required property int index

    Accessible.name: modelData.title + ", " + modelData.bytes
    Accessible.role: modelData.isHead ? Accessible.Heading : Accessible.ListItem
    implicitHeight: name.implicitHeight + (modelData.isHead && index > 0 ? 14 : 4)

    Line {
        id: name

        Accessible.ignored: true
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 2
        font.weight: line.modelData.isHead ? Font.DemiBold : Font.Normal
        text: line.modelData.title
        width: amount.x - x - 8
        x: line.modelData.isHead ? 0 : 12
    }
    Line {
        id: amount

        Accessible.ignored: true
        anchors.baseline: name.baseline
        anchors.right: parent.right
        anchors.rightMargin: 12
        color: line.modelData.isHead ? Theme.text : Theme.secondaryText
        elide: Text.ElideNone
        font.weight: name.font.weight
        text: line.modelData.bytes
    }
}
