import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// What is wanted now and then: files, photos, and looking back.
PlainMenu {
    id: menu

    objectName: "moreMenu"

    signal openWanted
    signal saveReportWanted
    signal savePlanWanted
    signal historyWanted
    signal growthWanted
    signal photosWanted
    signal exploreWanted

    function openFor(at: Item) {
        popup(at, at.width - width, at.height + 4);
        goToEnd(false);
    }

    PlainMenuItem {
        enabled: App.files.mayOpen
        keys: "Ctrl+O"
        text: Words.openFile

        onTriggered: menu.openWanted()
    }
    PlainMenuItem {
        enabled: App.files.maySaveReport
        keys: "Ctrl+S"
        text: Words.saveReport

        onTriggered: menu.saveReportWanted()
    }
    PlainMenuItem {
        enabled: App.files.maySavePlan
        keys: "Ctrl+Alt+S"
        text: Words.savePlan

        onTriggered: menu.savePlanWanted()
    }
    MenuSeparator {}
    PlainMenuItem {
        keys: "Ctrl+E"
        text: SideWords.explore

        onTriggered: menu.exploreWanted()
    }
    PlainMenuItem {
        keys: "Ctrl+P"
        text: SideWords.photos

        onTriggered: menu.photosWanted()
    }
    PlainMenuItem {
        keys: "Ctrl+H"
        text: SideWords.history

        onTriggered: menu.historyWanted()
    }
    PlainMenuItem {
        keys: "Ctrl+G"
        text: SideWords.growth

        onTriggered: menu.growthWanted()
    }
}
