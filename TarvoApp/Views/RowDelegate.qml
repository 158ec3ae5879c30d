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
    required property var facts
    required property bool chosen
    required property string command

    property bool opened: false
    // From an opened row the keys go on into it, and from its first button back to it. What has the focus must not
    // leave the tab order.
    property bool hasInside: false

    readonly property bool lit: App.places.mapHovered === key || App.places.flashRow === key
    readonly property bool tickable: tickState === Kinds.Selected || tickState === Kinds.Unselected
    readonly property string below: tickState === Kinds.Blocked && reason ? reason
                                  : explanation.whatItIs ? explanation.whatItIs : detail ? detail : places[0] || ""

    signal menuWanted(string key, Item at)

    function enter(modifiers: int) {
        if (modifiers & Qt.AltModifier)
            App.places.showPreview(key);
        else
            App.places.enter(key);
    }
    // What cannot be ticked says what is known of it instead.
    function act(all: bool) {
        if (!all)
            App.list.chooseNone();
        if (all && chosen || tickable)
            App.list.toggle(key);
        else
            App.places.openRow(key, !opened);
    }

    Accessible.checkable: tickable
    Accessible.checked: tickState === Kinds.Selected
    Accessible.description: below
    Accessible.focusable: true
    Accessible.name: title + ", " + bytes + ", " + groupTitle + ", " + Words.tickState(tickState)
                     + (chosen ? ", " + Words.chosen : "")
    Accessible.selected: chosen
    // What cannot be ticked is no box to tick.
    Accessible.role: tickable ? Accessible.CheckBox : Accessible.ListItem
    activeFocusOnTab: hasInside
    implicitHeight: body.y + body.height

    Component.onCompleted: hasInside = opened
    // A row that goes from below the pointer is not told that the pointer has left it.
    Component.onDestruction: if (App.places.hovered === key) App.places.hovered = ""
    onActiveFocusChanged: if (!activeFocus) hasInside = opened
    onOpenedChanged: hasInside = opened || activeFocus && hasInside
    Accessible.onPressAction: act(false)
    Accessible.onToggleAction: act(false)
    Keys.onMenuPressed: menuWanted(key, row)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier) !== 0;
        if (event.accepted)
            menuWanted(key, row);
    }
    Keys.onEnterPressed: event => enter(event.modifiers)
    Keys.onLeftPressed: App.places.openRow(key, false)
    Keys.onReturnPressed: event => enter(event.modifiers)
    Keys.onRightPressed: App.places.openRow(key, true)
    Keys.onSpacePressed: act(true)

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

        opacity: App.cleaning.inHand === row.key ? Theme.dimmed : 1
        color: row.chosen ? Qt.alpha(Theme.accent, 0.24) : row.lit ? Qt.alpha(Theme.accent, 0.18) : Qt.alpha(Theme.window, pointer.hovered ? 1 : 0) // "transparent" is black
        height: details.active ? details.y + details.implicitHeight + 12 : texts.height + 14
        radius: Theme.tileRadius
        width: parent.width
        y: row.first ? header.implicitHeight : 0

        Behavior on color {
            ColorAnimation { duration: Theme.hoverTime }
        }
        Behavior on opacity {
            NumberAnimation { duration: Theme.shortTime }
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
            cursorShape: Qt.PointingHandCursor

            onClicked: mouse => {
                const before = App.rows.keyAt(row.ListView.view.currentIndex);
                row.ListView.view.currentIndex = row.index;
                if (mouse.button === Qt.RightButton) {
                    row.menuWanted(row.key, null);
                } else if (mouse.modifiers & Qt.ShiftModifier) {
                    row.forceActiveFocus(Qt.MouseFocusReason);
                    App.list.chooseTo(before || row.key, row.key);
                } else {
                    row.act(false);
                }
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
        RowOpener {
            id: opener

            key: row.key
            opened: row.opened
            title: row.title
            x: parent.width - width - 4
            y: 7
        }
        Loader {
            id: details

            active: row.opened
            width: parent.width - x - 8
            x: texts.x
            y: amount.y + amount.height + 10

            sourceComponent: RowDetails {
                command: row.command
                detail: row.detail
                evidence: row.evidence
                facts: row.facts
                explanation: row.explanation
                key: row.key
                places: row.places
                reason: row.tickState === Kinds.Blocked ? row.reason : ""
                unclassified: row.group === Kinds.Unclassified
            }
        }
    }
}
