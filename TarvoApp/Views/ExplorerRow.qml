import QtQuick
import Tarvo

// One entry of the folder that is explored.
Item {
    id: row

    required property int index
    required property string key
    required property string name
    required property bool isFolder
    required property string bytes
    required property real share
    required property int group
    required property string word
    required property string facts
    required property string line
    required property string unread
    required property bool isPart
    required property bool isMarked
    required property bool isProtected

    signal menuWanted(at: Item)
    signal picked

    Accessible.checkable: !isProtected
    Accessible.checked: isMarked
    Accessible.description: unread.length > 0 && word.length > 0 ? word + ". " + unread : word + unread
    Accessible.focusable: true
    Accessible.name: name + (isFolder ? ", " + SideWords.folder : "") + ", " + bytes + ", " + facts
                     + (word.length > 0 ? ", " + word : "")
    // What is marked has its box ticked.
    Accessible.role: Accessible.CheckBox
    implicitHeight: texts.height + 14

    Accessible.onPressAction: App.explorer.toggleMark(index)
    Accessible.onToggleAction: App.explorer.toggleMark(index)

    Rectangle {
        anchors.fill: parent
        color: row.isMarked ? Qt.alpha(Theme.accent, 0.24)
             : row.ListView.isCurrentItem ? Qt.alpha(Theme.accent, 0.14) : Qt.alpha(Theme.window, pointer.hovered ? 1 : 0) // "transparent" is black
        radius: Theme.tileRadius
    }
    FocusRing {
        anchors.margins: 0
        radius: Theme.tileRadius
        visible: row.activeFocus
    }
    HoverHandler {
        id: pointer
    }
    MouseArea {
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        anchors.fill: parent

        onClicked: mouse => {
            row.picked();
            if (mouse.button === Qt.RightButton)
                row.menuWanted(null);
        }
        onDoubleClicked: mouse => {
            if (mouse.button === Qt.LeftButton)
                App.explorer.enter(row.index);
        }
    }
    TickBox {
        id: tick

        ink: row.isMarked ? Theme.accent : Theme.secondaryText
        inner: Theme.accentInk
        tickState: row.isProtected ? Kinds.Blocked : row.isMarked ? Kinds.Selected : Kinds.Unselected
        x: 8
        y: 7

        MouseArea {
            anchors.fill: parent
            anchors.margins: -6
            cursorShape: Qt.PointingHandCursor

            onClicked: {
                row.picked();
                App.explorer.toggleMark(row.index);
            }
        }
    }
    Column {
        id: texts

        spacing: 1
        width: amount.x - 10 - x
        x: tick.x + tick.side + 10
        y: 7

        Row {
            spacing: 4

            // Its size is too small then.
            Glyph {
                id: sign

                color: Theme.danger
                height: title.height
                shape: "warning"
                visible: row.unread.length > 0
                width: height

                HoverHandler {
                    id: over
                }
                Loader {
                    active: over.hovered
                    anchors.fill: parent
                    sourceComponent: Tip {
                        text: row.unread // qmllint disable unqualified
                        visible: true
                    }
                }
            }
            Line {
                id: title

                Accessible.ignored: true
                elide: Text.ElideMiddle
                font.weight: row.isFolder ? Font.DemiBold : Font.Normal
                text: row.name
                width: texts.width - (sign.visible ? sign.width + 4 : 0)
            }
        }
        Row {
            spacing: 6

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.groups[Math.max(row.group, 0)]
                height: 8
                radius: 4
                visible: row.group >= 0
                width: 8
            }
            Line {
                Accessible.ignored: true
                color: Theme.secondaryText
                font.pixelSize: Theme.small
                text: row.line
                width: texts.width - (row.group >= 0 ? 14 : 0)
            }
        }
    }
    RowAmount {
        id: amount

        bytes: row.bytes
        group: row.group
        share: row.share
        x: into.x - width - 6
        y: 7
    }
    Glyph {
        id: into

        color: opener.containsMouse ? Theme.text : Theme.secondaryText
        height: width
        shape: "next"
        visible: row.isFolder
        width: Math.round(20 * Theme.scale)
        x: parent.width - width - 4
        y: 7

        MouseArea {
            id: opener

            anchors.fill: parent
            anchors.margins: -6
            cursorShape: Qt.PointingHandCursor
            hoverEnabled: true

            onClicked: App.explorer.enter(row.index)
        }
    }
}
