import QtQuick
import Tarvo

// One thing that was found, and the head of its group above the first of them.
Item {
    id: row

    required property int index
    required property string key
    required property string title
    required property string detail
    required property string bytes
    required property real share
    required property int group
    required property string groupTitle
    required property string groupBytes
    required property bool first
    required property int tickState
    required property string reason
    required property list<string> places
    required property var explanation
    required property string evidence

    property bool opened: false

    readonly property bool lit: App.places.mapHovered === key || App.places.flashRow === key
    readonly property bool tickable: tickState === Kinds.Selected || tickState === Kinds.Unselected
    readonly property string below: tickState === Kinds.Blocked && reason ? reason
                                  : explanation.whatItIs ? explanation.whatItIs : detail ? detail : places[0] || ""

    signal menuWanted(string key)
    signal openWanted(bool open)

    function enter(modifiers: int) {
        if (modifiers & Qt.AltModifier)
            App.places.showPreview(key);
        else
            App.map.zoomInto(key);
    }

    Accessible.checkable: tickable
    Accessible.checked: tickState === Kinds.Selected
    Accessible.description: below
    Accessible.focusable: true
    Accessible.name: title + ", " + bytes + ", " + groupTitle + ", " + Words.tickState(tickState)
    // What cannot be ticked is no box to tick.
    Accessible.role: tickable ? Accessible.CheckBox : Accessible.ListItem
    implicitHeight: body.y + body.height

    Accessible.onPressAction: App.ticked.toggle(key)
    Accessible.onToggleAction: App.ticked.toggle(key)
    Keys.onMenuPressed: menuWanted(key)
    Keys.onEnterPressed: event => enter(event.modifiers)
    Keys.onLeftPressed: openWanted(false)
    Keys.onReturnPressed: event => enter(event.modifiers)
    Keys.onRightPressed: openWanted(true)
    Keys.onSpacePressed: App.ticked.toggle(key)

    GroupHeader {
        id: header

        bytes: row.groupBytes
        group: row.group
        title: row.groupTitle
        visible: row.first
        width: parent.width - 16
        x: 8
    }
    // Everything here has its height as soon as it has its width: a row that grows while others slide would leave
    // them where they were going before.
    Rectangle {
        id: body

        color: row.lit ? Qt.alpha(Theme.accent, 0.18) : Qt.alpha(Theme.window, pointer.hovered ? 1 : 0) // "transparent" is black
        height: details.active ? details.y + details.implicitHeight + 12 : texts.height + 14
        radius: Theme.tileRadius
        width: parent.width
        y: row.first ? header.implicitHeight : 0

        Behavior on color {
            ColorAnimation { duration: Theme.hoverTime }
        }

        FocusRing {
            anchors.margins: 0
            radius: Theme.tileRadius
            visible: row.activeFocus
        }
        HoverHandler {
            id: pointer

            onHoveredChanged: {
                if (hovered)
                    App.places.hovered = row.key;
                else if (App.places.hovered === row.key)
                    App.places.hovered = "";
            }
        }
        MouseArea {
            acceptedButtons: Qt.LeftButton | Qt.RightButton
            anchors.fill: parent
            cursorShape: row.tickable ? Qt.PointingHandCursor : Qt.ArrowCursor

            onClicked: mouse => {
                row.ListView.view.currentIndex = row.index;
                if (mouse.button === Qt.RightButton)
                    row.menuWanted(row.key);
                else
                    App.ticked.toggle(row.key);
            }
        }
        TickBox {
            id: tick

            ink: row.tickState === Kinds.Selected ? Theme.accent : Theme.secondaryText
            inner: Theme.accentInk
            tickState: row.tickState
            x: 8
            y: 7
        }
        Item {
            id: texts

            // By what is said, not by what is seen of it: that would come back to the height.
            readonly property bool hasNote: row.below.length > 0 && !row.opened

            height: heading.implicitHeight + (hasNote ? 1 + note.implicitHeight : 0)
            width: amount.x - 10 - x
            x: tick.x + tick.side + 10
            y: 7

            Line {
                id: heading

                Accessible.ignored: true
                text: row.title
                width: parent.width
            }
            Line {
                id: note

                Accessible.ignored: true
                color: Theme.secondaryText
                font.pixelSize: Theme.small
                maximumLineCount: 2
                text: row.below
                visible: texts.hasNote
                width: parent.width
                wrapMode: Text.Wrap
                y: heading.implicitHeight + 1
            }
        }
        RowAmount {
            id: amount

            bytes: row.bytes
            group: row.group
            share: row.share
            x: opener.x - width - 10
            y: 7
        }
        MouseArea {
            id: opener

            Accessible.name: row.opened ? Words.lessAbout.arg(row.title) : Words.moreAbout.arg(row.title)
            Accessible.role: Accessible.Button
            cursorShape: Qt.PointingHandCursor
            height: width
            hoverEnabled: true
            width: Math.round(20 * Theme.scale)
            x: parent.width - width - 4
            y: 7

            Accessible.onPressAction: row.openWanted(!row.opened)
            onClicked: row.openWanted(!row.opened)

            Glyph {
                anchors.fill: parent
                color: opener.containsMouse ? Theme.text : Theme.secondaryText
                rotation: row.opened ? 90 : 0
                shape: "next"

                Behavior on rotation {
                    NumberAnimation { duration: Theme.hoverTime }
                }
            }
        }
        Loader {
            id: details

            active: row.opened
            width: parent.width - x - 8
            x: texts.x
            y: amount.y + amount.height + 10

            sourceComponent: RowDetails {
                detail: row.detail
                evidence: row.evidence
                explanation: row.explanation
                key: row.key
                places: row.places
                reason: row.tickState === Kinds.Blocked ? row.reason : ""
                unclassified: row.group === Kinds.Unclassified
            }
        }
    }
}
