import QtQuick
import Tarvo

// One thing that a cleanup takes, or the head of those of which the same becomes.
Item {
    id: line

    required property var modelData
    required property int index

    readonly property string place: modelData.place || ""

    Accessible.name: modelData.title + (place.length > 0 ? ", " + place : "") + ", " + modelData.bytes
    Accessible.role: modelData.isHead ? Accessible.Heading : Accessible.ListItem
    implicitHeight: name.y + name.implicitHeight + 2 + (place.length > 0 ? folder.implicitHeight : 0)

    Line {
        id: name

        Accessible.ignored: true
        elide: Text.ElideMiddle
        font.weight: line.modelData.isHead ? Font.DemiBold : Font.Normal
        text: line.modelData.title
        width: amount.x - x - 8
        x: line.modelData.isHead ? 0 : 12
        y: line.modelData.isHead && line.index > 0 ? 12 : 2
    }
    Line {
        id: folder

        Accessible.ignored: true
        color: Theme.secondaryText
        // Nothing of where it is may be left out: several names may go.
        elide: Text.ElideNone
        font.pixelSize: Theme.small
        text: line.place
        visible: text.length > 0
        width: name.width
        wrapMode: Text.Wrap
        x: name.x
        y: name.y + name.implicitHeight
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
