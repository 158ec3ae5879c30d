import QtQuick
import QtQuick.Layouts
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
    required property string tickState
    required property string reason
    required property list<string> places
    required property var explanation
    required property string evidence

    property bool opened: false

    readonly property bool lit: App.mapHovered === key || App.flashRow === key
    readonly property bool dimmed: App.mapHovered.length > 0 && !lit && App.rows.indexOf(App.mapHovered) >= 0
    readonly property bool first: ListView.previousSection !== ListView.section
    readonly property bool tickable: tickState === "selected" || tickState === "unselected"
    readonly property string below: tickState === "blocked" && reason ? reason
                                  : explanation.whatItIs ? explanation.whatItIs : detail ? detail : places[0] || ""

    signal menuWanted(string key)
    signal openWanted(bool open)

    function enter(modifiers: int) {
        if (modifiers & Qt.AltModifier)
            App.showPreview(key);
        else
            App.map.zoomInto(key);
    }

    Accessible.checkable: tickable
    Accessible.checked: tickState === "selected"
    Accessible.description: below
    Accessible.focusable: true
    Accessible.name: title + ", " + bytes + ", " + groupTitle + ", " + Words.tickState(tickState)
    Accessible.role: Accessible.CheckBox
    implicitHeight: column.implicitHeight

    Accessible.onPressAction: App.toggle(key)
    Accessible.onToggleAction: App.toggle(key)
    Keys.onMenuPressed: menuWanted(key)
    Keys.onEnterPressed: event => enter(event.modifiers)
    Keys.onLeftPressed: openWanted(false)
    Keys.onReturnPressed: event => enter(event.modifiers)
    Keys.onRightPressed: openWanted(true)
    Keys.onSpacePressed: App.toggle(key)

    Column {
        id: column

        width: parent.width

        GroupHeader {
            bytes: row.groupBytes
            group: row.group
            title: row.groupTitle
            visible: row.first
            width: parent.width - 16
            x: 8
        }
        Rectangle {
            id: body

            color: row.lit ? Qt.alpha(Theme.accent, 0.18) : pointer.hovered ? Theme.window : "transparent"
            height: line.implicitHeight + 14 + (details.active ? details.implicitHeight + 12 : 0)
            opacity: row.dimmed ? 0.45 : 1
            radius: Theme.tileRadius
            width: parent.width

            Behavior on color {
                ColorAnimation { duration: Theme.hoverTime }
            }
            Behavior on opacity {
                NumberAnimation { duration: Theme.hoverTime }
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
                        App.hovered = row.key;
                    else if (App.hovered === row.key)
                        App.hovered = "";
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
                        App.toggle(row.key);
                }
            }
            RowLayout {
                id: line

                anchors.left: parent.left
                anchors.leftMargin: 8
                anchors.right: parent.right
                anchors.rightMargin: 4
                anchors.top: parent.top
                anchors.topMargin: 7
                spacing: 10

                Item {
                    Layout.alignment: Qt.AlignTop
                    Layout.preferredHeight: tick.side
                    Layout.preferredWidth: tick.side

                    TickBox {
                        id: tick

                        ink: row.tickState === "selected" ? Theme.accent : Theme.secondaryText
                        inner: Theme.accentInk
                        tickState: row.tickState
                    }
                }
                ColumnLayout {
                    id: texts

                    Layout.alignment: Qt.AlignTop
                    Layout.fillWidth: true
                    spacing: 1

                    Line {
                        Accessible.ignored: true
                        Layout.fillWidth: true
                        text: row.title
                    }
                    Line {
                        Accessible.ignored: true
                        Layout.fillWidth: true
                        color: Theme.secondaryText
                        font.pixelSize: Theme.small
                        maximumLineCount: 2
                        text: row.below
                        visible: text.length > 0 && !row.opened
                        wrapMode: Text.Wrap
                    }
                }
                ColumnLayout {
                    Layout.alignment: Qt.AlignTop
                    Layout.fillWidth: false
                    spacing: 4

                    Line {
                        Accessible.ignored: true
                        Layout.fillWidth: true
                        Layout.minimumWidth: Math.round(64 * Theme.scale)
                        elide: Text.ElideNone
                        horizontalAlignment: Text.AlignRight
                        text: row.bytes
                    }
                    Rectangle {
                        Layout.alignment: Qt.AlignRight
                        Layout.preferredHeight: 4
                        Layout.preferredWidth: Math.round(64 * Theme.scale)
                        color: Theme.raised
                        radius: 2

                        Rectangle {
                            color: Theme.groups[row.group]
                            height: parent.height
                            radius: parent.radius
                            width: Math.max(4, parent.width * row.share)
                        }
                    }
                }
                MouseArea {
                    id: opener

                    Accessible.name: row.opened ? Words.lessAbout.arg(row.title) : Words.moreAbout.arg(row.title)
                    Accessible.role: Accessible.Button
                    Layout.alignment: Qt.AlignTop
                    Layout.preferredHeight: Math.round(20 * Theme.scale)
                    Layout.preferredWidth: Layout.preferredHeight
                    cursorShape: Qt.PointingHandCursor
                    hoverEnabled: true

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
            }
            Loader {
                id: details

                active: row.opened
                anchors.left: parent.left
                anchors.leftMargin: 18 + Math.round(18 * Theme.scale)
                anchors.right: parent.right
                anchors.rightMargin: 8
                anchors.top: line.bottom
                anchors.topMargin: 8

                sourceComponent: RowDetails {
                    detail: row.detail
                    evidence: row.evidence
                    explanation: row.explanation
                    key: row.key
                    places: row.places
                    reason: row.tickState === "blocked" ? row.reason : ""
                    unclassified: row.group === 3
                }
            }
        }
    }
}
