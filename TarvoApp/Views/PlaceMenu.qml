import QtQuick
import QtQuick.Controls.Basic
import Tarvo

// What else can be done with a row or a tile.
PlainMenu {
    id: menu

    property string key: ""
    property bool inList: false

    function openFor(wanted: string) {
        key = wanted;
        popup();
    }

    PlainMenuItem {
        enabled: App.rows.indexOf(menu.key) >= 0
        text: Words.showInList

        onTriggered: App.places.revealRow(menu.key)
    }
    PlainMenuItem {
        enabled: App.places.canPreview(menu.key)
        text: Words.preview

        onTriggered: App.places.showPreview(menu.key)
    }
    PlainMenuItem {
        enabled: Desktop.hasPlace(menu.key)
        text: Words.showInFiles

        onTriggered: Desktop.showInFiles(menu.key)
    }
    PlainMenuItem {
        enabled: Desktop.hasPlace(menu.key)
        text: Words.copyPath

        onTriggered: Desktop.copyPath(menu.key)
    }
    PlainMenuItem {
        enabled: Desktop.hasPlace(menu.key) && !App.activity.isBusy
        text: Words.archive

        onTriggered: App.archiving.requestArchive(menu.key)
    }
    MenuSeparator {}
    PlainMenuItem {
        enabled: Desktop.hasPlace(menu.key)
        text: Words.protect

        onTriggered: App.places.protect(menu.key)
    }
}
