import QtQuick
import Tarvo

// One folder or file to choose.
Rectangle {
    id: row

    required property var modelData
    required property int index
    property bool isCurrent: false

    signal pressed
    signal wanted

    Accessible.name: modelData.name
    Accessible.role: Accessible.ListItem
    Accessible.selected: isCurrent
    color: Qt.alpha(Theme.text, isCurrent ? 0.12 : pointer.hovered ? 0.06 : 0)
    implicitHeight: Theme.controlHeight
    radius: Theme.tileRadius

    HoverHandler {
        id: pointer
    }
    TapHandler {
        onDoubleTapped: row.wanted()
        onPressedChanged: if (pressed) row.pressed()
    }
    Line {
        Accessible.ignored: true
        anchors.verticalCenter: parent.verticalCenter
        elide: Text.ElideMiddle
        font.weight: row.modelData.isFolder ? Font.DemiBold : Font.Normal
        text: row.modelData.name + (row.modelData.isFolder ? "/" : "")
        width: parent.width - 24
        x: 12
    }
}
