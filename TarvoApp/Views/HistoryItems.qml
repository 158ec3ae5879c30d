import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// What became of each thing in one cleanup, largest first, with what can still be put back.
ColumnLayout {
    id: items

    spacing: 0

    Line {
        Layout.fillWidth: true
        Layout.leftMargin: 16
        Layout.rightMargin: 16
        Layout.topMargin: 16
        font.pixelSize: Theme.strong
        font.weight: Font.DemiBold
        text: App.history.title
    }
    Line {
        Layout.bottomMargin: 8
        Layout.fillWidth: true
        Layout.leftMargin: 16
        Layout.rightMargin: 16
        Layout.topMargin: 2
        color: Theme.secondaryText
        maximumLineCount: 2
        text: App.history.facts
        wrapMode: Text.WordWrap
    }
    ListView {
        id: list

        Accessible.name: SideWords.whatBecame
        Accessible.role: Accessible.List
        Layout.fillHeight: true
        Layout.fillWidth: true
        activeFocusOnTab: true
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
