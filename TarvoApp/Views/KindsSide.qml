import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// What the list can show: what the scan found, or the items of one kind that only a closer look finds.
ListView {
    id: kinds

    Accessible.name: Words.itemKinds
    Accessible.role: Accessible.List
    activeFocusOnTab: true
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    highlightMoveDuration: 0
    keyNavigationEnabled: true
    model: App.items.kinds.length + 1
    spacing: 2

    ScrollBar.vertical: ScrollBar {
        policy: kinds.contentHeight > kinds.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
        width: 6
    }
    delegate: KindEntry {
        width: ListView.view.width
    }
}
