import QtQuick
import Tarvo

// One kind of items, with what they come to.
Rectangle {
    id: entry

    required property int index

    readonly property int kind: index - 1
    readonly property var line: kind >= 0 ? App.items.kinds[kind] : ({ title: Words.fromScan, amount: "", note: "" })
    readonly property bool chosen: App.list.onlyKind === kind
    readonly property string below: [line.amount, line.note].filter(text => text.length > 0).join(" · ")

    function choose() {
        App.list.showKind(kind);
        App.items.want(kind);
    }

    Accessible.checkable: true
    Accessible.checked: chosen
    Accessible.focusable: true
    Accessible.name: below ? line.title + ", " + below : line.title
    Accessible.role: Accessible.RadioButton
    color: chosen ? Qt.alpha(Theme.accent, 0.18) : Qt.alpha(Theme.window, pointer.hovered ? 1 : 0) // "transparent" is black
    implicitHeight: texts.implicitHeight + 12
    radius: Theme.tileRadius

    Accessible.onPressAction: choose()
    Accessible.onToggleAction: choose()
    Keys.onEnterPressed: choose()
    Keys.onReturnPressed: choose()
    Keys.onSpacePressed: choose()

    FocusRing {
        anchors.margins: 0
        radius: Theme.tileRadius
        visible: entry.activeFocus
    }
    HoverHandler {
        id: pointer
    }
    MouseArea {
        anchors.fill: parent
        cursorShape: Qt.PointingHandCursor

        onClicked: {
            entry.ListView.view.currentIndex = entry.index;
            entry.forceActiveFocus(Qt.MouseFocusReason);
            entry.choose();
        }
    }
    Column {
        id: texts

        anchors.left: parent.left
        anchors.margins: 8
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1

        Line {
            Accessible.ignored: true
            font.weight: entry.chosen ? Font.DemiBold : Font.Normal
            maximumLineCount: 2
            text: entry.line.title
            width: parent.width
            wrapMode: Text.Wrap
        }
        Line {
            Accessible.ignored: true
            color: Theme.secondaryText
            font.pixelSize: Theme.small
            maximumLineCount: 2
            text: entry.below
            visible: text.length > 0
            width: parent.width
            wrapMode: Text.Wrap
        }
    }
}
