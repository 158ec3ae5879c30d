import QtQuick
import Tarvo

// A line of such a list.
Item {
    id: row

    required property int index
    required property string name
    property string more: ""
    default property alias contents: inside.data

    readonly property ChosenList list: ListView.view as ChosenList
    readonly property bool chosen: list !== null && list.chosen === index

    Accessible.description: more
    Accessible.focusable: true
    Accessible.name: name
    Accessible.role: Accessible.ListItem
    Accessible.selectable: true
    Accessible.selected: chosen
    implicitHeight: inside.childrenRect.height + 16
    width: ListView.view ? ListView.view.width - 12 : 0

    Accessible.onPressAction: list.picked(index)

    Rectangle {
        anchors.fill: parent
        anchors.bottomMargin: 1
        anchors.topMargin: 1
        border.color: row.chosen && row.activeFocus ? Theme.accent : "transparent"
        border.width: 2
        color: row.chosen || over.hovered ? Theme.raised : Theme.surface
        radius: Theme.buttonRadius
    }
    HoverHandler {
        id: over
    }
    TapHandler {
        onTapped: {
            row.list.forceActiveFocus(Qt.MouseFocusReason);
            row.list.picked(row.index);
        }
    }
    Item {
        id: inside

        anchors.left: parent.left
        anchors.margins: 8
        anchors.right: parent.right
        anchors.top: parent.top
        height: childrenRect.height
    }
}
