import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// What became of each thing in one cleanup, largest first, with what can still be put back.
Item {
    id: items

    // No layout: within another one it keeps the height of one line for a text that has come to need two.
    Column {
        id: head

        anchors.left: parent.left
        anchors.margins: 16
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: 2

        Line {
            font.pixelSize: Theme.strong
            font.weight: Font.DemiBold
            text: App.history.title
            width: parent.width
        }
        Line {
            color: Theme.secondaryText
            maximumLineCount: 2
            text: App.history.facts
            width: parent.width
            wrapMode: Text.WordWrap
        }
    }
    ListView {
        id: list

        Accessible.name: SideWords.whatBecame
        Accessible.role: Accessible.List
        activeFocusOnTab: true
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: head.bottom
        anchors.topMargin: 8
        bottomMargin: 8
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        // Counted, so that what becomes of one line leaves the others where they are.
        model: App.history.lines.length

        Keys.onDownPressed: scroll.increase()
        Keys.onUpPressed: scroll.decrease()

        ScrollBar.vertical: ScrollBar {
            id: scroll

            policy: list.contentHeight > list.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
            width: 8
        }
        delegate: HistoryLine {
            required property int index

            line: App.history.lines[index] ?? null
            width: ListView.view.width - 12

            onReached: ListView.view.positionViewAtIndex(index, ListView.Contain)
        }
        FocusRing {
            anchors.margins: 2
            visible: list.activeFocus
        }
    }
}
